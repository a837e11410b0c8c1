#pragma once

#include "Point3.h"

#include <QSize>
#include <QSizeF>
#include <QString>

#include <vector>

// What a person says of a new wall. The assistant's dialog fills one, "zohpc new" reads one from its options, and
// zoHPCWallBuilder makes a configuration of it. A plain value: any combination can be held, the builder tells what of it
// is wrong.
//
// Lengths are millimetres and angles degrees unless a name says pixels. x counts to the right, y upward, z from the wall
// to the viewer; columns count from the left, rows from the top. "Across" is between columns, "down" between rows.
//
// Stable: all names of this header. Fields may be added; each has a value that changes nothing.
struct zoHPCWallPlan final
{
    enum class Kind {
        Tiled,  // tiles in pixels, without head tracking
        Power,  // one plane of a size, for tracked viewers
        Cave,   // walls of a box
        Curved, // columns that stand on a cylinder, as flat tiles
        Planes  // planes that stand where they stand
    };

    enum class Unit { Pixels, Millimetres };

    // What a size is that of.
    enum class SizeOf {
        Wall, // from the outermost pixel to the outermost pixel; of a curved wall: unrolled into one plane
        Tile  // the picture of one tile
    };

    enum class Curvature { Radius, Angle };

    enum CaveWall : unsigned {
        LeftWall = 1,
        RightWall = 2,
        TopWall = 4,
        BottomWall = 8,
        FrontWall = 16,
        BackWall = 32
    };

    enum class Stereo {
        None,
        QuadBuffer,
        LeftRight, // a window for each eye
        HorizontalInterlaced,
        VerticalInterlaced,
        SplitLeftRight,
        SplitBottomTop,
        RedCyan,
        BlueYellow,
        GreenMagenta
    };

    // Which windows follow each other, where each eye has its own. Nodes are filled in this order.
    enum class EyeOrder {
        Alternating, // left and right of a tile; one node or two, as there are nodes
        SameNode,    // left and right of a tile, always as two screens of one node
        OwnNodes, // as many tiles as a node has windows for the left eye, then the same tiles for the right eye
        LeftNodesFirst // all tiles for the left eye, then all for the right eye
    };

    // What a mistake is about.
    enum class Field {
        Tiles, // columns and rows
        TilePixels,
        Size,
        PixelPitch,
        Overlap,
        Viewer,
        Curvature,
        CaveSize,
        CaveWalls,
        Planes,
        Stereo,
        EyeSeparation,
        EyeOrder,
        Hosts,
        WindowsPerNode,
        Name
    };

    struct Mistake
    {
        Field field;
        QString text; // no sentence: what follows the name of the field and a colon
    };

    // A window per screen: as many as a node has (see zoHPCDisplayTables).
    static constexpr int MaximumScreens = 16;
    // Of one wall, far beyond the largest there is: they and a million hosts take less than a gigabyte to build.
    static constexpr int MaximumWindows = 20000;

    // Between neighbouring tiles: what they share; below 0, what lies between their pictures: a bezel.
    struct Overlap
    {
        double across = 0.0;
        double down = 0.0;
    };

    // One of the free planes.
    struct Plane
    {
        QString name; // empty: numbered
        QSizeF size = {1200.0, 675.0};
        Point3 center;
        double yaw = 0.0;  // 0 faces the viewer; 90 stands at the left hand, -90 at the right hand
        double tilt = 0.0; // 0 stands upright; 90 lies on the floor and is looked down at
    };

    // A way of serving two eyes: one row of the table that options and dialogs share.
    struct StereoMode
    {
        Stereo mode;
        const char* word;              // of options, such as "quad-buffer"
        std::vector<const char*> eyes; // words of documents: a window for each
        QString text() const;          // for people, in their language
    };

    Kind kind = Kind::Tiled;
    QString name; // empty: the kind's own, "Wall" or "Cave"

    // Of a cave: the tiles of each of its walls. Free planes are one tile each.
    int columns = 3;
    int rows = 2;
    QSize tilePixels = {1920, 1080};

    // Power and Curved only.
    QSizeF size = {3600.0, 1350.0};
    SizeOf sizeOf = SizeOf::Wall;
    // Tiled only, which has no size: needed when its overlap is in millimetres, 0 when nobody said it.
    double pixelPitch = 0.0;

    // Means nothing for free planes, and where there is one tile.
    Overlap overlap;
    Unit overlapUnit = Unit::Pixels;

    // Where the viewer is, seen from the middle of the wall, z being his distance; of a cave from the middle of the box,
    // of a curved wall from where the cylinder is straight ahead, of free planes from the origin of their centers.
    // A tiled wall has a distance and no more. A power wall that he does not stand straight before becomes planes.
    Point3 viewer = {0.0, 0.0, 1500.0};

    // Curved only: the circle through all corners, or the angle between neighbouring columns. The other one follows.
    Curvature curvature = Curvature::Radius;
    double radius = 3000.0;
    double columnAngle = 15.0;

    // Cave only.
    Point3 caveSize = {3000.0, 2400.0, 3000.0};
    unsigned caveWalls = LeftWall | RightWall | BottomWall | FrontWall;

    // Planes only.
    std::vector<Plane> planes;

    Stereo stereo = Stereo::None;
    EyeOrder eyeOrder = EyeOrder::Alternating;
    double eyeSeparation = 65.0;

    QString hosts;          // hosts text or the bracket form
    int windowsPerNode = 0; // 0: one, or as many as it takes, on the first nodes one more

    // A plan of this kind with values that most walls of it have.
    static zoHPCWallPlan of(Kind kind);
    // This many planes of a size in a row straight before the viewer, from left to right.
    static std::vector<Plane> planesInARow(int count, const QSizeF& size, double gap);

    // In the order in which people are offered them.
    static const std::vector<StereoMode>& stereoModes();
    const StereoMode& stereoMode() const;
    // The name of the projection; of free planes and those of a curved wall the begin of their names.
    QString title() const;

    // Derived values. They hold for a plan without mistakes; of another they are 0 or not a number at worst.

    bool hasGrid() const { return kind != Kind::Planes; }
    // Tiles of the whole, of all walls of a cave.
    int tileCount() const;
    int windowCount() const; // one for each tile, two where each eye has its own
    // Nodes that it takes with so many windows on each, which is more than 0.
    int nodesNeeded(int each) const;
    int nodesNeeded() const { return nodesNeeded(usualWindowsPerNode()); }
    // Those that were said; without, one, or two where both eyes of a tile are on one node.
    int usualWindowsPerNode() const;
    // Whether nodes show one eye only, and whether they show both eyes of each of their tiles in windows of their own.
    bool hasNodesOfEyes() const;
    bool hasPairsOnNodes() const;
    // Pixels from edge to edge of one wall, overlaps counted once, bezels as the pixels that they hide.
    QSizeF totalPixels() const;
    // Millimetres of a pixel across and down; 0 where nobody said a size. Of a cave: on its front wall.
    QSizeF pixelSize() const;
    // Overlap in both units, whichever it was said in: what a dialog shows beside its fields. 0 where there is no pixel
    // size, and for a single column or row.
    Overlap overlapPixels() const;
    Overlap overlapMillimetres() const;
    // Of Power and Curved: both sizes, whichever was said.
    QSizeF tileSize() const;
    QSizeF wallSize() const;
    // Of Curved: both, whichever was said.
    double curveRadius() const;
    double curveAngle() const; // between neighbouring columns, degrees

    bool operator==(const zoHPCWallPlan& other) const;
    bool operator!=(const zoHPCWallPlan& other) const { return !(*this == other); }
};
