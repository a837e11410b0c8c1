#include "zoConfigurationMerge.h"

#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoItemPaths.h"

#include <zoClusterTags.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <functional>

namespace
{
using Elements = std::vector<QDomElement>;
using Key = std::function<QString(const QDomElement&, int)>;

Elements childrenOf(const QDomElement& parent, const QString& tag)
{
    Elements result;
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag))
        result.push_back(child);
    return result;
}

// Tiles and planes follow from their projection.
bool isComputed(const QString& parent, const QString& tag)
{
    return parent == zoClusterTags::Projection && tag == zoClusterTags::Projection;
}

bool isSameValue(const QString& a, const QString& b)
{
    if (a == b)
        return true;
    bool isNumber = false;
    bool isOther = false;
    const double x = a.toDouble(&isNumber);
    return isNumber && x == b.toDouble(&isOther) && isOther;
}

QStringList attributeNames(const QDomElement& element)
{
    QStringList names;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        names << attributes.item(i).nodeName();
    return names;
}

bool isSame(const QDomElement& a, const QDomElement& b)
{
    QStringList names = attributeNames(a) + attributeNames(b);
    for (const QString& name : qAsConst(names)) {
        if (!isSameValue(a.attribute(name), b.attribute(name)))
            return false;
    }
    QDomElement left = a.firstChildElement();
    QDomElement right = b.firstChildElement();
    if (a.tagName() == zoClusterTags::Projection)
        return true;
    for (; !left.isNull() && !right.isNull();
         left = left.nextSiblingElement(), right = right.nextSiblingElement()) {
        if (left.tagName() != right.tagName() || !isSame(left, right))
            return false;
    }
    return left.isNull() && right.isNull();
}

QString viewsOf(const QDomElement& window)
{
    QString result;
    for (const QDomElement& viewport : childrenOf(window, zoClusterTags::Viewport))
        result += viewport.attribute(zoHPCViewportItem::columns().at(zoHPCViewportItem::Projection)) +
                  QLatin1Char('\n') +
                  viewport.attribute(zoHPCViewportItem::columns().at(zoHPCViewportItem::Eye)) +
                  QLatin1Char('\n');
    return result;
}

QString placeOf(const QDomElement& window)
{
    return window.attribute(zoHPCWindowItem::columns().at(zoHPCWindowItem::Node)) + QLatin1Char('\n') +
           window.attribute(zoHPCWindowItem::columns().at(zoHPCWindowItem::Screen));
}

QString nodesOf(const QDomElement& network)
{
    QString result;
    for (const QDomElement& node : childrenOf(network, zoClusterTags::Node))
        result += node.attribute(zoClusterTags::NameAttribute) + QLatin1Char('\n');
    return result;
}

QString nameOf(const QDomElement& element)
{
    return element.attribute(zoClusterTags::NameAttribute);
}

// What makes two elements the same one, the surest sign first.
std::vector<Key> keysOf(const QString& tag, bool isNew)
{
    const auto projectionAndEye = [](const QDomElement& e, int) {
        return e.attribute(zoHPCViewportItem::columns().at(zoHPCViewportItem::Projection)) +
               QLatin1Char('\n') + e.attribute(zoHPCViewportItem::columns().at(zoHPCViewportItem::Eye));
    };
    if (tag == zoClusterTags::Window)
        return {[](const QDomElement& e, int) { return viewsOf(e) + placeOf(e); },
                [](const QDomElement& e, int) { return viewsOf(e); },
                [](const QDomElement& e, int) { return placeOf(e); }};
    if (tag == zoClusterTags::Node || tag == zoClusterTags::Projection)
        return {[](const QDomElement& e, int) { return nameOf(e); }};
    std::vector<Key> keys;
    if (tag == zoClusterTags::Viewport)
        keys = {projectionAndEye};
    if (tag == zoClusterTags::Network)
        keys = {[](const QDomElement& e, int) { return nodesOf(e); },
                [](const QDomElement& e, int) { return nameOf(e.firstChildElement(zoClusterTags::Node)); },
                [](const QDomElement& e, int) { return nameOf(e.lastChildElement(zoClusterTags::Node)); }};
    // What both sides added is not the same for standing in the same place.
    if (!isNew || keys.empty())
        keys.emplace_back([](const QDomElement&, int index) { return QString::number(index); });
    return keys;
}

// For each of the elements the index of the same one among the others, -1 for a new one.
std::vector<int> matched(const Elements& elements, const Elements& others, const QString& tag, bool isNew)
{
    std::vector<int> result(elements.size(), -1);
    std::vector<bool> isTaken(others.size(), false);
    for (const Key& key : keysOf(tag, isNew)) {
        QHash<QString, QList<int>> free;
        for (std::size_t i = 0; i < others.size(); ++i) {
            if (!isTaken[i])
                free[key(others[i], int(i))] << int(i);
        }
        for (std::size_t i = 0; i < elements.size(); ++i) {
            QList<int>& candidates = free[key(elements[i], int(i))];
            if (result[i] >= 0 || candidates.isEmpty())
                continue;
            result[i] = candidates.takeFirst();
            isTaken[std::size_t(result[i])] = true;
        }
    }
    // A renamed one stands where it stood.
    const bool isNamed = !isNew && (tag == zoClusterTags::Node || tag == zoClusterTags::Projection);
    for (std::size_t i = 0; isNamed && elements.size() == others.size() && i < elements.size(); ++i) {
        if (result[i] < 0 && !isTaken[i])
            result[i] = int(i);
    }
    return result;
}

int depthOf(const QDomDocument& document)
{
    int depth = 0;
    int deepest = 0;
    for (QDomNode node = document.documentElement(); !node.isNull();) {
        deepest = std::max(deepest, depth);
        if (!node.firstChild().isNull()) {
            node = node.firstChild();
            ++depth;
            continue;
        }
        while (!node.isNull() && node.nextSibling().isNull()) {
            node = node.parentNode();
            --depth;
        }
        node = node.nextSibling();
    }
    return deepest;
}

QString shown(const QString& value)
{
    return value.isEmpty() ? QCoreApplication::translate("zoConfigurationMerge", "nothing")
                           : QLatin1Char('"') + value + QLatin1Char('"');
}
} // namespace

zoConfigurationMerge::zoConfigurationMerge(const QDomDocument& base, const QDomDocument& ours,
                                           const QDomDocument& theirs)
{
    m_isPossible = std::max({depthOf(base), depthOf(ours), depthOf(theirs)}) <= Deepest;
    if (!m_isPossible)
        return;
    const Three three{base.documentElement(), ours.documentElement(), theirs.documentElement(), 0, 0};
    m_result.appendChild(merge(three, zoClusterTags::Cluster));
}

QDomElement zoConfigurationMerge::merge(const Three& three, const QString& path)
{
    QDomElement result =
        m_result.createElement(three.ours.isNull() ? three.theirs.tagName() : three.ours.tagName());
    mergeAttributes(three, path, result);
    mergeChildren(three, path, result);
    return result;
}

void zoConfigurationMerge::mergeAttributes(const Three& three, const QString& path, QDomElement& result)
{
    QStringList names =
        attributeNames(three.ours) + attributeNames(three.theirs) + attributeNames(three.base);
    names.removeDuplicates();
    names.sort();
    for (const QString& name : qAsConst(names)) {
        const QString base = three.base.attribute(name);
        const QString ours = three.ours.attribute(name);
        const QString theirs = three.theirs.attribute(name);
        const bool isOurs = isSameValue(ours, theirs) || isSameValue(base, theirs);
        const QString value = isOurs || three.theirs.isNull() || !isSameValue(base, ours) ? ours : theirs;
        if (!isOurs && !isSameValue(base, ours))
            conflict(zoItemPaths::attribute(path, name),
                     tr("was %1, ours is %2, theirs %3").arg(shown(base), shown(ours), shown(theirs)));
        if (!value.isEmpty())
            result.setAttribute(name, value);
    }
}

void zoConfigurationMerge::mergeChildren(const Three& three, const QString& path, QDomElement& result)
{
    QStringList tags;
    for (const QDomElement& element : {three.ours, three.theirs, three.base}) {
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (!isComputed(element.tagName(), child.tagName()))
                tags << child.tagName();
        }
    }
    tags.removeDuplicates();
    for (const QString& tag : qAsConst(tags)) {
        std::vector<Three> items = aligned(three, tag);
        orderLikeTheirs(items, path, tag);
        int number = 0;
        for (const Three& item : items) {
            ++number;
            const QDomElement some = item.ours.isNull() ? item.theirs : item.ours;
            const bool isNamed = tag == zoClusterTags::Node || tag == zoClusterTags::Projection;
            const QString key = isNamed ? nameOf(some.isNull() ? item.base : some) : QString::number(number);
            QString step =
                tag == zoClusterTags::Master ? tag : tag + QLatin1Char('[') + key + QLatin1Char(']');
            if (path.startsWith(zoClusterTags::Display))
                step = zoItemPaths::attribute(path, step);
            const QDomElement merged = mergeOne(item, step);
            if (!merged.isNull())
                result.appendChild(merged);
        }
    }
}

// The children that are the same on the sides together: ours in our order, with what only theirs has behind what
// stands before it there.
std::vector<zoConfigurationMerge::Three> zoConfigurationMerge::aligned(const Three& three,
                                                                       const QString& tag) const
{
    const Elements base = childrenOf(three.base, tag);
    const Elements ours = childrenOf(three.ours, tag);
    const Elements theirs = childrenOf(three.theirs, tag);
    const std::vector<int> oursToBase = matched(ours, base, tag, false);
    const std::vector<int> theirsToBase = matched(theirs, base, tag, false);
    std::vector<Three> items;
    Elements newOurs;
    std::vector<std::size_t> newPlaces;
    std::vector<int> placeOfBase(base.size(), -1);
    for (std::size_t i = 0; i < ours.size(); ++i) {
        if (oursToBase[i] >= 0) {
            placeOfBase[std::size_t(oursToBase[i])] = int(items.size());
        } else {
            newOurs.push_back(ours[i]);
            newPlaces.push_back(items.size());
        }
        items.push_back({oursToBase[i] < 0 ? QDomElement() : base[std::size_t(oursToBase[i])], ours[i],
                         QDomElement(), oursToBase[i], -1});
    }
    // What both added is the same by the same signs.
    Elements newTheirs;
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        if (theirsToBase[i] < 0)
            newTheirs.push_back(theirs[i]);
    }
    const std::vector<int> newToNew = matched(newTheirs, newOurs, tag, true);
    QHash<int, std::vector<Three>> added; // by the place that they stand behind, from 1
    std::size_t nextNew = 0;
    int last = -1;
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        int place = -1;
        if (theirsToBase[i] >= 0) {
            place = placeOfBase[std::size_t(theirsToBase[i])];
        } else {
            const int same = newToNew[nextNew++];
            place = same < 0 ? -1 : int(newPlaces[std::size_t(same)]);
        }
        if (place >= 0) {
            items[std::size_t(place)].theirs = theirs[i];
            items[std::size_t(place)].theirsRow = int(i);
            last = place;
        } else {
            const QDomElement before =
                theirsToBase[i] < 0 ? QDomElement() : base[std::size_t(theirsToBase[i])];
            added[last + 1].push_back({before, QDomElement(), theirs[i], theirsToBase[i], int(i)});
        }
    }
    std::vector<Three> result;
    for (int place = -1; place < int(items.size()); ++place) {
        if (place >= 0)
            result.push_back(items[std::size_t(place)]);
        const std::vector<Three> behind = added.value(place + 1);
        result.insert(result.end(), behind.begin(), behind.end());
    }
    return result;
}

QDomElement zoConfigurationMerge::mergeOne(const Three& three, const QString& path)
{
    const bool wasThere = !three.base.isNull();
    if (three.ours.isNull() && wasThere) {
        if (!isSame(three.base, three.theirs))
            conflict(path, tr("ours has removed it, theirs has changed it"));
        return {};
    }
    if (three.theirs.isNull() && wasThere) {
        if (isSame(three.base, three.ours))
            return {};
        conflict(path, tr("theirs has removed it, ours has changed it"));
        return merge({three.ours, three.ours, three.ours, -1, -1}, path);
    }
    if (three.theirs.isNull() || three.ours.isNull()) {
        const QDomElement& only = three.theirs.isNull() ? three.ours : three.theirs;
        return merge({only, only, only, -1, -1}, path);
    }
    return merge(three, path);
}

// A new order counts when one side alone has it.
void zoConfigurationMerge::orderLikeTheirs(std::vector<Three>& items, const QString& path, const QString& tag)
{
    std::vector<int> base; // rows of those that all three have, in our order
    std::vector<int> theirs;
    for (const Three& item : items) {
        if (!item.base.isNull() && !item.ours.isNull() && !item.theirs.isNull()) {
            base.push_back(item.baseRow);
            theirs.push_back(item.theirsRow);
        }
    }
    if (std::is_sorted(theirs.begin(), theirs.end()))
        return;
    // In our order, rows of the base that run upward tell that ours has not moved anything.
    if (!std::is_sorted(base.begin(), base.end())) {
        std::vector<std::size_t> byTheirs(theirs.size());
        for (std::size_t i = 0; i < byTheirs.size(); ++i)
            byTheirs[i] = i;
        std::sort(byTheirs.begin(), byTheirs.end(), [&](auto a, auto b) { return theirs[a] < theirs[b]; });
        if (!std::is_sorted(byTheirs.begin(), byTheirs.end(),
                            [&](auto a, auto b) { return base[a] < base[b]; }))
            conflict(path, tr("both have another order of each %1").arg(tag));
        return;
    }
    std::vector<Three> common;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!items[i].base.isNull() && !items[i].ours.isNull() && !items[i].theirs.isNull()) {
            common.push_back(items[i]);
            places.push_back(i);
        }
    }
    std::vector<std::size_t> order(common.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](auto a, auto b) { return theirs[a] < theirs[b]; });
    for (std::size_t i = 0; i < order.size(); ++i)
        items[places[i]] = common[order[i]];
}

void zoConfigurationMerge::conflict(const QString& path, const QString& text)
{
    m_conflicts << QStringLiteral("%1: %2").arg(path, text);
}
