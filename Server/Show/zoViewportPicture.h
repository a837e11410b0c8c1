#pragma once

#include "zoShowContent.h"
#include "zoStereoMode.h"

#include <zoWallSetup.h>

#include <QImage>
#include <QPoint>
#include <QRect>

class QPainter;
class zoBlendRamp;
class zoTestScene;

// What one viewport shows: the picture of each eye, and how the eyes come together in the pixels of the window.
class zoViewportPicture final
{
public:
    // What is shown, and of what. None is owned.
    struct Subject
    {
        const zoWallSetup* setup;
        const zoTestScene* scene;
        const zoWallNode* node;
        const zoWallWindow* window;
        const zoWallViewport* viewport;
        zoShowContent content;
    };

    // For a viewport that has these pixels in its window, which may differ from those of the document.
    zoViewportPicture(const Subject& subject, const QSize& pixels);

    zoStereoMode::Mode mode() const { return m_mode; }
    // Pixels of one eye's picture: half of them where the viewport is split.
    QSize eyeSize() const;
    // Where the eye's picture lies in the viewport.
    QRect eyeRect(zoStereoMode::Eye eye) const;
    // The eye's picture without edges and flips, over the target, which has the size of an eye's picture.
    void paintEye(QPainter& painter, const QRect& target, zoStereoMode::Eye eye) const;
    // How it fades, before flips. Empty for pictures that tell which tile it is.
    zoBlendRamp ramp() const;
    zoWallEdges edges() const; // pixels of an eye's picture
    double gamma() const;
    bool flipX() const;
    bool flipY() const;
    // Edges, flips or two eyes in one picture: more than paintEye() is to be done.
    bool needsMore() const;

    // All of it, into the image of the window at this rectangle. The origin is where the window's pixel 0, 0 is on the
    // screen: interlaced pictures go by the rows and columns of the screen. One eye of a pair for a quad buffer is
    // painted by its name; without one, what both eyes see is the picture from between them.
    void paint(QImage& window, const QRect& rect, const QPoint& origin,
               zoStereoMode::Eye buffer = zoStereoMode::Eye::Middle) const;

    // The viewport's pixels in a window of this size.
    static QRect rectIn(const QSize& window, const zoWallViewport& viewport);

private:
    QImage eyePicture(zoStereoMode::Eye eye) const;
    zoWallPoint eyePoint(zoStereoMode::Eye eye) const;

    Subject m_subject;
    QSize m_pixels;
    zoStereoMode::Mode m_mode;
};
