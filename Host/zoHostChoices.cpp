#include "zoHostChoices.h"

#include <zoPreferencesService.h>

#include <QSettings>

#include <algorithm>

namespace
{
constexpr char s_languageKey[] = "Language";
constexpr char s_reopenKey[] = "Reopen last configuration";
constexpr char s_startPageKey[] = "Show start page";
constexpr char s_true[] = "true";
constexpr char s_false[] = "false";

bool storedBool(zoPreferencesService* preferences, const char* key, bool otherwise)
{
    return preferences->getString(QLatin1String(key), QLatin1String(otherwise ? s_true : s_false)) ==
           QLatin1String(s_true);
}

void storeBool(zoPreferencesService* preferences, const char* key, bool on)
{
    preferences->setString(QLatin1String(key), QLatin1String(on ? s_true : s_false));
}

QString known(const QString& name)
{
    const bool isKnown =
        std::any_of(std::begin(zoHostChoices::Languages), std::end(zoHostChoices::Languages),
                    [&name](const zoHostChoices::Language& one) { return name == QLatin1String(one.name); });
    return isKnown ? name : QString();
}
} // namespace

QString zoHostChoices::language(const QSettings& settings)
{
    // Where the preferences service keeps it.
    return known(settings.value(QStringLiteral("Preferences/") + QLatin1String(s_languageKey)).toString());
}

QString zoHostChoices::language(zoPreferencesService* preferences)
{
    return known(preferences->getString(QLatin1String(s_languageKey), QString()));
}

void zoHostChoices::setLanguage(zoPreferencesService* preferences, const QString& name)
{
    preferences->setString(QLatin1String(s_languageKey), name);
}

bool zoHostChoices::reopensLast(zoPreferencesService* preferences)
{
    return storedBool(preferences, s_reopenKey, false);
}

void zoHostChoices::setReopensLast(zoPreferencesService* preferences, bool on)
{
    storeBool(preferences, s_reopenKey, on);
}

bool zoHostChoices::showsStartPage(zoPreferencesService* preferences)
{
    return storedBool(preferences, s_startPageKey, true);
}

void zoHostChoices::setShowsStartPage(zoPreferencesService* preferences, bool on)
{
    storeBool(preferences, s_startPageKey, on);
}
