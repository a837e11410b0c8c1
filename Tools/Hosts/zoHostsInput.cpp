#include "zoHostsInput.h"

#include "zoConsole.h"

#include <zoFileReader.h>

#include <QCoreApplication>

#include <algorithm>

namespace
{
bool printUnreadable(const QString& fileName, const QString& reason)
{
    zoConsole::printError(
        QStringLiteral("%1: %2").arg(fileName.isEmpty() ? QStringLiteral("\"\"") : fileName, reason));
    return false;
}

// Beyond a NUL, too, where the conversion of a byte array ends.
QString decoded(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}
} // namespace

bool zoHostsInput::readArguments(const QStringList& texts)
{
    if (texts.isEmpty())
        return readStandardInput();
    for (const QString& text : texts) {
        if (text != QLatin1String("-"))
            append(QStringLiteral("TEXT"), text);
        else if (!readStandardInput())
            return false;
    }
    return true;
}

bool zoHostsInput::readFile(const QString& fileName)
{
    if (fileName == QLatin1String("-"))
        return readStandardInput();
    QByteArray bytes;
    QString reason;
    if (zoFileReader::read(fileName, bytes, &reason, zoFileReader::Pipes::Unnamed) !=
        zoFileReader::Result::Read)
        return printUnreadable(fileName, reason);
    append(fileName, decoded(bytes));
    return true;
}

bool zoHostsInput::readStandardInput()
{
    QByteArray bytes;
    QString reason;
    if (zoFileReader::readStandardInput(bytes, &reason) != zoFileReader::Result::Read)
        return printUnreadable(QStringLiteral("-"), reason);
    append(QStringLiteral("-"), decoded(bytes));
    return true;
}

void zoHostsInput::append(const QString& file, const QString& text)
{
    if (!m_sources.empty())
        m_text += QLatin1Char('\n');
    m_sources.push_back({file, int(m_text.size())});
    m_text += text;
}

zoHostsInput::Place zoHostsInput::place(int offset) const
{
    const auto after =
        std::upper_bound(m_sources.begin(), m_sources.end(), offset,
                         [](int value, const Source& source) { return value < source.offset; });
    const Source& source = *(after - 1);
    if (m_counted.offset > offset || m_counted.offset < source.offset)
        m_counted = {source.offset, 1, 1};
    for (; m_counted.offset < offset; ++m_counted.offset) {
        const QChar c = m_text.at(m_counted.offset);
        if (c == QLatin1Char('\n')) {
            ++m_counted.line;
            m_counted.column = 1;
        } else if (!c.isLowSurrogate()) {
            // The second half of a character outside the basic plane is no column of its own.
            ++m_counted.column;
        }
    }
    return {source.file, m_counted.line, m_counted.column};
}
