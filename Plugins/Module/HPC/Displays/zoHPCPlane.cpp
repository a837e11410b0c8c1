#include "zoHPCPlane.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

zoHPCPlane::zoHPCPlane(const Point3& lowerLeftCorner, const Point3& lowerRightCorner,
                       const Point3& upperRightCorner)
    : lowerLeft(lowerLeftCorner), lowerRight(lowerRightCorner), upperRight(upperRightCorner)
{
}

zoHPCPlane zoHPCPlane::facing(double width, double height, double distance)
{
    const double x = width / 2;
    const double y = height / 2;
    return {{-x, -y, -distance}, {x, -y, -distance}, {x, y, -distance}};
}

zoHPCPlane zoHPCPlane::part(double s1, double t1, double s2, double t2) const
{
    return {at(s1, t1), at(s2, t1), at(s2, t2)};
}

bool zoHPCPlane::isDegenerate() const
{
    const double w = width();
    const double h = height();
    if (!std::isfinite(w) || !std::isfinite(h) || !std::isfinite(length(center())))
        return true;
    constexpr double SHORTEST = 1e-6; // mm
    if (w < SHORTEST || h < SHORTEST)
        return true;
    return length(cross(right(), up())) < 1e-6 * w * h;
}

double zoHPCPlane::skew() const
{
    if (isDegenerate())
        return 0.0;
    const double sine = dot(right(), up()) / (width() * height());
    return std::abs(qRadiansToDegrees(std::asin(qBound(-1.0, sine, 1.0))));
}

bool zoHPCPlane::turnsAwayFrom(const Point3& point) const
{
    return !isDegenerate() && distanceInFront(point) < -0.1 * std::max(width(), height());
}
