#pragma once

#include "zoShowContent.h"
#include "zoViewportPicture.h"

#include <QPoint>
#include <QSize>

#include <vector>

class QImage;

// What one window of a node shows: its viewports on black. Any size of pixels will do; that of the document is what
// the window has on the wall.
class zoWindowPicture final
{
public:
    // All of them outlive the picture.
    zoWindowPicture(const zoWallSetup& setup, const zoTestScene& scene, const zoWallNode& node,
                    const zoWallWindow& window);

    const zoWallNode& node() const { return m_node; }
    const zoWallWindow& window() const { return m_window; }
    zoShowContent content() const { return m_content; }
    void setContent(zoShowContent content) { m_content = content; }
    // A frame in the node's colour around it, for several nodes on one desktop.
    void setFramed(bool framed) { m_isFramed = framed; }
    bool isFramed() const { return m_isFramed; }

    // Whether a viewport shows two pictures to a quad buffer now.
    bool wantsQuadBuffer() const;
    // Of a window of this size in the order of the document, with their places in it.
    struct Part
    {
        QRect rect;
        zoViewportPicture picture;
    };
    std::vector<Part> parts(const QSize& size) const;
    // Over the whole image, of 32 bits per pixel. See zoViewportPicture::paint() for the origin and the buffer.
    void paint(QImage& image, const QPoint& origin,
               zoStereoMode::Eye buffer = zoStereoMode::Eye::Middle) const;
    void paintFrame(QPainter& painter, const QSize& size) const;

    // "NODE-WINDOW", as files of pictures are called.
    QString name() const;

private:
    const zoWallSetup& m_setup;
    const zoTestScene& m_scene;
    const zoWallNode& m_node;
    const zoWallWindow& m_window;
    zoShowContent m_content = zoShowContent::None;
    bool m_isFramed = false;
};
