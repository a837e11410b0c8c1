#include "zoFileName.h"

#include <QCoreApplication>
#include <QFile>

QString zoFileName::flawOf(const QString& fileName)
{
    if (fileName.isEmpty())
        return QCoreApplication::translate("zoFileName", "the file name is empty");
    if (QFile::decodeName(QFile::encodeName(fileName)) == fileName)
        return {};
    return QCoreApplication::translate("zoFileName",
                                       "the encoding of the locale has not all characters of this name; "
                                       "rename the file, or use a locale with UTF-8 (LC_ALL=C.UTF-8)");
}

QString zoFileName::flawOfNew(const QString& fileName)
{
    if (!fileName.contains(QChar(QChar::ReplacementCharacter)))
        return flawOf(fileName);
    return QCoreApplication::translate("zoFileName",
                                       "bytes of this name are no text in the encoding of the locale; give "
                                       "the file another name");
}
