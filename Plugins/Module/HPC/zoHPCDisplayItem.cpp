#include "zoHPCDisplayItem.h"

#include "zoHPCWindowItem.h"

#include <zoLog.h>

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
    // Displays bear no number; the blank before its place stays.
    setString(Text, tr("Display %1").arg(QString()));
}

QDomElement zoHPCDisplayItem::toXML(QDomDocument& document, const QString& tagName) const
{
    QDomElement element = zoHPCTreeWidgetItem::toXML(document, tagName);
    const QList<zoHPCWindowItem*> windows = children<zoHPCWindowItem>();
    for (const zoHPCWindowItem* window : windows) {
        if (window)
            element.appendChild(window->toXML(document, QString::fromLatin1("window")));
    }
    return element;
}

void zoHPCDisplayItem::fromXML(const QDomElement& element)
{
    zoHPCTreeWidgetItem::fromXML(element);

    if (countViewports(element) > MaximumViewports) {
        zoLog::error("A display with more than %d viewports in its windows is not loaded.", MaximumViewports);
        return;
    }
    QList<QTreeWidgetItem*> windows;
    const QList<QDomElement> elements = descendants(element, QString::fromLatin1("window"));
    windows.reserve(elements.size());
    for (const QDomElement& windowElement : elements) {
        auto window = std::make_unique<zoHPCWindowItem>();
        window->fromXML(windowElement);
        windows.append(window.release());
    }
    addChildren(windows);
    update();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCDisplayItem::getColumns() const
{
    return columns();
}

zoHPCDisplayItem* zoHPCDisplayItem::clone()
{
    QDomDocument document;
    auto copy = std::make_unique<zoHPCDisplayItem>();
    copy->fromXML(toXML(document, QString::fromLatin1("display")));
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

qint64 zoHPCDisplayItem::countViewports(const QDomElement& element)
{
    qint64 count = 0;
    const QList<QDomElement> viewports = descendants(element, QString::fromLatin1("viewport"));
    for (const QDomElement& viewport : viewports) {
        for (QDomNode above = viewport.parentNode(); above != element && !above.isNull();
             above = above.parentNode()) {
            if (above.nodeName() == QLatin1String("window"))
                ++count;
        }
    }
    return count;
}
