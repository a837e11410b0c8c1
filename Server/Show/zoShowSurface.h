#pragma once

#include <QString>

class QImage;
class zoShowWindow;
class zoWindowPicture;

// A window with what it takes to draw in it. A frame is drawn, finished and swapped, so that all windows of a wall can
// be drawn before the first one is swapped.
class zoShowSurface
{
public:
    zoShowSurface() = default;
    virtual ~zoShowSurface() = default;
    zoShowSurface(const zoShowSurface&) = delete;
    zoShowSurface& operator=(const zoShowSurface&) = delete;

    virtual zoShowWindow& window() = 0;
    // What drawing goes through, in words.
    virtual QString description() const = 0;
    // The next frame; nobody sees it before the swap.
    virtual void draw(const zoWindowPicture& picture) = 0;
    // Returns when the frame is complete.
    virtual void finish() = 0;
    virtual void swap() = 0;
    // Shows the frame again after the window had lost it.
    virtual void repeat(const zoWindowPicture& picture) = 0;
    // What it would draw, as pixels of the window's size, whatever covers the window on the screen.
    virtual QImage frame(const zoWindowPicture& picture) = 0;
};
