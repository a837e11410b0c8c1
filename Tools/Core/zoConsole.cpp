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
    printError(QCoreApplication::translate("zoConsole", "zohpc: standard output: %1")
                   .arg(QString::fromLocal8Bit(std::strerror(errno))));
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

QByteArray zoConsole::json(const QString& text)
{
    QByteArray result("\"");
    const QByteArray bytes = text.toUtf8();
    for (const char c : bytes) {
        switch (c) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            if (uchar(c) < 0x20)
                result += "\\u00" + QByteArray::number(uchar(c), 16).rightJustified(2, '0');
            else
                result += c;
        }
    }
    return result + '"';
}
