#pragma once

#include <QString>

class QSettings;
class zoPreferencesService;

// What a person chose of how the host starts; the preferences page "General" offers it.
class zoHostChoices final
{
public:
    zoHostChoices() = delete;

    // Languages that can be chosen: the name, and the title in its own words.
    struct Language
    {
        const char* name;
        const char* title; // UTF-8
    };
    static constexpr Language Languages[] = {{"en", "English"}, {"de", "Deutsch"}};

    // Name of a language; empty for that of the desktop. Asked before there is anything that could be translated.
    static QString language(const QSettings& settings);
    static QString language(zoPreferencesService* preferences);
    static void setLanguage(zoPreferencesService* preferences, const QString& name);

    static bool reopensLast(zoPreferencesService* preferences);
    static void setReopensLast(zoPreferencesService* preferences, bool on);

    static bool showsStartPage(zoPreferencesService* preferences);
    static void setShowsStartPage(zoPreferencesService* preferences, bool on);
};
