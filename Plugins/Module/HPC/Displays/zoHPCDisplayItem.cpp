#include "zoHPCDisplayItem.h"

#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>
#include <zoLog.h>

#include <QDomDocument>
#include <QIcon>
#include <QVector>

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

QDomElement zoHPCDisplayItem::toXML(QDomDocument& document, const QString& tagName) const
{
    QDomElement element = zoHPCTreeWidgetItem::toXML(document, tagName);
    const QList<zoHPCWindowItem*> windows = children<zoHPCWindowItem>();
    for (const zoHPCWindowItem* window : windows) {
        if (window)
            element.appendChild(window->toXML(document, zoClusterTags::Window));
    }
    return element;
}

void zoHPCDisplayItem::fromXML(const QDomElement& element)
{
    zoHPCTreeWidgetItem::fromXML(element);

    // Each viewport goes to all windows around it. One walk for all windows: they may be nested.
    struct WindowElement
    {
        QDomElement element;
        QList<QDomElement> viewports;
    };
    QVector<WindowElement> found;
    QVector<int> around; // places in `found` of the windows around the current element
    int viewports = 0;
    walk(
        element,
        [&](const QDomElement& entered) {
            if (entered.tagName() == zoClusterTags::Window) {
                around.append(found.size());
                found.append({entered, {}});
            } else if (entered.tagName() == zoClusterTags::Viewport) {
                viewports += around.size();
                if (viewports > MaximumViewports)
                    return false;
                for (const int place : qAsConst(around))
                    found[place].viewports.append(entered);
            }
            return true;
        },
        [&](const QDomElement& left) {
            if (left.tagName() == zoClusterTags::Window)
                around.removeLast();
        });
    if (viewports > MaximumViewports) {
        zoLog::error(
            tr("A display with more than %1 viewports in its windows is not loaded.").arg(MaximumViewports));
        return;
    }

    QList<QTreeWidgetItem*> windows;
    windows.reserve(found.size());
    for (const WindowElement& one : qAsConst(found)) {
        auto window = std::make_unique<zoHPCWindowItem>();
        window->fromElements(one.element, one.viewports);
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
