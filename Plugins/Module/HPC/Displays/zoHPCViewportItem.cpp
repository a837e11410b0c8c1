#include "zoHPCViewportItem.h"

#include "zoHPCDisplayTables.h"

#include <zoClusterTags.h>
#include <zoIconManager.h>

#include <QDomDocument>
#include <QIcon>

#include <algorithm>
#include <memory>

zoHPCViewportItem::zoHPCViewportItem()
{
    static const QIcon icon =
        zoIconManager::getIcon(QString::fromLatin1("Iconset/ViewportOnNormal.svg"), QString());
    setData(Text, Qt::DecorationRole, icon);
    setString(ProjectionIdentifier, QString::fromLatin1(""));
    setString(Projection, QString::fromLatin1(""));
    setString(Position, QString::fromLatin1("fill"));
    setViewport(0.0, 0.0, 1.0, 1.0);
    setBool(FlipX, false);
    setBool(FlipY, false);
    setString(Eye, QString::fromLatin1("mono"));
    zoHPCViewportItem::update();
}

zoHPCViewportItem::~zoHPCViewportItem() = default;

void zoHPCViewportItem::setViewport(double x1, double y1, double x2, double y2)
{
    setDouble(X1, x1);
    setDouble(Y1, y1);
    setDouble(X2, x2);
    setDouble(Y2, y2);
}

// No viewport is so few pixels wide, so a far corner tells the two apart; one that lies only a little beyond 1 is
// a mistake in a fraction.
bool zoHPCViewportItem::isInPixels() const
{
    return std::max({getDouble(X1), getDouble(Y1), getDouble(X2), getDouble(Y2)}) > LargestFraction;
}

void zoHPCViewportItem::setProjection(const QString& name)
{
    if (name == getString(Projection))
        return;
    setString(Projection, name);
    update();
}

void zoHPCViewportItem::update()
{
    const QString projection = getString(Projection);
    const QString eye = getString(Eye);
    setLabel(tr("Viewport: %1 %2").arg(projection, zoHPCDisplayTables::isForOneEye(eye) ? eye : QString()),
             !projection.isEmpty());

    const QString position = getString(Position);
    for (const zoHPCDisplayTables::Position& preset : zoHPCDisplayTables::Positions) {
        if (preset.isPreset && position == QLatin1String(preset.value))
            setViewport(preset.x1, preset.y1, preset.x2, preset.y2);
    }
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCViewportItem::getColumns() const
{
    return columns();
}

zoHPCViewportItem* zoHPCViewportItem::clone()
{
    QDomDocument document;
    auto copy = std::make_unique<zoHPCViewportItem>();
    copy->fromXML(toXML(document, zoClusterTags::Viewport));
    return copy.release();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCViewportItem::columns()
{
    static const ColumnMap map{{Projection, QString::fromLatin1("projection")},
                               {Position, QString::fromLatin1("position")},
                               {X1, QString::fromLatin1("x1")},
                               {Y1, QString::fromLatin1("y1")},
                               {X2, QString::fromLatin1("x2")},
                               {Y2, QString::fromLatin1("y2")},
                               {FlipX, QString::fromLatin1("flipx")},
                               {FlipY, QString::fromLatin1("flipy")},
                               {Eye, QString::fromLatin1("eye")}};
    return map;
}
