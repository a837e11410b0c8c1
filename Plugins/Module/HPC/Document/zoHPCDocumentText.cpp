#include "zoHPCDocumentText.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCHostsSection.h"
#include "zoHPCTreeDepth.h"

#include <QDomDocument>
#include <QHash>
#include <QVarLengthArray>
#include <QXmlStreamReader>

#include <zoClusterTags.h>
#include <zoLog.h>

#include <algorithm>
#include <limits>
#include <map>

namespace
{
constexpr int LargestDepth = 30000; // the parser's time grows with the square of the depth

// What there is to know about one kind of element.
struct TagRules
{
    QHash<QString, int> ranks; // place of an attribute
    bool emptyIsMissing = false;
};

// Each section knows the order of its attributes.
TagRules makeRules(const QString& tag, bool keepEmpty)
{
    TagRules rules;
    QStringList order = zoHPCDisplaySetup::attributeOrder(tag);
    // Readers of the display section take an empty attribute for a missing one. Written, it would be gone after
    // the next load and save, and the file would change although nobody changed it.
    rules.emptyIsMissing = !keepEmpty && !order.isEmpty();
    if (order.isEmpty())
        order = zoHPCHostsSection::attributeOrder(tag);
    if (tag == zoClusterTags::Cluster)
        order = QStringList{zoClusterTags::VersionAttribute, zoClusterTags::BookingAttribute};
    for (const QString& name : qAsConst(order))
        rules.ranks.insert(name, rules.ranks.size());
    return rules;
}

// Writes nodes of a document in the order of the text form.
class NodeWriter final
{
public:
    NodeWriter(zoHPCDocumentWriter& writer, bool keepEmpty) : m_writer(writer), m_keepEmpty(keepEmpty) {}

    // The node and its following siblings. Walks without recursion: forwarding networks may nest thousands of
    // levels deep.
    void write(QDomNode node)
    {
        int depth = 0;
        while (!node.isNull()) {
            const QDomNode child = open(node);
            if (!child.isNull()) {
                ++depth;
                node = child;
                continue;
            }
            if (node.isElement())
                m_writer.closeElement();
            QDomNode next = node.nextSibling();
            while (next.isNull() && depth > 0) {
                --depth;
                node = node.parentNode();
                m_writer.closeElement();
                next = node.nextSibling();
            }
            node = next;
        }
    }

private:
    // Writes a node up to its children, and returns the first of them.
    QDomNode open(const QDomNode& node)
    {
        switch (node.nodeType()) {
        case QDomNode::ElementNode:
            break;
        case QDomNode::TextNode:
            m_writer.addText(node.nodeValue());
            return {};
        case QDomNode::CDATASectionNode:
            m_writer.addSection(node.nodeValue());
            return {};
        case QDomNode::CommentNode:
            m_writer.addComment(node.nodeValue());
            return {};
        default:
            return {}; // declarations carry nothing of a configuration
        }
        const QString tag = node.nodeName();
        m_writer.openElement(tag);
        writeAttributes(tag, node.attributes());
        return node.firstChild();
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
        const TagRules& rules = rulesOf(tag);
        for (int i = 0; i < count; ++i) {
            const QDomNode attribute = map.item(i);
            const QString value = attribute.nodeValue();
            if (rules.emptyIsMissing && value.isEmpty())
                continue;
            const QString name = attribute.nodeName();
            const int rank = count > 1 ? rules.ranks.value(name, std::numeric_limits<int>::max()) : 0;
            attributes.append({rank, name, value});
        }
        if (count > 1)
            std::sort(attributes.begin(), attributes.end(), [](const Attribute& a, const Attribute& b) {
                return a.rank != b.rank ? a.rank < b.rank : a.name < b.name;
            });
        for (const Attribute& attribute : attributes)
            m_writer.addAttribute(attribute.name, attribute.value);
    }

    const TagRules& rulesOf(const QString& tag)
    {
        if (m_lastRules == nullptr || m_lastTag != tag) {
            auto it = m_rules.find(tag);
            if (it == m_rules.end())
                it = m_rules.emplace(tag, makeRules(tag, m_keepEmpty)).first;
            m_lastTag = tag;
            m_lastRules = &it->second;
        }
        return *m_lastRules;
    }

    zoHPCDocumentWriter& m_writer;
    bool m_keepEmpty;
    std::map<QString, TagRules> m_rules; // its entries stay where they are
    QString m_lastTag;
    const TagRules* m_lastRules = nullptr;
};

// Finds where the nesting of elements exceeds `limit`; -1 when it does not. Only counts: whether the text is
// well-formed is the parser's to say.
int tooDeepAt(const QString& text, int limit)
{
    int depth = 0;
    const int length = text.size();
    const QChar* const data = text.constData();
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
            ushort quote = 0;
            for (++i; i < length; ++i) {
                const ushort inTag = data[i].unicode();
                if (quote != 0) {
                    if (inTag == quote)
                        quote = 0;
                } else if (inTag == '"' || inTag == '\'')
                    quote = inTag;
                else if (inTag == '>')
                    break;
            }
            if (data[i - 1] != QLatin1Char('/') && ++depth > limit)
                return start;
        }
        i = text.indexOf(QLatin1Char('<'), i);
    }
    return -1;
}
} // namespace

QString zoHPCDocumentText::toText(const QDomDocument& document, EmptyAttributes emptyAttributes)
{
    zoHPCDocumentWriter writer;
    NodeWriter(writer, emptyAttributes == EmptyAttributes::Keep).write(document.firstChild());
    return writer.takeText();
}

void zoHPCDocumentText::appendChildren(const QDomElement& element, zoHPCDocumentWriter& writer)
{
    NodeWriter(writer, false).write(element.firstChild());
}

bool zoHPCDocumentText::parse(const QString& text, QDomDocument& document)
{
    Refusal refusal;
    if (parse(text, document, refusal))
        return true;
    if (!refusal.reason.isEmpty())
        zoLog::error(
            tr("Cluster config line %1, column %2: %3")
                .arg(QString::number(refusal.line), QString::number(refusal.column), refusal.reason));
    return false;
}

bool zoHPCDocumentText::parse(const QString& text, QDomDocument& document, Refusal& refusal)
{
    document = QDomDocument();
    refusal = Refusal();
    if (text.isEmpty())
        return false;

    const int tooDeep = tooDeepAt(text, maximumDepth());
    if (tooDeep >= 0) {
        refusal.line = text.leftRef(tooDeep).count(QLatin1Char('\n')) + 1;
        refusal.column = tooDeep - text.lastIndexOf(QLatin1Char('\n'), tooDeep);
        refusal.reason = tr("more than %1 elements are nested").arg(maximumDepth());
        return false;
    }

    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false); // a colon in a name is just a character: no prefix is declared
    QDomDocument parsed;
    // What stood before an error is not used: half a configuration is worse than none.
    if (!parsed.setContent(&reader, false, &refusal.reason, &refusal.line, &refusal.column)) {
        ++refusal.column; // the reader counts from 0
        return false;
    }
    document = parsed;
    return true;
}

int zoHPCDocumentText::maximumDepth()
{
    // No deeper than the tree that the document becomes: a document is refused as a whole or read as a whole.
    return std::min(zoHPCTreeDepth::limit(), LargestDepth);
}
