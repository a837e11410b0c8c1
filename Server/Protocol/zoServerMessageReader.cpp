#include "zoServerMessageReader.h"

#include <QJsonDocument>

#include <algorithm>

namespace
{
constexpr char s_hello[] = "HELLO";
constexpr int s_maximumHeader = zoServerMessage::MaximumVerb + 24;

bool isCapital(char character)
{
    return character >= 'A' && character <= 'Z';
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}
} // namespace

zoServerMessageReader::zoServerMessageReader(Start start) : m_afterNoise(start == Start::AfterNoise) {}

void zoServerMessageReader::feed(const QByteArray& bytes)
{
    if (m_isBroken)
        return;
    // What was read is cut off now and then, so that a stream costs no more than its longest message.
    constexpr int WorthCutting = 64 * 1024;
    if (m_position == m_bytes.size()) {
        m_bytes.clear();
        m_position = 0;
    } else if (m_position > WorthCutting) {
        m_bytes.remove(0, m_position);
        m_position = 0;
    }
    m_bytes += bytes;
}

zoServerMessageReader::Outcome zoServerMessageReader::next(zoServerMessage& message)
{
    if (m_isBroken)
        return Outcome::Broken;
    if (m_afterNoise) {
        const Outcome outcome = skipNoise();
        if (outcome != Outcome::Message)
            return outcome;
    }
    const int end = m_bytes.indexOf('\n', m_position);
    if (end < 0) {
        if (m_bytes.size() - m_position > s_maximumHeader)
            return broken(QStringLiteral("a line that is no message"));
        return Outcome::Incomplete;
    }
    Header header;
    if (!readHeader(m_bytes.mid(m_position, std::min(end - m_position, s_maximumHeader + 1)), header))
        return broken(QStringLiteral("a line that is no message"));
    if (header.size > zoServerMessage::MaximumPayload)
        return broken(QStringLiteral("a message of %1 bytes").arg(header.size));
    const qint64 last = qint64(end) + 1 + header.size;
    if (m_bytes.size() <= last)
        return Outcome::Incomplete;
    if (m_bytes.at(int(last)) != '\n')
        return broken(QStringLiteral("a message longer than it says"));
    message = {header.verb, m_bytes.mid(end + 1, int(header.size))};
    m_position = int(last) + 1;
    return Outcome::Message;
}

// Message when the next bytes are a HELLO, from its first byte on.
zoServerMessageReader::Outcome zoServerMessageReader::skipNoise()
{
    for (;;) {
        const int end = m_bytes.indexOf('\n', m_position);
        if (end < 0) {
            if (m_noise + m_bytes.size() - m_position > MaximumNoise + s_maximumHeader)
                return broken(QStringLiteral("too much before the first message"));
            return Outcome::Incomplete;
        }
        Header header;
        if (readHeader(m_bytes.mid(m_position, std::min(end - m_position, s_maximumHeader + 1)), header) &&
            header.verb == s_hello && header.size <= MaximumHello) {
            // A greeting of the login script may look the same up to here.
            const int last = end + 1 + int(header.size);
            const bool begins = header.size > 0 && (m_bytes.size() == end + 1 || m_bytes.at(end + 1) == '{');
            if (begins && m_bytes.size() <= last)
                return Outcome::Incomplete;
            if (begins && m_bytes.at(last) == '\n' && isHello(m_bytes.mid(end + 1, int(header.size)))) {
                m_afterNoise = false;
                return Outcome::Message;
            }
        }
        const QString line = QString::fromUtf8(m_bytes.mid(m_position, end - m_position)).trimmed();
        if (!line.isEmpty())
            m_lastNoise = line;
        // A program begins with the end of the line that the login script may have left open: an empty line is none.
        if (end > m_position)
            m_noise += end + 1 - m_position;
        m_position = end + 1;
        if (m_noise > MaximumNoise)
            return broken(QStringLiteral("too much before the first message"));
    }
}

zoServerMessageReader::Outcome zoServerMessageReader::broken(const QString& reason)
{
    m_isBroken = true;
    m_error = reason;
    m_bytes.clear();
    m_position = 0;
    return Outcome::Broken;
}

// A size has one form, so that what was read is written as it came.
bool zoServerMessageReader::readHeader(const QByteArray& line, Header& header)
{
    constexpr int MaximumDigits = 12; // no overflow, and far above the limit
    const int blank = line.indexOf(' ');
    const int digits = line.size() - blank - 1;
    if (blank < 1 || blank > zoServerMessage::MaximumVerb || digits < 1 || digits > MaximumDigits ||
        !std::all_of(line.begin(), line.begin() + blank, isCapital) ||
        !std::all_of(line.begin() + blank + 1, line.end(), isDigit) ||
        (digits > 1 && line.at(blank + 1) == '0'))
        return false;
    header.verb = line.left(blank);
    header.size = line.mid(blank + 1).toLongLong();
    return true;
}

bool zoServerMessageReader::isHello(const QByteArray& payload)
{
    return QJsonDocument::fromJson(payload).object().contains(QLatin1String("protocol"));
}
