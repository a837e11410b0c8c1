#pragma once

#include "zoHPCPicture.h"

#include <QColor>
#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <utility>
#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;
class zoHPCPictureStyle;
class zoHPCViewportItem;
class zoHPCWindowItem;

// The windows on the screens of each render node to scale, with their viewports. How large a screen is stands
// in no configuration: unless a size is given, a screen is as large as its windows need, and a window in full
// screen as its own size says.
class zoHPCScreensPicture final : public zoHPCPicture
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCScreensPicture)

public:
    enum Edge : unsigned { NoEdge = 0, LeftEdge = 1, RightEdge = 2, TopEdge = 4, BottomEdge = 8 };

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

    struct Node
    {
        QString name; // empty for windows without a node
        bool isKnown = true;
        bool isEnabled = true;
        std::vector<Screen> screens;
        QRectF card; // in the sheet
    };

    // What lies under a point.
    struct Hit
    {
        zoHPCWindowItem* window = nullptr;
        zoHPCViewportItem* viewport = nullptr;
        unsigned edges = NoEdge;
        bool canMove = false; // windows in full screen have no place of their own
    };

    // Edges that another window can lie flush with, in pixels of its screen.
    struct EdgeLines
    {
        std::vector<int> x;
        std::vector<int> y;
    };

    // Size of all screens that have a number, in pixels; empty when it is not known. Takes effect with the
    // next setLayout().
    void setScreenSize(const QSizeF& size) { m_screenSize = size; }

    // Reads what there is to draw and places it anew. The items must live while hitTest() may be called.
    void setLayout(const zoHPCLayout& layout);
    // Reads it again while something is dragged: screens stay in their places, however their windows change.
    void updateLayout(const zoHPCLayout& layout);
    // A row of the display tree, or of the projection tree: viewports that show it are highlighted.
    void setCurrentItem(const QTreeWidgetItem* item) { m_current = item; }

    const std::vector<Node>& nodes() const { return m_nodes; }

    // Arranges the nodes for the shape of the area and takes all of them into it.
    void fit(const QRectF& area);
    // About a point that stays where it is.
    void zoom(double factor, const QPointF& about);
    void pan(const QPointF& by) { m_offset += by; }
    // Units of the picture for one pixel of a screen.
    double scale() const { return m_scale; }
    // Where a window is in the picture.
    QRectF placeOf(const zoHPCWindowItem* window) const;
    // Where a place on the screen of a window, in pixels, is in the picture.
    QRectF placeBeside(const zoHPCWindowItem* window, const QRectF& pixels) const;
    // Edges of the windows beside it that have a place of their own, and of its screen as far as these are
    // known.
    EdgeLines linesFor(const zoHPCWindowItem* window) const;

    bool isLarge() const override { return m_isLarge; }
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

    // Edges can be taken some units of the picture beside them.
    Hit hitTest(const QPointF& point) const;

    // "Screen 1", "Primary screen", "Extended desktop".
    static QString screenName(int number);
    // The editor's name of a stereo mode; empty without stereo.
    static QString eyeName(const QString& eye);

private:
    std::pair<const Screen*, const Window*> find(const zoHPCWindowItem* window) const;
    void read(const zoHPCLayout& layout);
    void measure(Screen& screen) const;
    static void markCovered(Screen& screen);
    void arrange(double aspect);
    QRectF placeCards(double rowWidth, double gap);
    QRectF toPicture(const QRectF& onSheet) const;

    void paintNode(QPainter& painter, const zoHPCPictureStyle& style, const Node& node, Detail detail) const;
    void paintScreen(QPainter& painter, const zoHPCPictureStyle& style, const Screen& screen,
                     Detail detail) const;
    void paintWindow(QPainter& painter, const zoHPCPictureStyle& style, const Screen& screen,
                     const Window& window, Detail detail) const;
    void paintViewport(QPainter& painter, const zoHPCPictureStyle& style, const Viewport& viewport,
                       const QRectF& place) const;
    // `row` of the rows that several viewports share, which lie at the same place.
    void paintViewportText(QPainter& painter, const zoHPCPictureStyle& style, const Viewport& viewport,
                           const QRectF& place, int row, int rows) const;
    void paintCaption(QPainter& painter, const zoHPCPictureStyle& style, const Screen& screen,
                      const Window& window) const;
    // In letters of this height, within what can be read and fits the box.
    static void paintText(QPainter& painter, const QRectF& box, int flags, const QString& text,
                          const QColor& color, double height, const QColor& ground = QColor());
    bool isCurrent(const QTreeWidgetItem* item) const { return item && item == m_current; }

    std::vector<Node> m_nodes;
    const QTreeWidgetItem* m_current = nullptr; // never followed
    QSizeF m_screenSize;
    bool m_isLarge = false;
    double m_unit = 1000.0; // height of a usual screen, in pixels: gaps and titles follow it
    double m_aspect = 1.4;
    QRectF m_sheet;
    double m_scale = 0.1;
    QPointF m_offset; // of the sheet's origin in the picture
};
