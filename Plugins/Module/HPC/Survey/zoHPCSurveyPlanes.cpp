#include "zoHPCSurveyPlanes.h"

#include "zoHPCConfiguration.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCSurveySolver.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <algorithm>
#include <cmath>

namespace
{
// Also makes one zero of both.
double rounded(double millimetres)
{
    constexpr double Parts = 1000.0;
    return std::round(millimetres * Parts) / Parts + 0.0;
}

Point3 rounded(const Point3& point)
{
    return {rounded(point.x), rounded(point.y), rounded(point.z)};
}

QString nameOf(const QDomElement& projection)
{
    return projection.attribute(zoText("name"));
}

// Of a wall whose size nobody measured the gaps are seen when it is known.
bool hasRoomForTiles(const zoHPCSurvey::Wall& wall, const zoHPCPlane& plane)
{
    constexpr double Least = 0.01; // mm
    return plane.width() - wall.gapX * (wall.columns - 1) >= Least * wall.columns &&
           plane.height() - wall.gapY * (wall.rows - 1) >= Least * wall.rows;
}

template <class Function>
void forEach(const QDomElement& parent, const QString& tag, Function function)
{
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull();) {
        const QDomElement next = child.nextSiblingElement(tag);
        function(child);
        child = next;
    }
}
} // namespace

zoHPCSurveyPlanes::zoHPCSurveyPlanes(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution)
{
    for (std::size_t i = 0; i < survey.walls.size(); ++i) {
        const zoHPCPlane& plane = solution.planes[i];
        if (solution.isDetermined() && m_unusable.isEmpty())
            m_unusable = whyUnusable(survey.walls[i], plane);
        add(survey.walls[i],
            {rounded(plane.lowerLeft), rounded(plane.lowerRight), rounded(plane.upperRight)});
    }
}

zoHPCSurveyPlanes::~zoHPCSurveyPlanes() = default;

QString zoHPCSurveyPlanes::whyUnusable(const zoHPCSurvey::Wall& wall, const zoHPCPlane& plane)
{
    const QString width = QString::number(plane.width(), 'f', 1);
    const QString height = QString::number(plane.height(), 'f', 1);
    if (!hasRoomForTiles(wall, plane))
        return tr("the gaps of \"%1\" leave nothing for its tiles: it is %2 x %3 mm")
            .arg(wall.name, width, height);
    if (wall.overlapsBeyond(plane.width(), plane.height()))
        return tr("the tiles of \"%1\" overlap by more than their own size: it is %2 x %3 mm")
            .arg(wall.name, width, height);
    return {};
}

// Tiles are those that the display setup makes of such a wall.
void zoHPCSurveyPlanes::add(const zoHPCSurvey::Wall& wall, const zoHPCPlane& plane)
{
    using Item = zoHPCProjectionItem;
    m_walls << wall.name;
    if (wall.columns * wall.rows == 1) {
        m_items.push_back(std::make_unique<Item>(wall.name, zoHPCProjectionType::Kind::Plane));
        m_items.back()->setPlane(plane);
        return;
    }
    Item whole(wall.name, zoHPCProjectionType::Kind::PowerWall);
    whole.setInt(Item::Columns, wall.columns);
    whole.setInt(Item::Rows, wall.rows);
    whole.setDouble(Item::OverlapX, -wall.gapX);
    whole.setDouble(Item::OverlapY, -wall.gapY);
    whole.setBool(Item::EdgeBlending, wall.gapX < 0.0 || wall.gapY < 0.0);
    whole.clearChildren();
    whole.addPlane(QString(), plane.lowerLeft, plane.lowerRight, plane.upperRight);
    const QList<Item*> tiles = whole.children<Item>();
    for (Item* const tile : tiles) {
        whole.removeChild(tile);
        const zoHPCPlane part = tile->plane();
        tile->setPlane({rounded(part.lowerLeft), rounded(part.lowerRight), rounded(part.upperRight)});
        m_items.emplace_back(tile);
    }
}

QStringList zoHPCSurveyPlanes::names() const
{
    QStringList list;
    for (const auto& item : m_items)
        list << item->getString(zoHPCProjectionItem::Name);
    return list;
}

std::vector<zoHPCPlane> zoHPCSurveyPlanes::planes() const
{
    std::vector<zoHPCPlane> list;
    for (const auto& item : m_items)
        list.push_back(item->plane());
    return list;
}

QStringList zoHPCSurveyPlanes::tilesOf(const QDomElement& projection)
{
    QStringList list;
    forEach(projection, zoClusterTags::Projection, [&](const QDomElement& tile) { list << nameOf(tile); });
    return list;
}

bool zoHPCSurveyPlanes::makesWay(const QDomElement& projection) const
{
    const QStringList known = names();
    if (m_walls.contains(nameOf(projection)) || known.contains(nameOf(projection)))
        return true;
    const QStringList tiles = tilesOf(projection);
    return !tiles.isEmpty() &&
           std::all_of(tiles.begin(), tiles.end(), [&](const QString& tile) { return known.contains(tile); });
}

bool zoHPCSurveyPlanes::takesNames(const QDomElement& projection)
{
    const QStringList known = names();
    const QStringList tiles = tilesOf(projection);
    QStringList taken;
    QStringList missing;
    for (const QString& tile : tiles)
        (known.contains(tile) ? taken : missing) << tile;
    if (taken.isEmpty())
        return false;
    m_mistake =
        tr("\"%1\" is a part of the projection \"%2\", which stays because of \"%3\": measure that, too, or "
           "rename the wall")
            .arg(taken.constFirst(), nameOf(projection), missing.constFirst());
    return true;
}

// Windows that showed the only plane of a wall show its new one; others that showed a part that is gone are told.
void zoHPCSurveyPlanes::followNames(const QDomDocument& document, const QDomElement& projection)
{
    const QStringList known = names();
    const QStringList tiles = tilesOf(projection);
    const QDomNodeList viewports = document.elementsByTagName(zoClusterTags::Viewport);
    for (int i = 0; i < viewports.size(); ++i) {
        QDomElement viewport = viewports.at(i).toElement();
        const QString shown = viewport.attribute(zoText("projection"));
        if (known.contains(shown) || !(tiles.contains(shown) || shown == nameOf(projection)))
            continue;
        if (tiles.size() <= 1 && known.contains(nameOf(projection)))
            viewport.setAttribute(zoText("projection"), nameOf(projection));
        else
            m_remarks << tr("what showed \"%1\" shows nothing now").arg(shown);
    }
    m_remarks.removeDuplicates();
}

bool zoHPCSurveyPlanes::putInto(zoHPCConfiguration& configuration)
{
    m_mistake = m_unusable;
    m_remarks.clear();
    if (!m_mistake.isEmpty())
        return false;
    QDomDocument document = configuration.document();
    QDomElement root = document.documentElement();
    std::vector<QDomElement> gone;
    QDomElement place; // what the planes come before
    bool isReplacing = false;
    forEach(root, zoClusterTags::Projection, [&](const QDomElement& projection) {
        if (makesWay(projection))
            gone.push_back(projection);
        else if (m_mistake.isEmpty())
            takesNames(projection);
        if (!isReplacing && makesWay(projection)) {
            isReplacing = true;
            place = projection;
        }
    });
    if (!m_mistake.isEmpty())
        return false;
    if (!isReplacing)
        place = root.firstChildElement(zoClusterTags::Display);
    for (const auto& item : m_items)
        root.insertBefore(item->toXML(document, zoClusterTags::Projection), place);
    for (QDomElement& projection : gone) {
        followNames(document, projection);
        root.removeChild(projection);
    }
    configuration.read(document);
    return true;
}
