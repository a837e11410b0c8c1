#include "zoHPCDocumentText.h"

#include "zoHPC.h"
#include "zoHPCDisplayGUII.h"

#include <QDomDocument>
#include <QHash>
#include <QVarLengthArray>
#include <QVector>
#include <QXmlStreamReader>

#include <zoLog.h>

#include <algorithm>
#include <limits>

#include <sys/resource.h>

namespace
{
constexpr int s_indent = 1; // blanks per level

// The DOM tears down one level of elements in less than 100 bytes of stack; the rest is margin for callers
// and for instrumented builds.
constexpr rlim_t s_stackPerLevel = 256;
constexpr int s_largestDepth = 30000; // the parser's time grows with the square of the depth

bool isNameStart(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_') || c == QLatin1Char(':');
}

bool isName(const QString& text)
{
    if (text.isEmpty() || !isNameStart(text.at(0)))
        return false;
    return std::all_of(text.cbegin() + 1, text.cend(), [](QChar c) {
        return isNameStart(c) || c.isDigit() || c == QLatin1Char('-') || c == QLatin1Char('.');
    });
}

// Readers of the display section take an empty attribute for a missing one. Written, it would be gone after
// the next load and save, and the file would change although nobody changed it.
bool isDisplayElement(const QString& tag)
{
    return tag == QLatin1String("projection") || tag == QLatin1String("display") ||
           tag == QLatin1String("window") || tag == QLatin1String("viewport");
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
            if (c < 0x20 || c >= 0xfffe || data[i].isLowSurrogate())
                replacement = "";
            else if (data[i].isHighSurrogate()) {
                if (i + 1 < length && data[i + 1].isLowSurrogate())
                    ++i;
                else
                    replacement = "";
            }
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

// Where the attributes of one kind of element stand.
using Ranks = QHash<QString, int>;

Ranks ranksOf(const QStringList& order)
{
    Ranks ranks;
    for (const QString& name : order)
        ranks.insert(name, ranks.size());
    return ranks;
}

class Writer final
{
public:
    Writer(QStringList (*attributeOrder)(const QString&), bool keepEmpty)
        : m_attributeOrder(attributeOrder), m_keepEmpty(keepEmpty)
    {
    }

    // Walks without recursion: forwarding networks may nest thousands of levels deep.
    QString write(const QDomDocument& document)
    {
        QDomNode node = document.firstChild();
        while (!node.isNull()) {
            open(node);
            QDomNode child = node.firstChild();
            if (!child.isNull()) {
                ++m_depth;
                node = child;
                continue;
            }
            for (;;) {
                QDomNode next = node.nextSibling();
                if (!next.isNull()) {
                    node = next;
                    break;
                }
                node = node.parentNode();
                if (node.isNull() || m_depth == 0)
                    return std::move(m_out);
                --m_depth;
                close(node);
            }
        }
        return std::move(m_out);
    }

private:
    static bool isText(const QDomNode& node) { return node.isText() || node.isCDATASection(); }

    void indent() { m_out.append(QString(m_depth * s_indent, QLatin1Char(' '))); }

    void endLine(const QDomNode& node)
    {
        if (!isText(node.nextSibling()))
            m_out += QLatin1Char('\n');
    }

    void open(const QDomNode& node)
    {
        switch (node.nodeType()) {
        case QDomNode::ElementNode:
            break;
        case QDomNode::TextNode:
            appendEscaped(m_out, node.nodeValue(), false);
            return;
        case QDomNode::CDATASectionNode:
            m_out += QLatin1String("<![CDATA[") + node.nodeValue() + QLatin1String("]]>");
            return;
        case QDomNode::CommentNode:
            if (!isText(node.previousSibling()))
                indent();
            m_out += QLatin1String("<!--") + node.nodeValue() + QLatin1String("-->");
            endLine(node);
            return;
        default:
            return; // declarations carry nothing of a configuration
        }

        if (!isText(node.previousSibling()))
            indent();
        m_out += QLatin1Char('<');
        const QString tag = node.nodeName();
        m_out += tag;
        writeAttributes(tag, node.attributes());
        const QDomNode child = node.firstChild();
        if (child.isNull()) {
            m_out += QLatin1String("/>");
            endLine(node);
        } else {
            m_out += QLatin1Char('>');
            if (!isText(child))
                m_out += QLatin1Char('\n');
        }
    }

    void close(const QDomNode& node)
    {
        if (!isText(node.lastChild()))
            indent();
        m_out += QLatin1String("</") + node.nodeName() + QLatin1Char('>');
        endLine(node);
    }

    void writeAttributes(const QString& tag, const QDomNamedNodeMap& map)
    {
        const int count = map.count();
        if (count == 0)
            return;
        struct Attribute
        {
            int rank;
            QString name;
            QString value;
        };
        QVarLengthArray<Attribute, 40> attributes;
        const bool emptyIsMissing = !m_keepEmpty && isDisplayElement(tag);
        const Ranks* ranks = count > 1 ? &ranksFor(tag) : nullptr;
        for (int i = 0; i < count; ++i) {
            const QDomNode attribute = map.item(i);
            const QString name = attribute.nodeName();
            const QString value = attribute.nodeValue();
            if (emptyIsMissing && value.isEmpty())
                continue;
            if (!isName(name)) {
                zoLog::error("Attribute '%s' of '%s' is left out of the document: not an XML name.",
                             name.toUtf8().constData(), tag.toUtf8().constData());
                continue;
            }
            const int rank = ranks != nullptr ? ranks->value(name, std::numeric_limits<int>::max()) : 0;
            attributes.append({rank, name, value});
        }
        std::sort(attributes.begin(), attributes.end(), [](const Attribute& a, const Attribute& b) {
            return a.rank != b.rank ? a.rank < b.rank : a.name < b.name;
        });
        for (const Attribute& attribute : attributes) {
            m_out += QLatin1Char(' ');
            m_out += attribute.name;
            m_out += QLatin1String("=\"");
            appendEscaped(m_out, attribute.value, true);
            m_out += QLatin1Char('"');
        }
    }

    const Ranks& ranksFor(const QString& tag)
    {
        auto it = m_ranks.find(tag);
        if (it == m_ranks.end())
            it = m_ranks.insert(tag, ranksOf(m_attributeOrder(tag)));
        return it.value();
    }

    QStringList (*m_attributeOrder)(const QString&);
    bool m_keepEmpty;
    QHash<QString, Ranks> m_ranks;
    QString m_out;
    int m_depth = 0;
};

// Finds where the nesting of elements exceeds `limit`; -1 when it does not. Only counts: whether the text is
// well-formed is the parser's to say.
int tooDeepAt(const QString& text, int limit)
{
    int depth = 0;
    const int length = text.size();
    const auto skipPast = [&text, length](int from, QLatin1String end) {
        const int at = text.indexOf(end, from);
        return at < 0 ? length : at + end.size();
    };
    int i = text.indexOf(QLatin1Char('<'));
    while (i >= 0 && i + 1 < length) {
        const QChar c = text.at(i + 1);
        if (c == QLatin1Char('/')) {
            --depth;
            i += 2;
        } else if (c == QLatin1Char('?'))
            i = skipPast(i + 2, QLatin1String("?>"));
        else if (c == QLatin1Char('!')) {
            const QStringRef rest = text.midRef(i, 9);
            if (rest.startsWith(QLatin1String("<!--")))
                i = skipPast(i + 4, QLatin1String("-->"));
            else if (rest == QLatin1String("<![CDATA["))
                i = skipPast(i + 9, QLatin1String("]]>"));
            else
                i += 2;
        } else {
            const int start = i;
            QChar quote;
            for (++i; i < length; ++i) {
                const QChar inTag = text.at(i);
                if (!quote.isNull()) {
                    if (inTag == quote)
                        quote = QChar();
                } else if (inTag == QLatin1Char('"') || inTag == QLatin1Char('\''))
                    quote = inTag;
                else if (inTag == QLatin1Char('>'))
                    break;
            }
            if (text.at(std::min(i, length) - 1) != QLatin1Char('/') && ++depth > limit)
                return start;
        }
        i = text.indexOf(QLatin1Char('<'), i);
    }
    return -1;
}

void logRefusal(int line, int column, const QString& reason)
{
    zoLog::error("Cluster config line %d, column %d: %s", line, column, reason.toUtf8().constData());
}
} // namespace

QString zoHPCDocumentText::toText(const QDomDocument& document, EmptyAttributes emptyAttributes)
{
    return Writer(&zoHPCDocumentText::attributeOrder, emptyAttributes == EmptyAttributes::Keep)
        .write(document);
}

bool zoHPCDocumentText::parse(const QString& text, QDomDocument& document)
{
    document = QDomDocument();
    if (text.isEmpty())
        return false;

    const int tooDeep = tooDeepAt(text, maximumDepth());
    if (tooDeep >= 0) {
        const int line = text.leftRef(tooDeep).count(QLatin1Char('\n')) + 1;
        const int column = tooDeep - text.lastIndexOf(QLatin1Char('\n'), tooDeep);
        logRefusal(line, column, QStringLiteral("more than %1 elements are nested").arg(maximumDepth()));
        return false;
    }

    QXmlStreamReader reader(text);
    QString reason;
    int line = 0;
    int column = 0;
    QDomDocument parsed;
    if (!parsed.setContent(&reader, false, &reason, &line, &column)) {
        // What stood before the error is not used: half a configuration is worse than none.
        logRefusal(line, column, reason);
        return false;
    }
    document = parsed;
    return true;
}

int zoHPCDocumentText::maximumDepth()
{
    rlimit stack{};
    if (getrlimit(RLIMIT_STACK, &stack) != 0 || stack.rlim_cur == RLIM_INFINITY)
        return s_largestDepth;
    return int(std::min<rlim_t>(stack.rlim_cur / s_stackPerLevel, s_largestDepth));
}

QStringList zoHPCDocumentText::attributeOrder(const QString& tag)
{
    if (tag == QLatin1String("cluster"))
        return {QStringLiteral("version"), QStringLiteral("booking")};
    if (tag == QLatin1String("master") || tag == QLatin1String("network") || tag == QLatin1String("node"))
        return {QStringLiteral("name"), zoHPCOption::NodesFile};
    return zoHPCDisplayGUII::attributeOrder(tag);
}
