#pragma once

#include "zoHPCDebounce.h"
#include "zoHPCRoomPicture.h"

#include <QPoint>
#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows the room. Dragging turns it, with the shift key or the middle button it moves it; the wheel comes
// nearer; a double click, or Home, takes everything into the picture; a click selects.
class zoHPCRoomView final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCRoomView(QWidget* parent = nullptr);
    ~zoHPCRoomView() override;

    const zoHPCRoomPicture& picture() const { return m_picture; }
    // What the next frame shows; changes that come quickly show less of large pictures.
    zoHPCPicture::Detail detail() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Null shows nothing. The items of the layout must live until the next call.
    void showLayout(std::shared_ptr<const zoHPCLayout> layout);
    // Highlighted; announces nothing. Need not live.
    void setCurrentItem(const QTreeWidgetItem* item);

    // Whether more layouts are to follow soon.
    void setIsChanging(bool changing);

public slots:
    // Takes everything into the picture, now and after changes, until the view is turned or moved by hand.
    void fit();

signals:
    // A projection was clicked.
    void itemActivated(QTreeWidgetItem* item);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turn(double yaw, double pitch);
    void zoom(double factor);

    zoHPCRoomPicture m_picture;
    zoHPCDebounce m_debounce; // of wheel and keys
    std::shared_ptr<const zoHPCLayout> m_layout;
    const QTreeWidgetItem* m_current = nullptr; // never followed
    QPoint m_pressed;
    QPoint m_last;
    bool m_isPressed = false;
    bool m_isDragging = false;
    bool m_isChanging = false;
    bool m_isFitted = true;
};
