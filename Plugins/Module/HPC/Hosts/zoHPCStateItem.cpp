#include "zoHPCStateItem.h"

#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"

#include <QApplication>
#include <QBrush>
#include <QIcon>
#include <QPalette>

zoHPCStateItem::zoHPCStateItem(zoHPCTreeGUIW* tree)
    : m_lookTaken(0)
    , m_lookHasIcon(0)
    , m_lookKind(0)
    , m_lookEnabled(0)
    , m_lookRunning(0)
    , m_lookEncrypted(0)
    , m_lookNoRender(0)
    , m_ownIcon(0)
    , m_ownColour(0)
    , m_isMaster(0)
    , m_isNetwork(0)
    , m_isNode(0)
    , m_isRunning(0)
    , m_isDisplayNode(0)
    , m_uniqueNameIs(0)
    , m_isBuried(0)
    , m_isEdited(0)
    , m_lookDue(0)
    , m_lookDueBelow(0)
    , m_tree(tree)
{
}

QVariant zoHPCStateItem::data(int column, int role) const
{
    if (column == 0 && m_lookTaken) {
        if (role == Qt::DecorationRole && m_lookHasIcon && !m_ownIcon)
            return zoHPCTreeItem::getIcon(m_lookKind, m_lookEnabled, m_lookRunning, m_lookEncrypted,
                                          m_lookNoRender);
        if (role == Qt::ForegroundRole && !m_ownColour) {
            const QPalette palette = m_tree ? m_tree->palette() : QApplication::palette();
            return palette.brush(m_lookEnabled ? QPalette::Text : QPalette::Light);
        }
    }
    return QTreeWidgetItem::data(column, role);
}

void zoHPCStateItem::setData(int column, int role, const QVariant& value)
{
    if (column == 0 && role == Qt::DecorationRole)
        m_ownIcon = 1;
    else if (column == 0 && role == Qt::ForegroundRole)
        m_ownColour = 1;
    QTreeWidgetItem::setData(column, role, value);
}

bool zoHPCStateItem::takeLook(const Look& look)
{
    bool changed = !m_lookTaken || m_lookEnabled != look.enabled;
    if (look.hasIcon)
        changed = changed || !m_lookHasIcon || int(m_lookKind) != look.kind ||
                  m_lookRunning != look.running || m_lookEncrypted != look.encrypted ||
                  m_lookNoRender != look.noRender;
    m_lookTaken = 1;
    m_lookEnabled = look.enabled;
    // Without a picture of its own kind a row keeps the last one, as it would keep an icon that was set.
    if (look.hasIcon) {
        m_lookHasIcon = 1;
        m_lookKind = quint32(look.kind);
        m_lookRunning = look.running;
        m_lookEncrypted = look.encrypted;
        m_lookNoRender = look.noRender;
    }

    if (m_ownColour) {
        m_ownColour = 0;
        changed = true;
        QTreeWidgetItem::setData(0, Qt::ForegroundRole, QVariant());
    }
    if (m_ownIcon && look.hasIcon) {
        m_ownIcon = 0;
        changed = true;
        QTreeWidgetItem::setData(0, Qt::DecorationRole, QVariant());
    }
    return changed;
}
