#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTranslator;

// The translated texts of a running host, added to the application while the object lives: Qt's own, the
// host's, and those of each module. What has no translation stays English. Lives inside an application
// object.
class zoHostTranslations final
{
public:
    // `language` is a name such as "de" or "de_AT"; numbers follow it, too. When it is empty the locale of
    // the session decides: the first of its languages that the host speaks.
    explicit zoHostTranslations(const QString& language = QString());
    ~zoHostTranslations(); // takes the texts back in reverse order
    zoHostTranslations(const zoHostTranslations&) = delete;
    zoHostTranslations& operator=(const zoHostTranslations&) = delete;

    // Names of the languages that the host speaks, English first.
    static QStringList known();
    // Whether this one, or the same without its country, is one of them.
    static bool knows(const QString& language);

    // Adds NAME_<language>.qm; false when there is none.
    bool add(const QString& name);
    // Adds the texts of a module: "zoHPC" is the name for a file libzoHPC.so.
    bool addModule(const QString& moduleFile);

    // Of the texts: "en" when none were found.
    QString language() const { return m_language; }

    // Where .qm files are looked for, in this order: below the data directory, beside the program, in the
    // build.
    static QStringList folders();

private:
    bool install(const QString& fileName);

    QString m_language;
    QLocale m_previousLocale;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};
