#pragma once

#include "zoStereoMode.h"

#include <zoWallSetup.h>

#include <QColor>
#include <QCoreApplication>
#include <QRectF>

class QPainter;

// Tells in a window, legible from afar, whose it is: node, tile, screen, row and column and pixels, arrows to the
// neighbours, what overlaps them hatched, and a border of one pixel, which is missing where the screen cuts it off.
class zoTilePicture final
{
    Q_DECLARE_TR_FUNCTIONS(zoTilePicture)

public:
    // All three outlive the picture. `pixels` is what the text says of the size.
    zoTilePicture(const zoWallNode& node, const zoWallWindow& window, const zoWallViewport& viewport,
                  const QSize& pixels);

    // Whole pixels of the target are painted.
    void paint(QPainter& painter, const QRect& target, zoStereoMode::Eye eye) const;

    // The colour of a node, the same in every process.
    static QColor colourOf(const QString& node);

private:
    void paintOverlaps(QPainter& painter, const QRect& target) const;
    void paintShapes(QPainter& painter, const QRect& target) const;
    void paintTexts(QPainter& painter, const QRect& target, zoStereoMode::Eye eye) const;
    void paintArrows(QPainter& painter, const QRect& target) const;
    void paintArrow(QPainter& painter, const QRect& target, const QPointF& direction,
                    const QString& name) const;
    zoWallEdges edgesIn(const QRect& target) const;
    QString place() const;

    const zoWallNode& m_node;
    const zoWallWindow& m_window;
    const zoWallViewport& m_viewport;
    QSize m_pixels;
};
