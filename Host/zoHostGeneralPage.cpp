#include "zoHostGeneralPage.h"

#include "zoHostAutosave.h"

#include <zoLengthUnit.h>
#include <zoPreferencesService.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSettings>
#include <QSpinBox>

#include <algorithm>

namespace
{
constexpr char s_languageKey[] = "Language";
constexpr char s_reopenKey[] = "Reopen last configuration";
constexpr char s_startPageKey[] = "Show start page";
constexpr char s_unitKey[] = "Length unit";
constexpr char s_true[] = "true";
constexpr char s_false[] = "false";
constexpr int s_mostAutosave = 3600; // seconds

// Each in its own words: who cannot read the present one finds it.
constexpr struct
{
    const char* name;
    const char* title;
} s_languages[] = {{"en", "English"}, {"de", "Deutsch"}};

bool storedBool(zoPreferencesService* preferences, const char* key, bool otherwise)
{
    return preferences->getString(QLatin1String(key), QLatin1String(otherwise ? s_true : s_false)) ==
           QLatin1String(s_true);
}

void storeBool(zoPreferencesService* preferences, const char* key, bool on)
{
    preferences->setString(QLatin1String(key), QLatin1String(on ? s_true : s_false));
}
} // namespace

zoHostGeneralPage::zoHostGeneralPage(zoPreferencesService* preferences)
    : m_preferences(preferences)
    , m_language(new QComboBox(this))
    , m_reopensLast(new QCheckBox(tr("Open the &last configuration again"), this))
    , m_showsStartPage(new QCheckBox(tr("Show the start &page when no configuration is opened"), this))
    , m_autosave(new QSpinBox(this))
    , m_unit(new QComboBox(this))
{
    m_language->setObjectName(QStringLiteral("Language"));
    m_language->addItem(tr("As the desktop"), QString());
    for (const auto& language : s_languages)
        m_language->addItem(QString::fromUtf8(language.title), QLatin1String(language.name));
    m_language->setToolTip(tr("Takes effect when the program is started next"));
    m_reopensLast->setObjectName(QStringLiteral("ReopensLast"));
    m_showsStartPage->setObjectName(QStringLiteral("ShowsStartPage"));
    m_autosave->setObjectName(QStringLiteral("AutosaveSeconds"));
    m_autosave->setRange(0, s_mostAutosave);
    m_autosave->setSingleStep(10);
    m_autosave->setSuffix(tr(" s"));
    m_autosave->setSpecialValueText(tr("Never"));
    m_autosave->setToolTip(tr("How often changes that are not saved are kept for the case of a crash. The "
                              "next start offers them."));
    m_unit->setObjectName(QStringLiteral("LengthUnit"));
    for (const zoLengthUnit& unit : zoLengthUnit::all())
        m_unit->addItem(unit.symbol(), unit.symbol());
    m_unit->setToolTip(tr("The unit of lengths in pictures. Files and fields hold millimetres."));

    auto* layout = new QFormLayout(this);
    layout->addRow(tr("&Language:"), m_language);
    layout->addRow(tr("At the start:"), m_reopensLast);
    layout->addRow(QString(), m_showsStartPage);
    layout->addRow(tr("&Keep unsaved changes every:"), m_autosave);
    layout->addRow(tr("&Unit of lengths:"), m_unit);

    m_preferences->registerPage(
        tr("General"), this, [this] { restoreDefaults(); }, [this] { save(); }, [this] { show(); });
    useUnit(m_preferences);
}

zoHostGeneralPage::~zoHostGeneralPage() = default;

QString zoHostGeneralPage::storedLanguage(const QSettings& settings)
{
    // Where the preferences service keeps it.
    const QString stored = settings.value(QStringLiteral("Preferences/") + QLatin1String(s_languageKey)).toString();
    const bool isKnown = std::any_of(std::begin(s_languages), std::end(s_languages), [&stored](const auto& language) {
        return stored == QLatin1String(language.name);
    });
    return isKnown ? stored : QString();
}

bool zoHostGeneralPage::storedReopensLast(zoPreferencesService* preferences)
{
    return storedBool(preferences, s_reopenKey, false);
}

bool zoHostGeneralPage::storedShowsStartPage(zoPreferencesService* preferences)
{
    return storedBool(preferences, s_startPageKey, true);
}

void zoHostGeneralPage::storeShowsStartPage(zoPreferencesService* preferences, bool on)
{
    storeBool(preferences, s_startPageKey, on);
}

void zoHostGeneralPage::useUnit(zoPreferencesService* preferences)
{
    zoLengthUnit::setShown(zoLengthUnit::of(preferences->getString(QLatin1String(s_unitKey), QString())));
}

void zoHostGeneralPage::show()
{
    const QString language = m_preferences->getString(QLatin1String(s_languageKey), QString());
    m_language->setCurrentIndex(std::max(0, m_language->findData(language)));
    m_reopensLast->setChecked(storedReopensLast(m_preferences));
    m_showsStartPage->setChecked(storedShowsStartPage(m_preferences));
    m_autosave->setValue(zoHostAutosave::storedSeconds(m_preferences));
    m_unit->setCurrentIndex(m_unit->findData(zoLengthUnit::shown().symbol()));
}

void zoHostGeneralPage::save()
{
    m_preferences->setString(QLatin1String(s_languageKey), m_language->currentData().toString());
    storeBool(m_preferences, s_reopenKey, m_reopensLast->isChecked());
    storeBool(m_preferences, s_startPageKey, m_showsStartPage->isChecked());
    m_preferences->setString(QLatin1String(s_unitKey), m_unit->currentData().toString());
    useUnit(m_preferences);
    // A longer time that somebody wrote by hand stays while nobody chooses another.
    const int before = qBound(0, zoHostAutosave::storedSeconds(m_preferences), s_mostAutosave);
    if (m_autosave->value() != before) {
        zoHostAutosave::storeSeconds(m_preferences, m_autosave->value());
        emit autosaveSecondsChanged(m_autosave->value());
    }
}

void zoHostGeneralPage::restoreDefaults()
{
    m_preferences->setString(QLatin1String(s_languageKey), QString());
    storeBool(m_preferences, s_reopenKey, false);
    storeBool(m_preferences, s_startPageKey, true);
    m_preferences->setString(QLatin1String(s_unitKey), zoLengthUnit::all().front().symbol());
    useUnit(m_preferences);
    zoHostAutosave::storeSeconds(m_preferences, zoHostAutosave::DefaultSeconds);
    emit autosaveSecondsChanged(zoHostAutosave::DefaultSeconds);
}
