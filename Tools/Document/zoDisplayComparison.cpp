#include "zoDisplayComparison.h"

#include "zoAttributeComparison.h"
#include "zoAttributeValue.h"
#include "zoComparedDocument.h"
#include "zoDifferences.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoItemPaths.h"

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

bool zoDisplayComparison::isSameNode(const QDomElement& before, const QDomElement& after) const
{
    const QString name = before.attribute(nodeAttribute());
    return m_renamedNodes.value(name, name) == after.attribute(nodeAttribute());
}

// Where the window is: its display, its node, by the name that this has now, and its screen.
QString zoDisplayComparison::placeOf(const Window& window, const QHash<QString, QString>& renamedNodes)
{
    const QString node = window.element.attribute(nodeAttribute());
    return QString::number(window.display) + QLatin1Char('\n') + renamedNodes.value(node, node) +
           QLatin1Char('\n') + zoAttributeValue::meaning(window.element, screenAttribute());
}

void zoDisplayComparison::compare(const zoComparedDocument& before, const zoComparedDocument& after)
{
    compareDisplays(before, after);
    compareWindows(windowsOf(before), windowsOf(after));
}

void zoDisplayComparison::compareDisplays(const zoComparedDocument& before, const zoComparedDocument& after)
{
    QDomElement from = before.root().firstChildElement(zoClusterTags::Display);
    QDomElement to = after.root().firstChildElement(zoClusterTags::Display);
    for (int number = 1; !from.isNull() || !to.isNull(); ++number) {
        const QString path = zoItemPaths::display(number);
        if (from.isNull())
            m_differences.add(QStringLiteral("display-added"), tr("display %1: added").arg(number),
                              {{path, QJsonValue(), zoClusterTags::Cluster}});
        else if (to.isNull())
            m_differences.add(QStringLiteral("display-removed"), tr("display %1: removed").arg(number),
                              {{path, zoClusterTags::Cluster, QJsonValue()}});
        else
            zoAttributeComparison::compare(tr("display %1").arg(number), path, from, to, {}, m_differences);
        from = from.nextSiblingElement(zoClusterTags::Display);
        to = to.nextSiblingElement(zoClusterTags::Display);
    }
}

zoDisplayComparison::Windows zoDisplayComparison::windowsOf(const zoComparedDocument& document)
{
    Windows result;
    const QStringList paths = document.paths(zoClusterTags::Window);
    const QStringList viewports = document.paths(zoClusterTags::Viewport);
    int viewport = 0;
    QHash<QString, int> counts;
    int number = 0;
    for (QDomElement display = document.root().firstChildElement(zoClusterTags::Display); !display.isNull();
         display = display.nextSiblingElement(zoClusterTags::Display)) {
        ++number;
        for (QDomElement element = display.firstChildElement(zoClusterTags::Window); !element.isNull();
             element = element.nextSiblingElement(zoClusterTags::Window)) {
            Window window = windowOf(element, number);
            window.path = paths.value(int(result.size()));
            const int viewportCount = window.viewports.size();
            window.viewports = viewports.mid(viewport, viewportCount);
            viewport += viewportCount;
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
        return {views.join(QLatin1Char('\n')),
                tr("tile %1").arg(views.join(QLatin1String(", "))),
                display,
                QString(),
                views,
                element};
    const QString key = QLatin1String("window ") + element.attribute(nodeAttribute()) + QLatin1Char('\n') +
                        element.attribute(screenAttribute());
    return {key, tr("window on %1").arg(nodeText(element)), display, QString(), views, element};
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
    // What is shown no more, by its place, the last first.
    QHash<QString, std::vector<std::size_t>> vacated;
    for (std::size_t i = before.size(); i-- > 0;) {
        if (!known.contains(before[i].key))
            vacated[placeOf(before[i], m_renamedNodes)].push_back(i);
    }

    for (const Window& window : after) {
        const int index = indices.value(window.key, -1);
        if (index >= 0) {
            compareWindow(before[std::size_t(index)], window);
            continue;
        }
        std::vector<std::size_t>& former = vacated[placeOf(window, {})];
        if (former.empty()) {
            m_differences.add(
                QStringLiteral("window-added"),
                tr("window added: %1 on %2, display %3")
                    .arg(window.label, nodeText(window.element), QString::number(window.display)),
                {{window.path, QJsonValue(), zoItemPaths::display(window.display)}});
            continue;
        }
        compareContent(before[former.back()], window);
        former.pop_back();
    }
    addRemovedWindows(before, vacated);
    if (common != zoDifferences::common(keysAfter, keysBefore))
        m_differences.add(QStringLiteral("windows-reordered"), tr("the windows are in another order"),
                          {{zoClusterTags::Cluster, QJsonValue(), QJsonValue()}});
}

void zoDisplayComparison::addRemovedWindows(const Windows& before,
                                            const QHash<QString, std::vector<std::size_t>>& vacated)
{
    std::vector<std::size_t> removed;
    for (const std::vector<std::size_t>& windows : vacated)
        removed.insert(removed.end(), windows.begin(), windows.end());
    std::sort(removed.begin(), removed.end());
    for (const std::size_t index : removed) {
        const Window& window = before[index];
        m_differences.add(QStringLiteral("window-removed"),
                          tr("window removed: %1 on %2, display %3")
                              .arg(window.label, nodeText(window.element), QString::number(window.display)),
                          {{window.path, zoItemPaths::display(window.display), QJsonValue()}});
    }
}

void zoDisplayComparison::compareContent(const Window& before, const Window& after)
{
    compareViewports(before, after);
    zoAttributeComparison::compare(tr("window on %1").arg(nodeText(after.element)), after.path,
                                   before.element, after.element, {nodeAttribute()}, m_differences);
}

void zoDisplayComparison::compareWindow(const Window& before, const Window& after)
{
    const QString node = nodeAttribute();
    const QString screen = screenAttribute();
    const bool isOtherNode = !isSameNode(before.element, after.element);
    const bool isOtherScreen = !zoAttributeValue::isSame(before.element, after.element, screen);
    zoDifferences::Changes changes;
    if (isOtherNode)
        changes.push_back(zoDifferences::change(after.path, node, before.element, after.element));
    if (isOtherScreen)
        changes.push_back(zoDifferences::change(after.path, screen, before.element, after.element));
    if (!changes.empty())
        m_differences.add(QStringLiteral("tile-moved"),
                          tr("%1: moved from %2 to %3")
                              .arg(after.label, placeText(before.element, isOtherScreen),
                                   placeText(after.element, isOtherScreen)),
                          changes);
    if (before.display != after.display)
        m_differences.add(
            QStringLiteral("tile-moved"),
            tr("%1: moved from display %2 to display %3")
                .arg(after.label, QString::number(before.display), QString::number(after.display)),
            {{after.path, zoItemPaths::display(before.display), zoItemPaths::display(after.display)}});
    zoAttributeComparison::compare(after.label, after.path, before.element, after.element, {node, screen},
                                   m_differences);
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
        const QString path = (to.isNull() ? before : after).viewports.value(number - 1);
        if (from.isNull()) {
            m_differences.add(QStringLiteral("viewport-added"), tr("%1: shows %2 too").arg(label, shownTo),
                              {{path, QJsonValue(), after.path}});
        } else if (to.isNull()) {
            m_differences.add(QStringLiteral("viewport-removed"),
                              tr("%1: does not show %2 any more").arg(label, shownFrom),
                              {{path, before.path, QJsonValue()}});
        } else {
            if (shownFrom != shownTo)
                m_differences.add(QStringLiteral("viewport-changed"),
                                  tr("%1: shows %2 instead of %3").arg(label, shownTo, shownFrom),
                                  {zoDifferences::change(path, projection, from, to)});
            zoAttributeComparison::compare(label, path, from, to, {projection}, m_differences);
        }
        from = from.nextSiblingElement(zoClusterTags::Viewport);
        to = to.nextSiblingElement(zoClusterTags::Viewport);
    }
}
