#include "zoHPCTextParts.h"

#include <algorithm>

namespace
{
bool endsName(QChar c)
{
    return c.isSpace() || c.isNull() || c == QLatin1Char('=') || c == QLatin1Char('/') ||
           c == QLatin1Char('>');
}

// What a reference stands for, "lt" or "#x20"; null for an entity of the document's own.
QString meaningOf(const QString& name)
{
    static constexpr struct
    {
        const char* name;
        char character;
    } Predefined[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& entity : Predefined) {
        if (name == QLatin1String(entity.name))
            return QString(QLatin1Char(entity.character));
    }
    if (!name.startsWith(QLatin1Char('#')))
        return {};
    const bool isHex = name.startsWith(QLatin1String("#x"));
    bool ok = false;
    const uint code = name.mid(isHex ? 2 : 1).toUInt(&ok, isHex ? 16 : 10);
    return ok && code > 0 && code <= 0x10ffff ? QString::fromUcs4(&code, 1) : QString();
}
} // namespace

const zoHPCTextParts::Attribute* zoHPCTextParts::Part::attribute(const QString& name) const
{
    const auto found = std::find_if(attributes.crbegin(), attributes.crend(),
                                    [&name](const Attribute& attribute) { return attribute.name == name; });
    return found == attributes.crend() ? nullptr : &*found;
}

QString zoHPCTextParts::Part::value(const QString& name) const
{
    const Attribute* const found = attribute(name);
    return found ? found->value : QString();
}

zoHPCTextParts::zoHPCTextParts(const QString& text) : m_text(text)
{
    if (m_text.startsWith(QChar::ByteOrderMark))
        m_at = 1;
    m_lines.append(m_at);
    for (int i = 0; i < m_text.size(); ++i) {
        if (m_text.at(i) == QLatin1Char('\n'))
            m_lines.append(i + 1);
    }
    while (m_at < m_text.size()) {
        if (at(m_at) == QLatin1Char('<'))
            readMarkup();
        else
            readText();
    }
}

zoHPCTextParts::Place zoHPCTextParts::place(int offset) const
{
    const auto next = std::upper_bound(m_lines.begin(), m_lines.end(), offset);
    const int line = std::max(0, int(next - m_lines.begin()) - 1);
    return {line + 1, std::max(0, offset - m_lines.at(line)) + 1};
}

void zoHPCTextParts::readMarkup()
{
    const QStringView rest = QStringView(m_text).mid(m_at, 9);
    if (rest.startsWith(QLatin1String("</"))) {
        readEndTag();
    } else if (rest.startsWith(QLatin1String("<!--"))) {
        add(Kind::Comment, m_at);
        m_at = behind("-->", m_at + 4);
    } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
        add(Kind::Text, m_at);
        m_at = behind("]]>", m_at + 9);
    } else if (rest.startsWith(QLatin1String("<?"))) {
        // The declaration says how the text is read, and is none of its parts.
        if (m_at > m_lines.first() || !rest.startsWith(QLatin1String("<?xml ")))
            add(Kind::Instruction, m_at);
        m_at = behind("?>", m_at + 2);
    } else if (rest.startsWith(QLatin1String("<!"))) {
        m_at = skipDocumentType(m_at);
    } else {
        readStartTag();
    }
}

void zoHPCTextParts::readStartTag()
{
    Part part;
    part.offset = m_at;
    part.parent = m_open.isEmpty() ? -1 : m_open.last();
    int i = m_at + 1;
    while (!endsName(at(i)))
        ++i;
    part.tag = m_text.mid(m_at + 1, i - m_at - 1);
    m_at = readAttributes(i, part);
    m_parts.append(part);
    if (m_at < 2 || m_text.at(m_at - 2) != QLatin1Char('/'))
        m_open.append(m_parts.size() - 1);
}

// Returns what is behind the tag.
int zoHPCTextParts::readAttributes(int from, Part& part) const
{
    int i = from;
    while (i < m_text.size() && at(i) != QLatin1Char('>')) {
        if (endsName(at(i))) {
            ++i;
            continue;
        }
        Attribute attribute;
        attribute.offset = i;
        while (!endsName(at(i)))
            ++i;
        attribute.name = m_text.mid(attribute.offset, i - attribute.offset);
        const auto isQuote = [](QChar c) { return c == QLatin1Char('"') || c == QLatin1Char('\''); };
        while (i < m_text.size() && !isQuote(at(i)) && at(i) != QLatin1Char('>'))
            ++i;
        if (!isQuote(at(i)))
            break;
        attribute.valueOffset = i + 1;
        const int end = m_text.indexOf(at(i), i + 1);
        i = end < 0 ? m_text.size() : end;
        attribute.value = decoded(attribute.valueOffset, i, attribute.isWhole);
        part.attributes.append(attribute);
        ++i;
    }
    return std::min<int>(i + 1, m_text.size());
}

QString zoHPCTextParts::decoded(int from, int to, bool& isWhole) const
{
    QString value = m_text.mid(from, to - from);
    int begin = value.indexOf(QLatin1Char('&'));
    if (begin < 0)
        return value;
    QString result;
    int done = 0;
    for (; begin >= 0; begin = value.indexOf(QLatin1Char('&'), begin + 1)) {
        const int end = value.indexOf(QLatin1Char(';'), begin);
        const QString meaning = end < 0 ? QString() : meaningOf(value.mid(begin + 1, end - begin - 1));
        if (meaning.isNull()) {
            isWhole = false;
            continue;
        }
        result += value.mid(done, begin - done) + meaning;
        done = end + 1;
        begin = end;
    }
    return result + value.mid(done);
}

void zoHPCTextParts::readEndTag()
{
    if (!m_open.isEmpty())
        m_parts[m_open.takeLast()].closing = m_at;
    m_at = behind(">", m_at);
}

void zoHPCTextParts::readText()
{
    int end = m_text.indexOf(QLatin1Char('<'), m_at);
    if (end < 0)
        end = m_text.size();
    while (m_at < end && m_text.at(m_at).isSpace())
        ++m_at;
    if (m_at < end)
        add(Kind::Text, m_at);
    m_at = end;
}

int zoHPCTextParts::skipDocumentType(int from) const
{
    int brackets = 0;
    QChar quote;
    for (int i = from; i < m_text.size(); ++i) {
        const QChar c = m_text.at(i);
        if (!quote.isNull())
            quote = c == quote ? QChar() : quote;
        else if (QStringView(m_text).mid(i, 4).startsWith(QLatin1String("<!--")))
            i = behind("-->", i + 4) - 1;
        else if (c == QLatin1Char('"') || c == QLatin1Char('\''))
            quote = c;
        else if (c == QLatin1Char('['))
            ++brackets;
        else if (c == QLatin1Char(']'))
            --brackets;
        else if (c == QLatin1Char('>') && brackets <= 0)
            return i + 1;
    }
    return m_text.size();
}

int zoHPCTextParts::behind(const char* mark, int from) const
{
    const QLatin1String text(mark);
    const int found = m_text.indexOf(text, from);
    return found < 0 ? m_text.size() : found + text.size();
}

void zoHPCTextParts::add(Kind kind, int offset)
{
    Part part;
    part.kind = kind;
    part.offset = offset;
    part.parent = m_open.isEmpty() ? -1 : m_open.last();
    m_parts.append(part);
}
