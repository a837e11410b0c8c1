#pragma once

#include <zoWallSetup.h>

#include <QImage>
#include <QMap>
#include <QSize>
#include <QString>

// All displays of a wall as they are lit, in one picture arranged as the wall is: where pictures overlap, their light
// adds up. Pictures may come one after the other, in any order.
class zoWallPicture final
{
public:
    // Larger walls are scaled down to so many pixels in either direction.
    static constexpr int LargestSide = 8192;

    explicit zoWallPicture(zoWallSetup setup);

    QSize size() const { return m_light.size(); }
    // A window's pixels in any size. False for a window that is none of the wall.
    bool add(const QString& node, int window, const QImage& picture);
    bool add(const zoWallNode& node, const zoWallWindow& window, const QImage& picture);
    // What came so far, on black.
    const QImage& image() const { return m_light; }

private:
    void addLight(const QImage& picture, const QPoint& place);

    zoWallSetup m_setup;
    double m_scale = 1.0;
    QImage m_light;
};
