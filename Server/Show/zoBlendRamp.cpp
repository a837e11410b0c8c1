#include "zoBlendRamp.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace
{
std::vector<double> factors(int size, double first, double last, double gamma)
{
    std::vector<double> result(std::size_t(std::max(0, size)), 1.0);
    for (int i = 0; i < size; ++i) {
        const double middle = i + 0.5;
        double light = 1.0;
        if (first > 0.0)
            light *= zoBlendRamp::light(middle / first);
        if (last > 0.0)
            light *= zoBlendRamp::light((size - middle) / last);
        result[std::size_t(i)] = gamma > 0.0 ? std::pow(light, 1.0 / gamma) : light;
    }
    return result;
}
} // namespace

zoBlendRamp::zoBlendRamp(const zoWallEdges& edges, int width, int height, double gamma)
    : m_isEmpty(edges.isEmpty())
    , m_columns(factors(width, edges.left, edges.right, gamma))
    , m_rows(factors(height, edges.top, edges.bottom, gamma))
{
}

void zoBlendRamp::apply(QImage& image) const
{
    if (m_isEmpty)
        return;
    const int width = std::min(image.width(), int(m_columns.size()));
    const int height = std::min(image.height(), int(m_rows.size()));
    for (int y = 0; y < height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const double by = factor(x, y);
            if (by < 1.0)
                line[x] = qRgb(int(std::lround(qRed(line[x]) * by)), int(std::lround(qGreen(line[x]) * by)),
                               int(std::lround(qBlue(line[x]) * by)));
        }
    }
}

double zoBlendRamp::light(double place)
{
    const double t = std::clamp(place, 0.0, 1.0);
    // Without a kink at either end, which would show as a line.
    return t * t * (3.0 - 2.0 * t);
}
