#include "zoReadableColour.h"

#include <algorithm>
#include <cmath>

namespace
{
// Of one channel, as the guidelines for accessible content define it.
double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}
} // namespace

double zoReadableColour::contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor zoReadableColour::on(const QColor& background, const QColor& wanted, double least)
{
    constexpr int Steps = 100;
    const bool towardsWhite = contrast(background, Qt::white) >= contrast(background, Qt::black);
    const double from = wanted.hslHueF() < 0 ? 0 : wanted.hslHueF();
    const double start = wanted.lightnessF();
    QColor colour = wanted.toRgb();
    for (int step = 1; step <= Steps && contrast(colour, background) < least; ++step) {
        const double way = double(step) / Steps;
        const double lightness = towardsWhite ? start + (1 - start) * way : start * (1 - way);
        colour = QColor::fromHslF(from, wanted.hslSaturationF(), lightness).toRgb();
    }
    return colour;
}
