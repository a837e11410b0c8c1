#pragma once

#include <zoHPCWallPlan.h>

#include <QRandomGenerator>
#include <QtMath>

#include <algorithm>

// Plans of walls as somebody may mean them: of all kinds, with square pixels, and with as many hosts as they take.
class zoRandomWall final
{
public:
    explicit zoRandomWall(quint32 seed) : m_random(seed) {}

    zoHPCWallPlan plan()
    {
        m_plan = zoHPCWallPlan();
        m_plan.kind = Plan::Kind(m_random.bounded(5));
        m_plan.columns = 1 + m_random.bounded(6);
        m_plan.rows = 1 + m_random.bounded(4);
        m_plan.tilePixels = {640 + 2 * m_random.bounded(1600), 480 + 2 * m_random.bounded(1000)};
        m_pixel = between(0.3, 3.0);
        setOverlap();
        setSize();
        setStereo();
        setHosts();
        return m_plan;
    }

private:
    using Plan = zoHPCWallPlan;

    double between(double low, double high) { return low + (high - low) * m_random.generateDouble(); }
    bool chance(int percent) { return m_random.bounded(100) < percent; }

    // Up to a fifth of a tile is shared, or a twentieth hidden; whole pixels, in either unit.
    void setOverlap()
    {
        const auto pixels = [this](int tile) -> double {
            const int how = m_random.bounded(3);
            return how == 0   ? 0.0
                   : how == 1 ? double(m_random.bounded(tile / 5))
                              : -double(m_random.bounded(tile / 20));
        };
        m_shared = {pixels(m_plan.tilePixels.width()), pixels(m_plan.tilePixels.height())};
        const bool isLength = chance(50);
        const double unit = isLength ? m_pixel : 1.0;
        m_plan.overlapUnit = isLength ? Plan::Unit::Millimetres : Plan::Unit::Pixels;
        m_plan.overlap = {m_shared.across * unit, m_shared.down * unit};
        m_plan.pixelPitch = isLength ? m_pixel : 0.0;
    }

    void setSize()
    {
        const double width = m_plan.tilePixels.width() * m_pixel;
        const double height = m_plan.tilePixels.height() * m_pixel;
        m_plan.sizeOf = chance(50) ? Plan::SizeOf::Tile : Plan::SizeOf::Wall;
        m_plan.size = {width, height};
        if (m_plan.sizeOf == Plan::SizeOf::Wall)
            m_plan.size = {m_plan.columns * width - (m_plan.columns - 1) * m_shared.across * m_pixel,
                           m_plan.rows * height - (m_plan.rows - 1) * m_shared.down * m_pixel};
        m_plan.viewer = {0.0, 0.0, between(800.0, 6000.0)};
        if (m_plan.kind == Plan::Kind::Power && chance(30))
            m_plan.viewer = {between(-1000.0, 1000.0), between(-500.0, 500.0), m_plan.viewer.z};
        if (m_plan.kind == Plan::Kind::Cave)
            setCave(width, height);
        if (m_plan.kind == Plan::Kind::Curved)
            setCurve(width);
        if (m_plan.kind == Plan::Kind::Planes)
            setPlanes(width, height);
    }

    // A box whose front wall has square pixels; the others are as deep as they are.
    void setCave(double width, double height)
    {
        const bool isOne = m_plan.columns == 1 && m_plan.rows == 1;
        if (isOne)
            m_plan.overlap = m_shared = {};
        m_plan.caveSize = {m_plan.columns * width - (m_plan.columns - 1) * m_shared.across * m_pixel,
                           m_plan.rows * height - (m_plan.rows - 1) * m_shared.down * m_pixel, 0.0};
        m_plan.caveSize.z = m_plan.caveSize.x;
        m_plan.caveWalls = Plan::FrontWall | (chance(50) ? Plan::LeftWall : 0U) |
                           (chance(50) ? Plan::RightWall : 0U) | (chance(30) ? Plan::BackWall : 0U);
        m_plan.viewer = {between(-0.2, 0.2) * m_plan.caveSize.x, between(-0.2, 0.2) * m_plan.caveSize.y,
                         between(-0.2, 0.2) * m_plan.caveSize.z};
    }

    // At most half of a circle, the viewer near its axis.
    void setCurve(double width)
    {
        const double length = m_plan.columns * (width - m_shared.across * m_pixel);
        m_plan.radius = std::max(length / between(0.3, 3.0), 1.5 * width);
        m_plan.curvature = chance(50) ? Plan::Curvature::Angle : Plan::Curvature::Radius;
        m_plan.columnAngle = between(1.0, 170.0 / std::max(m_plan.columns, 4));
        m_plan.viewer = {between(-0.05, 0.05) * m_plan.radius, between(-300.0, 300.0), 0.0};
        m_plan.viewer.z = m_plan.curveRadius() * between(0.8, 1.2);
    }

    // Around the viewer, each faces him.
    void setPlanes(double width, double height)
    {
        m_plan.viewer = {between(-300.0, 300.0), between(-300.0, 300.0), between(-300.0, 300.0)};
        const int count = 1 + m_random.bounded(5);
        const double distance = std::max(width, height) * 1.5;
        for (int i = 0; i < count; ++i) {
            Plan::Plane plane;
            plane.name = chance(50) ? QStringLiteral("Screen %1").arg(QChar('A' + i)) : QString();
            plane.size = {width, height};
            plane.yaw = 360.0 / count * i;
            plane.tilt = between(-20.0, 60.0);
            const double yaw = qDegreesToRadians(plane.yaw);
            const double tilt = qDegreesToRadians(plane.tilt);
            const Point3 toViewer{std::sin(yaw) * std::cos(tilt), std::sin(tilt),
                                  std::cos(yaw) * std::cos(tilt)};
            plane.center = m_plan.viewer - distance * toViewer;
            m_plan.planes.push_back(plane);
        }
    }

    void setStereo()
    {
        const auto& modes = Plan::stereoModes();
        m_plan.stereo = chance(50) ? Plan::Stereo::LeftRight
                                   : modes[std::size_t(m_random.bounded(int(modes.size())))].mode;
        m_plan.eyeOrder = Plan::EyeOrder(m_random.bounded(4));
        m_plan.eyeSeparation = between(55.0, 75.0);
    }

    void setHosts()
    {
        m_plan.windowsPerNode = chance(50) ? 0 : 2 * (1 + m_random.bounded(3));
        int count = m_plan.nodesNeeded() + (chance(20) ? m_random.bounded(4) : 0);
        // With half of the nodes each takes two windows.
        if (m_plan.windowsPerNode == 0 && !m_plan.hasPairsOnNodes() && m_plan.tileCount() % 2 == 0 &&
            chance(40))
            count = m_plan.windowCount() / 2;
        const QString last = QString::number(count);
        const int how = m_random.bounded(3);
        m_plan.hosts = how == 0 ? QStringLiteral("n[1-%1]").arg(last)
                       : how == 1
                           ? QStringLiteral("head[rt=0] gate[rt=0] { n[1-%1] }").arg(last)
                           : QStringLiteral("{ n0001 n0002 - n%1 }").arg(count, 4, 10, QLatin1Char('0'));
        if (how == 2 && count < 4)
            m_plan.hosts = QStringLiteral("n[1-%1]").arg(last);
    }

    QRandomGenerator m_random;
    Plan m_plan;
    double m_pixel = 1.0;   // mm
    Plan::Overlap m_shared; // pixels
};
