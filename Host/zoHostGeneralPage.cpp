#include "zoHostGeneralPage.h"

#include "zoHostAutosave.h"
#include "zoHostChoices.h"

#include <zoLengthUnit.h>
#include <zoPreferencesService.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace
{
constexpr char s_unitKey[] = "Length unit";
constexpr int s_mostAutosave = 3600; // seconds
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
    // Each in its own words: who cannot read the present one finds it.
    for (const zoHostChoices::Language& language : zoHostChoices::Languages)
        m_language->addItem(QString::fromUtf8(language.title), QLatin1String(language.name));
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
    auto* note = new QLabel(tr("Takes effect when the program is started next"), this);
    note->setObjectName(QStringLiteral("LanguageNote"));
    note->setWordWrap(true);
    layout->addRow(QString(), note);
    layout->addRow(tr("At the start:"), m_reopensLast);
    layout->addRow(QString(), m_showsStartPage);
    layout->addRow(tr("&Keep unsaved changes every:"), m_autosave);
    layout->addRow(tr("&Unit of lengths:"), m_unit);

    m_preferences->registerPage(
        tr("General"), this, [this] { restoreDefaults(); }, [this] { save(); }, [this] { show(); });
    useUnit(m_preferences);
}

zoHostGeneralPage::~zoHostGeneralPage() = default;

void zoHostGeneralPage::useUnit(zoPreferencesService* preferences)
{
    zoLengthUnit::setShown(zoLengthUnit::of(preferences->getString(QLatin1String(s_unitKey), QString())));
}

void zoHostGeneralPage::show()
{
    m_language->setCurrentIndex(m_language->findData(zoHostChoices::language(m_preferences)));
    m_reopensLast->setChecked(zoHostChoices::reopensLast(m_preferences));
    m_showsStartPage->setChecked(zoHostChoices::showsStartPage(m_preferences));
    m_autosave->setValue(zoHostAutosave::storedSeconds(m_preferences));
    m_unit->setCurrentIndex(m_unit->findData(zoLengthUnit::shown().symbol()));
}

void zoHostGeneralPage::save()
{
    zoHostChoices::setLanguage(m_preferences, m_language->currentData().toString());
    zoHostChoices::setReopensLast(m_preferences, m_reopensLast->isChecked());
    zoHostChoices::setShowsStartPage(m_preferences, m_showsStartPage->isChecked());
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
    zoHostChoices::setLanguage(m_preferences, QString());
    zoHostChoices::setReopensLast(m_preferences, false);
    zoHostChoices::setShowsStartPage(m_preferences, true);
    m_preferences->setString(QLatin1String(s_unitKey), zoLengthUnit::all().front().symbol());
    useUnit(m_preferences);
    zoHostAutosave::storeSeconds(m_preferences, zoHostAutosave::DefaultSeconds);
    emit autosaveSecondsChanged(zoHostAutosave::DefaultSeconds);
}
