#include "zoHPCPictureStyle.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace
{
QColor mixed(const QColor& a, const QColor& b, double partOfB)
{
    const double partOfA = 1.0 - partOfB;
    return QColor::fromRgbF(a.redF() * partOfA + b.redF() * partOfB,
                            a.greenF() * partOfA + b.greenF() * partOfB,
                            a.blueF() * partOfA + b.blueF() * partOfB);
}

// Pictures count in the points of a screen, on whatever is painted: on the sheet of a report, which has many more units
// to an inch, letters of so many points would be as many times too large.
int pixelSizeOf(const QFont& font)
{
    constexpr double PointsPerInch = 72.0;
    constexpr double UsualResolution = 96.0;
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const double resolution = screen ? screen->logicalDotsPerInchY() : UsualResolution;
    return qRound(font.pointSizeF() * resolution / PointsPerInch);
}
} // namespace

zoHPCPictureStyle::zoHPCPictureStyle(const QPalette& palette)
    : background(palette.color(QPalette::Base)), text(palette.color(QPalette::Text))
{
    if (font.pointSizeF() > 0.0)
        font.setPixelSize(pixelSizeOf(font));
    isDark = background.lightnessF() < 0.5;
    faintText = mixed(text, background, 0.4);
    grid = mixed(text, background, isDark ? 0.78 : 0.85);
    line = mixed(text, background, 0.3);
    panel = mixed(text, background, isDark ? 0.88 : 0.94);

    // The palette of Okabe and Ito, darker where thin lines need it on a light ground.
    const QColor sky(0x56, 0xB4, 0xE9);
    const QColor blue(0x00, 0x72, 0xB2);
    const QColor green(0x00, 0x9E, 0x73);
    const QColor yellow(0xF0, 0xE4, 0x42);
    const QColor orange(0xE6, 0x9F, 0x00);
    const QColor vermilion(0xD5, 0x5E, 0x00);
    const QColor purple(0xCC, 0x79, 0xA7);
    front = sky;
    bad = isDark ? vermilion.lighter(125) : vermilion;
    fadeOut = isDark ? sky : blue;
    fadeIn = orange;
    twice = yellow;
    current = isDark ? purple.lighter(120) : QColor(0x9E, 0x2A, 0x6B);
    leftEye = isDark ? blue.lighter(130) : sky;
    rightEye = orange;
    bothEyes = green;
}

QColor zoHPCPictureStyle::withAlpha(QColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

double zoHPCPictureStyle::markWidth(const QRectF& marked, int count)
{
    constexpr double Widest = 3.5;
    constexpr int Few = 4;
    if (count <= Few)
        return Widest;
    constexpr double Part = 1.0 / 12.0;
    constexpr double Line = 3.0; // what is seen from its edge
    const double least = qMin(marked.width(), marked.height());
    return qBound(1.0, Part * (least < Line ? qMax(marked.width(), marked.height()) : least), Widest);
}
