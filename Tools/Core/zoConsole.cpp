#include "zoConsole.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>

bool zoConsole::write(const QByteArray& text)
{
    const bool isWhole =
        std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout) == std::size_t(text.size());
    if (isWhole && std::fflush(stdout) == 0)
        return true;
    const QString reason = errno == EBADF ? QCoreApplication::translate("zoConsole", "it is closed")
                                          : QString::fromLocal8Bit(std::strerror(errno));
    printError(QCoreApplication::translate("zoConsole", "zohpc: standard output: %1").arg(reason));
    return false;
}

void zoConsole::printError(const QString& message)
{
    const QByteArray text = message.toUtf8() + '\n';
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stderr);
}

void zoConsole::printError(const QString& file, int line, int column, const QString& reason)
{
    printError(
        QStringLiteral("%1:%2:%3: %4").arg(file, QString::number(line), QString::number(column), reason));
}
