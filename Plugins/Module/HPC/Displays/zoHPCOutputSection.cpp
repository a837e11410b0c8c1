// How displays and windows are written and read with the items below them: members of zoHPCDisplayItem and
// zoHPCWindowItem. They stand apart so that neither class has to know the ones that derive from it.

#include "zoHPCViewportItem.h"

#include <zoClusterTags.h>
#include <zoLog.h>

#include <QDomDocument>
#include <QVector>

#include <memory>

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
        zoLog::error("%s",
                     qUtf8Printable(tr("A display with more than %1 viewports in its windows is not loaded.")
                                        .arg(MaximumViewports)));
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
