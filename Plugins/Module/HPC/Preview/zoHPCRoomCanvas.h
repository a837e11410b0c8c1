#pragma once

#include "zoHPCPicture.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCRoomCamera.h"

#include <QPolygonF>
#include <QRectF>

#include <vector>

class QBrush;
class QPainter;
class zoHPCPlane;

// What the parts of the room are painted with: points, planes and lines in space go to their places in the
// picture, and labels keep off each other.
class zoHPCRoomCanvas final
{
public:
    // Painter and camera must outlive the canvas.
    zoHPCRoomCanvas(QPainter& painterToUse, const QRectF& areaToFill, const QPalette& palette,
                    zoHPCPicture::Detail detail, const zoHPCRoomCamera& cameraToUse);

    bool isVisible(const Point3& point) const { return camera.see(point).depth > zoHPCRoomCamera::Near; }
    QPointF place(const Point3& point) const;
    // What lies before the camera; empty when nothing does.
    QPolygonF polygon(const zoHPCPlane& plane) const;
    void line(const Point3& from, const Point3& to);
    void fill(const zoHPCPlane& plane, const QBrush& brush);
    // From colour to colour across the plane, to the right or upward.
    void ramp(const zoHPCPlane& plane, const QColor& from, const QColor& to, bool upward);
    void arrow(const Point3& from, const Point3& to, const QColor& color, double width);
    // On a ground of its own, whole within the picture; moved down until it covers no other label, or up
    // where there is no room below. After very many it is painted where it is.
    void label(const QPointF& center, const QString& fullText, const QColor& color, bool isBold);
    // Beside the labels that are there, or not at all.
    void smallLabel(QRectF box, const QString& text);
    // No label is there.
    bool isFree(const QRectF& box) const;
    // No label goes there.
    void reserve(const QRectF& box);
    // Below this there are no labels.
    void endLabelsAt(double y) { m_lowest = y; }

    QPainter& painter;
    const QRectF area;
    const zoHPCRoomCamera& camera;
    const zoHPCPictureStyle style;
    const bool isFast;

private:
    static zoHPCRoomCamera::Seen cut(const zoHPCRoomCamera::Seen& a, const zoHPCRoomCamera::Seen& b);
    QRectF besideLabels(QRectF box, bool isAbove) const;

    std::vector<QRectF> m_labels;
    double m_lowest;
};
