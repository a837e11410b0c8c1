#include "zoStrokeDigits.h"

#include <QPainterPath>
#include <QPainterPathStroker>
#include <QTransform>

#include <array>

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
} // namespace

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
        const double x = (double(i) - (double(values.size()) - 1.0) / 2.0) * Step;
        for (const QPolygonF& polygon : s_digits[std::size_t(values[i])])
            result.push_back(polygon.translated(x, 0.0));
    }
    return result;
}
