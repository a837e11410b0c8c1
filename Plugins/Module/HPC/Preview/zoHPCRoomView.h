#pragma once

#include "zoHPCPictureView.h"
#include "zoHPCRoomPicture.h"

#include <QPoint>

#include <memory>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows the room. Dragging turns it, with the shift key or the middle button it moves it; the wheel comes
// nearer; a double click, or Home, takes everything into the picture; a click selects.
class zoHPCRoomView final : public zoHPCPictureView
{
    Q_OBJECT

public:
    explicit zoHPCRoomView(QWidget* parent = nullptr);
    ~zoHPCRoomView() override;

    const zoHPCRoomPicture& picture() const override { return m_picture; }
    void showLayout(std::shared_ptr<const zoHPCLayout> layout) override;
    void setCurrentItem(const QTreeWidgetItem* item) override;

protected:
    zoHPCPicture& editedPicture() override { return m_picture; }
    bool isDragging() const override { return m_isDragging; }

    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turn(double yaw, double pitch);
    void zoom(double factor);

    zoHPCRoomPicture m_picture;
    std::shared_ptr<const zoHPCLayout> m_layout;
    const QTreeWidgetItem* m_current = nullptr; // never followed
    QPoint m_pressed;
    QPoint m_last;
    bool m_isPressed = false;
    bool m_isDragging = false;
};
