#include "zoHPCStereoChecks.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCLayout.h"
#include "zoHPCPlaneWalls.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QHash>
#include <QSet>

#include <cmath>
#include <map>
#include <utility>

namespace
{
using Kind = zoHPCProblem::Kind;
using Viewport = zoHPCLayout::Viewport;

struct Display
{
    zoHPCDisplayItem* item;
    int number; // as a person counts them
    bool isStereo;
    bool isGiven; // its eye separation
    double separation;
};

std::vector<Display> displaysOf(const zoHPCLayout& layout)
{
    std::vector<Display> displays;
    QHash<const QTreeWidgetItem*, size_t> indices;
    for (const zoHPCLayout::Window& window : layout.windows()) {
        auto* const item = dynamic_cast<zoHPCDisplayItem*>(window.item->parent());
        if (!item || indices.contains(item))
            continue;
        indices.insert(item, displays.size());
        displays.push_back({item, window.display, false, item->isSet(zoHPCDisplayItem::EyeSeparation),
                            item->getDouble(zoHPCDisplayItem::EyeSeparation)});
    }
    for (const Viewport& viewport : layout.viewports()) {
        if (!viewport.isStereo || viewport.window == zoHPCLayout::None)
            continue;
        const QTreeWidgetItem* const item =
            layout.windows()[static_cast<size_t>(viewport.window)].item->parent();
        const auto found = indices.constFind(item);
        if (found != indices.constEnd())
            displays[*found].isStereo = true;
    }
    return displays;
}

QString userOf(const Display& display)
{
    return display.item->getString(zoHPCDisplayItem::User);
}

// By user: the number of the first display in stereo with an eye separation above 0.
QHash<QString, int> firstPositive(const std::vector<Display>& displays)
{
    QHash<QString, int> numbers;
    for (const Display& display : displays) {
        if (display.isStereo && display.separation > 0.0 && !numbers.contains(userOf(display)))
            numbers.insert(userOf(display), display.number);
    }
    return numbers;
}

void setFixedSeparation(zoHPCProblem& problem, zoHPCDisplayItem* item, double separation)
{
    problem.setFix(QCoreApplication::translate("zoHPCProblems", "Use %1 mm").arg(separation),
                   [item, separation] {
                       item->setEyeSeparation(separation);
                       item->update();
                   });
}

// How each tile of one projection is shown to one user.
struct Tiles
{
    std::vector<int> mono;   // indices of projections
    std::vector<int> stereo; // in stereo, whatever else shows them
};

// By top-level row and user. Tiles that nobody shows are in neither list.
std::map<std::pair<int, QString>, Tiles> tilesOf(const zoHPCLayout& layout)
{
    // By projection: users who see it by viewports of its own, and whether in stereo.
    std::vector<std::map<QString, bool>> users(layout.projections().size());
    for (const Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None || viewport.isOverview ||
            viewport.window == zoHPCLayout::None)
            continue;
        const QString& user = layout.windows()[static_cast<size_t>(viewport.window)].user;
        bool& isStereo = users[static_cast<size_t>(viewport.projection)][user];
        isStereo = isStereo || viewport.isStereo;
    }
    std::map<std::pair<int, QString>, Tiles> result;
    for (size_t i = 0; i < users.size(); ++i) {
        const zoHPCLayout::Projection& projection = layout.projections()[i];
        if (projection.parent == zoHPCLayout::None)
            continue;
        // A viewport of the whole shows all tiles alike; beside that of a tile it is a tile shown twice.
        for (const auto& [user, isStereo] : users[i]) {
            Tiles& tiles = result[{projection.top, user}];
            (isStereo ? tiles.stereo : tiles.mono).push_back(static_cast<int>(i));
        }
    }
    return result;
}

// The mode in which all of these tiles are shown to both eyes; empty when they differ or each eye has its own.
QString commonMode(const std::vector<const Viewport*>& viewports)
{
    QString mode;
    for (const Viewport* viewport : viewports) {
        const QString eye = viewport->item->getString(zoHPCViewportItem::Eye);
        if (zoHPCDisplayTables::isForOneEye(eye) || (!mode.isEmpty() && mode != eye))
            return QString();
        mode = eye;
    }
    return mode;
}

QString modeText(const QString& mode)
{
    const zoHPCDisplayTables::StereoMode* const row = zoHPCDisplayTables::stereoMode(mode);
    return row ? QCoreApplication::translate("zoHPCDisplayGUII", row->text) : mode;
}

// Of several viewports of a tile nobody knows which is which eye: no fix then.
void setCommonMode(zoHPCProblem& problem, const std::vector<const Viewport*>& viewports, const QString& mode)
{
    if (mode.isEmpty() || viewports.size() != 1)
        return;
    problem.setFix(QCoreApplication::translate("zoHPCProblems", "Set to \"%1\"").arg(modeText(mode)),
                   [item = viewports[0]->item, mode] {
                       item->setString(zoHPCViewportItem::Eye, mode);
                       item->update();
                   });
}
} // namespace

zoHPCProblem::List zoHPCStereoChecks::eyeSeparationsInMetres(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Display& display : displaysOf(layout)) {
        const double size = std::abs(display.separation);
        if (!display.isGiven || !(size > 0.0) || !(size < SmallestEyeSeparation))
            continue;
        problems.emplace_back(Kind::EyeSeparationInMetres, display.item,
                              tr("Display %1 has an eye separation of %2 mm. Was it measured in metres? Eyes "
                                 "are about 65 mm apart.")
                                  .arg(QString::number(display.number), QString::number(display.separation)));
        setFixedSeparation(problems.back(), display.item, 1000.0 * display.separation);
    }
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::noEyeSeparations(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Display& display : displaysOf(layout)) {
        if (!display.isGiven || !display.isStereo || std::abs(display.separation) > 0.0)
            continue;
        problems.emplace_back(Kind::NoEyeSeparation, display.item,
                              tr("Display %1 shows stereo with an eye separation of 0: both eyes see the "
                                 "same picture. Eyes are about "
                                 "65 mm apart.")
                                  .arg(display.number));
        setFixedSeparation(problems.back(), display.item, UsualEyeSeparation);
    }
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::unlikeEyeSeparations(const zoHPCLayout& layout)
{
    const std::vector<Display> displays = displaysOf(layout);
    const QHash<QString, int> positive = firstPositive(displays);
    zoHPCProblem::List problems;
    for (const Display& display : displays) {
        if (!display.isStereo || !(display.separation < 0.0) || !positive.contains(userOf(display)))
            continue;
        problems.emplace_back(Kind::UnlikeEyeSeparations, display.item,
                              tr("Display %1 has an eye separation of %2 mm and display %3 of the same user "
                                 "one above 0: one of them "
                                 "shows each eye the picture of the other.")
                                  .arg(QString::number(display.number), QString::number(display.separation),
                                       QString::number(positive.value(userOf(display)))));
        setFixedSeparation(problems.back(), display.item, -display.separation);
    }
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::swappedEyes(const zoHPCLayout& layout)
{
    const std::vector<Display> displays = displaysOf(layout);
    const QHash<QString, int> positive = firstPositive(displays);
    zoHPCProblem::List problems;
    for (const Display& display : displays) {
        if (!display.isStereo || !(display.separation < 0.0) || positive.contains(userOf(display)))
            continue;
        problems.emplace_back(
            Kind::SwappedEyes, display.item,
            tr("Display %1 has an eye separation of %2 mm, below 0: each eye sees the picture of "
               "the other, which is right where the projectors or the glasses are swapped.")
                .arg(QString::number(display.number), QString::number(display.separation)));
        setFixedSeparation(problems.back(), display.item, -display.separation);
    }
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::monoTilesInStereoWalls(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems = monoTilesOfProjections(layout);
    for (zoHPCProblem& problem : monoPlanesAmongStereo(layout))
        problems.push_back(std::move(problem));
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::monoTilesOfProjections(const zoHPCLayout& layout)
{
    std::vector<std::vector<const Viewport*>> viewports(layout.projections().size());
    for (const Viewport& viewport : layout.viewports()) {
        if (viewport.projection != zoHPCLayout::None)
            viewports[static_cast<size_t>(viewport.projection)].push_back(&viewport);
    }
    zoHPCProblem::List problems;
    for (const auto& [wall, tiles] : tilesOf(layout)) {
        if (tiles.mono.empty() || tiles.stereo.empty())
            continue;
        const zoHPCLayout::Projection& top = layout.projections()[static_cast<size_t>(wall.first)];
        const bool isMonoWrong = tiles.mono.size() <= tiles.stereo.size();
        const std::vector<int>& wrong = isMonoWrong ? tiles.mono : tiles.stereo;
        std::vector<const Viewport*> right;
        for (const int tile : isMonoWrong ? tiles.stereo : tiles.mono) {
            for (const Viewport* viewport : viewports[static_cast<size_t>(tile)]) {
                if (viewport->isStereo == isMonoWrong)
                    right.push_back(viewport);
            }
        }
        const QString mode = commonMode(right);
        for (const int tile : wrong) {
            const zoHPCLayout::Projection& projection = layout.projections()[static_cast<size_t>(tile)];
            problems.emplace_back(
                Kind::MonoTileInStereoWall, projection.item,
                (isMonoWrong
                     ? tr("\"%1\" is shown without stereo, the other tiles of \"%2\" in stereo. Set the same "
                          "mode for all of them.")
                     : tr("\"%1\" is shown in stereo, the other tiles of \"%2\" without. Set the same mode "
                          "for all of them."))
                    .arg(projection.name(), top.name()));
            setCommonMode(problems.back(), viewports[static_cast<size_t>(tile)], mode);
        }
    }
    return problems;
}

zoHPCProblem::List zoHPCStereoChecks::monoPlanesAmongStereo(const zoHPCLayout& layout)
{
    std::vector<std::vector<const Viewport*>> viewports(layout.projections().size());
    std::map<QString, std::map<int, bool>> planes; // by user: those that he sees, and whether in stereo
    for (const Viewport& viewport : layout.viewports()) {
        if (viewport.projection == zoHPCLayout::None || viewport.window == zoHPCLayout::None)
            continue;
        const auto index = static_cast<size_t>(viewport.projection);
        const zoHPCLayout::Projection& projection = layout.projections()[index];
        if (projection.parent != zoHPCLayout::None ||
            projection.item->kind() != zoHPCProjectionType::Kind::Plane)
            continue;
        viewports[index].push_back(&viewport);
        bool& isStereo =
            planes[layout.windows()[static_cast<size_t>(viewport.window)].user][viewport.projection];
        isStereo = isStereo || viewport.isStereo;
    }
    zoHPCProblem::List problems;
    for (const auto& [user, seen] : planes) {
        for (const zoHPCPlaneWalls::Mixed& wall : zoHPCPlaneWalls::mixedWalls(layout, seen)) {
            std::vector<const Viewport*> right;
            for (const int plane : wall.stereo) {
                const std::vector<const Viewport*>& own = viewports[static_cast<size_t>(plane)];
                right.insert(right.end(), own.begin(), own.end());
            }
            const QString mode = commonMode(right);
            for (const int plane : wall.mono) {
                const zoHPCLayout::Projection& projection = layout.projections()[static_cast<size_t>(plane)];
                problems.emplace_back(
                    Kind::MonoTileInStereoWall, projection.item,
                    tr("\"%1\" is shown without stereo, the planes beside it in stereo. Set "
                       "the same mode for all of them.")
                        .arg(projection.name()));
                setCommonMode(problems.back(), viewports[static_cast<size_t>(plane)], mode);
            }
        }
    }
    return problems;
}
