#include "zoTextFile.h"

#include "zoConsole.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace
{
bool complain(const QString& fileName, const QString& reason)
{
    zoConsole::complain(QStringLiteral("%1: %2").arg(fileName, reason));
    return false;
}
} // namespace

bool zoTextFile::read(const QString& fileName, QString& text)
{
    QFile file(fileName);
    const bool isOpen = fileName == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                       : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return complain(fileName, file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return complain(fileName, file.errorString());
    text = QString::fromUtf8(bytes.constData());
    return true;
}

bool zoTextFile::write(const QString& fileName, const QString& text)
{
    if (fileName == QLatin1String("-"))
        return zoConsole::write(text.toUtf8());
    QSaveFile file(fileName);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return complain(fileName, file.errorString());
    return true;
}
