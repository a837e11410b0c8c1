#pragma once

#include "Point3.h"

// A projection plane by three of its corners, in millimetres; the fourth completes the parallelogram.
class zoHPCPlane final
{
public:
    zoHPCPlane() = default;
    zoHPCPlane(const Point3& lowerLeftCorner, const Point3& lowerRightCorner, const Point3& upperRightCorner);

    // Upright, straight in front of the viewer and centred on the axis.
    static zoHPCPlane facing(double width, double height, double distance);
    // Corners of a zoHPCProjectionItem of type "plane".
    template <class Item>
    static zoHPCPlane fromItem(const Item& item)
    {
        return item.plane();
    }
    template <class Item>
    void toItem(Item& item) const
    {
        item.setPlane(*this);
    }

    Point3 upperLeft() const { return upperRight - lowerRight + lowerLeft; }
    Point3 center() const { return 0.5 * (lowerLeft + upperRight); }
    Point3 right() const { return lowerRight - lowerLeft; } // not normalised
    Point3 up() const { return upperRight - lowerRight; }   // not normalised
    double width() const { return length(right()); }
    double height() const { return length(up()); }
    // Unit vector to the side from which the picture reads the right way round; null for a degenerate plane.
    Point3 normal() const { return unit(cross(right(), up())); }
    // s counts to the right and t upward, both from the lower left corner, in fractions of the plane.
    Point3 at(double s, double t) const { return lowerLeft + s * right() + t * up(); }
    // The part between these fractions.
    zoHPCPlane part(double s1, double t1, double s2, double t2) const;

    // No area: corners that coincide or lie on one line, or that are not numbers.
    bool isDegenerate() const;
    // By how much the corner at the lower right differs from a right angle, in degrees.
    double skew() const;
    // On which side of the plane the point lies, in millimetres: positive where the picture reads the right way round.
    double distanceInFront(const Point3& point) const { return dot(normal(), point - center()); }
    // Whether it shows that point its back, where the picture reads mirrored. A point in or near the plane
    // (a tenth of its size) counts as in front: a floor may lie a little above the origin of the tracking.
    bool turnsAwayFrom(const Point3& point) const;

    Point3 lowerLeft;
    Point3 lowerRight;
    Point3 upperRight;
};
