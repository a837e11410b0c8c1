#include "zoDisplayComparison.h"

#include "zoAttributeComparison.h"
#include "zoDifferences.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace
{
QString nodeAttribute()
{
    return zoHPCWindowItem::columns().at(zoHPCWindowItem::Node);
}

QString screenAttribute()
{
    return zoHPCWindowItem::columns().at(zoHPCWindowItem::Screen);
}

QString projectionAttribute()
{
    return zoHPCViewportItem::columns().at(zoHPCViewportItem::Projection);
}

QString nodeText(const QDomElement& window)
{
    const QString node = window.attribute(nodeAttribute());
    return node.isEmpty() ? QCoreApplication::translate("zoDisplayComparison", "no node") : node;
}

QString placeText(const QDomElement& window, bool withScreen)
{
    return withScreen ? QCoreApplication::translate("zoDisplayComparison", "%1 screen %2")
                            .arg(nodeText(window), window.attribute(screenAttribute()))
                      : nodeText(window);
}

bool isSamePlace(const QDomElement& window, const QDomElement& other)
{
    return window.attribute(nodeAttribute()) == other.attribute(nodeAttribute()) &&
           window.attribute(screenAttribute()) == other.attribute(screenAttribute());
}

// What the viewport shows, and for which eye.
QString viewText(const QDomElement& viewport)
{
    const QString text = zoDifferences::quoted(viewport.attribute(projectionAttribute()));
    const QString eye = viewport.attribute(zoHPCViewportItem::columns().at(zoHPCViewportItem::Eye));
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    if (eye.isEmpty() || (mode != nullptr && mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Mono))
        return text;
    return text + QCoreApplication::translate("zoDisplayComparison", " (%1)").arg(eye);
}
} // namespace

void zoDisplayComparison::compare(const QDomElement& before, const QDomElement& after)
{
    compareDisplays(before, after);
    compareWindows(windowsOf(before), windowsOf(after));
}

void zoDisplayComparison::compareDisplays(const QDomElement& before, const QDomElement& after)
{
    QDomElement from = before.firstChildElement(zoClusterTags::Display);
    QDomElement to = after.firstChildElement(zoClusterTags::Display);
    for (int number = 1; !from.isNull() || !to.isNull(); ++number) {
        if (from.isNull())
            m_differences.add(QStringLiteral("display-added"), tr("display %1: added").arg(number));
        else if (to.isNull())
            m_differences.add(QStringLiteral("display-removed"), tr("display %1: removed").arg(number));
        else
            zoAttributeComparison::compare(tr("display %1").arg(number), from, to, {}, m_differences);
        from = from.nextSiblingElement(zoClusterTags::Display);
        to = to.nextSiblingElement(zoClusterTags::Display);
    }
}

zoDisplayComparison::Windows zoDisplayComparison::windowsOf(const QDomElement& root)
{
    Windows result;
    QHash<QString, int> counts;
    int number = 0;
    for (QDomElement display = root.firstChildElement(zoClusterTags::Display); !display.isNull();
         display = display.nextSiblingElement(zoClusterTags::Display)) {
        ++number;
        for (QDomElement element = display.firstChildElement(zoClusterTags::Window); !element.isNull();
             element = element.nextSiblingElement(zoClusterTags::Window)) {
            Window window = windowOf(element, number);
            const int count = ++counts[window.key];
            window.key += QLatin1Char('\n') + QString::number(count);
            result.push_back(window);
        }
    }
    return result;
}

zoDisplayComparison::Window zoDisplayComparison::windowOf(const QDomElement& element, int display)
{
    QStringList views;
    bool isEmpty = true;
    for (QDomElement viewport = element.firstChildElement(zoClusterTags::Viewport); !viewport.isNull();
         viewport = viewport.nextSiblingElement(zoClusterTags::Viewport)) {
        isEmpty = isEmpty && viewport.attribute(projectionAttribute()).isEmpty();
        views << viewText(viewport);
    }
    if (!isEmpty)
        return {views.join(QLatin1Char('\n')), tr("tile %1").arg(views.join(QLatin1String(", "))), display,
                element};
    const QString key = QLatin1String("window ") + element.attribute(nodeAttribute()) + QLatin1Char('\n') +
                        element.attribute(screenAttribute());
    return {key, tr("window on %1").arg(nodeText(element)), display, element};
}

void zoDisplayComparison::compareWindows(const Windows& before, const Windows& after)
{
    QStringList keysBefore;
    QStringList keysAfter;
    QHash<QString, int> indices;
    for (std::size_t i = 0; i < before.size(); ++i) {
        keysBefore << before[i].key;
        indices.insert(before[i].key, int(i));
    }
    for (const Window& window : after)
        keysAfter << window.key;
    const QStringList common = zoDifferences::common(keysBefore, keysAfter);
    const QSet<QString> known(keysAfter.cbegin(), keysAfter.cend());
    Windows removed;
    std::copy_if(before.begin(), before.end(), std::back_inserter(removed),
                 [&](const Window& window) { return !known.contains(window.key); });

    for (const Window& window : after) {
        const int index = indices.value(window.key, -1);
        if (index >= 0) {
            compareWindow(before[std::size_t(index)], window);
            continue;
        }
        const auto former = std::find_if(removed.begin(), removed.end(), [&](const Window& other) {
            return other.display == window.display && isSamePlace(other.element, window.element);
        });
        if (former == removed.end()) {
            m_differences.add(QStringLiteral("window-added"), tr("window added: %1 on %2, display %3")
                                                                  .arg(window.label, nodeText(window.element),
                                                                       QString::number(window.display)));
            continue;
        }
        compareContent(*former, window);
        removed.erase(former);
    }
    for (const Window& window : removed)
        m_differences.add(QStringLiteral("window-removed"),
                          tr("window removed: %1 on %2, display %3")
                              .arg(window.label, nodeText(window.element), QString::number(window.display)));
    if (common != zoDifferences::common(keysAfter, keysBefore))
        m_differences.add(QStringLiteral("windows-reordered"), tr("the windows are in another order"));
}

void zoDisplayComparison::compareContent(const Window& before, const Window& after)
{
    compareViewports(before, after);
    zoAttributeComparison::compare(tr("window on %1").arg(nodeText(after.element)), before.element,
                                   after.element, {}, m_differences);
}

void zoDisplayComparison::compareWindow(const Window& before, const Window& after)
{
    const QString node = nodeAttribute();
    const QString screen = screenAttribute();
    const bool isOtherNode = before.element.attribute(node) != after.element.attribute(node);
    const bool isOtherScreen = before.element.attribute(screen) != after.element.attribute(screen);
    if (isOtherNode || isOtherScreen)
        m_differences.add(QStringLiteral("tile-moved"),
                          tr("%1: moved from %2 to %3")
                              .arg(after.label, placeText(before.element, isOtherScreen),
                                   placeText(after.element, isOtherScreen)));
    if (before.display != after.display)
        m_differences.add(QStringLiteral("tile-moved"), tr("%1: moved from display %2 to display %3")
                                                            .arg(after.label, QString::number(before.display),
                                                                 QString::number(after.display)));
    zoAttributeComparison::compare(after.label, before.element, after.element, {node, screen}, m_differences);
    compareViewports(before, after);
}

void zoDisplayComparison::compareViewports(const Window& before, const Window& after)
{
    const QString projection = projectionAttribute();
    QDomElement from = before.element.firstChildElement(zoClusterTags::Viewport);
    QDomElement to = after.element.firstChildElement(zoClusterTags::Viewport);
    const bool isSingle = from.nextSiblingElement(zoClusterTags::Viewport).isNull() &&
                          to.nextSiblingElement(zoClusterTags::Viewport).isNull();
    for (int number = 1; !from.isNull() || !to.isNull(); ++number) {
        const QString window = tr("window on %1").arg(nodeText(after.element));
        const QString label = isSingle ? window : tr("%1, viewport %2").arg(window, QString::number(number));
        const QString shownFrom = zoDifferences::quoted(from.attribute(projection));
        const QString shownTo = zoDifferences::quoted(to.attribute(projection));
        if (from.isNull()) {
            m_differences.add(QStringLiteral("viewport-added"), tr("%1: shows %2 too").arg(label, shownTo));
        } else if (to.isNull()) {
            m_differences.add(QStringLiteral("viewport-removed"),
                              tr("%1: does not show %2 any more").arg(label, shownFrom));
        } else {
            if (shownFrom != shownTo)
                m_differences.add(QStringLiteral("viewport-changed"),
                                  tr("%1: shows %2 instead of %3").arg(label, shownTo, shownFrom));
            zoAttributeComparison::compare(label, from, to, {projection}, m_differences);
        }
        from = from.nextSiblingElement(zoClusterTags::Viewport);
        to = to.nextSiblingElement(zoClusterTags::Viewport);
    }
}
