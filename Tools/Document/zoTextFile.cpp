#include "zoTextFile.h"

#include "zoConsole.h"

#include <zoFileWriter.h>

#include <QFile>

#include <cstdio>

namespace
{
bool printError(const QString& fileName, const QString& reason)
{
    zoConsole::printError(QStringLiteral("%1: %2").arg(fileName, reason));
    return false;
}
} // namespace

bool zoTextFile::read(const QString& fileName, QString& text)
{
    QFile file(fileName);
    const bool isOpen = fileName == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                       : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        return printError(fileName, file.errorString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return printError(fileName, file.errorString());
    text = QString::fromUtf8(bytes.constData());
    return true;
}

bool zoTextFile::write(const QString& fileName, const QString& text)
{
    if (fileName == QLatin1String("-"))
        return zoConsole::write(text.toUtf8());
    QString reason;
    return zoFileWriter::write(fileName, text.toUtf8(), &reason) == zoFileWriter::Result::Written ||
           printError(fileName, reason);
}
