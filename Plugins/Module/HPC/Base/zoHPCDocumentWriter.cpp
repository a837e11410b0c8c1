#include "zoHPCDocumentWriter.h"

#include <zoLog.h>

#include <QCoreApplication>

namespace
{
constexpr int Indent = 1; // blanks per level

bool isNameStart(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c.isLetter() || c == QLatin1Char('_');
}

// What the parser reads as a name: at most one colon, with something on both sides of it.
bool isName(const QString& text)
{
    bool hasColon = false;
    bool starts = true;
    for (const QChar c : text) {
        if (starts) {
            if (!isNameStart(c))
                return false;
            starts = false;
        } else if (c == QLatin1Char(':')) {
            if (hasColon)
                return false;
            hasColon = true;
            starts = true;
        } else if (!isNameStart(c) && !c.isDigit() && c != QLatin1Char('-') && c != QLatin1Char('.')) {
            return false;
        }
    }
    return !starts;
}

// Whether XML holds the character there, in a pair or alone; line ends and tabs are told apart before.
bool isWritable(const QChar* data, int at, int length)
{
    const ushort c = data[at].unicode();
    if (data[at].isHighSurrogate())
        return at + 1 < length && data[at + 1].isLowSurrogate();
    return c >= 0x20 && c < 0xfffe && !data[at].isLowSurrogate();
}

// Appends `text` with everything replaced that would not read back as itself.
void appendEscaped(QString& out, const QString& text, bool inAttribute)
{
    const QChar* const data = text.constData();
    const int length = text.size();
    int plainFrom = 0;
    for (int i = 0; i < length; ++i) {
        const ushort c = data[i].unicode();
        if (c > '>' && c < 0xd800)
            continue;
        const char* replacement = nullptr;
        int replaced = 1;
        switch (c) {
        case '<':
            replacement = "&lt;";
            break;
        case '>':
            // Plain, but for the end mark of a CDATA section.
            if (i >= 2 && data[i - 1] == QLatin1Char(']') && data[i - 2] == QLatin1Char(']'))
                replacement = "&gt;";
            break;
        case '&':
            replacement = "&amp;";
            break;
        case '"':
            if (inAttribute)
                replacement = "&quot;";
            break;
        case '\n':
            if (inAttribute)
                replacement = "&#xa;";
            break;
        case '\t':
            if (inAttribute)
                replacement = "&#x9;";
            break;
        case '\r':
            replacement = "&#xd;";
            break;
        default:
            if (!isWritable(data, i, length))
                replacement = "";
            else if (data[i].isHighSurrogate())
                ++i;
            break;
        }
        if (replacement != nullptr) {
            out.append(data + plainFrom, i - plainFrom);
            out += QLatin1String(replacement);
            plainFrom = i + replaced;
        }
    }
    out.append(data + plainFrom, length - plainFrom);
}
} // namespace

int zoHPCDocumentWriter::findUnwritable(const QString& text)
{
    for (int i = 0; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        const bool isBlank = c == '\n' || c == '\t' || c == '\r';
        if (!isBlank && !isWritable(text.constData(), i, text.size()))
            return i;
        if (text.at(i).isHighSurrogate())
            ++i;
    }
    return -1;
}

void zoHPCDocumentWriter::openElement(const QString& tag)
{
    beginNode(false);
    m_text += QLatin1Char('<');
    m_text += tag;
    m_tags.append(tag);
    m_tagIsOpen = true;
}

void zoHPCDocumentWriter::addAttribute(const QString& name, const QString& value)
{
    if (!isName(name)) {
        zoLog::error(
            "%s", qUtf8Printable(QCoreApplication::translate(
                                     "zoHPCDocumentWriter",
                                     "Attribute '%1' of '%2' is left out of the document: not an XML name.")
                                     .arg(name, m_tags.last())));
        return;
    }
    m_text += QLatin1Char(' ');
    m_text += name;
    m_text += QLatin1String("=\"");
    appendEscaped(m_text, value, true);
    m_text += QLatin1Char('"');
}

void zoHPCDocumentWriter::addText(const QString& text)
{
    beginNode(true);
    appendEscaped(m_text, text, false);
    m_isAfterText = true;
}

void zoHPCDocumentWriter::addSection(const QString& text)
{
    beginNode(true);
    m_text += QLatin1String("<![CDATA[") + text + QLatin1String("]]>");
    m_isAfterText = true;
}

void zoHPCDocumentWriter::addComment(const QString& text)
{
    beginNode(false);
    m_text += QLatin1String("<!--") + text + QLatin1String("-->");
    m_lineIsDue = true;
}

void zoHPCDocumentWriter::closeElement()
{
    const QString tag = m_tags.takeLast();
    if (m_tagIsOpen) {
        m_text += QLatin1String("/>");
    } else {
        if (m_lineIsDue)
            endLine();
        if (!m_isAfterText)
            indent();
        m_text += QLatin1String("</");
        m_text += tag;
        m_text += QLatin1Char('>');
    }
    m_tagIsOpen = false;
    m_lineIsDue = true;
    m_isAfterText = false;
}

QString zoHPCDocumentWriter::takeText()
{
    if (m_lineIsDue)
        endLine();
    m_lineIsDue = false;
    return std::move(m_text);
}

// Ends what stands before a node: the start tag around it, or the line of the node before it. Text stands
// where it is, without line ends or blanks around it that would become part of it.
void zoHPCDocumentWriter::beginNode(bool isText)
{
    if (m_tagIsOpen)
        m_text += QLatin1Char('>');
    if (!isText && (m_tagIsOpen || m_lineIsDue))
        endLine();
    if (!isText && !m_isAfterText)
        indent();
    m_tagIsOpen = false;
    m_lineIsDue = false;
    m_isAfterText = false;
}

void zoHPCDocumentWriter::endLine()
{
    if (m_hasLines)
        m_text += QLatin1Char('\n');
}

void zoHPCDocumentWriter::indent()
{
    if (!m_hasLines)
        return;
    const int blanks = m_tags.size() * Indent;
    while (m_blanks.size() < blanks)
        m_blanks += QLatin1String("                                ");
    m_text.append(m_blanks.constData(), blanks);
}
