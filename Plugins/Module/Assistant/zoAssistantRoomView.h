#pragma once

#include "zoHPCConfiguration.h"
#include "zoHPCLayout.h"
#include "zoHPCRoomPicture.h"

#include <QPoint>
#include <QWidget>

#include <memory>

// Shows the room of a configuration that is given as text. Dragging turns it, the wheel comes nearer, a double click
// takes everything in; with the keyboard the arrows turn and + and - come nearer.
class zoAssistantRoomView final : public QWidget
{
    Q_OBJECT

public:
    explicit zoAssistantRoomView(QWidget* parent = nullptr);
    ~zoAssistantRoomView() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // A text that holds no configuration shows an empty room. Where somebody looks from stays once he has chosen it.
    void showConfiguration(const QString& text);
    const zoHPCLayout& layoutOfRoom() const { return m_layout; }

    // While on, a click on the floor says where the viewer shall stand, instead of turning the room.
    void setPicksPlace(bool picks);
    bool picksPlace() const { return m_picksPlace; }

signals:
    // So far to the right of where the viewer stands now, and behind it, in millimetres.
    void placePicked(double right, double back);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fit();
    void turn(double yaw, double pitch);
    void zoom(double factor);
    void pick(const QPoint& position);

    std::unique_ptr<zoHPCConfiguration> m_configuration; // outlives what was read of it
    zoHPCLayout m_layout;
    zoHPCRoomPicture m_picture;
    QPoint m_last; // of a drag
    bool m_isDragging = false;
    bool m_isFitted = true; // until it is moved by hand
    bool m_picksPlace = false;
};
