#pragma once

#include <cmath>
#include <zoWallSetup.h>

// Arithmetic of points in the room.
namespace zoRoomMath
{
inline zoWallPoint sum(const zoWallPoint& a, const zoWallPoint& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline zoWallPoint difference(const zoWallPoint& a, const zoWallPoint& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline zoWallPoint scaled(double factor, const zoWallPoint& a)
{
    return {factor * a.x, factor * a.y, factor * a.z};
}

inline double dot(const zoWallPoint& a, const zoWallPoint& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline zoWallPoint cross(const zoWallPoint& a, const zoWallPoint& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const zoWallPoint& a)
{
    return std::sqrt(dot(a, a));
}

// Null stays null.
inline zoWallPoint unit(const zoWallPoint& a)
{
    const double l = length(a);
    return l > 0.0 ? scaled(1.0 / l, a) : a;
}

// a + s * right + t * up
inline zoWallPoint at(const zoWallPoint& a, double s, const zoWallPoint& right, double t,
                      const zoWallPoint& up)
{
    return sum(a, sum(scaled(s, right), scaled(t, up)));
}
} // namespace zoRoomMath
