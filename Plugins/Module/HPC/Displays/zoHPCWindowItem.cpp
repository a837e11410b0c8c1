#include "zoHPCWindowItem.h"

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
