#pragma once

#include <QRect>
#include <QString>

class QScreen;
struct zoWallWindow;

// The screens of this machine as documents count them.
namespace zoWallScreens
{
// Where a window lies on the desktop, in pixels.
struct Place
{
    QScreen* screen = nullptr; // null when it is missing
    QRect geometry;
    QString failure; // why, in words
};

Place find(const zoWallWindow& window);

// Whether there are no real screens, as offscreen: none is missing then, and all have the size that is asked for.
bool areImaginary();
} // namespace zoWallScreens
