#include "zoAttributeComparison.h"

#include "zoAttributeValue.h"
#include "zoDifferences.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <QCoreApplication>
#include <QDomElement>
#include <QSet>

#include <algorithm>
#include <cstddef>

namespace
{
struct Columns
{
    int list[4];
    std::size_t count;

    const int* begin() const { return list; }
    const int* end() const { return list + count; }
};

template <class... Column>
constexpr Columns together(Column... columns)
{
    return {{columns...}, sizeof...(columns)};
}

enum class Unit {
    None,
    Pixels,
    Millimetres,
    OfType // pixels for tiled walls, which have no other size
};

struct Group
{
    const char* word; // of the kind of the difference
    const char* words;
    Columns columns;
    const char* separator;
    Unit unit;
};

using P = zoHPCProjectionItem;
constexpr Group s_projectionGroups[] = {
    {"type", QT_TRANSLATE_NOOP("zoAttributeComparison", "type"), together(P::Type), "", Unit::None},
    {"tiles", QT_TRANSLATE_NOOP("zoAttributeComparison", "columns x rows"), together(P::Columns, P::Rows),
     "x", Unit::None},
    {"overlap", QT_TRANSLATE_NOOP("zoAttributeComparison", "overlap"), together(P::OverlapX, P::OverlapY),
     " x ", Unit::OfType},
    {"size", QT_TRANSLATE_NOOP("zoAttributeComparison", "size"), together(P::Width, P::Height), " x ",
     Unit::OfType},
    {"size", QT_TRANSLATE_NOOP("zoAttributeComparison", "size"),
     together(P::CaveWidth, P::CaveHeight, P::CaveDepth), " x ", Unit::Millimetres},
    {"center", QT_TRANSLATE_NOOP("zoAttributeComparison", "center"), together(P::CaveX, P::CaveY, P::CaveZ),
     ", ", Unit::Millimetres},
    {"distance", QT_TRANSLATE_NOOP("zoAttributeComparison", "distance"), together(P::Distance), "",
     Unit::Millimetres},
    {"left-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "left wall"), together(P::LeftWall), "",
     Unit::None},
    {"right-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "right wall"), together(P::RightWall), "",
     Unit::None},
    {"top-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "top wall"), together(P::TopWall), "",
     Unit::None},
    {"bottom-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "bottom wall"), together(P::BottomWall), "",
     Unit::None},
    {"front-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "front wall"), together(P::FrontWall), "",
     Unit::None},
    {"back-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "back wall"), together(P::BackWall), "",
     Unit::None},
    {"right-eye-offset", QT_TRANSLATE_NOOP("zoAttributeComparison", "right-eye offset"),
     together(P::RightOffsetX, P::RightOffsetY), ", ", Unit::Pixels},
    {"place", QT_TRANSLATE_NOOP("zoAttributeComparison", "column, row"), together(P::TileColumn, P::Row),
     ", ", Unit::None},
    {"edge-blending", QT_TRANSLATE_NOOP("zoAttributeComparison", "edge blending"), together(P::EdgeBlending),
     "", Unit::None},
    {"blend-widths", QT_TRANSLATE_NOOP("zoAttributeComparison", "blend widths left, right, top, bottom"),
     together(P::LeftEdge, P::RightEdge, P::TopEdge, P::BottomEdge), ", ", Unit::None},
    // Of a plane that was or became a projection of another type.
    {"area", QT_TRANSLATE_NOOP("zoAttributeComparison", "area"), together(P::X1, P::Y1, P::X2, P::Y2), ", ",
     Unit::None}};

using D = zoHPCDisplayItem;
constexpr Group s_displayGroups[] = {
    {"eye-separation", QT_TRANSLATE_NOOP("zoAttributeComparison", "eye separation"),
     together(D::EyeSeparation), "", Unit::Millimetres},
    {"hardware-sync", QT_TRANSLATE_NOOP("zoAttributeComparison", "hardware sync"), together(D::HardwareSync),
     "", Unit::None}};

using W = zoHPCWindowItem;
constexpr Group s_windowGroups[] = {
    {"size", QT_TRANSLATE_NOOP("zoAttributeComparison", "size"), together(W::Width, W::Height), " x ",
     Unit::Pixels},
    {"full-screen", QT_TRANSLATE_NOOP("zoAttributeComparison", "full screen"), together(W::FullScreen), "",
     Unit::None},
    {"position", QT_TRANSLATE_NOOP("zoAttributeComparison", "position"), together(W::X, W::Y), ", ",
     Unit::Pixels},
    {"node", QT_TRANSLATE_NOOP("zoAttributeComparison", "render node"), together(W::Node), "", Unit::None}};

using V = zoHPCViewportItem;
constexpr Group s_viewportGroups[] = {{"area", QT_TRANSLATE_NOOP("zoAttributeComparison", "area"),
                                       together(V::X1, V::Y1, V::X2, V::Y2), ", ", Unit::None},
                                      {"flip-x",
                                       QT_TRANSLATE_NOOP("zoAttributeComparison", "horizontal flip"),
                                       together(V::FlipX), "", Unit::None},
                                      {"flip-y", QT_TRANSLATE_NOOP("zoAttributeComparison", "vertical flip"),
                                       together(V::FlipY), "", Unit::None}};

// What there is to know about one kind of element.
struct Kind
{
    const Group* begin() const { return groups; }
    const Group* end() const { return groups + groupCount; }

    const Group* groups;
    std::size_t groupCount;
    const zoHPCTreeWidgetItem::ColumnMap& columns;
};

template <std::size_t Count>
Kind kind(const Group (&groups)[Count], const zoHPCTreeWidgetItem::ColumnMap& columns)
{
    return {groups, Count, columns};
}

Kind kindOf(const QString& tag)
{
    if (tag == zoClusterTags::Projection)
        return kind(s_projectionGroups, zoHPCProjectionItem::columns(QString()));
    if (tag == zoClusterTags::Display)
        return kind(s_displayGroups, zoHPCDisplayItem::columns());
    if (tag == zoClusterTags::Window)
        return kind(s_windowGroups, zoHPCWindowItem::columns());
    return kind(s_viewportGroups, zoHPCViewportItem::columns());
}

QString unitText(Unit unit, const QDomElement& element)
{
    if (unit == Unit::OfType) {
        const QString type = element.attribute(P::columns(QString()).at(P::Type));
        const bool isInPixels = type.isEmpty() || zoHPCProjectionType::of(type).isInPixels;
        unit = isInPixels ? Unit::Pixels : Unit::Millimetres;
    }
    switch (unit) {
    case Unit::Pixels:
        return QStringLiteral(" pixels");
    case Unit::Millimetres:
        return QStringLiteral(" mm");
    default:
        return {};
    }
}

QString valueText(const Group& group, const QStringList& names, const QDomElement& element)
{
    QStringList values;
    for (const QString& name : names)
        values << element.attribute(name);
    if (values.join(QString()).isEmpty())
        return zoDifferences::shown(QString());
    const QString text = values.size() == 1 ? zoDifferences::shown(values.constFirst())
                                            : values.join(QLatin1String(group.separator));
    return text + unitText(group.unit, element);
}
} // namespace

void zoAttributeComparison::compare(const QString& label, const QString& path, const QDomElement& before,
                                    const QDomElement& after, const QStringList& skipped,
                                    zoDifferences& differences)
{
    const QString tag = after.tagName();
    const Kind known = kindOf(tag);
    QSet<QString> told(skipped.cbegin(), skipped.cend());
    const auto differs = [&](const QString& name) {
        return !told.contains(name) && !zoAttributeValue::isSame(before, after, name);
    };
    // Types of projections have different attributes.
    const auto isMissing = [&](const QString& name) {
        return !before.hasAttribute(name) && !after.hasAttribute(name);
    };
    for (const Group& group : known) {
        QStringList names;
        for (const int column : group.columns)
            names << known.columns.at(column);
        if (std::none_of(names.begin(), names.end(), differs) ||
            std::any_of(names.begin(), names.end(), isMissing))
            continue;
        zoDifferences::Changes changes;
        for (const QString& name : qAsConst(names)) {
            if (differs(name))
                changes.push_back(zoDifferences::change(path, name, before, after));
        }
        told.unite(QSet<QString>(names.cbegin(), names.cend()));
        differences.addChange(tag + QLatin1Char('-') + QLatin1String(group.word), label,
                              QCoreApplication::translate("zoAttributeComparison", group.words),
                              valueText(group, names, before), valueText(group, names, after), changes);
    }
    const QStringList names = zoDifferences::attributeNames(before, after);
    for (const QString& name : names) {
        if (differs(name))
            differences.addChange(tag + QLatin1Char('-') + name, label, name,
                                  zoDifferences::shown(before.attribute(name)),
                                  zoDifferences::shown(after.attribute(name)),
                                  {zoDifferences::change(path, name, before, after)});
    }
}
