#include "zoTestScene.h"

#include "zoOffAxisView.h"
#include "zoRoomMath.h"
#include "zoStrokeDigits.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

using namespace zoRoomMath;

const QColor zoTestScene::HorizonColour(196, 24, 60);
const QColor zoTestScene::EdgeColour(255, 214, 10);
const QColor zoTestScene::SkyColour(222, 232, 238);

namespace
{
constexpr double Pi = 3.14159265358979323846;
constexpr double Far = 1.0e6;        // mm; the sky is as good as infinitely far
constexpr double HorizonHalf = 0.07; // half the width of the line, degrees
const QColor s_farFloor(158, 172, 172);

double radians(double degrees)
{
    return degrees * Pi / 180.0;
}

// A level circle around an axis that stands upright.
std::vector<zoWallPoint> circle(const zoWallPoint& middle, double radius)
{
    constexpr int Corners = 72;
    std::vector<zoWallPoint> result;
    result.reserve(Corners);
    for (int i = 0; i < Corners; ++i) {
        const double angle = 2.0 * Pi * i / Corners;
        result.push_back(
            {middle.x + radius * std::cos(angle), middle.y, middle.z + radius * std::sin(angle)});
    }
    return result;
}

// On the sky: to the right of the direction in which the viewer looks, and above the horizon.
zoWallPoint onSky(const zoWallPoint& head, double azimuth, double elevation)
{
    const double level = Far * std::cos(radians(elevation));
    return {head.x + level * std::sin(radians(azimuth)), head.y + Far * std::sin(radians(elevation)),
            head.z - level * std::cos(radians(azimuth))};
}

QColor between(const QColor& a, const QColor& b, double share)
{
    const auto mixed = [share](int from, int to) { return int(std::lround(from + (to - from) * share)); };
    return {mixed(a.red(), b.red()), mixed(a.green(), b.green()), mixed(a.blue(), b.blue())};
}

enum class Side { Left, Right, Top, Bottom };

// How far a point lies beyond a side; negative inside.
double beyond(const QPointF& point, const QRectF& room, Side side)
{
    switch (side) {
    case Side::Left:
        return room.left() - point.x();
    case Side::Right:
        return point.x() - room.right();
    case Side::Top:
        return room.top() - point.y();
    default:
        return point.y() - room.bottom();
    }
}

// Without what lies beyond the room. Qt 6 goes through each line of a polygon, seen or not: a sky takes seconds there.
QPolygonF cut(QPolygonF polygon, const QRectF& room)
{
    for (const Side side : {Side::Left, Side::Right, Side::Top, Side::Bottom}) {
        QPolygonF inside;
        for (int i = 0; i < polygon.size(); ++i) {
            const QPointF from = polygon.at(i);
            const QPointF to = polygon.at((i + 1) % polygon.size());
            const double start = beyond(from, room, side);
            const double end = beyond(to, room, side);
            if (start <= 0.0)
                inside.append(from);
            if ((start < 0.0 && end > 0.0) || (start > 0.0 && end < 0.0))
                inside.append(from + (to - from) * (start / (start - end)));
        }
        polygon = inside;
    }
    return polygon;
}
} // namespace

// Paints figures of the room as one view sees them.
class zoTestScene::Canvas final
{
public:
    Canvas(QPainter& painter, const QRectF& target, const zoOffAxisView& view)
        : m_painter(painter), m_target(target), m_view(view)
    {
    }

    const zoOffAxisView& view() const { return m_view; }

    QPointF toPixel(const QPointF& fraction) const
    {
        return {m_target.left() + fraction.x() * m_target.width(),
                m_target.bottom() - fraction.y() * m_target.height()};
    }

    // Empty for what is out of sight.
    QPolygonF figure(const std::vector<zoWallPoint>& corners) const
    {
        QPolygonF result;
        for (const QPointF& point : m_view.project(corners))
            result.append(toPixel(point));
        const QRectF around = result.boundingRect();
        const bool isInSight = around.left() <= m_target.right() && around.right() >= m_target.left() &&
                               around.top() <= m_target.bottom() && around.bottom() >= m_target.top();
        if (!isInSight)
            return {};
        const QRectF room = m_target.adjusted(-CutOff, -CutOff, CutOff, CutOff);
        return room.contains(around) ? result : cut(result, room);
    }

    void fill(const std::vector<zoWallPoint>& corners, const QBrush& brush, bool isSmooth = true)
    {
        const QPolygonF polygon = figure(corners);
        if (polygon.isEmpty())
            return;
        m_painter.setRenderHint(QPainter::Antialiasing, isSmooth);
        m_painter.setBrush(brush);
        m_painter.drawConvexPolygon(polygon);
    }

    void fill(const std::vector<Figure>& figures, bool isSmooth = true)
    {
        for (const Figure& figure : figures)
            fill(figure.corners, figure.colour, isSmooth);
    }

    void fill(const QPainterPath& path, const QBrush& brush)
    {
        m_painter.setRenderHint(QPainter::Antialiasing, true);
        m_painter.fillPath(path, brush);
    }

private:
    QPainter& m_painter;
    QRectF m_target;
    const zoOffAxisView& m_view;
};

zoTestScene::zoTestScene(const std::vector<zoWallPlane>& walls, const zoWallPoint& head)
    : m_walls(walls), m_head(head)
{
    m_floor = walls.empty() ? head.y - 1600.0 : Far;
    for (const zoWallPlane& wall : walls) {
        const zoWallPoint upperLeft = sum(wall.lowerLeft, difference(wall.upperRight, wall.lowerRight));
        for (const zoWallPoint& corner : {wall.lowerLeft, wall.lowerRight, wall.upperRight, upperLeft}) {
            m_floor = std::min(m_floor, corner.y);
            m_reach = std::max(m_reach, length(difference(corner, head)));
        }
    }
    m_reach = std::clamp(m_reach, 1000.0, Far / 20.0);
    // Eyes below or in the floor would see none.
    m_floor = std::clamp(m_floor, head.y - Far / 100.0, head.y - 300.0);
    addBalls();
}

double zoTestScene::horizonWidth() const
{
    return 2.0 * HorizonHalf;
}

// Evenly over all directions, at distances that follow no pattern: wherever a wall is, there are some.
void zoTestScene::addBalls()
{
    constexpr double Lowest = -62.0; // degrees
    constexpr double Highest = 56.0;
    const double golden = 180.0 * (3.0 - std::sqrt(5.0));
    m_balls.reserve(BallCount);
    for (int i = 0; i < BallCount; ++i) {
        const double low = std::sin(radians(Lowest));
        const double high = std::sin(radians(Highest));
        const double sine = low + (high - low) * (i + 0.5) / BallCount;
        const double elevation = std::asin(sine);
        const double azimuth = radians(std::fmod(i * golden, 360.0));
        double distance = m_reach * (1.15 + 1.5 * std::fmod(i * 0.7548776662, 1.0));
        constexpr double AngularRadius = 0.036;
        // None in the floor: what would be, lies on it.
        const double deepest = m_head.y - m_floor;
        if (-sine * distance > deepest - AngularRadius * distance)
            distance = deepest / (AngularRadius - sine);
        Ball ball;
        ball.middle = {m_head.x + distance * std::cos(elevation) * std::sin(azimuth),
                       m_head.y + distance * sine,
                       m_head.z - distance * std::cos(elevation) * std::cos(azimuth)};
        ball.radius = AngularRadius * distance;
        ball.colour = QColor::fromHsvF(std::fmod(0.55 + i * 0.2763932, 1.0), 0.62, 0.93);
        ball.number = QString::number(i + 1);
        ball.outlines = zoStrokeDigits::outlines(ball.number);
        m_balls.push_back(ball);
    }
}

void zoTestScene::paint(QPainter& painter, const QRectF& target, const zoOffAxisView& view) const
{
    painter.save();
    painter.setClipRect(target, Qt::IntersectClip);
    painter.setPen(Qt::NoPen);
    Canvas canvas(painter, target, view);
    painter.fillRect(target, QColor(150, 176, 196));
    if (view.isValid()) {
        paintSky(canvas);
        paintFloor(canvas);
        paintHorizon(canvas);
        paintBalls(canvas);
        canvas.fill(edges());
    }
    painter.restore();
}

// What is above an elevation is what is seen through a level circle high above the head.
void zoTestScene::paintSky(Canvas& canvas) const
{
    const QColor low = SkyColour;
    const QColor high(74, 124, 176);
    constexpr int Steps = 28;
    for (int i = 0; i < Steps; ++i) {
        const double share = double(i) / (Steps - 1);
        const double elevation = 0.02 + 80.0 * share * share;
        const zoWallPoint middle{m_head.x, m_head.y + Far * std::sin(radians(elevation)), m_head.z};
        canvas.fill(circle(middle, Far * std::cos(radians(elevation))), between(low, high, share), false);
    }
}

void zoTestScene::paintFloor(Canvas& canvas) const
{
    canvas.fill(circle({m_head.x, m_head.y - Far * std::sin(radians(0.02)), m_head.z}, Far), s_farFloor,
                false);
    canvas.fill(floor(), false);
    canvas.fill(floorLines());
}

std::vector<zoTestScene::Figure> zoTestScene::floor() const
{
    const zoWallPoint middle{m_head.x, m_floor, m_head.z};
    const QColor near(86, 100, 106);
    constexpr int Steps = 18;
    std::vector<Figure> result;
    result.reserve(Steps);
    for (int i = 0; i < Steps; ++i) {
        const double share = double(i) / (Steps - 1);
        const double radius = m_reach * 12.0 * (1.0 - share) * (1.0 - share) + m_reach * 0.4;
        result.push_back({circle(middle, radius), between(s_farFloor, near, share)});
    }
    return result;
}

// Half metres near the walls, whole ones further away.
std::vector<zoTestScene::Figure> zoTestScene::floorLines() const
{
    const double spacing = m_reach > 12000.0 ? 2000.0 : 500.0;
    const int lines = 40;
    const double half = spacing * lines;
    std::vector<Figure> result;
    for (int i = -lines; i <= lines; ++i) {
        const bool isWhole = i % 2 == 0;
        if (!isWhole && std::abs(i) > lines / 2)
            continue;
        const double reach = isWhole ? half : half / 2;
        const double width = isWhole ? spacing * 0.02 : spacing * 0.009;
        const QColor colour = isWhole ? QColor(236, 241, 240) : QColor(196, 206, 206);
        const double at = i * spacing;
        const zoWallPoint middleAt{m_head.x + at, m_floor, m_head.z};
        const zoWallPoint across{m_head.x, m_floor, m_head.z + at};
        const auto line = [&](const zoWallPoint& origin, const zoWallPoint& along, const zoWallPoint& aside) {
            result.push_back({{zoRoomMath::at(origin, -reach, along, -width, aside),
                               zoRoomMath::at(origin, reach, along, -width, aside),
                               zoRoomMath::at(origin, reach, along, width, aside),
                               zoRoomMath::at(origin, -reach, along, width, aside)},
                              colour});
        };
        line(middleAt, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0});
        line(across, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0});
    }
    return result;
}

void zoTestScene::paintHorizon(Canvas& canvas) const
{
    canvas.fill(horizon());
    for (const Number& number : directions())
        paintNumber(canvas, number);
}

std::vector<zoTestScene::Figure> zoTestScene::horizon() const
{
    std::vector<Figure> result;
    const auto piece = [&](double azimuth1, double elevation1, double azimuth2, double elevation2) {
        result.push_back({{onSky(m_head, azimuth1, elevation1), onSky(m_head, azimuth2, elevation1),
                           onSky(m_head, azimuth2, elevation2), onSky(m_head, azimuth1, elevation2)},
                          HorizonColour});
    };
    // Pieces lie on the level plane of the eyes, so that together they are a straight line in every picture; the
    // overlap hides their joints.
    for (int i = 0; i < 360; i += 10)
        piece(i - 0.01, -HorizonHalf, i + 10.01, HorizonHalf);
    for (int i = 0; i < 360; i += 10)
        piece(i - HorizonHalf, 0.0, i + HorizonHalf, i % 30 == 0 ? 1.0 : 0.5);
    return result;
}

std::vector<zoTestScene::Number> zoTestScene::directions() const
{
    const double size = Far * radians(1.4);
    std::vector<Number> result;
    for (int i = 0; i < 360; i += 30) {
        const zoWallPoint right = unit(difference(onSky(m_head, i + 1.0, 2.0), onSky(m_head, i - 1.0, 2.0)));
        result.push_back({QString::number(i),
                          onSky(m_head, i, 2.0),
                          scaled(size, right),
                          {0.0, size, 0.0},
                          HorizonColour});
    }
    return result;
}

void zoTestScene::paintNumber(Canvas& canvas, const Number& number) const
{
    paintNumber(canvas, number, zoStrokeDigits::outlines(number.digits));
}

void zoTestScene::paintNumber(Canvas& canvas, const Number& number,
                              const std::vector<QPolygonF>& outlines) const
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QPolygonF& outline : outlines) {
        std::vector<zoWallPoint> corners;
        corners.reserve(std::size_t(outline.size()));
        for (const QPointF& point : outline)
            corners.push_back(at(number.middle, point.x(), number.right, point.y(), number.up));
        const QPolygonF figure = canvas.figure(corners);
        if (!figure.isEmpty())
            path.addPolygon(figure);
    }
    canvas.fill(path, number.colour);
}

void zoTestScene::paintBalls(Canvas& canvas) const
{
    std::vector<const Ball*> inOrder;
    inOrder.reserve(m_balls.size());
    for (const Ball& ball : m_balls)
        inOrder.push_back(&ball);
    const zoWallPoint eye = canvas.view().eye();
    std::stable_sort(inOrder.begin(), inOrder.end(), [&eye](const Ball* a, const Ball* b) {
        return length(difference(a->middle, eye)) > length(difference(b->middle, eye));
    });
    for (const Ball* const ball : inOrder)
        paintBall(canvas, *ball);
}

// The circle in which lines from an eye touch a ball.
struct zoTestScene::Disc
{
    zoWallPoint middle;
    double radius;
    zoWallPoint right; // unit vectors
    zoWallPoint up;
};

zoTestScene::Disc zoTestScene::discOf(const Ball& ball, const zoWallPoint& eye) const
{
    const zoWallPoint ray = difference(ball.middle, eye);
    const double distance = length(ray);
    const zoWallPoint ahead = scaled(1.0 / distance, ray);
    // Straight above or below, any direction is as good for up.
    zoWallPoint right = cross(ahead, {0.0, 1.0, 0.0});
    right = length(right) > 1.0e-6 ? unit(right) : zoWallPoint{1.0, 0.0, 0.0};
    const double share = std::min(1.0, ball.radius / distance);
    return {sum(ball.middle, scaled(-ball.radius * share, ahead)),
            ball.radius * std::sqrt(1.0 - share * share), right, cross(right, ahead)};
}

zoTestScene::Number zoTestScene::numberOf(const Ball& ball, const zoWallPoint& eye) const
{
    const Disc disc = discOf(ball, eye);
    // Three digits are wider than high.
    const double size = disc.radius * (ball.number.size() > 2 ? 0.7 : 0.9);
    return {ball.number, disc.middle, scaled(size, disc.right), scaled(size, disc.up), QColor(20, 24, 30)};
}

void zoTestScene::paintBall(Canvas& canvas, const Ball& ball) const
{
    const zoWallPoint eye = canvas.view().eye();
    if (length(difference(ball.middle, eye)) <= ball.radius * 1.01)
        return;
    const Disc disc = discOf(ball, eye);
    constexpr int Corners = 40;
    std::vector<zoWallPoint> rim;
    rim.reserve(Corners);
    for (int i = 0; i < Corners; ++i) {
        const double angle = 2.0 * Pi * i / Corners;
        rim.push_back(at(disc.middle, disc.radius * std::cos(angle), disc.right,
                         disc.radius * std::sin(angle), disc.up));
    }
    if (canvas.view().depth(disc.middle) - disc.radius < canvas.view().distance() / 50.0 ||
        canvas.figure(rim).isEmpty())
        return;

    // A unit circle with the light from the upper left becomes that circle, nearly.
    const auto pixelAt = [&](double toRight, double toTop) {
        return canvas.toPixel(canvas.view().project(at(disc.middle, toRight, disc.right, toTop, disc.up)));
    };
    const QPointF origin = pixelAt(0.0, 0.0);
    const QPointF toRight = pixelAt(disc.radius, 0.0) - origin;
    const QPointF toTop = pixelAt(0.0, disc.radius) - origin;
    QRadialGradient shade(QPointF(0.0, 0.0), 1.05, QPointF(-0.35, 0.4));
    shade.setColorAt(0.0, ball.colour.lighter(138));
    shade.setColorAt(0.55, ball.colour);
    shade.setColorAt(1.0, ball.colour.darker(190));
    QBrush brush(shade);
    brush.setTransform(QTransform(toRight.x(), toRight.y(), toTop.x(), toTop.y(), origin.x(), origin.y()));
    canvas.fill(rim, brush);
    paintNumber(canvas, numberOf(ball, eye), ball.outlines);
}

// Inside of each wall, half of the line for either side of a corner.
std::vector<zoTestScene::Figure> zoTestScene::edges() const
{
    std::vector<Figure> result;
    for (const zoWallPlane& wall : m_walls) {
        const zoWallPoint across = difference(wall.lowerRight, wall.lowerLeft);
        const zoWallPoint upward = difference(wall.upperRight, wall.lowerRight);
        const double width = length(across);
        const double height = length(upward);
        const double line = std::max(width, height) * 0.0035;
        if (!(line > 0.0) || !(line < width) || !(line < height))
            continue;
        const auto strip = [&](double left, double bottom, double right, double top) {
            result.push_back({{at(wall.lowerLeft, left / width, across, bottom / height, upward),
                               at(wall.lowerLeft, right / width, across, bottom / height, upward),
                               at(wall.lowerLeft, right / width, across, top / height, upward),
                               at(wall.lowerLeft, left / width, across, top / height, upward)},
                              EdgeColour});
        };
        strip(0.0, 0.0, width, line);
        strip(0.0, height - line, width, height);
        strip(0.0, 0.0, line, height);
        strip(width - line, 0.0, width, height);
    }
    return result;
}
