#pragma once

#include "zoHPCPictureView.h"
#include "zoHPCRoomPicture.h"

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
    void setCurrentItems(const zoHPCPicture::Rows& items) override;
    // Of all screens, in pixels; empty when it is not known.
    void setScreenSize(const QSizeF& size);
    // Tells so: what a click does then belongs to whoever hears of it.
    void setTakesSurfaces(bool takes);

public slots:
    // From the viewer's side, or from above, without perspective until it is turned; takes everything in.
    void lookFromFront();
    void lookFromAbove();
    void setHasDimensions(bool hasDimensions);
    // Where windows and monitors lie on the surfaces.
    void setHasFrames(bool hasFrames);

protected:
    zoHPCPicture& editedPicture() override { return m_picture; }

    void drag(const QMouseEvent& event, const QPoint& way) override;
    QTreeWidgetItem* itemAt(const QPoint& position) override;
    QString toolTipAt(const QPoint& position) override;
    void zoom(double factor, const QPointF& about) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void turn(double yaw, double pitch);
    void look(double yaw, double pitch);

    zoHPCRoomPicture m_picture;
    std::shared_ptr<const zoHPCLayout> m_layout;
    zoHPCPicture::Rows m_current;
    bool m_takesSurfaces = false;
};
