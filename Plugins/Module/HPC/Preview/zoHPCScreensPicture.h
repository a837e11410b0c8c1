#pragma once

#include "zoHPCPicture.h"
#include "zoHPCScreenNode.h"
#include "zoHPCScreensPainter.h"

#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <utility>
#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;
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

    using Node = zoHPCScreenNode;
    using Screen = zoHPCScreenNode::Screen;
    using Window = zoHPCScreenNode::Window;
    using Viewport = zoHPCScreenNode::Viewport;

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
    // Rows of the display tree, or of the projection tree: viewports that show them are highlighted.
    void setCurrentItems(const Rows& items) { m_current = items; }

    // Numbers in place of the names of nodes, for a picture that has no room for names.
    void setIsNumbered(bool isNumbered) { m_placement.isNumbered = isNumbered; }

    const std::vector<Node>& nodes() const { return m_nodes; }

    // Arranges the nodes for the shape of the area, too.
    void fit(const QRectF& area) override;
    // About a point that stays where it is.
    void zoom(double factor, const QPointF& about);
    void pan(const QPointF& by) { m_placement.offset += by; }
    // Units of the picture for one pixel of a screen.
    double scale() const { return m_placement.scale; }
    // Where a window is in the picture.
    QRectF placeOf(const zoHPCWindowItem* window) const;
    // Where a place on the screen of a window, in pixels, is in the picture.
    QRectF placeBeside(const zoHPCWindowItem* window, const QRectF& pixels) const;
    // Edges of the windows beside it that have a place of their own, and of its screen as far as these are
    // known.
    EdgeLines linesFor(const zoHPCWindowItem* window) const;

    bool isLarge() const override { return m_isLarge; }
    bool isReadable(const QRectF& area) const override;
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

    // Edges can be taken some units of the picture beside them.
    Hit hitTest(const QPointF& point) const;

    // The name of the node whose card lies there; empty beside all of them.
    QString nodeAt(const QPointF& point) const;

    // "Screen 1", "Primary screen", "Extended desktop".
    static QString screenName(int number);
    // The editor's name of a stereo mode; empty without stereo.
    static QString eyeName(const QString& eye);

private:
    using Placement = zoHPCScreensPainter::Placement;

    std::pair<const Screen*, const Window*> find(const zoHPCWindowItem* window) const;
    bool hasCurrentWindow(const Node& node) const;
    void read(const zoHPCLayout& layout);
    void arrange(double aspect);
    void fitSheet(const QRectF& area);
    QRectF placeCards(double rowWidth, double gap);

    std::vector<Node> m_nodes;
    Rows m_current;
    QSizeF m_screenSize;
    bool m_isLarge = false;
    double m_aspect = 1.4;
    QRectF m_sheet;
    Placement m_placement;
};
