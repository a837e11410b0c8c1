#include "zoStrokeDigits.h"

#include <QLineF>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QTransform>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
constexpr double Width = 0.52;  // of a digit, from the middle of one stroke to that of the other
constexpr double Height = 0.84; // the same; a stroke's width more is 1
constexpr double Stroke = 0.16;
constexpr double Step = 0.82; // from digit to digit

// Middles of the strokes, from the lower left corner of the digit, y up.
// long: one case per digit
QPainterPath skeleton(int digit)
{
    constexpr double w = Width;
    constexpr double h = Height;
    constexpr double r = Width / 2;
    const QRectF upper(0.0, h - w, w, w);
    const QRectF lower(0.0, 0.0, w, w);
    // Angles count clockwise where y is up.
    QPainterPath path;
    switch (digit) {
    case 0:
        path.addRoundedRect(QRectF(0.0, 0.0, w, h), r, r);
        break;
    case 1:
        path.moveTo(0.1, h - 0.18);
        path.lineTo(r + 0.04, h);
        path.lineTo(r + 0.04, 0.0);
        break;
    case 2:
        path.arcMoveTo(upper, 180.0);
        path.arcTo(upper, -180.0, 210.0);
        path.lineTo(0.0, 0.0);
        path.lineTo(w, 0.0);
        break;
    case 3:
        path.moveTo(0.02, h);
        path.lineTo(w - 0.02, h);
        path.lineTo(r - 0.04, h - 0.33);
        path.arcTo(QRectF(-0.02, 0.0, w, 0.51), -90.0, 240.0);
        break;
    case 4:
        path.moveTo(w - 0.12, 0.0);
        path.lineTo(w - 0.12, h);
        path.lineTo(0.0, 0.24);
        path.lineTo(w + 0.04, 0.24);
        break;
    case 5:
        path.moveTo(w - 0.04, h);
        path.lineTo(0.06, h);
        path.lineTo(0.03, h - 0.36);
        path.arcTo(QRectF(-0.02, 0.0, w, 0.52), -130.0, 270.0);
        break;
    case 6:
        path.moveTo(w - 0.1, h);
        path.quadTo(0.02, h - 0.18, 0.0, r);
        path.arcTo(lower, 180.0, 360.0);
        break;
    case 7:
        path.moveTo(0.0, h);
        path.lineTo(w, h);
        path.lineTo(0.16, 0.0);
        break;
    case 8:
        path.addEllipse(QRectF(0.04, h - 0.4, w - 0.08, 0.4));
        path.addEllipse(QRectF(0.0, 0.0, w, h - 0.4));
        break;
    default:
        path.moveTo(0.1, 0.0);
        path.quadTo(w - 0.02, 0.18, w, h - r);
        path.arcTo(upper, 0.0, 360.0);
        break;
    }
    return path;
}

std::vector<QPolygonF> outlinesOf(int digit)
{
    QPainterPathStroker stroker;
    stroker.setWidth(Stroke);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setCurveThreshold(0.02);
    QTransform toMiddle;
    toMiddle.translate(-Width / 2, -Height / 2);
    std::vector<QPolygonF> result;
    const QList<QPolygonF> polygons = stroker.createStroke(skeleton(digit)).toSubpathPolygons();
    for (const QPolygonF& polygon : polygons)
        result.push_back(toMiddle.map(polygon));
    return result;
}
// Where an edge that is not level is at a height.
double sideAt(const QLineF& edge, double y)
{
    return edge.x1() + (y - edge.y1()) / (edge.y2() - edge.y1()) * (edge.x2() - edge.x1());
}
} // namespace

// Between the heights of two corners that follow each other no edges begin, end or cross: what lies inside are
// trapezoids.
std::vector<QPolygonF> zoStrokeDigits::pieces(int digit)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QPolygonF& outline : outlinesOf(digit))
        path.addPolygon(outline);
    std::vector<QLineF> edges;
    std::vector<double> heights;
    const QList<QPolygonF> loops = path.simplified().toSubpathPolygons();
    for (const QPolygonF& loop : loops) {
        for (int i = 0; i < loop.size(); ++i) {
            const QLineF edge(loop[i], loop[(i + 1) % loop.size()]);
            heights.push_back(edge.y1());
            if (edge.y1() != edge.y2())
                edges.push_back(edge.y1() < edge.y2() ? edge : QLineF(edge.p2(), edge.p1()));
        }
    }
    std::sort(heights.begin(), heights.end());
    std::vector<QPolygonF> result;
    for (std::size_t i = 1; i < heights.size(); ++i) {
        const double low = heights[i - 1];
        const double high = heights[i];
        if (high - low < 1.0e-6)
            continue;
        std::vector<std::pair<double, double>> sides; // at both heights
        for (const QLineF& edge : edges) {
            if (edge.y1() < high && edge.y2() > low)
                sides.emplace_back(sideAt(edge, low), sideAt(edge, high));
        }
        std::sort(sides.begin(), sides.end(),
                  [](const auto& a, const auto& b) { return a.first + a.second < b.first + b.second; });
        for (std::size_t j = 1; j < sides.size(); j += 2)
            result.push_back(QPolygonF({{sides[j - 1].first, low},
                                        {sides[j].first, low},
                                        {sides[j].second, high},
                                        {sides[j - 1].second, high}}));
    }
    return result;
}

double zoStrokeDigits::place(int index, int digits)
{
    return (index - (digits - 1.0) / 2.0) * Step;
}

std::vector<QPolygonF> zoStrokeDigits::outlines(const QString& number)
{
    static const std::array<std::vector<QPolygonF>, 10> s_digits = [] {
        std::array<std::vector<QPolygonF>, 10> digits;
        for (int i = 0; i < 10; ++i)
            digits[std::size_t(i)] = outlinesOf(i);
        return digits;
    }();
    std::vector<int> values;
    for (const QChar character : number) {
        if (character.unicode() >= '0' && character.unicode() <= '9')
            values.push_back(character.unicode() - '0');
    }
    std::vector<QPolygonF> result;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double x = place(int(i), int(values.size()));
        for (const QPolygonF& polygon : s_digits[std::size_t(values[i])])
            result.push_back(polygon.translated(x, 0.0));
    }
    return result;
}
