#pragma once

#include "zoHPCPicture.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCScreenNode.h"

#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

// Paints the nodes of a picture of the screens where they lie on its sheet.
class zoHPCScreensPainter final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCScreensPicture)

public:
    // Where the sheet is in the picture.
    struct Placement
    {
        // Parts of the usual height of a screen.
        static constexpr double Gap = 0.07;
        static constexpr double Title = 0.15;
        static constexpr double ScreenTitle = 0.11;

        double screenHeight = 1000.0; // of a usual screen, in pixels: gaps and titles follow it
        double titlePart = Title;     // more where names would be too small to be read
        double scale = 0.1;
        QPointF offset;          // of the sheet's origin
        bool isNumbered = false; // nodes have numbers in place of names

        QRectF toPicture(const QRectF& onSheet) const
        {
            return QRectF(offset + scale * onSheet.topLeft(), scale * onSheet.size());
        }
        // In the picture.
        double gap() const { return Gap * screenHeight * scale; }
        double title() const { return titlePart * screenHeight * scale; }
        double screenTitle() const { return ScreenTitle * screenHeight * scale; }
    };

    // All must outlive the painter; the current rows are highlighted and need not live.
    zoHPCScreensPainter(QPainter& painter, const zoHPCPictureStyle& style, zoHPCPicture::Detail detail,
                        const Placement& placement, const zoHPCPicture::Rows& current);

    void paintNode(const zoHPCScreenNode& node) const;
    // Whether the names of the node and of what its windows show can be read there, whole.
    static bool isReadable(const zoHPCScreenNode& node, const Placement& placement);

    // "Screen 1", "Primary screen", "Extended desktop".
    static QString screenName(int number);
    // The editor's name of a stereo mode; empty without stereo.
    static QString eyeName(const QString& eye);

private:
    using Screen = zoHPCScreenNode::Screen;
    using Viewport = zoHPCScreenNode::Viewport;
    using Window = zoHPCScreenNode::Window;

    void paintScreen(const Screen& screen) const;
    void paintWindow(const Screen& screen, const Window& window) const;
    void paintViewportTexts(const Window& window, const QRectF& place) const;
    void paintOffScreen(const Screen& screen, const QRectF& place) const;
    void paintOutline(const Window& window, const QRectF& place) const;
    void paintViewport(const Viewport& viewport, const QRectF& place) const;
    // `row` of the rows that several viewports share, which lie at the same place.
    void paintViewportText(const Viewport& viewport, const QRectF& place, int row, int rows) const;
    void paintCaption(const Screen& screen, const Window& window) const;
    // In letters of this height, within what can be read and fits the box; none over another text.
    void paintText(const QRectF& box, int flags, const QString& text, const QColor& color, double height,
                   const QColor& ground = QColor(), Qt::TextElideMode elide = Qt::ElideRight) const;
    bool isCurrent(const QTreeWidgetItem* item) const { return item && m_current.contains(item); }

    QPainter& m_painter;
    const zoHPCPictureStyle& m_style;
    const zoHPCPicture::Detail m_detail;
    const Placement& m_placement;
    const zoHPCPicture::Rows& m_current;
    mutable std::vector<QRectF> m_texts; // of the node that is painted
};
