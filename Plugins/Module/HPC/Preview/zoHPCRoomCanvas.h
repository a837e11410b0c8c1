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
    // On a ground of its own, whole within the picture; moved down or up, whatever is nearer, until it covers no
    // other label; a line leads from far off to where it belongs. Where there is no room at all it is
    // left out: names can be asked for in tool tips.
    void label(const QPointF& center, const QString& fullText, const QColor& color, bool isBold);
    // Nothing that is reserved is there; nor any text, which nothing may cover.
    bool isFree(const QRectF& box) const;
    bool isFreeOfText(const QRectF& box) const;
    // No label goes there.
    void reserve(const QRectF& box, bool isText = false);
    // Below this there are no labels.
    void endLabelsAt(double y) { m_lowest = y; }

    QPainter& painter;
    const QRectF area;
    const zoHPCRoomCamera& camera;
    const zoHPCPictureStyle style;
    const bool isFast;

private:
    static zoHPCRoomCamera::Seen cut(const zoHPCRoomCamera::Seen& a, const zoHPCRoomCamera::Seen& b);
    struct Label
    {
        QRectF box;
        bool isText;
    };

    QRectF besideLabels(QRectF box, bool isAbove) const;
    void leader(const QPointF& from, const QRectF& to);

    std::vector<Label> m_labels;
    double m_lowest;
};
