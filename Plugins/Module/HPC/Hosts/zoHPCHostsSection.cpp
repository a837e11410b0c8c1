#include "zoHPCHostsSection.h"

#include <zoClusterTags.h>

#include <vector>

const QString zoHPCHostsSection::NameAttribute = zoClusterTags::NameAttribute;

namespace
{
const QString s_master = zoClusterTags::Master;
const QString s_network = zoClusterTags::Network;
const QString s_node = zoClusterTags::Node;

// Puts elements into a document.
class DocumentSink final
{
public:
    DocumentSink(QDomDocument& document, const QDomElement& parent) : m_document(document), m_open{parent} {}

    void openElement(const QString& tag)
    {
        attach();
        m_new = m_document.createElement(tag);
    }
    void addAttribute(const QString& name, const QString& value) { m_new.setAttribute(name, value); }
    void closeElement()
    {
        attach();
        m_open.pop_back();
    }

private:
    // Attributes come before the element gets a parent: the DOM looks for its document along the parents.
    void attach()
    {
        if (m_new.isNull())
            return;
        m_open.back().appendChild(m_new);
        m_open.push_back(m_new);
        m_new.clear();
    }

    QDomDocument& m_document;
    std::vector<QDomElement> m_open;
    QDomElement m_new; // in no parent yet
};
} // namespace

QString zoHPCHostsSection::tagOf(const zoHPCTreeItem& item)
{
    return item.isMaster() ? s_master : item.isNetwork() ? s_network : s_node;
}

QStringList zoHPCHostsSection::attributeOrder(const QString& tagName)
{
    if (tagName == s_master || tagName == s_network || tagName == s_node)
        return {NameAttribute, zoHPCOption::NodesFile};
    return {};
}

void zoHPCHostsSection::append(const zoHPCTreeItem* top, const QString& hostFile, QDomDocument& document,
                               QDomElement& parent)
{
    DocumentSink sink(document, parent);
    write(top, hostFile, sink);
}
