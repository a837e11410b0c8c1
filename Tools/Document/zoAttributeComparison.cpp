#include "zoAttributeComparison.h"

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
#include <vector>

namespace
{
using Columns = std::vector<int>;

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
using Groups = std::vector<Group>;

const Groups& projectionGroups()
{
    using P = zoHPCProjectionItem;
    static const Groups groups{
        {"type", QT_TRANSLATE_NOOP("zoAttributeComparison", "type"), {P::Type}, "", Unit::None},
        {"tiles",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "columns x rows"),
         {P::Columns, P::Rows},
         "x",
         Unit::None},
        {"overlap",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "overlap"),
         {P::OverlapX, P::OverlapY},
         " x ",
         Unit::OfType},
        {"size",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "size"),
         {P::Width, P::Height},
         " x ",
         Unit::OfType},
        {"size",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "size"),
         {P::CaveWidth, P::CaveHeight, P::CaveDepth},
         " x ",
         Unit::Millimetres},
        {"center",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "center"),
         {P::CaveX, P::CaveY, P::CaveZ},
         ", ",
         Unit::Millimetres},
        {"distance",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "distance"),
         {P::Distance},
         "",
         Unit::Millimetres},
        {"left-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "left wall"), {P::LeftWall}, "", Unit::None},
        {"right-wall",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "right wall"),
         {P::RightWall},
         "",
         Unit::None},
        {"top-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "top wall"), {P::TopWall}, "", Unit::None},
        {"bottom-wall",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "bottom wall"),
         {P::BottomWall},
         "",
         Unit::None},
        {"front-wall",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "front wall"),
         {P::FrontWall},
         "",
         Unit::None},
        {"back-wall", QT_TRANSLATE_NOOP("zoAttributeComparison", "back wall"), {P::BackWall}, "", Unit::None},
        {"right-eye-offset",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "right-eye offset"),
         {P::RightOffsetX, P::RightOffsetY},
         ", ",
         Unit::Pixels},
        {"place",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "column, row"),
         {P::TileColumn, P::Row},
         ", ",
         Unit::None},
        {"edge-blending",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "edge blending"),
         {P::EdgeBlending},
         "",
         Unit::None},
        {"blend-widths",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "blend widths left, right, top, bottom"),
         {P::LeftEdge, P::RightEdge, P::TopEdge, P::BottomEdge},
         ", ",
         Unit::None},
        // Of a plane that was or became a projection of another type.
        {"area",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "area"),
         {P::X1, P::Y1, P::X2, P::Y2},
         ", ",
         Unit::None}};
    return groups;
}

const Groups& displayGroups()
{
    using D = zoHPCDisplayItem;
    static const Groups groups{{"eye-separation",
                                QT_TRANSLATE_NOOP("zoAttributeComparison", "eye separation"),
                                {D::EyeSeparation},
                                "",
                                Unit::Millimetres},
                               {"hardware-sync",
                                QT_TRANSLATE_NOOP("zoAttributeComparison", "hardware sync"),
                                {D::HardwareSync},
                                "",
                                Unit::None}};
    return groups;
}

const Groups& windowGroups()
{
    using W = zoHPCWindowItem;
    static const Groups groups{
        {"size",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "size"),
         {W::Width, W::Height},
         " x ",
         Unit::Pixels},
        {"full-screen",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "full screen"),
         {W::FullScreen},
         "",
         Unit::None},
        {"position",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "position"),
         {W::X, W::Y},
         ", ",
         Unit::Pixels},
        {"node", QT_TRANSLATE_NOOP("zoAttributeComparison", "render node"), {W::Node}, "", Unit::None}};
    return groups;
}

const Groups& viewportGroups()
{
    using V = zoHPCViewportItem;
    static const Groups groups{
        {"area",
         QT_TRANSLATE_NOOP("zoAttributeComparison", "area"),
         {V::X1, V::Y1, V::X2, V::Y2},
         ", ",
         Unit::None},
        {"flip-x", QT_TRANSLATE_NOOP("zoAttributeComparison", "horizontal flip"), {V::FlipX}, "", Unit::None},
        {"flip-y", QT_TRANSLATE_NOOP("zoAttributeComparison", "vertical flip"), {V::FlipY}, "", Unit::None}};
    return groups;
}

// What there is to know about one kind of element.
struct Kind
{
    const Groups& groups;
    const zoHPCTreeWidgetItem::ColumnMap& columns;
};

Kind kindOf(const QString& tag)
{
    if (tag == zoClusterTags::Projection)
        return {projectionGroups(), zoHPCProjectionItem::columns(QString())};
    if (tag == zoClusterTags::Display)
        return {displayGroups(), zoHPCDisplayItem::columns()};
    if (tag == zoClusterTags::Window)
        return {windowGroups(), zoHPCWindowItem::columns()};
    return {viewportGroups(), zoHPCViewportItem::columns()};
}

QString unitText(Unit unit, const QDomElement& element)
{
    if (unit == Unit::OfType) {
        const QString type = element.attribute(QStringLiteral("type"));
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

void zoAttributeComparison::compare(const QString& label, const QDomElement& before, const QDomElement& after,
                                    const QStringList& skipped, zoDifferences& differences)
{
    const QString tag = after.tagName();
    const Kind kind = kindOf(tag);
    QSet<QString> told(skipped.cbegin(), skipped.cend());
    const auto differs = [&](const QString& name) {
        return !told.contains(name) && before.attribute(name) != after.attribute(name);
    };
    // Types of projections have different attributes.
    const auto isMissing = [&](const QString& name) {
        return !before.hasAttribute(name) && !after.hasAttribute(name);
    };
    for (const Group& group : kind.groups) {
        QStringList names;
        for (const int column : group.columns)
            names << kind.columns.at(column);
        if (std::none_of(names.begin(), names.end(), differs) ||
            std::any_of(names.begin(), names.end(), isMissing))
            continue;
        told.unite(QSet<QString>(names.cbegin(), names.cend()));
        differences.addChange(tag + QLatin1Char('-') + QLatin1String(group.word), label,
                              QCoreApplication::translate("zoAttributeComparison", group.words),
                              valueText(group, names, before), valueText(group, names, after));
    }
    const QStringList names = zoDifferences::attributeNames(before, after);
    for (const QString& name : names) {
        if (differs(name))
            differences.addChange(tag + QLatin1Char('-') + name, label, name,
                                  zoDifferences::shown(before.attribute(name)),
                                  zoDifferences::shown(after.attribute(name)));
    }
}
