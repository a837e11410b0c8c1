#pragma once

#include <QPointF>

#include <vector>
#include <zoWallSetup.h>

// What an eye sees through a plane: the frustum from the eye through the plane's edges, wherever the eye is. After
// Robert Kooima, "Generalized Perspective Projection", 2008: a point goes to where the line from the eye to it meets
// the plane. Lengths in millimetres of the room; no pixel and no drawing library is known here.
class zoOffAxisView final
{
public:
    // The frustum at the near distance, as glFrustum takes it.
    struct Frustum
    {
        double left = 0.0;
        double right = 0.0;
        double bottom = 0.0;
        double top = 0.0;
    };

    // The eye that sees nothing.
    zoOffAxisView() = default;
    zoOffAxisView(const zoWallPlane& plane, const zoWallPoint& eye);

    // False for a plane without area, and for an eye in the plane or behind it, where the picture would be mirrored.
    bool isValid() const { return m_isValid; }
    const zoWallPoint& eye() const { return m_eye; }
    // Of the eye from the plane, mm; negative behind it.
    double distance() const { return m_distance; }
    Frustum frustum(double nearDistance) const;

    // How far a point is in front of the eye, measured along the plane's normal, mm; negative behind the eye.
    double depth(const zoWallPoint& point) const;
    // Where the eye sees a point: fractions of the plane, to the right and upward from its lower left corner. The
    // depth must be positive.
    QPointF project(const zoWallPoint& point) const;
    // The same for a flat figure with corners in order; what is nearer to the eye than a hundredth of the plane's
    // distance is cut off. Empty when nothing is left.
    std::vector<QPointF> project(const std::vector<zoWallPoint>& corners) const;

private:
    bool m_isValid = false;
    double m_distance = 0.0;
    zoWallPoint m_eye;
    zoWallPoint m_corner; // lower left
    zoWallPoint m_right;  // unit vectors
    zoWallPoint m_up;
    zoWallPoint m_normal; // to the viewer
    double m_width = 0.0;
    double m_height = 0.0;
};
