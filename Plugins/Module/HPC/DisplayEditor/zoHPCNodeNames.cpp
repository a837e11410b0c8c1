#include "zoHPCNodeNames.h"

#include "zoHPCHostIcon.h"
#include "zoHPCLayout.h"
#include "zoHPCTreeItem.h"
#include "zoText.h"

#include <QIcon>

zoHPCNodeNames::zoHPCNodeNames(QObject* parent) : QStringListModel(parent) {}

zoHPCNodeNames::~zoHPCNodeNames() = default;

QVariant zoHPCNodeNames::data(const QModelIndex& index, int role) const
{
    if (!m_source ||
        (role != Qt::DecorationRole && role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole))
        return QStringListModel::data(index, role);
    readLayout();
    const QString name = index.data().toString();
    if (role != Qt::DecorationRole)
        return mark(name);
    const int kind = m_used.contains(name)       ? zoHPCHostIcon::DisplayNode
                     : m_gateways.contains(name) ? zoHPCHostIcon::Network
                                                 : zoHPCHostIcon::Node;
    return zoHPCHostIcon::icon(kind, true, false, false, false);
}

QString zoHPCNodeNames::mark(const QString& name) const
{
    QStringList words;
    if (m_used.contains(name))
        words << tr("has a window");
    if (m_gateways.contains(name))
        words << tr("gateway");
    return words.join(zoText(", "));
}

void zoHPCNodeNames::readLayout() const
{
    const std::shared_ptr<const zoHPCLayout> layout = m_source();
    if (layout == nullptr || layout == m_layout.lock())
        return;
    m_layout = layout;
    m_used.clear();
    m_gateways.clear();
    for (const zoHPCLayout::Window& window : layout->windows())
        m_used.insert(window.node);
    for (const zoHPCLayout::Node& node : layout->nodes()) {
        if (node.item->childCount() > 0)
            m_gateways.insert(node.name);
    }
}
