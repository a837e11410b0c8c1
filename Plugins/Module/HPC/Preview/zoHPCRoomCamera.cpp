#include "zoHPCRoomCamera.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double s_maximumPitch = 89.0;
constexpr double s_nearest = 10.0; // mm
constexpr double s_farthest = 1e8;
// From where parallel rays come (mm): nothing of a room is behind it.
constexpr double s_afar = 1e9;

double focalLength(const QRectF& area)
{
    return std::min(area.width(), area.height()) / 2.0 /
           std::tan(qDegreesToRadians(zoHPCRoomCamera::FieldOfView / 2.0));
}
} // namespace

bool zoHPCRoomCamera::operator==(const zoHPCRoomCamera& other) const
{
    return target.x == other.target.x && target.y == other.target.y && target.z == other.target.z &&
           yaw == other.yaw && pitch == other.pitch && distance == other.distance &&
           isParallel == other.isParallel;
}

void zoHPCRoomCamera::orbit(double yawBy, double pitchBy)
{
    yaw = std::remainder(yaw + yawBy, 360.0);
    pitch = qBound(-s_maximumPitch, pitch + pitchBy, s_maximumPitch);
}

void zoHPCRoomCamera::zoom(double factor)
{
    if (factor > 0.0)
        distance = qBound(s_nearest, distance / factor, s_farthest);
}

void zoHPCRoomCamera::pan(const QPointF& by, const QRectF& area)
{
    if (area.isEmpty())
        return;
    const Basis b = basis();
    const double scale = scaleAt(distance, area);
    target = target - (by.x() / scale) * b.right + (by.y() / scale) * b.up;
}

void zoHPCRoomCamera::fit(const std::vector<Point3>& points, const QRectF& area, double margin)
{
    if (points.empty() || area.isEmpty())
        return;
    Point3 low = points.front();
    Point3 high = points.front();
    for (const Point3& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    target = 0.5 * (low + high);

    // How near the camera may come follows from each point at once; where the middle of what is then seen
    // lies does not, so both are done in turn until they agree.
    const double focal = focalLength(area);
    const double halfWidth = std::max(area.width() / 2.0 - margin, 1.0);
    const double halfHeight = std::max(area.height() / 2.0 - margin, 1.0);
    for (int round = 0; round < 10; ++round) {
        distance = s_nearest;
        double needed = s_nearest;
        for (const Point3& p : points) {
            const Seen s = see(p);
            const double behindTarget = isParallel ? 0.0 : s.depth - distance;
            needed =
                std::max({needed, std::abs(s.x) * focal / halfWidth - behindTarget,
                          std::abs(s.y) * focal / halfHeight - behindTarget, 10.0 * Near - behindTarget});
        }
        distance = std::min(needed, s_farthest);
        QPointF upperLeft(HUGE_VAL, HUGE_VAL);
        QPointF lowerRight(-HUGE_VAL, -HUGE_VAL);
        for (const Point3& p : points) {
            const QPointF place = toPicture(see(p), area);
            upperLeft = {std::min(upperLeft.x(), place.x()), std::min(upperLeft.y(), place.y())};
            lowerRight = {std::max(lowerRight.x(), place.x()), std::max(lowerRight.y(), place.y())};
        }
        pan(area.center() - (upperLeft + lowerRight) / 2.0, area);
    }
}

Point3 zoHPCRoomCamera::eye() const
{
    return target - distance * basis().forward;
}

Point3 zoHPCRoomCamera::rayStart(const QPointF& point, const QRectF& area) const
{
    if (!isParallel)
        return eye();
    const Basis b = basis();
    const QPointF fromCenter = (point - area.center()) / std::max(scaleAt(distance, area), 1e-12);
    return target + fromCenter.x() * b.right - fromCenter.y() * b.up - s_afar * b.forward;
}

zoHPCRoomCamera::Seen zoHPCRoomCamera::see(const Point3& point) const
{
    const Basis b = basis();
    const Point3 fromTarget = point - target;
    return {dot(fromTarget, b.right), dot(fromTarget, b.up),
            dot(fromTarget, b.forward) + (isParallel ? s_afar : distance)};
}

QPointF zoHPCRoomCamera::toPicture(const Seen& seen, const QRectF& area) const
{
    const double scale = scaleAt(seen.depth, area);
    return area.center() + QPointF(seen.x * scale, -seen.y * scale);
}

Point3 zoHPCRoomCamera::rayThrough(const QPointF& point, const QRectF& area) const
{
    const Basis b = basis();
    if (isParallel)
        return b.forward;
    const double focal = std::max(focalLength(area), 1e-9);
    const QPointF fromCenter = point - area.center();
    return b.forward + (fromCenter.x() / focal) * b.right - (fromCenter.y() / focal) * b.up;
}

double zoHPCRoomCamera::scaleAt(double depth, const QRectF& area) const
{
    return focalLength(area) / (isParallel ? distance : depth);
}

zoHPCRoomCamera::Basis zoHPCRoomCamera::basis() const
{
    const double y = qDegreesToRadians(yaw);
    const double p = qDegreesToRadians(pitch);
    Basis b;
    b.forward = {-std::sin(y) * std::cos(p), -std::sin(p), -std::cos(y) * std::cos(p)};
    b.right = {std::cos(y), 0.0, -std::sin(y)};
    b.up = cross(b.right, b.forward);
    return b;
}
