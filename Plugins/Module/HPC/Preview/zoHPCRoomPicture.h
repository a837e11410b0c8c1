#pragma once

#include "zoHPCPicture.h"
#include "zoHPCRoomCamera.h"
#include "zoHPCRoomFrames.h"
#include "zoHPCRoomWall.h"

#include <QCoreApplication>
#include <QLineF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>
#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCRoomCanvas;

// The projection planes in space as they stand around the viewer: the viewer stands at the
// origin and looks along -z, y is up. Tiled walls, which have pixels instead of sizes, stand upright at their
// distance with their centre before the viewer, a pixel as large as a millimetre; the size of their tiles is
// that of a window that shows one.
class zoHPCRoomPicture final : public zoHPCPicture
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCRoomPicture)

public:
    using Wall = zoHPCRoomWall;

    // Reads what there is to draw. The items must live while itemAt() may be called.
    void setLayout(const zoHPCLayout& layout);
    // Rows of the projection tree are highlighted themselves, rows of the display tree by what they show.
    void setCurrentItems(const Rows& items, const zoHPCLayout& layout);

    // As a drawing that is read without the program: the hosts on their tiles, and how large each wall is.
    void setIsDrawing(bool isDrawing) { m_isDrawing = isDrawing; }
    // How large each wall is, as in a drawing.
    void setHasDimensions(bool hasDimensions) { m_hasDimensions = hasDimensions; }
    // Where windows and monitors lie on the surfaces, of those that have room for it.
    void setHasFrames(bool hasFrames) { m_hasFrames = hasFrames; }
    // Of all screens that have a number, in pixels; empty when it is not known. Takes effect with the next setLayout().
    void setScreenSize(const QSizeF& size) { m_screenSize = size; }

    const std::vector<Wall>& walls() const { return m_walls; }
    const zoHPCRoomCamera& camera() const { return m_camera; }
    void setCamera(const zoHPCRoomCamera& camera) { m_camera = camera; }

    // The direction stays.
    void fit(const QRectF& area) override;
    bool isLarge() const override;
    bool isReadable(const QRectF& area) const override;
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

    // The tile, or plane, nearest to the eye at this place of the picture; null beside all of them.
    QTreeWidgetItem* itemAt(const QPointF& point, const QRectF& area) const;

private:
    struct Highlight
    {
        size_t wall = 0;
        int tile = -1; // all of it
    };

    // The nearest wall that a ray meets, and where in fractions of its plane.
    struct Meeting
    {
        const Wall* wall = nullptr;
        double s = 0.0;
        double t = 0.0;
    };

    // In the corner of the picture.
    struct Axis
    {
        QLineF line;
        QRectF name;
    };

    qint64 tileCount() const; // of all walls, a plane counted as one
    Meeting meet(const QPointF& point, const QRectF& area) const;
    Meeting meetEdge(const QPointF& point, const QRectF& area) const;
    QTreeWidgetItem* lineAt(const QPointF& point, const QRectF& area) const;

    Point3 viewersLook(const zoHPCRoomCanvas& canvas) const;
    double viewersRadius(const zoHPCRoomCanvas& canvas) const;
    QRectF viewersPlace(const zoHPCRoomCanvas& canvas) const;
    void paintViewer(zoHPCRoomCanvas& canvas) const;
    void paintHighlights(zoHPCRoomCanvas& canvas) const;
    std::array<Axis, 3> axesOf(const zoHPCRoomCanvas& canvas) const;
    void paintAxes(zoHPCRoomCanvas& canvas) const;
    void paintNames(zoHPCRoomCanvas& canvas) const;
    void paintHosts(zoHPCRoomCanvas& canvas) const;
    void paintDimensions(zoHPCRoomCanvas& canvas, const Wall& wall) const;

    std::vector<Wall> m_walls;
    std::vector<Highlight> m_highlights;
    zoHPCRoomCamera m_camera;
    bool m_isDrawing = false;
    bool m_hasDimensions = false;
    bool m_hasFrames = false;
    QSizeF m_screenSize;
    zoHPCRoomFrames m_frames;
};
