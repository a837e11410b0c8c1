#include "zoClusterComparison.h"

#include "zoHPC.h"
#include "zoHostNames.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
struct OptionWords
{
    const QString& key;
    const char* words;
};

// Words for the options of the master, networks and nodes.
QString optionWords(const QString& key)
{
    static const OptionWords table[] = {
        {zoHPCOption::NetworkType, QT_TRANSLATE_NOOP("zoClusterComparison", "network type")},
        {zoHPCOption::LinkSpeed, QT_TRANSLATE_NOOP("zoClusterComparison", "link speed")},
        {zoHPCOption::SceneCompression, QT_TRANSLATE_NOOP("zoClusterComparison", "scene compression")},
        {zoHPCOption::ImageCompression, QT_TRANSLATE_NOOP("zoClusterComparison", "image compression")},
        {zoHPCOption::IbDevice, QT_TRANSLATE_NOOP("zoClusterComparison", "InfiniBand device")},
        {zoHPCOption::IbPort, QT_TRANSLATE_NOOP("zoClusterComparison", "InfiniBand port")},
        {zoHPCOption::ServicePort, QT_TRANSLATE_NOOP("zoClusterComparison", "service port")},
        {zoHPCOption::PixelFormat, QT_TRANSLATE_NOOP("zoClusterComparison", "pixel format")},
        {zoHPCOption::StartStopAction, QT_TRANSLATE_NOOP("zoClusterComparison", "start/stop action")},
        {zoHPCOption::ParallelFrames, QT_TRANSLATE_NOOP("zoClusterComparison", "parallel frames")},
        {zoHPCOption::FramePipelineLength, QT_TRANSLATE_NOOP("zoClusterComparison", "frame queue length")},
        {zoHPCOption::StillFrameSupersampling,
         QT_TRANSLATE_NOOP("zoClusterComparison", "still-frame supersampling")},
        {zoHPCOption::NodesFile, QT_TRANSLATE_NOOP("zoClusterComparison", "hosts file")},
        {zoHPCOption::Encrypted, QT_TRANSLATE_NOOP("zoClusterComparison", "encryption")},
        {zoHPCOption::Homogeneous, QT_TRANSLATE_NOOP("zoClusterComparison", "homogeneous nodes")}};
    for (const OptionWords& option : table) {
        if (option.key == key)
            return QCoreApplication::translate("zoClusterComparison", option.words);
    }
    return key;
}

// Attributes that a person sees as one thing.
struct AttributeGroup
{
    const char* word; // of the kind of the difference
    const char* words;
    const char* attributes; // parted by blanks
    const char* separator;
    const char* unit; // "?" for the unit of the projection's type
};

constexpr AttributeGroup s_groups[] = {
    {"type", QT_TRANSLATE_NOOP("zoClusterComparison", "type"), "type", "", ""},
    {"tiles", QT_TRANSLATE_NOOP("zoClusterComparison", "columns x rows"), "columns rows", "x", ""},
    {"overlap", QT_TRANSLATE_NOOP("zoClusterComparison", "overlap"), "overlapx overlapy", " x ", "?"},
    {"size", QT_TRANSLATE_NOOP("zoClusterComparison", "size"), "width height", " x ", "?"},
    {"size", QT_TRANSLATE_NOOP("zoClusterComparison", "size"), "cavewidth caveheight cavedepth", " x ",
     " mm"},
    {"center", QT_TRANSLATE_NOOP("zoClusterComparison", "center"), "cavex cavey cavez", ", ", " mm"},
    {"distance", QT_TRANSLATE_NOOP("zoClusterComparison", "distance"), "distance", "", " mm"},
    {"left-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "left wall"), "left", "", ""},
    {"right-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "right wall"), "right", "", ""},
    {"top-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "top wall"), "top", "", ""},
    {"bottom-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "bottom wall"), "bottom", "", ""},
    {"front-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "front wall"), "front", "", ""},
    {"back-wall", QT_TRANSLATE_NOOP("zoClusterComparison", "back wall"), "back", "", ""},
    {"right-eye-offset", QT_TRANSLATE_NOOP("zoClusterComparison", "right-eye offset"),
     "rightoffsetx rightoffsety", ", ", " pixels"},
    {"place", QT_TRANSLATE_NOOP("zoClusterComparison", "column, row"), "column row", ", ", ""},
    {"edge-blending", QT_TRANSLATE_NOOP("zoClusterComparison", "edge blending"), "edgeblending", "", ""},
    {"blend-widths", QT_TRANSLATE_NOOP("zoClusterComparison", "blend widths left, right, top, bottom"),
     "leftedge rightedge topedge bottomedge", ", ", ""},
    {"eye-separation", QT_TRANSLATE_NOOP("zoClusterComparison", "eye separation"), "eyeseparation", "",
     " mm"},
    {"hardware-sync", QT_TRANSLATE_NOOP("zoClusterComparison", "hardware sync"), "hardwaresync", "", ""},
    {"full-screen", QT_TRANSLATE_NOOP("zoClusterComparison", "full screen"), "fullscreen", "", ""},
    {"position", QT_TRANSLATE_NOOP("zoClusterComparison", "position"), "x y", ", ", " pixels"},
    {"area", QT_TRANSLATE_NOOP("zoClusterComparison", "area"), "x1 y1 x2 y2", ", ", ""},
    {"flip-x", QT_TRANSLATE_NOOP("zoClusterComparison", "horizontal flip"), "flipx", "", ""},
    {"flip-y", QT_TRANSLATE_NOOP("zoClusterComparison", "vertical flip"), "flipy", "", ""},
    {"node", QT_TRANSLATE_NOOP("zoClusterComparison", "render node"), "node", "", ""}};

const char* const s_corners[] = {"x1", "y1", "z1", "x2", "y2", "z2", "x3", "y3", "z3"};

bool isPlane(const QDomElement& projection)
{
    return projection.attribute(QStringLiteral("type")) == QLatin1String("plane");
}

QString unit(const AttributeGroup& group, const QDomElement& element)
{
    const QString text = QLatin1String(group.unit);
    if (text != QLatin1String("?"))
        return text;
    // Tiled walls and windows are given in pixels.
    const QString type = element.attribute(QStringLiteral("type"));
    return type.isEmpty() || type == QLatin1String("wall") || type == QLatin1String("tile")
               ? QStringLiteral(" pixels")
               : QStringLiteral(" mm");
}

QString shown(const QString& value)
{
    if (value.isEmpty())
        return QCoreApplication::translate("zoClusterComparison", "none");
    if (value == QLatin1String("true"))
        return QCoreApplication::translate("zoClusterComparison", "on");
    if (value == QLatin1String("false"))
        return QCoreApplication::translate("zoClusterComparison", "off");
    return value;
}

QStringList attributeNames(const QDomElement& element)
{
    QStringList names;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        names << attributes.item(i).nodeName();
    return names;
}

// Of both elements, sorted, each once.
QStringList attributeNames(const QDomElement& before, const QDomElement& after)
{
    QStringList names = attributeNames(before) + attributeNames(after);
    names.removeDuplicates();
    names.sort();
    return names;
}

QString quoted(const QString& name)
{
    if (name.isEmpty())
        return QCoreApplication::translate("zoClusterComparison", "nothing");
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString projectionLabel(const QDomElement& projection)
{
    const QString type = projection.attribute(QStringLiteral("type"));
    const QString word = type == QLatin1String("powerwall") ? QStringLiteral("wall") : type;
    return (word.isEmpty() ? QStringLiteral("projection") : word) + QLatin1Char(' ') +
           quoted(projection.attribute(QStringLiteral("name")));
}

QString foldedNames(const QStringList& names)
{
    return QString::fromUtf8(zoHostNames::bracketText({names.cbegin(), names.cend()}, false));
}

QString nodeText(const QDomElement& window)
{
    const QString node = window.attribute(QStringLiteral("node"));
    return node.isEmpty() ? QCoreApplication::translate("zoClusterComparison", "no node") : node;
}

// The entries of `from` that `other` lacks; the rest in order into `common`.
template <class T>
std::vector<T> without(const std::vector<T>& from, const QSet<QString>& other, QStringList* common)
{
    std::vector<T> result;
    for (const T& entry : from) {
        if (!other.contains(entry.key))
            result.push_back(entry);
        else if (common != nullptr)
            *common << entry.key;
    }
    return result;
}

template <class T>
QSet<QString> keysOf(const std::vector<T>& entries)
{
    QSet<QString> keys;
    for (const T& entry : entries)
        keys.insert(entry.key);
    return keys;
}
} // namespace

zoClusterComparison::zoClusterComparison(const QDomDocument& before, const QDomDocument& after)
{
    const QDomElement rootBefore = before.documentElement();
    const QDomElement rootAfter = after.documentElement();
    const QString booking = QStringLiteral("booking");
    if (rootBefore.attribute(booking) != rootAfter.attribute(booking))
        add(QStringLiteral("booking-changed"),
            tr("booking changed from %1 to %2")
                .arg(shown(rootBefore.attribute(booking)), shown(rootAfter.attribute(booking))));
    compareHosts(rootBefore, rootAfter);
    compareProjections(rootBefore, rootAfter);
    compareDisplays(rootBefore, rootAfter);
    compareWindows(rootBefore, rootAfter);
}

zoClusterComparison::HostList zoClusterComparison::hostsOf(const QDomElement& master)
{
    // No recursion: networks behind gateways may be deep.
    struct Place
    {
        QDomElement element;
        QString key;
        int networks;
    };
    HostList list;
    QHash<QString, int> counts;
    int networks = 0;
    std::vector<Place> above{{master, QString(), 0}};
    QDomElement element = master.firstChildElement();
    while (!above.empty()) {
        if (element.isNull()) {
            element = above.back().element.nextSiblingElement();
            above.pop_back();
            continue;
        }
        Place& parent = above.back();
        QString key;
        if (element.tagName() == QLatin1String("network")) {
            key = parent.key + QLatin1String("/network ") + QString::number(++parent.networks);
            ++networks;
            const QString label = parent.element.tagName() == QLatin1String("node")
                                      ? tr("network %1 behind %2")
                                            .arg(QString::number(parent.networks),
                                                 parent.element.attribute(QStringLiteral("name")))
                                      : tr("network %1").arg(parent.networks);
            list.networks << key;
            list.entries.insert(key, {element, parent.key, label});
        } else {
            const QString name = element.attribute(QStringLiteral("name"));
            const int count = ++counts[name];
            key = count == 1 ? name : name + QLatin1Char('\n') + QString::number(count);
            list.nodes << key;
            list.nodesOfNetwork[parent.key] << key;
            list.entries.insert(key, {element, parent.key, tr("node %1").arg(name)});
        }
        above.push_back({element, key, 0});
        element = element.firstChildElement();
    }
    return list;
}

void zoClusterComparison::compareHosts(const QDomElement& before, const QDomElement& after)
{
    const QString tag = QStringLiteral("master");
    const QDomElement masterBefore = before.firstChildElement(tag);
    const QDomElement masterAfter = after.firstChildElement(tag);
    compareOptions(tr("cluster"), masterBefore, masterAfter);
    const HostList listBefore = hostsOf(masterBefore);
    const HostList listAfter = hostsOf(masterAfter);
    for (const QString& key : listBefore.networks) {
        if (!listAfter.entries.contains(key))
            add(QStringLiteral("network-removed"),
                tr("network removed: %1").arg(listBefore.entries[key].label));
    }
    for (const QString& key : listAfter.networks) {
        if (!listBefore.entries.contains(key))
            add(QStringLiteral("network-added"), tr("network added: %1").arg(listAfter.entries[key].label));
        else
            compareOptions(listAfter.entries[key].label, listBefore.entries[key].element,
                           listAfter.entries[key].element);
    }
    compareNodeLists(listBefore, listAfter);
}

void zoClusterComparison::compareNodeLists(const HostList& before, const HostList& after)
{
    const auto names = [](const HostList& list, const QStringList& keys) {
        QStringList result;
        for (const QString& key : keys)
            result << list.entries[key].element.attribute(QStringLiteral("name"));
        return result;
    };
    // Of the nodes below each network or gateway, those that the other side has not at all.
    const auto addMissing = [&](const HostList& list, const HostList& other, bool isAdded) {
        const QStringList parents = QStringList{QString()} + list.networks;
        for (const QString& parent : parents) {
            QStringList keys;
            const QStringList nodes = list.nodesOfNetwork.value(parent);
            for (const QString& key : nodes) {
                if (!other.entries.contains(key))
                    keys << key;
            }
            if (keys.isEmpty())
                continue;
            const QString text = keys.size() == 1
                                     ? isAdded ? tr("node added: %1 (%2)") : tr("node removed: %1 (%2)")
                                 : isAdded ? tr("nodes added: %1 (%2)")
                                           : tr("nodes removed: %1 (%2)");
            const QString place = parent.isEmpty() ? tr("no network") : list.entries[parent].label;
            // Equal names fold to one; then each is told.
            const QStringList all = names(list, keys);
            if (QSet<QString>(all.cbegin(), all.cend()).size() == all.size()) {
                add(isAdded ? QStringLiteral("node-added") : QStringLiteral("node-removed"),
                    text.arg(foldedNames(all), place));
            } else {
                add(isAdded ? QStringLiteral("node-added") : QStringLiteral("node-removed"),
                    text.arg(all.join(QLatin1Char(',')), place));
            }
        }
    };
    addMissing(before, after, false);
    addMissing(after, before, true);

    for (const QString& key : after.nodes) {
        if (!before.entries.contains(key))
            continue;
        const HostEntry& from = before.entries[key];
        const HostEntry& to = after.entries[key];
        if (from.parent != to.parent) {
            const auto place = [&](const HostList& list, const HostEntry& entry) {
                return entry.parent.isEmpty() ? tr("no network") : list.entries[entry.parent].label;
            };
            add(QStringLiteral("node-moved"), tr("node moved: %1 from %2 to %3")
                                                  .arg(to.element.attribute(QStringLiteral("name")),
                                                       place(before, from), place(after, to)));
        }
        compareOptions(to.label, from.element, to.element);
    }

    for (const QString& network : after.networks) {
        const auto common = [&](const QStringList& keys, const QStringList& others) {
            const QSet<QString> known(others.cbegin(), others.cend());
            QStringList result;
            for (const QString& key : keys) {
                if (known.contains(key))
                    result << key;
            }
            return result;
        };
        const QStringList from = before.nodesOfNetwork.value(network);
        const QStringList to = after.nodesOfNetwork.value(network);
        if (common(from, to) != common(to, from))
            add(QStringLiteral("nodes-reordered"),
                tr("%1: its nodes are in another order").arg(after.entries[network].label));
    }
}

void zoClusterComparison::compareOptions(const QString& label, const QDomElement& before,
                                         const QDomElement& after)
{
    const QStringList names = attributeNames(before, after);
    for (const QString& name : names) {
        const QString from = before.attribute(name);
        const QString to = after.attribute(name);
        if (from == to)
            continue;
        if (name == zoHPCOption::Enabled) {
            const bool isDisabled = to == QLatin1String("false");
            if (isDisabled != (from == QLatin1String("false"))) {
                add(isDisabled ? QStringLiteral("disabled") : QStringLiteral("enabled"),
                    isDisabled ? tr("%1: disabled").arg(label) : tr("%1: enabled").arg(label));
                continue;
            }
        }
        if (name == zoHPCOption::RenderNode) {
            const bool isOff = to == QLatin1String("false");
            if (isOff != (from == QLatin1String("false"))) {
                add(isOff ? QStringLiteral("render-node-off") : QStringLiteral("render-node-on"),
                    isOff ? tr("%1: does not render any more").arg(label) : tr("%1: renders now").arg(label));
                continue;
            }
        }
        if (name == QLatin1String("name"))
            continue;
        add(QStringLiteral("option-changed"),
            tr("%1: %2 changed from %3 to %4").arg(label, optionWords(name), shown(from), shown(to)));
    }
}

std::vector<zoClusterComparison::Named> zoClusterComparison::projectionsOf(const QDomElement& root)
{
    std::vector<Named> result;
    QHash<QString, int> counts;
    const QString tag = QStringLiteral("projection");
    for (QDomElement element = root.firstChildElement(tag); !element.isNull();
         element = element.nextSiblingElement(tag)) {
        const QString name = element.attribute(QStringLiteral("name"));
        result.push_back({name + QLatin1Char('\n') + QString::number(++counts[name]), element});
    }
    return result;
}

void zoClusterComparison::compareProjections(const QDomElement& before, const QDomElement& after)
{
    const std::vector<Named> from = projectionsOf(before);
    const std::vector<Named> to = projectionsOf(after);
    QStringList commonFrom;
    QStringList commonTo;
    std::vector<Named> removed = without(from, keysOf(to), &commonFrom);
    const std::vector<Named> added = without(to, keysOf(from), &commonTo);

    QHash<QString, QDomElement> known;
    for (const Named& projection : from)
        known.insert(projection.key, projection.element);
    for (const Named& projection : to) {
        if (known.contains(projection.key)) {
            compareProjection(known[projection.key], projection.element);
            continue;
        }
        // The same under another name was renamed.
        const auto isSame = [&](const Named& other) {
            const QStringList names = attributeNames(other.element, projection.element);
            return std::all_of(names.begin(), names.end(), [&](const QString& name) {
                return name == QLatin1String("name") ||
                       other.element.attribute(name) == projection.element.attribute(name);
            });
        };
        const auto former = std::find_if(removed.begin(), removed.end(), isSame);
        if (former == removed.end()) {
            add(QStringLiteral("projection-added"), tr("%1: added").arg(projectionLabel(projection.element)));
            continue;
        }
        add(QStringLiteral("projection-renamed"),
            tr("%1: renamed to %2")
                .arg(projectionLabel(former->element),
                     quoted(projection.element.attribute(QStringLiteral("name")))));
        removed.erase(former);
    }
    for (const Named& projection : removed)
        add(QStringLiteral("projection-removed"), tr("%1: removed").arg(projectionLabel(projection.element)));
    if (commonFrom != commonTo)
        add(QStringLiteral("projections-reordered"), tr("the projections are in another order"));
}

void zoClusterComparison::compareProjection(const QDomElement& before, const QDomElement& after)
{
    const QString label = projectionLabel(after);
    QStringList skipped{QStringLiteral("name")};
    if (isPlane(before) && isPlane(after) && comparePlanes(label, before, after)) {
        for (const char* corner : s_corners)
            skipped << QLatin1String(corner);
    }
    compareAttributes(QStringLiteral("projection"), label, before, after, skipped);
}

// Whether the corners were told of.
bool zoClusterComparison::comparePlanes(const QString& label, const QDomElement& before,
                                        const QDomElement& after)
{
    std::array<double, 9> shift{};
    bool isMoved = false;
    for (std::size_t i = 0; i < shift.size(); ++i) {
        const QString name = QLatin1String(s_corners[i]);
        shift[i] = after.attribute(name).toDouble() - before.attribute(name).toDouble();
        isMoved = isMoved || shift[i] != 0.0;
    }
    if (!isMoved)
        return false;
    for (std::size_t i = 3; i < shift.size(); ++i) {
        if (std::abs(shift[i] - shift[i % 3]) > 1e-6) {
            const auto corners = [](const QDomElement& element) {
                QStringList points;
                for (std::size_t p = 0; p < 9; p += 3)
                    points << QStringLiteral("(%1, %2, %3)")
                                  .arg(element.attribute(QLatin1String(s_corners[p])),
                                       element.attribute(QLatin1String(s_corners[p + 1])),
                                       element.attribute(QLatin1String(s_corners[p + 2])));
                return points.join(QLatin1Char(' '));
            };
            add(QStringLiteral("tile-reshaped"),
                tr("%1: corners changed from %2 to %3 mm").arg(label, corners(before), corners(after)));
            return true;
        }
    }
    add(QStringLiteral("tile-moved"),
        tr("%1: moved by (%2, %3, %4) mm")
            .arg(label, QString::number(shift[0], 'g', 9), QString::number(shift[1], 'g', 9),
                 QString::number(shift[2], 'g', 9)));
    return true;
}

void zoClusterComparison::compareDisplays(const QDomElement& before, const QDomElement& after)
{
    const QString tag = QStringLiteral("display");
    QDomElement from = before.firstChildElement(tag);
    QDomElement to = after.firstChildElement(tag);
    for (int number = 1; !from.isNull() || !to.isNull(); ++number) {
        if (from.isNull())
            add(QStringLiteral("display-added"), tr("display %1: added").arg(number));
        else if (to.isNull())
            add(QStringLiteral("display-removed"), tr("display %1: removed").arg(number));
        else
            compareAttributes(QStringLiteral("display"), tr("display %1").arg(number), from, to, {});
        from = from.nextSiblingElement(tag);
        to = to.nextSiblingElement(tag);
    }
}

std::vector<zoClusterComparison::Window> zoClusterComparison::windowsOf(const QDomElement& root)
{
    std::vector<Window> result;
    QHash<QString, int> counts;
    const QString displayTag = QStringLiteral("display");
    const QString windowTag = QStringLiteral("window");
    const QString viewportTag = QStringLiteral("viewport");
    int display = 0;
    for (QDomElement outer = root.firstChildElement(displayTag); !outer.isNull();
         outer = outer.nextSiblingElement(displayTag)) {
        ++display;
        for (QDomElement window = outer.firstChildElement(windowTag); !window.isNull();
             window = window.nextSiblingElement(windowTag)) {
            QStringList views;
            bool isEmpty = true;
            for (QDomElement viewport = window.firstChildElement(viewportTag); !viewport.isNull();
                 viewport = viewport.nextSiblingElement(viewportTag)) {
                const QString projection = viewport.attribute(QStringLiteral("projection"));
                const QString eye = viewport.attribute(QStringLiteral("eye"));
                isEmpty = isEmpty && projection.isEmpty();
                views << quoted(projection) + (eye.isEmpty() || eye == QLatin1String("mono")
                                                   ? QString()
                                                   : tr(" (%1)").arg(eye));
            }
            const QString node = window.attribute(QStringLiteral("node"));
            const QString key = isEmpty ? QLatin1String("window ") + node + QLatin1Char('\n') +
                                              window.attribute(QStringLiteral("screen"))
                                        : views.join(QLatin1Char('\n'));
            const QString label = isEmpty ? tr("window on %1").arg(nodeText(window))
                                          : tr("tile %1").arg(views.join(QLatin1String(", ")));
            result.push_back(
                {key + QLatin1Char('\n') + QString::number(++counts[key]), label, display, window});
        }
    }
    return result;
}

void zoClusterComparison::compareWindows(const QDomElement& before, const QDomElement& after)
{
    const std::vector<Window> from = windowsOf(before);
    const std::vector<Window> to = windowsOf(after);
    QStringList commonFrom;
    QStringList commonTo;
    std::vector<Window> removed = without(from, keysOf(to), &commonFrom);
    const std::vector<Window> added = without(to, keysOf(from), &commonTo);

    QHash<QString, int> indices;
    for (std::size_t i = 0; i < from.size(); ++i)
        indices.insert(from[i].key, int(i));
    for (const Window& window : to) {
        const int index = indices.value(window.key, -1);
        if (index >= 0) {
            compareWindow(from[std::size_t(index)], window);
            continue;
        }
        // A window at the same place shows something else.
        const auto isSame = [&](const Window& other) {
            return other.display == window.display &&
                   other.element.attribute(QStringLiteral("node")) ==
                       window.element.attribute(QStringLiteral("node")) &&
                   other.element.attribute(QStringLiteral("screen")) ==
                       window.element.attribute(QStringLiteral("screen"));
        };
        const auto former = std::find_if(removed.begin(), removed.end(), isSame);
        if (former == removed.end()) {
            add(QStringLiteral("window-added"),
                tr("window added: %1 on %2, display %3")
                    .arg(window.label, nodeText(window.element), QString::number(window.display)));
            continue;
        }
        compareViewports(*former, window);
        compareAttributes(QStringLiteral("window"), tr("window on %1").arg(nodeText(window.element)),
                          former->element, window.element, {});
        removed.erase(former);
    }
    for (const Window& window : removed)
        add(QStringLiteral("window-removed"),
            tr("window removed: %1 on %2, display %3")
                .arg(window.label, nodeText(window.element), QString::number(window.display)));
    if (commonFrom != commonTo)
        add(QStringLiteral("windows-reordered"), tr("the windows are in another order"));
}

void zoClusterComparison::compareWindow(const Window& before, const Window& after)
{
    const QString node = QStringLiteral("node");
    const QString screen = QStringLiteral("screen");
    const auto place = [&](const QDomElement& element, bool withScreen) {
        return withScreen ? tr("%1 screen %2").arg(nodeText(element), element.attribute(screen))
                          : nodeText(element);
    };
    const bool isOtherNode = before.element.attribute(node) != after.element.attribute(node);
    const bool isOtherScreen = before.element.attribute(screen) != after.element.attribute(screen);
    if (isOtherNode || isOtherScreen)
        add(QStringLiteral("tile-moved"),
            tr("%1: moved from %2 to %3")
                .arg(after.label, place(before.element, isOtherScreen), place(after.element, isOtherScreen)));
    if (before.display != after.display)
        add(QStringLiteral("tile-moved"),
            tr("%1: moved from display %2 to display %3")
                .arg(after.label, QString::number(before.display), QString::number(after.display)));
    compareAttributes(QStringLiteral("window"), after.label, before.element, after.element, {node, screen});
    compareViewports(before, after);
}

void zoClusterComparison::compareViewports(const Window& before, const Window& after)
{
    const QString tag = QStringLiteral("viewport");
    const QString projection = QStringLiteral("projection");
    QDomElement from = before.element.firstChildElement(tag);
    QDomElement to = after.element.firstChildElement(tag);
    const bool isSingle = from.nextSiblingElement(tag).isNull() && to.nextSiblingElement(tag).isNull();
    for (int number = 1; !from.isNull() || !to.isNull(); ++number) {
        const QString window = tr("window on %1").arg(nodeText(after.element));
        const QString label = isSingle ? window : tr("%1, viewport %2").arg(window, QString::number(number));
        if (from.isNull()) {
            add(QStringLiteral("viewport-added"),
                tr("%1: shows %2 too").arg(label, quoted(to.attribute(projection))));
        } else if (to.isNull()) {
            add(QStringLiteral("viewport-removed"),
                tr("%1: does not show %2 any more").arg(label, quoted(from.attribute(projection))));
        } else {
            if (from.attribute(projection) != to.attribute(projection))
                add(QStringLiteral("viewport-changed"),
                    tr("%1: shows %2 instead of %3")
                        .arg(label, quoted(to.attribute(projection)), quoted(from.attribute(projection))));
            compareAttributes(QStringLiteral("viewport"), label, from, to, {projection});
        }
        from = from.nextSiblingElement(tag);
        to = to.nextSiblingElement(tag);
    }
}

void zoClusterComparison::compareAttributes(const QString& kind, const QString& label,
                                            const QDomElement& before, const QDomElement& after,
                                            const QStringList& skipped)
{
    QSet<QString> told(skipped.cbegin(), skipped.cend());
    for (const AttributeGroup& group : s_groups) {
        const QStringList names = QString::fromLatin1(group.attributes).split(QLatin1Char(' '));
        bool isSame = true;
        QStringList from;
        QStringList to;
        for (const QString& name : names) {
            isSame = isSame && (told.contains(name) || before.attribute(name) == after.attribute(name));
            from << before.attribute(name);
            to << after.attribute(name);
        }
        if (isSame)
            continue;
        // A name may stand in several groups; the one whose names this element has tells.
        const auto isMissing = [&](const QString& name) {
            return !before.hasAttribute(name) && !after.hasAttribute(name);
        };
        if (std::any_of(names.begin(), names.end(), isMissing))
            continue;
        for (const QString& name : names)
            told.insert(name);
        const auto value = [&](const QStringList& parts, const QDomElement& element) {
            if (parts.join(QString()).isEmpty())
                return shown(QString());
            return parts.size() == 1 ? shown(parts.constFirst()) +
                                           (parts.constFirst().isEmpty() ? QString() : unit(group, element))
                                     : parts.join(QLatin1String(group.separator)) + unit(group, element);
        };
        add(kind + QLatin1Char('-') + QLatin1String(group.word),
            tr("%1: %2 changed from %3 to %4")
                .arg(label, tr(group.words), value(from, before), value(to, after)));
    }
    const QStringList names = attributeNames(before, after);
    for (const QString& name : names) {
        if (!told.contains(name) && before.attribute(name) != after.attribute(name))
            add(kind + QLatin1Char('-') + name,
                tr("%1: %2 changed from %3 to %4")
                    .arg(label, name, shown(before.attribute(name)), shown(after.attribute(name))));
    }
}

void zoClusterComparison::add(const QString& kind, const QString& text)
{
    m_differences.push_back({kind, text});
}
