#pragma once

#include <QHash>
#include <QRectF>
#include <QSizeF>

class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCRoomCanvas;
class zoHPCPlane;
struct zoHPCRoomWall;

// Where windows and monitors lie on the surfaces that they show, as outlines of a picture of the room. An edge that
// lies beyond a surface is not drawn there: neighbours of one window, or of one monitor, are seen to belong together.
class zoHPCRoomFrames final
{
public:
    // Fractions of a surface from its upper left corner, y down; they may reach beyond it.
    struct Frame
    {
        QRectF window;
        QRectF monitor;
    };

    // The size is that of all screens that have a number; when it is empty, a monitor is as large as its windows need.
    static zoHPCRoomFrames read(const zoHPCLayout& layout, const QSizeF& screenSize);

    // Null for a row that no viewport shows. Of several viewports the first one counts.
    const Frame* of(const QTreeWidgetItem* projection) const;
    // Of a wall whose tiles all have room for it. Whether it has them.
    bool paint(zoHPCRoomCanvas& canvas, const zoHPCRoomWall& wall) const;

private:
    static bool hasRoom(const zoHPCRoomCanvas& canvas, const zoHPCPlane& surface);
    static void paintOne(zoHPCRoomCanvas& canvas, const zoHPCPlane& surface, const Frame& frame);

    QHash<const QTreeWidgetItem*, Frame> m_frames; // by rows of the projection tree; never followed
};
