#include "zoHPCDocumentText.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCHostsSection.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"

#include <QDomDocument>
#include <QHash>
#include <QVarLengthArray>

#include <zoClusterLimits.h>
#include <zoClusterTags.h>
#include <zoClusterXml.h>
#include <zoLog.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <map>

namespace
{
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
    using WriteInto = std::function<void(const QDomElement& element, zoHPCDocumentWriter& writer)>;

    NodeWriter(zoHPCDocumentWriter& writer, bool keepEmpty, const WriteInto& writeInto)
        : m_writer(writer), m_keepEmpty(keepEmpty), m_writeInto(writeInto)
    {
    }

    // The node and its following siblings. Walks without recursion: forwarding networks may nest thousands of
    // levels deep.
    void write(QDomNode node)
    {
        int depth = 0;
        while (!node.isNull()) {
            const QDomNode child = enter(node);
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
    QDomNode enter(const QDomNode& node)
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
        if (m_writeInto)
            m_writeInto(node.toElement(), m_writer);
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
    const WriteInto& m_writeInto;        // may be empty
    std::map<QString, TagRules> m_rules; // its entries stay where they are
    QString m_lastTag;
    const TagRules* m_lastRules = nullptr;
};

bool everyColumn(int)
{
    return true;
}

bool outlineColumn(int column)
{
    return column == zoHPCProjectionItem::Name || column == zoHPCProjectionItem::Type;
}

// The element of a row without those below it, to be closed by the caller.
void openRow(const zoHPCTreeWidgetItem& row, const QString& tag, zoHPCDocumentWriter& writer,
             bool (*isWritten)(int column) = everyColumn)
{
    writer.openElement(tag);
    for (const auto& [column, name] : row.getColumns()) {
        const QString value = isWritten(column) ? row.getString(column) : QString();
        if (!value.isEmpty())
            writer.addAttribute(name, value);
    }
}

// A display, window or viewport with those below it.
void writeOutput(const zoHPCTreeWidgetItem& row, const QString& tag, zoHPCDocumentWriter& writer)
{
    openRow(row, tag, writer);
    const bool isWindow = dynamic_cast<const zoHPCWindowItem*>(&row) != nullptr;
    for (int i = 0; i < row.childCount(); ++i) {
        if (isWindow) {
            if (const auto* viewport = dynamic_cast<const zoHPCViewportItem*>(row.child(i)))
                writeOutput(*viewport, zoClusterTags::Viewport, writer);
        } else if (const auto* window = dynamic_cast<const zoHPCWindowItem*>(row.child(i))) {
            writeOutput(*window, zoClusterTags::Window, writer);
        }
    }
    writer.closeElement();
}
} // namespace

QString zoHPCDocumentText::toText(const QDomDocument& document, EmptyAttributes emptyAttributes)
{
    return toText(document, emptyAttributes, {});
}

QString zoHPCDocumentText::toText(
    const QDomDocument& document, EmptyAttributes emptyAttributes,
    const std::function<void(const QDomElement& element, zoHPCDocumentWriter& writer)>& writeInto)
{
    zoHPCDocumentWriter writer;
    NodeWriter(writer, emptyAttributes == EmptyAttributes::Keep, writeInto).write(document.firstChild());
    return writer.takeText();
}

// Rows from their columns, which are in the order of the text: as nodes of a document all tiles of a large wall take a
// gigabyte.
void zoHPCDocumentText::appendDisplays(const zoHPCDisplaySetup& displays, Tiles tiles,
                                       zoHPCDocumentWriter& writer)
{
    const QString tag = zoClusterTags::Projection;
    for (int i = 0; i < displays.projectionRoot()->childCount(); ++i) {
        const auto* const projection =
            dynamic_cast<const zoHPCTreeWidgetItem*>(displays.projectionRoot()->child(i));
        if (projection == nullptr)
            continue;
        openRow(*projection, tag, writer);
        for (int j = 0; tiles != Tiles::None && j < projection->childCount(); ++j) {
            const auto* const tile = dynamic_cast<const zoHPCProjectionItem*>(projection->child(j));
            if (tile == nullptr)
                continue;
            openRow(*tile, tag, writer, tiles == Tiles::Whole ? everyColumn : outlineColumn);
            writer.closeElement();
        }
        writer.closeElement();
    }
    for (int i = 0; i < displays.displayRoot()->childCount(); ++i) {
        if (const auto* display = dynamic_cast<const zoHPCTreeWidgetItem*>(displays.displayRoot()->child(i)))
            writeOutput(*display, zoClusterTags::Display, writer);
    }
}

bool zoHPCDocumentText::parse(const QString& text, QDomDocument& document)
{
    Refusal refusal;
    if (parse(text, document, refusal))
        return true;
    if (!refusal.reason.isEmpty())
        zoLog::error("%s", qUtf8Printable(tr("Cluster config line %1, column %2: %3")
                                              .arg(QString::number(refusal.line),
                                                   QString::number(refusal.column), refusal.reason)));
    return false;
}

bool zoHPCDocumentText::parse(const QString& text, QDomDocument& document, Refusal& refusal)
{
    document = QDomDocument();
    refusal = Refusal();
    if (text.isEmpty())
        return false;

    zoClusterXml::Refusal found;
    const zoClusterXml::Outcome outcome = zoClusterXml::read(text, document, found);
    refusal = {found.line, found.column, found.reason};
    if (outcome == zoClusterXml::Outcome::TooDeep)
        refusal.reason = tr("more than %1 elements are nested").arg(maximumDepth());
    else if (outcome == zoClusterXml::Outcome::TooManyAttributes)
        refusal.reason = tr("an element has more than %1 attributes").arg(zoClusterLimits::MaximumAttributes);
    else if (outcome == zoClusterXml::Outcome::TooManyEntities)
        refusal.reason = tr("the document type declares too much");
    return outcome == zoClusterXml::Outcome::Read;
}

int zoHPCDocumentText::maximumDepth()
{
    // No deeper than the tree that the document becomes: a document is refused as a whole or read as a whole.
    return zoClusterLimits::MaximumDepth;
}
