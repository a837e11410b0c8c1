#include "zoHPCDisplayItem.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QIcon>

#include <memory>

zoHPCDisplayItem::zoHPCDisplayItem()
{
    setData(Text, Qt::DecorationRole, QIcon());
    setDouble(EyeSeparation, 65.0);
    setString(Camera, QString::fromLatin1(""));
    setString(User, QString::fromLatin1("1"));
    setBool(HardwareSync, false);
    zoHPCDisplayItem::update();
}

zoHPCDisplayItem::~zoHPCDisplayItem() = default;

double zoHPCDisplayItem::getEyeSeparation() const
{
    return getDouble(EyeSeparation);
}

QString zoHPCDisplayItem::getCameraName() const
{
    return getString(Camera);
}

void zoHPCDisplayItem::setEyeSeparation(double separation)
{
    setDouble(EyeSeparation, separation);
}

void zoHPCDisplayItem::update()
{
    // Displays have no number; the blank before its place stays.
    setString(Text, tr("Display %1").arg(QString()));
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCDisplayItem::getColumns() const
{
    return columns();
}

zoHPCDisplayItem* zoHPCDisplayItem::clone()
{
    QDomDocument document;
    auto copy = std::make_unique<zoHPCDisplayItem>();
    copy->fromXML(toXML(document, zoClusterTags::Display));
    return copy.release();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCDisplayItem::columns()
{
    static const ColumnMap map{{EyeSeparation, QString::fromLatin1("eyeseparation")},
                               {Camera, QString::fromLatin1("camera")},
                               {User, QString::fromLatin1("user")},
                               {HardwareSync, QString::fromLatin1("hardwaresync")}};
    return map;
}
