#pragma once

#include <QWindow>

// A bare window of a wall: nobody closes it, it has no pointer in it, and it tells when it lost what it showed.
class zoShowWindow final : public QWindow
{
    Q_OBJECT

public:
    explicit zoShowWindow(SurfaceType type);
    ~zoShowWindow() override;

signals:
    // It is on the screen and has pixels to show. Follows each change of its size, too.
    void exposed();

protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
