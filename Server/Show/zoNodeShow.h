#pragma once

#include "zoShowContent.h"
#include "zoTestScene.h"
#include "zoWindowPicture.h"

#include <zoWallSetup.h>

#include <QImage>
#include <QObject>
#include <QRect>
#include <QStringList>

#include <memory>
#include <vector>

class QScreen;
class zoGLSurface;
class zoShowSurface;

// The windows of the nodes that one process shows. Windows are numbered through in the order of the setup. A frame is
// draw(), finish(), and, once all processes are so far, swap(); nothing is drawn on its own, except that a window which
// was covered shows its last frame again.
class zoNodeShow final : public QObject
{
    Q_OBJECT

public:
    enum class Drawing {
        Automatic, // GL where it is hardware, or a window asks for what only GL has
        Raster,
        GL // even in software; a failure where there is none
    };

    // Calls for pixels that are those of the screens. Before the application object is constructed.
    static void prepareApplication();

    // The setup of the nodes that this process shows; their windows and nothing else are opened.
    explicit zoNodeShow(zoWallSetup setup, QObject* parent = nullptr);
    ~zoNodeShow() override;

    int windowCount() const { return int(m_windows.size()); }
    // "NODE-WINDOW": the node's id and the number of the window of that node.
    QString windowName(int window) const;
    zoShowContent content() const { return m_content; }

    void setDrawing(Drawing drawing) { m_drawing = drawing; }
    // Rehearsal: the windows stand in these places of the desktop instead, in the order of the windows, whatever
    // screens the document wants, each with a frame in the colour of its node. Before open().
    void setDesktopPlaces(const std::vector<QRect>& places) { m_places = places; }

    // Opens all windows, black. Returns what failed, by names and in words; then no window is open. Offscreen, where
    // there are no screens to miss, each window has the size of the document.
    QStringList open();
    bool isOpen() const { return m_isOpen; }
    void close();

    // What the next draw() draws.
    void setContent(zoShowContent content);
    void draw();
    // Returns when all of it is drawn.
    void finish();
    void swap();

    // What is drawn how, and what of the document a window does without, for the log: one line each. After open().
    struct Remark
    {
        QString node; // id
        QString text;
    };
    const std::vector<Remark>& remarks() const { return m_remarks; }
    // A window's pixels at its own size: that of the document in a rehearsal, that of the window otherwise. Needs no
    // open window.
    QImage picture(int window) const;

signals:
    // A window was shown for the first time, or its size has changed: the last frame is no longer what it should show.
    void needsFrame();

private:
    struct Window
    {
        std::unique_ptr<zoWindowPicture> picture;
        std::unique_ptr<zoShowSurface> surface;
        QSize drawnSize;
        zoShowContent drawnContent = zoShowContent::None;
    };

    QString openWindow(int index);
    void remark(const zoWindowPicture& picture, zoShowSurface& surface, const zoGLSurface* gl,
                bool isRehearsal);
    bool takesGL(const zoWindowPicture& picture) const;
    void noteExposed(int index);

    zoWallSetup m_setup;
    zoTestScene m_scene;
    Drawing m_drawing = Drawing::Automatic;
    std::vector<QRect> m_places;
    std::vector<Window> m_windows;
    std::vector<Remark> m_remarks;
    zoShowContent m_content = zoShowContent::None;
    bool m_isOpen = false;
};
