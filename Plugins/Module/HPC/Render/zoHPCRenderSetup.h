#pragma once

#include "zoHPCLayout.h"
#include "zoHPCPlane.h"

#include <QCoreApplication>
#include <QHash>
#include <QPoint>
#include <QRect>
#include <QString>

#include <vector>

class zoHPCDisplaySetup;
class zoHPCTreeItem;

// A configuration as it is rendered: one picture per viewport, on a window of a host, of a plane in space. Node
// servers show it and exports to other engines write it, so that the two never differ. Holds items: valid until the
// next change of their trees.
class zoHPCRenderSetup final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCRenderSetup)

public:
    // What fades into a neighbour, in pixels of the picture, named as the plane's sides are: top is where the plane's
    // upper edge is, whatever the projector does.
    struct Edges
    {
        double left = 0.0;
        double right = 0.0;
        double top = 0.0;
        double bottom = 0.0;

        bool isEmpty() const { return left <= 0.0 && right <= 0.0 && top <= 0.0 && bottom <= 0.0; }
    };

    // Place of a tile in its wall, counted from 1 from the top left; 0 for what has no neighbours.
    struct Cell
    {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
    };

    struct Picture
    {
        int node;           // indices into layout()
        int window;         // those of one window follow each other
        int viewport;       //
        int projectionItem; // plane or tile
        int wallItem;       // the projection of the top level that it belongs to

        QString host;
        QString projection; // name of the plane or tile
        QString wall;       // name of the projection of the top level
        int screen;         // of the host; negative for its desktop
        bool isFullScreen;
        QRect windowGeometry; // pixels, y down
        QRectF area;          // of the window in fractions, y down
        QRect geometry;       // the same in pixels of the screen
        zoHPCPlane plane;     // millimetres
        QRectF part;          // of the wall in fractions, y up; all of it when the wall is not one plane

        Cell cell;
        Edges edges;
        QString eye;           // the word of the document, see zoHPCDisplayTables
        bool flipX;            // mirrored left to right, after all else
        bool flipY;            // upside down
        double eyeSeparation;  // mm
        QPoint rightEyeOffset; // by which the right eye's picture is moved, pixels to the right and upward
    };

    // A viewport that is not shown, and why.
    struct LeftOut
    {
        int viewport; // index into layout()
        QString text;
    };

    // What of the configuration is shown by enabled nodes. `pixelPitch` is the size of a pixel of tiled walls, which
    // have no other, in millimetres. No master means no nodes.
    zoHPCRenderSetup(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master, double pixelPitch);

    const zoHPCLayout& layout() const { return m_layout; }
    double pixelPitch() const { return m_pixelPitch; } // mm
    // For what has one for all: that of the first display with windows.
    double eyeSeparation() const; // mm
    // Both in the order of the viewports.
    const std::vector<Picture>& pictures() const { return m_pictures; }
    const std::vector<LeftOut>& leftOut() const { return m_leftOut; }
    // Of a viewport as a sentence calls it, "viewport 1 of window 2 of display 3".
    QString nameOf(const zoHPCLayout::Viewport& viewport) const;

    // Whether pixels can be counted so far, in any engine.
    static bool isOnAScreen(const QRectF& area);

    // The offset that a plane, a tile or a wall of them has, pixels to the right and upward.
    QPoint rightEyeOffset(int projection) const;

private:
    void addPicture(int index);
    QString placePicture(const zoHPCLayout::Viewport& viewport, Picture& picture) const;
    QString placeInWindow(const zoHPCLayout::Viewport& viewport, Picture& picture) const;
    void setAppearance(const zoHPCLayout::Viewport& viewport, Picture& picture) const;
    bool findPlane(int projection, Picture& picture) const;
    void findTile(const zoHPCLayout::Projection& entry, int projection, Picture& picture) const;
    Cell cellOf(int projection) const;
    Edges edgesOf(int projection, const QSizeF& pixels) const;
    zoHPCPlane wallPlane(const zoHPCProjectionItem& wall, const QSizeF& tile) const;
    QSizeF tilePixels(int projection) const;

    zoHPCLayout m_layout;
    mutable QHash<int, QSizeF> m_tilePixels; // as asked for
    double m_pixelPitch;
    std::vector<Picture> m_pictures;
    std::vector<LeftOut> m_leftOut;
};
