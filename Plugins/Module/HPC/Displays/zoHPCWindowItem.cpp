#include "zoHPCWindowItem.h"

#include "zoHPCViewportItem.h"

#include <zoClusterTags.h>
#include <zoIconManager.h>

#include <QBrush>
#include <QColor>
#include <QDomDocument>
#include <QIcon>

#include <memory>

zoHPCWindowItem::zoHPCWindowItem()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/DisplayOnNormal.svg"), QString());
    setData(Text, Qt::DecorationRole, icon);
    setString(Node, QString::fromLatin1(""));
    setString(Screen, QString::fromLatin1("0"));
    setInt(X, 0);
    setInt(Y, 0);
    setInt(Width, 1280);
    setInt(Height, 1024);
    setBool(FullScreen, true);
    zoHPCWindowItem::update();
}

zoHPCWindowItem::~zoHPCWindowItem() = default;

QString zoHPCWindowItem::renderNode() const
{
    return getString(Node);
}

void zoHPCWindowItem::setRenderNode(const QString& node)
{
    setString(Node, node);
}

void zoHPCWindowItem::update()
{
    const QString node = renderNode();
    setLabel(tr("Window: %1").arg(node), !node.isEmpty());
}

QDomElement zoHPCWindowItem::toXML(QDomDocument& document, const QString& tagName) const
{
    // Not that of a display: a window holds viewports, no windows.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QDomElement element = zoHPCTreeWidgetItem::toXML(document, tagName); // clazy:exclude=skipped-base-method
    const QList<zoHPCViewportItem*> viewports = children<zoHPCViewportItem>();
    for (const zoHPCViewportItem* viewport : viewports) {
        if (viewport)
            element.appendChild(viewport->toXML(document, zoClusterTags::Viewport));
    }
    return element;
}

void zoHPCWindowItem::fromXML(const QDomElement& element)
{
    fromElements(element, descendants(element, zoClusterTags::Viewport));
}

void zoHPCWindowItem::fromElements(const QDomElement& element, const QList<QDomElement>& viewports)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    zoHPCTreeWidgetItem::fromXML(element); // clazy:exclude=skipped-base-method

    QList<QTreeWidgetItem*> items;
    items.reserve(viewports.size());
    for (const QDomElement& viewportElement : viewports) {
        auto viewport = std::make_unique<zoHPCViewportItem>();
        // Only its own attributes: a viewport inside a viewport is in the list already, and reading it for
        // both would double the rows with each level and with each save.
        viewport->zoHPCTreeWidgetItem::fromXML(viewportElement);
        items.append(viewport.release());
    }
    addChildren(items);
    update();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCWindowItem::getColumns() const
{
    return columns();
}

zoHPCWindowItem* zoHPCWindowItem::clone()
{
    QDomDocument document;
    auto copy = std::make_unique<zoHPCWindowItem>();
    copy->fromXML(toXML(document, zoClusterTags::Window));
    return copy.release();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCWindowItem::columns()
{
    static const ColumnMap map{{Node, QString::fromLatin1("node")},
                               {Screen, QString::fromLatin1("screen")},
                               {X, QString::fromLatin1("x")},
                               {Y, QString::fromLatin1("y")},
                               {Width, QString::fromLatin1("width")},
                               {Height, QString::fromLatin1("height")},
                               {FullScreen, QString::fromLatin1("fullscreen")}};
    return map;
}

void zoHPCWindowItem::setLabel(const QString& label, bool assigned)
{
    setData(Text, Qt::ForegroundRole,
            assigned ? QVariant() : QVariant(QBrush(QColor(QString::fromLatin1("#FF9900")))));
    setString(Text, label);
}
