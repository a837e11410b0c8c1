#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

// Where the manual is: HTML, a folder for each language, a file for each page.
class zoHostManual final
{
public:
    zoHostManual() = delete;

    // Where it is looked for, in this order: below the data directory, beside the program, in the build.
    static QStringList folders();
    // The file of a page in this language, else in English; `page` may have an anchor ("problems#empty-network").
    // Empty when there is none.
    static QUrl find(const QString& page, const QString& language);
};
