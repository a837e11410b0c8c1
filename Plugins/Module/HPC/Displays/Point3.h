#pragma once

#include <cmath>

// A point in the tracking space, in millimetres. The viewer looks along -z, y is up.
struct Point3
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Point3 operator+(const Point3& a, const Point3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Point3 operator-(const Point3& a, const Point3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Point3 operator*(double factor, const Point3& a)
{
    return {factor * a.x, factor * a.y, factor * a.z};
}

inline double dot(const Point3& a, const Point3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Point3 cross(const Point3& a, const Point3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Point3& a)
{
    return std::sqrt(dot(a, a));
}

// A vector without length stays as it is.
inline Point3 unit(const Point3& a)
{
    const double l = length(a);
    return l > 0.0 ? (1.0 / l) * a : a;
}
