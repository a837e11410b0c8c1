#include "zoHPCReportFacts.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{
QString corner(const Point3& point)
{
    return QLatin1String("x ") + zoHPCReportFacts::number(point.x) + QLatin1String("\ny ") +
           zoHPCReportFacts::number(point.y) + QLatin1String("\nz ") + zoHPCReportFacts::number(point.z);
}
} // namespace

zoHPCReportFacts::zoHPCReportFacts(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master,
                                   double pixelPitch)
    : m_setup(displays, master, pixelPitch > 0.0 ? pixelPitch : 1.0)
    , m_pixelPitch(pixelPitch)
    , m_walls(zoHPCReportWalls::read(m_setup.layout()))
{
    const std::vector<zoHPCLayout::Projection>& projections = layout().projections();
    for (std::size_t i = 0; i < projections.size(); ++i) {
        if (projections[i].parent == zoHPCLayout::None)
            m_projections.insert(projections[i].item, int(i));
    }
    readOutputs();
}

void zoHPCReportFacts::readOutputs()
{
    QHash<int, int> pictures;
    for (std::size_t i = 0; i < m_setup.pictures().size(); ++i)
        pictures.insert(m_setup.pictures()[i].viewport, int(i));
    QHash<int, QString> reasons;
    for (const zoHPCRenderSetup::LeftOut& leftOut : m_setup.leftOut())
        reasons.insert(leftOut.viewport, leftOut.text);
    for (std::size_t i = 0; i < layout().viewports().size(); ++i) {
        const zoHPCLayout::Viewport& viewport = layout().viewports()[i];
        if (viewport.window == zoHPCLayout::None || viewport.projection == zoHPCLayout::None)
            continue;
        m_outputsOfProjection[viewport.projection].push_back(int(m_outputs.size()));
        m_outputs.push_back({int(i), viewport.window, viewport.projection,
                             pictures.value(int(i), zoHPCLayout::None), reasons.value(int(i))});
    }
}

std::vector<int> zoHPCReportFacts::outputsByNode() const
{
    std::vector<int> result(m_outputs.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = int(i);
    const auto key = [this](int index) {
        const zoHPCLayout::Window& window =
            layout().windows()[std::size_t(m_outputs[std::size_t(index)].window)];
        // Windows without a node of the cluster come last.
        const int node =
            window.nodeIndex == zoHPCLayout::None ? int(layout().nodes().size()) : window.nodeIndex;
        return std::make_tuple(node, window.screen, index);
    };
    std::sort(result.begin(), result.end(), [&](int a, int b) { return key(a) < key(b); });
    return result;
}

std::vector<int> zoHPCReportFacts::outputsOf(const zoHPCReportWalls::Wall& wall, int row, int column) const
{
    if (wall.isGrid())
        return m_outputsOfProjection.value(
            wall.grid.projections[std::size_t(row) * std::size_t(wall.columns) + std::size_t(column)]);
    const int top = m_projections.value(wall.item, zoHPCLayout::None);
    if (wall.firstTile < 0)
        return m_outputsOfProjection.value(top);
    // Tiles follow their projection.
    return m_outputsOfProjection.value(top + 1 + wall.firstTile + row * wall.columns + column);
}

std::vector<int> zoHPCReportFacts::outputsOfWhole(const zoHPCReportWalls::Wall& wall) const
{
    if (wall.firstTile < 0)
        return {};
    return m_outputsOfProjection.value(m_projections.value(wall.item, zoHPCLayout::None));
}

double zoHPCReportFacts::scaleOf(const zoHPCRoomWall& wall) const
{
    return wall.isInPixels && m_pixelPitch > 0.0 ? m_pixelPitch : 1.0;
}

QString zoHPCReportFacts::number(double value)
{
    if (!std::isfinite(value))
        return QString::fromLatin1("-");
    const double rounded = std::round(value * 10.0) / 10.0;
    return QString::number(rounded + 0.0, 'f', rounded == std::round(rounded) ? 0 : 1);
}

QString zoHPCReportFacts::size(double width, double height)
{
    return number(width) + QLatin1String(" x ") + number(height);
}

QString zoHPCReportFacts::nodeOf(const Output& output) const
{
    const QString& node = layout().windows()[std::size_t(output.window)].node;
    return node.isEmpty() ? tr("no node") : node;
}

QString zoHPCReportFacts::screenOf(const Output& output) const
{
    const zoHPCLayout::Window& window = layout().windows()[std::size_t(output.window)];
    if (!window.hasScreen)
        return tr("unknown screen");
    if (window.screen == zoHPCLayout::ExtendedDesktop)
        return tr("extended desktop");
    if (window.screen == zoHPCLayout::PrimaryScreen)
        return tr("primary screen");
    return tr("screen %1").arg(window.screen + 1);
}

QString zoHPCReportFacts::windowOf(const Output& output) const
{
    const zoHPCLayout::Window& window = layout().windows()[std::size_t(output.window)];
    const QString place = window.isFullScreen
                              ? tr("full screen")
                              : tr("at %1, %2").arg(number(window.geometry.x()), number(window.geometry.y()));
    return tr("window %1 of display %2")
               .arg(QString::number(window.number), QString::number(window.display)) +
           QLatin1Char('\n') + size(window.geometry.width(), window.geometry.height()) + QLatin1String(", ") +
           place;
}

QString zoHPCReportFacts::tileOf(const Output& output) const
{
    const zoHPCLayout::Projection& projection = layout().projections()[std::size_t(output.projection)];
    return projection.item->getString(zoHPCProjectionItem::Name);
}

QString zoHPCReportFacts::eyeOf(const Output& output) const
{
    const QString eye =
        layout().viewports()[std::size_t(output.viewport)].item->getString(zoHPCViewportItem::Eye);
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    if (mode == nullptr || mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Mono)
        return {};
    if (zoHPCDisplayTables::isForOneEye(eye))
        return mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Left ? tr("left eye") : tr("right eye");
    return QCoreApplication::translate("zoHPCDisplayGUII", mode->text);
}

const zoHPCRenderSetup::Picture* zoHPCReportFacts::pictureOf(const Output& output) const
{
    return output.picture == zoHPCLayout::None ? nullptr : &m_setup.pictures()[std::size_t(output.picture)];
}

QString zoHPCReportFacts::pixelsOf(const Output& output) const
{
    const zoHPCRenderSetup::Picture* const picture = pictureOf(output);
    if (picture == nullptr)
        return tr("not lit");
    QStringList lines{size(picture->geometry.width(), picture->geometry.height())};
    const QPoint corner = picture->geometry.topLeft() - picture->windowGeometry.topLeft();
    if (!corner.isNull())
        lines
            << tr("from %1, %2 of the window").arg(QString::number(corner.x()), QString::number(corner.y()));
    if (picture->flipX)
        lines << tr("mirrored");
    if (picture->flipY)
        lines << tr("upside down");
    if (!picture->rightEyeOffset.isNull())
        lines << tr("right eye moved by %1, %2")
                     .arg(QString::number(picture->rightEyeOffset.x()),
                          QString::number(picture->rightEyeOffset.y()));
    return lines.join(QLatin1Char('\n'));
}

QStringList zoHPCReportFacts::cornersOf(const Output& output) const
{
    const zoHPCRenderSetup::Picture* const picture = pictureOf(output);
    if (picture == nullptr)
        return {};
    const zoHPCProjectionItem& top = *layout().projections()[std::size_t(picture->wallItem)].item;
    if (top.typeRow().isInPixels && !(m_pixelPitch > 0.0))
        return {};
    const zoHPCPlane& plane = picture->plane;
    return {corner(plane.lowerLeft), corner(plane.lowerRight), corner(plane.upperRight)};
}

QString zoHPCReportFacts::blendsOf(const Output& output) const
{
    const zoHPCRenderSetup::Picture* const picture = pictureOf(output);
    if (picture == nullptr || picture->edges.isEmpty())
        return {};
    const bool isMeasured = !cornersOf(output).isEmpty();
    const double x = picture->plane.width() / picture->geometry.width();
    const double y = picture->plane.height() / picture->geometry.height();
    QStringList lines;
    const auto add = [&](const QString& side, double pixels, double pitch) {
        if (pixels > 0.0)
            lines << (isMeasured ? tr("%1 %2 px, %3 mm").arg(side, number(pixels), number(pixels * pitch))
                                 : tr("%1 %2 px").arg(side, number(pixels)));
    };
    add(tr("left"), picture->edges.left, x);
    add(tr("right"), picture->edges.right, x);
    add(tr("top"), picture->edges.top, y);
    add(tr("bottom"), picture->edges.bottom, y);
    return lines.join(QLatin1Char('\n'));
}
