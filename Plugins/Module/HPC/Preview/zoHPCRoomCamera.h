#pragma once

#include "zoHPCPlane.h"

#include <QPointF>
#include <QRectF>

#include <vector>

// A look into the room: from where, at what, in perspective or, as in elevations and plans, in parallel lines.
// Positions are in millimetres, angles in degrees.
class zoHPCRoomCamera final
{
public:
    // A point as the camera sees it: to the right, upward and away from it.
    struct Seen
    {
        double x = 0.0;
        double y = 0.0;
        double depth = 0.0;
    };

    static constexpr double FieldOfView = 40.0; // of the shorter side of the picture
    // What is nearer than this is cut off (mm).
    static constexpr double Near = 1.0;

    bool operator==(const zoHPCRoomCamera& other) const;
    bool operator!=(const zoHPCRoomCamera& other) const { return !(*this == other); }

    // Straight above or below, left and right would lose their meaning: the pitch stays off them.
    void orbit(double yawBy, double pitchBy);
    // Factors above 1 come nearer.
    void zoom(double factor);
    // Moves the room by a way in the picture.
    void pan(const QPointF& by, const QRectF& area);
    // Keeps the direction and takes all points into the picture, as far off its sides as the margin says.
    void fit(const std::vector<Point3>& points, const QRectF& area, double margin = 0.0);

    Point3 eye() const;
    // Where the ray through a point of the picture begins: the eye, unless rays are parallel.
    Point3 rayStart(const QPointF& point, const QRectF& area) const;
    Seen see(const Point3& point) const;
    // Only for what is not nearer than Near.
    QPointF toPicture(const Seen& seen, const QRectF& area) const;
    // Direction of the ray through a point of the picture, not normalised.
    Point3 rayThrough(const QPointF& point, const QRectF& area) const;
    // Pixels of the picture that a millimetre takes at this depth; at any depth when rays are parallel.
    double scaleAt(double depth, const QRectF& area) const;

    Point3 target;
    double yaw = 28.0;   // 0 looks along -z as the viewer does
    double pitch = 18.0; // from above
    double distance = 6000.0;
    // As from afar: the distance then says how much is seen and nothing is too near.
    bool isParallel = false;

private:
    struct Basis
    {
        Point3 right, up, forward;
    };

    Basis basis() const;
};
