#include "zoHPCTreeRow.h"

#include "zoHPCHostIcon.h"
#include "zoHPCTreeContext.h"
#include "zoText.h"

#include <QBrush>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QStringList>

static_assert(sizeof(void*) != 8 || sizeof(zoHPCTreeRow) <= sizeof(QTreeWidgetItem) + sizeof(void*),
              "the bits lie in the padding of the base class");

zoHPCTreeRow::zoHPCTreeRow(zoHPCTreeContext* context)
    : m_lookTaken(0)
    , m_lookHasIcon(0)
    , m_lookKind(0)
    , m_lookEnabled(0)
    , m_lookRunning(0)
    , m_lookEncrypted(0)
    , m_lookNoRender(0)
    , m_ownIcon(0)
    , m_ownColour(0)
    , m_uniqueName(UniqueNameEmpty)
    , m_flags(0)
    , m_context(context)
{
}

QVariant zoHPCTreeRow::data(int column, int role) const
{
    if (column == 0 && m_lookTaken) {
        if (role == Qt::DecorationRole && m_lookHasIcon && !m_ownIcon)
            return zoHPCHostIcon::icon(m_lookKind, m_lookEnabled, m_lookRunning, m_lookEncrypted,
                                       m_lookNoRender);
        if (role == Qt::ForegroundRole && !m_ownColour) {
            const QPalette palette = m_context ? m_context->palette() : QGuiApplication::palette();
            return palette.brush(m_lookEnabled ? QPalette::Text : QPalette::Light);
        }
        if (role == Qt::AccessibleDescriptionRole || role == Qt::ToolTipRole) {
            const QString state = stateText();
            const bool isTip = role == Qt::ToolTipRole && !state.isEmpty();
            return isTip ? QString(text(0) + zoText(": ") + state) : state;
        }
    }
    return QTreeWidgetItem::data(column, role);
}

QString zoHPCTreeRow::stateText() const
{
    QStringList words;
    const auto add = [&words](bool is, const char* word) {
        if (is)
            words << QCoreApplication::translate("zoHPCTreeGUIW", word); // the view's words
    };
    if (!m_lookTaken)
        return {};
    add(!m_lookEnabled, QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "disabled"));
    if (m_lookHasIcon) {
        add(m_lookRunning, QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "running"));
        add(m_lookKind == zoHPCHostIcon::DisplayNode, QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "display"));
        add(m_lookEnabled && m_lookEncrypted, QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "encrypted"));
        add(m_lookEnabled && m_lookNoRender, QT_TRANSLATE_NOOP("zoHPCTreeGUIW", "not for raytracing"));
    }
    return words.join(zoText(", "));
}

void zoHPCTreeRow::setData(int column, int role, const QVariant& value)
{
    if (column == 0 && role == Qt::DecorationRole)
        m_ownIcon = 1;
    else if (column == 0 && role == Qt::ForegroundRole)
        m_ownColour = 1;
    QTreeWidgetItem::setData(column, role, value);
}

bool zoHPCTreeRow::takeLook(const Look& look)
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
