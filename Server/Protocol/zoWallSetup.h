#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include <vector>

// What a wall is, as plain values that travel between processes: which windows each node opens, what each of their
// viewports shows, and how the nodes hang together. Lengths are millimetres of the tracking space (the viewer looks
// along -z, y is up); pixels count downward from the top left. No value refers to another one by address.

// A point in the room, mm.
struct zoWallPoint
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// A rectangle in the room, seen from the side on which its picture reads the right way round.
struct zoWallPlane
{
    QString name;
    zoWallPoint lowerLeft;
    zoWallPoint lowerRight;
    zoWallPoint upperRight;
};

// Widths of what fades into a neighbour, pixels of the viewport. The sides are those of the plane: a flip mirrors them
// with the picture.
struct zoWallEdges
{
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;

    bool isEmpty() const { return left <= 0.0 && right <= 0.0 && top <= 0.0 && bottom <= 0.0; }
};

// What joins a tile, by the names of nodes; empty where the wall ends.
struct zoWallNeighbours
{
    QString left;
    QString right;
    QString above;
    QString below;
};

// A part of a window that shows one plane to one eye or to both.
struct zoWallViewport
{
    // Of what is shown, from 0 in the order of the document: the rank of its process where an engine has one for each.
    int number = 0;
    QRectF area{0.0, 0.0, 1.0, 1.0}; // of the window, fractions, y down
    QString tile;                    // name of the plane or tile
    QString wall;                    // name of the projection that it belongs to
    zoWallPlane plane;
    // The word of the document: mono, left, right, stereo, horizontalinterlaced, verticalinterlaced, splitleftright,
    // splitbottomtop, redcyan, blueyellow, greenmagenta. Any other one counts as mono.
    QString eye = QStringLiteral("mono");
    double eyeSeparation = 65.0; // mm
    QPoint rightEyeOffset;       // the right eye's picture is moved by so many pixels to the right and upward
    bool flipX = false;          // left to right, after all else
    bool flipY = false;
    zoWallEdges edges;
    // Place in the wall from the top left, counted from 1; all 0 for what is no tile of several.
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    zoWallNeighbours neighbours;
    // Where it stands in a picture of the whole wall, in pixels of zoWallSetup::size; tiles that overlap on the wall do
    // so there. What shows the same plane, as for the two eyes, stands in copies of the wall beside each other.
    QRectF place;
};

struct zoWallWindow
{
    static constexpr int ExtendedDesktop = -2; // geometry on the desktop that spans all screens
    static constexpr int PrimaryScreen = -1;

    int number = 1; // of the node, from 1
    QString title;
    int screen = 0; // from 0, or one of the above
    bool fullScreen = false;
    // Pixels. The position counts from the corner of the screen; both mean nothing on a screen that is filled, except
    // that the size is what the document expects of that screen.
    QRect geometry;
    bool hardwareSync = false;
    QRectF place; // as that of its first viewport, for all of the window
    std::vector<zoWallViewport> viewports;
};

struct zoWallNode
{
    QString id;   // as sessions name it; unique
    QString name; // as windows name it; unique
    QString host;
    int network = -1; // index in zoWallSetup::networks
    std::vector<zoWallWindow> windows;
};

struct zoWallNetwork
{
    QString id;          // as sessions name it
    QString description; // may be empty
    int parent = -1;     // index of the network that its gateway is in; -1 for what the host reaches itself
    QString gateway;     // id of the node behind which it lies; empty without one
    bool encrypted = false;         // itself, what is above it, or one of its nodes
    QMap<QString, QString> options; // its own, as the document has them
    QStringList nodes;              // ids of its enabled nodes in the order of the document
};

struct zoWallSetup
{
    std::vector<zoWallNode> nodes; // enabled ones, in the order of the document; those without windows too
    std::vector<zoWallNetwork> networks;
    QMap<QString, QString> options; // of the master, for all
    std::vector<zoWallPlane> walls; // whole walls, for what is drawn along their edges
    QSize size;                     // of a picture of the whole wall, pixels
    zoWallPoint head;               // between the eyes, which are left and right of it
    double gamma = 2.2;             // of the projectors; edges fade so that the light adds up
    QStringList notes;              // what the document has and is not shown, in words

    // Null when there is none.
    const zoWallNode* node(const QString& id) const;
    // The same with these nodes only, in this order; an id that is not known is left out.
    zoWallSetup ofNodes(const QStringList& ids) const;

    QJsonObject toJson() const;
    // False, with the setup as it was, for an object that is none; `reason` says in English what is wrong. Values
    // that are missing have the defaults above.
    bool fromJson(const QJsonObject& object, QString& reason);
};

// The entry point of the component libzoServerSetup.so, called ZO_READ_WALL_SETUP: reads a configuration document. The
// size of a pixel of tiled walls, which have no other, is given in millimetres. False, with the setup as it was and the
// reason, for a text that is no configuration. The component links widgets; it stays loaded.
using zoReadWallSetup = bool (*)(const QString& document, double pixelPitch, zoWallSetup& setup,
                                 QString& reason);
#define ZO_READ_WALL_SETUP "zoReadWallSetupEntry"

// A second entry of the component, called ZO_WRITE_CHECK_SCENE: the same document as what zoCheckScene says, "tiles" or
// "test-image". The application can draw texts.
using zoWriteCheckScene = bool (*)(const QString& document, double pixelPitch, const QString& content,
                                   QByteArray& scene, QString& reason);
#define ZO_WRITE_CHECK_SCENE "zoWriteCheckSceneEntry"
