#pragma once

#include <QColor>

// Colours that people can read on what is behind them, whatever palette the desktop has.
class zoReadableColour final
{
public:
    // What texts need at least, as a ratio of luminances.
    static constexpr double Least = 4.5;

    zoReadableColour() = delete;

    // From 1, the same luminance, to 21, black and white.
    static double contrast(const QColor& one, const QColor& other);
    // The wanted colour, lighter or darker as far as it must be; of the same hue.
    static QColor on(const QColor& background, const QColor& wanted, double least = Least);
};
