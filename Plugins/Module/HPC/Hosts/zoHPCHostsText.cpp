#include "zoHPCHostsText.h"

#include "zoText.h"

#include <QVector>

#include <algorithm>

namespace
{
enum CharClass : uchar {
    Plain,
    Blank,     // white space, ASCII only
    Separator, // "," and "|"
    Brace,
    BlockOpen
};

CharClass classOf(QChar c)
{
    switch (c.unicode()) {
    case ' ':
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r':
        return Blank;
    case ',':
    case '|':
        return Separator;
    case '{':
    case '}':
    case '(':
    case ')':
        return Brace;
    case '[':
        return BlockOpen;
    default:
        return Plain;
    }
}

bool opens(QChar brace)
{
    return brace == QLatin1Char('{') || brace == QLatin1Char('(');
}

const QChar s_openBrace = QLatin1Char('{');
const QChar s_closeBrace = QLatin1Char('}');
} // namespace

// Moves the value of the last "forwards=" of each option block behind the block, in braces:
// "gw[a=1,forwards=x y]" -> "gw[a=1,] { x y }".
QString zoHPCHostsText::moveForwards(const QString& text, std::vector<Piece>& pieces)
{
    const QString key = zoText("forwards=");
    if (!text.contains(key))
        return text;

    QString result;
    result.reserve(text.size() + 64);
    const auto take = [&](int from, int to) {
        pieces.push_back({int(result.size()), from});
        result.append(text.constData() + from, to - from);
    };
    const QStringView all(text);
    int copied = 0;    // up to here the text is in the result
    int opening = -1;  // first "[" since the last "]"
    int forwards = -1; // last key since then
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('[') && opening < 0) {
            opening = i;
        } else if (c == QLatin1Char('f') && opening >= 0 && all.mid(i).startsWith(key)) {
            forwards = i;
        } else if (c == QLatin1Char(']')) {
            if (forwards >= 0) {
                const int value = forwards + key.size();
                int valueEnd = value;
                while (text.at(valueEnd) != QLatin1Char(',') && valueEnd < i)
                    ++valueEnd;
                take(copied, forwards);
                take(valueEnd, i + 1);
                result += QLatin1String(" { ");
                take(value, valueEnd);
                result += QLatin1String(" }");
                copied = i + 1;
            }
            opening = -1;
            forwards = -1;
        }
    }
    take(copied, text.size());
    return result;
}

zoHPCHostsText::zoHPCHostsText(const QString& text)
    : m_text(moveForwards(text, m_pieces))
    , m_begin(m_text.constData())
    , m_position(m_begin)
    , m_end(m_begin + m_text.size())
{
}

bool zoHPCHostsText::next()
{
    const QChar* p = m_position;
    CharClass kind = Plain;
    while (p != m_end && ((kind = classOf(*p)) == Blank || kind == Separator))
        ++p;
    m_begin = p;
    if (p == m_end) {
        m_position = p;
        m_token = {};
        return false;
    }
    if (kind == Brace) {
        m_token = QStringView(opens(*p) ? &s_openBrace : &s_closeBrace, 1);
        m_position = p + 1;
        return true;
    }

    const QChar* begin = p;
    while (p != m_end && classOf(*p) == Plain)
        ++p;
    const QChar* end = p;
    while (p != m_end && classOf(*p) == Blank)
        ++p;
    m_position = p;
    // Blanks before an option block do not separate it from its host.
    if (p != m_end && classOf(*p) == BlockOpen) {
        m_buffer.setUnicode(begin, int(end - begin));
        readBlock(p);
        m_token = m_buffer;
    } else {
        m_token = QStringView(begin, end);
    }
    return true;
}

int zoHPCHostsText::offset() const
{
    const int position = int(m_begin - m_text.constData());
    const auto after = std::upper_bound(m_pieces.begin(), m_pieces.end(), position,
                                        [](int value, const Piece& piece) { return value < piece.position; });
    return after == m_pieces.begin() ? position : (after - 1)->offset + position - (after - 1)->position;
}

// Reads on from a "[" to the end of the token. Inside a block a run of separators is one comma, braces are
// ordinary characters between commas.
void zoHPCHostsText::readBlock(const QChar* p)
{
    const QLatin1Char comma(',');
    bool inside = false;
    bool blanks = false; // pending
    bool separators =
        false; // pending, stronger than blanks: they separate even what an option block would glue
    for (; p != m_end; ++p) {
        const CharClass kind = classOf(*p);
        if (kind == Blank) {
            blanks = true;
            continue;
        }
        if (kind == Separator) {
            separators = true;
            if (!inside)
                break;
            continue;
        }
        if (!inside && (kind == Brace || (blanks && kind != BlockOpen)))
            break;
        if (inside && (separators || kind == Brace || (blanks && kind != BlockOpen)))
            m_buffer += comma;
        blanks = false;
        separators = false;
        if (kind == Brace) {
            m_buffer += opens(*p) ? s_openBrace : s_closeBrace;
            separators = true;
            continue;
        }
        if (kind == BlockOpen)
            inside = true;
        else if (*p == QLatin1Char(']'))
            inside = false;
        m_buffer += *p;
    }
    if (p == m_end && inside && (blanks || separators))
        m_buffer += comma;
    m_position = p;
}

QStringList zoHPCHostsText::tokens(const QString& text)
{
    QStringList result;
    zoHPCHostsText reader(text);
    while (reader.next())
        result << reader.token().toString();
    return result;
}

bool zoHPCHostsText::isBlank(QChar c)
{
    return classOf(c) == Blank;
}

bool zoHPCHostsText::endsWord(QChar c)
{
    return classOf(c) != Plain;
}

bool zoHPCHostsText::isNameChar(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z') || u == '-' || u == '.';
}

QString zoHPCHostsText::hostName(QStringView token)
{
    const QChar* begin = token.begin();
    const QChar* end = token.end();
    const QChar* p = begin;
    while (p != end && isNameChar(*p))
        ++p;
    QString name(begin, int(p - begin));
    for (; p != end && *p != QLatin1Char('['); ++p) {
        if (isNameChar(*p))
            name += *p;
    }
    return name;
}

bool zoHPCHostsText::renderOption(QStringView token, QString& value)
{
    const QChar* begin = std::find(token.begin(), token.end(), QLatin1Char('['));
    if (begin == token.end())
        return false;
    QString block = QStringView(begin + 1, token.end()).toString();
    block.remove(QLatin1Char(']'));

    bool found = false;
    const QStringList options = block.split(QLatin1Char(','));
    for (const QString& option : options) {
        const int equals = option.indexOf(QLatin1Char('='));
        const QString key = equals < 0 ? option : option.left(equals);
        if (key.size() != 2 || key.toLower() != QLatin1String("rt"))
            continue;
        value = equals < 0 ? QString() : option.mid(equals + 1);
        found = true;
    }
    return found;
}
