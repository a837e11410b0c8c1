#pragma once

#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCViewportItem;
class zoHPCWindowItem;

// A render node with its screens, the windows on them and their viewports, as a picture of the screens shows it.
struct zoHPCScreenNode
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCScreensPicture)

public:
    struct Viewport
    {
        zoHPCViewportItem* item = nullptr;         // not owned
        QString projection;                        // empty when it shows none
        const QTreeWidgetItem* shown = nullptr;    // the projection's row; never followed
        const QTreeWidgetItem* shownTop = nullptr; // the row at top level that it belongs to
        QString eye;                               // stored value
        bool isFlippedX = false;
        bool isFlippedY = false;
        QRectF area; // fractions of the window
    };

    struct Window
    {
        zoHPCWindowItem* item = nullptr; // not owned
        QString name;
        bool isFullScreen = false;
        bool overlaps = false;
        bool isOffScreen = false; // in part at least
        bool isCovered = false;   // wholly, by a later window
        QRectF geometry;          // pixels on its screen
        std::vector<Viewport> viewports;
    };

    struct Screen
    {
        int number = 0;
        QSizeF size; // pixels
        bool isSizeKnown = false;
        QRectF bounds; // the screen and all its windows, in pixels from its upper left corner
        std::vector<Window> windows;
        std::vector<QRectF> overlaps; // places that two windows share
        QPointF origin;               // of the pixels, in the sheet
    };

    int number = 0; // in the order of the windows, from 1
    QString name;   // empty for windows without a node
    bool isKnown = true;
    bool isEnabled = true;
    std::vector<Screen> screens;
    QRectF card; // in the sheet

    // The nodes of all windows of a configuration in the order of their windows, not yet placed on a sheet. The
    // size is that of all screens that have a number; when it is empty, a screen is as large as its windows
    // need.
    static std::vector<zoHPCScreenNode> read(const zoHPCLayout& layout, const QSizeF& screenSize);
};
