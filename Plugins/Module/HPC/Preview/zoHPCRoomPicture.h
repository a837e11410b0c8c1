#pragma once

#include "zoHPCPicture.h"
#include "zoHPCPlane.h"
#include "zoHPCRoomCamera.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCPictureStyle;
class zoHPCProjectionItem;

// The projection planes in space as they stand around the viewer, in perspective: the viewer stands at the
// origin and looks along -z, y is up. Tiled walls, which have pixels instead of sizes, stand upright at their
// distance with their centre before the viewer, a pixel as large as a millimetre; the size of their tiles is
// that of a window that shows one.
class zoHPCRoomPicture final : public zoHPCPicture
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCRoomPicture)

public:
    // Rows and columns of tiles in one plane. Widths and steps are fractions of the plane.
    struct Wall
    {
        zoHPCProjectionItem* item = nullptr; // the row of the tree that makes it; not owned
        QString name;
        zoHPCPlane plane;
        int rows = 1;
        int columns = 1;
        double tileWidth = 1.0;
        double tileHeight = 1.0;
        double columnStep = 1.0;
        double rowStep = 1.0;
        int firstTile =
            -1; // index among the item's children; the item is the tile itself when there are none
        bool isBlended = false;
        double leftBand = 0.0; // of a plane that stands alone
        double rightBand = 0.0;
        double lowerBand = 0.0;
        double upperBand = 0.0;
        bool isInPixels = false;
        bool isDegenerate = false;
        bool isSkewed = false;
        bool turnsAway = false; // from the viewer
        std::vector<bool> lit; // tiles that a viewport shows, row by row from the top; empty when all are lit

        bool isBad() const { return isDegenerate || isSkewed || turnsAway; }
        double left(int column) const { return column * columnStep; }
        double top(int row) const { return 1.0 - row * rowStep; } // rows count downward
        bool isLit(int row, int column) const
        {
            return lit.empty() ||
                   lit[static_cast<size_t>(row) * static_cast<size_t>(columns) + static_cast<size_t>(column)];
        }
    };

    // Reads what there is to draw. The items must live while itemAt() may be called.
    void setLayout(const zoHPCLayout& layout);
    // Rows of the projection tree are highlighted themselves, rows of the display tree by what they show.
    void setCurrentItem(const QTreeWidgetItem* item, const zoHPCLayout& layout);

    const std::vector<Wall>& walls() const { return m_walls; }
    const zoHPCRoomCamera& camera() const { return m_camera; }
    void setCamera(const zoHPCRoomCamera& camera) { m_camera = camera; }
    // Takes everything into the picture; the direction stays.
    void fit(const QRectF& area);

    bool isLarge() const override;
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

    // The tile, or plane, nearest to the eye at this place of the picture; null beside all of them.
    QTreeWidgetItem* itemAt(const QPointF& point, const QRectF& area) const;

private:
    struct Highlight
    {
        size_t wall = 0;
        int tile = -1; // all of it
    };

    class Canvas;

    void addWalls(const zoHPCLayout& layout, int projection);
    void addGeneratedWall(const zoHPCLayout& layout, int projection, int firstTile, int tiles);
    void addTiledWall(const zoHPCLayout& layout, int projection);
    void addPlane(const zoHPCLayout& layout, int projection);
    void finish(Wall& wall, const zoHPCLayout& layout, int projection);
    std::vector<Point3> extent() const;

    void paintFloor(Canvas& canvas) const;
    void paintViewer(Canvas& canvas) const;
    void paintWall(Canvas& canvas, const Wall& wall) const;
    void paintFill(Canvas& canvas, const Wall& wall) const;
    void paintBands(Canvas& canvas, const Wall& wall) const;
    void paintTileLines(Canvas& canvas, const Wall& wall) const;
    void paintNormal(Canvas& canvas, const Wall& wall) const;
    void paintHighlights(Canvas& canvas) const;
    void paintAxes(Canvas& canvas) const;
    void paintNames(Canvas& canvas) const;
    void paintTileNames(Canvas& canvas) const;
    void paintLegend(Canvas& canvas) const;

    std::vector<Wall> m_walls;
    std::vector<Highlight> m_highlights;
    zoHPCRoomCamera m_camera;
};
