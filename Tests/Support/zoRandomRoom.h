#pragma once

#include <Point3.h>
#include <zoHPCPlane.h>

#include <QString>
#include <QStringList>

#include <cmath>
#include <random>
#include <vector>

// A room that is known exactly, and what a tape measure, a level and a total station would give of it: lines of
// measurements for zoHPCSurveyReader. Noise is as large as the tolerances say, and independent.
class zoRandomRoom final
{
public:
    struct Wall
    {
        QString name;
        Point3 center;
        Point3 right; // unit vectors
        Point3 up;
        double width;
        double height;

        Point3 at(double s, double t) const { return center + (s * width) * right + (t * height) * up; }
    };

    // `noise` is a factor of the tolerances.
    zoRandomRoom(unsigned seed, double noise) : m_random(seed), m_noise(noise)
    {
        makeWalls();
        alignWithFront();
        m_viewer = {between(-300, 300), between(1200, 1900), between(1500, 3000)};
        if (seed % 3 == 0)
            measureByInstrument();
        else
            measureByTape();
    }

    const QStringList& lines() const { return m_lines; }
    QString text() const { return m_lines.join(QLatin1Char('\n')); }
    const std::vector<Wall>& walls() const { return m_walls; }
    const Point3& viewer() const { return m_viewer; }

    // As a solver should find it.
    zoHPCPlane plane(std::size_t wall) const
    {
        const Wall& w = m_walls[wall];
        return {w.at(-0.5, -0.5) - m_viewer, w.at(0.5, -0.5) - m_viewer, w.at(0.5, 0.5) - m_viewer};
    }

    static constexpr double Tape = 2.0;    // mm
    static constexpr double Station = 1.0; // mm
    static constexpr double Level = 0.1;   // degrees

private:
    static constexpr double Degree = 3.14159265358979323846 / 180.0;

    double between(double least, double most)
    {
        return std::uniform_real_distribution<double>(least, most)(m_random);
    }
    double noise(double tolerance)
    {
        return m_noise * std::normal_distribution<double>(0.0, tolerance)(m_random);
    }
    static QString number(double value) { return QString::number(value, 'f', 12); }

    static Point3 turned(const Point3& v, const Point3& axis, double degrees)
    {
        const double c = std::cos(degrees * Degree);
        const double s = std::sin(degrees * Degree);
        return c * v + s * cross(axis, v) + ((1.0 - c) * dot(axis, v)) * axis;
    }

    // A front wall, wings that bend towards the viewer, sometimes a floor.
    void makeWalls()
    {
        const double width = between(1000, 5000);
        const double height = between(1000, 3000);
        const double bottom = between(100, 900);
        m_walls.push_back(
            {QStringLiteral("Front"), {0, bottom + height / 2, 0}, {1, 0, 0}, {0, 1, 0}, width, height});
        for (const double side : {-1.0, 1.0}) {
            if (between(0, 1) < 0.25)
                continue;
            const double wing = between(800, 3000);
            const double bend = between(25, 100);
            const Point3 right = turned({1, 0, 0}, {0, 1, 0}, -side * bend);
            const Point3 hinge = {side * (width / 2 + between(0, 60)), bottom + height / 2, between(0, 40)};
            m_walls.push_back({side < 0 ? QStringLiteral("Left") : QStringLiteral("Right"),
                               hinge + (side * wing / 2) * right,
                               right,
                               {0, 1, 0},
                               wing,
                               height});
        }
        m_upright = m_walls.size();
        if (between(0, 1) < 0.5)
            m_walls.push_back({QStringLiteral("Floor"),
                               {0, bottom, between(900, 1100)},
                               {1, 0, 0},
                               {0, 0, -1},
                               width,
                               between(1500, 2000)});
        // What the level calls plumb is so to its tolerance.
        for (std::size_t i = 0; i < m_upright; ++i) {
            for (const Point3& axis : {Point3{1, 0, 0}, Point3{0, 0, 1}}) {
                const double angle = noise(Level);
                m_walls[i].right = turned(m_walls[i].right, axis, angle);
                m_walls[i].up = turned(m_walls[i].up, axis, angle);
            }
        }
    }

    void alignWithFront()
    {
        const Point3 front = m_walls.front().right;
        const double heading = std::atan2(front.z, front.x) / Degree;
        for (Wall& wall : m_walls) {
            wall.center = turned(wall.center, {0, 1, 0}, heading);
            wall.right = turned(wall.right, {0, 1, 0}, heading);
            wall.up = turned(wall.up, {0, 1, 0}, heading);
        }
    }

    void add(const QString& what, double value, double tolerance)
    {
        m_lines
            << QStringLiteral("%1 %2 ± %3").arg(what, number(value + noise(tolerance)), number(tolerance));
    }

    void measureSizes()
    {
        m_lines << QStringLiteral("tolerance %1").arg(Tape);
        for (const Wall& wall : m_walls)
            m_lines << QStringLiteral("wall %1 size %2 x %3")
                           .arg(wall.name, number(wall.width + noise(Tape)),
                                number(wall.height + noise(Tape)));
    }

    struct Corner
    {
        const char* word;
        double s, t;
    };
    static const std::vector<Corner>& corners()
    {
        static const std::vector<Corner> list{
            {"ll", -0.5, -0.5}, {"lr", 0.5, -0.5}, {"ul", -0.5, 0.5}, {"ur", 0.5, 0.5}};
        return list;
    }
    static QString nameOf(const Wall& wall, const Corner& corner)
    {
        return wall.name + QLatin1Char('.') + QLatin1String(corner.word);
    }

    void measureByTape()
    {
        measureSizes();
        for (std::size_t i = 0; i < m_upright; ++i)
            m_lines << QStringLiteral("upright %1 ± %2").arg(m_walls[i].name, number(Level));
        for (const Corner& corner : {corners()[0], corners()[1]})
            add(QStringLiteral("floor ") + nameOf(m_walls.front(), corner),
                m_walls.front().at(corner.s, corner.t).y, Tape);
        for (std::size_t i = 1; i < m_walls.size(); ++i) {
            for (const Corner& corner : corners()) {
                for (const Corner& other : corners()) {
                    if (between(0, 1) < 0.2)
                        continue;
                    add(QStringLiteral("distance %1 %2")
                            .arg(nameOf(m_walls.front(), corner), nameOf(m_walls[i], other)),
                        length(m_walls.front().at(corner.s, corner.t) - m_walls[i].at(other.s, other.t)),
                        Tape);
                }
            }
        }
        for (const Wall& wall : m_walls)
            add(QStringLiteral("distance %1.ll %1.ur").arg(wall.name),
                length(wall.at(-0.5, -0.5) - wall.at(0.5, 0.5)), Tape);
        measureViewer();
    }

    void measureViewer()
    {
        for (const Corner& corner : corners())
            add(QStringLiteral("distance viewer ") + nameOf(m_walls.front(), corner),
                length(m_viewer - m_walls.front().at(corner.s, corner.t)), Tape);
        add(QStringLiteral("viewer height"), m_viewer.y, Tape);
    }

    // East, north and up of an instrument that stands somewhere else, and looks anywhere.
    void measureByInstrument()
    {
        measureSizes();
        const double heading = between(0, 360);
        const Point3 origin{between(-20000, 20000), between(-3000, 3000), between(-20000, 20000)};
        for (const Wall& wall : m_walls) {
            for (const Corner& corner : corners()) {
                const Point3 at = turned(wall.at(corner.s, corner.t) - origin, {0, 1, 0}, heading);
                m_lines << QStringLiteral("point %1 %2 %3 %4 ± %5")
                               .arg(nameOf(wall, corner), number(at.x + noise(Station)),
                                    number(-at.z + noise(Station)), number(at.y + noise(Station)),
                                    number(Station));
            }
        }
        add(QStringLiteral("floor Front.ll"), m_walls.front().at(-0.5, -0.5).y, Tape);
        measureViewer();
    }

    std::mt19937 m_random;
    double m_noise;
    std::vector<Wall> m_walls;
    std::size_t m_upright = 0;
    Point3 m_viewer;
    QStringList m_lines;
};
