#pragma once

#include "zoHPCPictureView.h"
#include "zoHPCScreensPicture.h"

#include <QRect>

#include <memory>
#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows the screens. Windows that are not in full screen are dragged by their inside or their edges, which
// writes to their items at once; edges that come near those of other windows or of the screen lie flush with
// them unless the control key is held; Escape takes the drag back. Dragging beside them moves the sheet, the
// wheel comes nearer, a double click, or Home, takes everything into the picture; a click selects.
class zoHPCScreensView final : public zoHPCPictureView
{
    Q_OBJECT

public:
    explicit zoHPCScreensView(QWidget* parent = nullptr);
    ~zoHPCScreensView() override;

    const zoHPCScreensPicture& picture() const override { return m_picture; }
    // Null also ends a drag.
    void showLayout(std::shared_ptr<const zoHPCLayout> layout) override;
    void setCurrentItems(const zoHPCPicture::Rows& items) override;
    // Of all screens, in pixels; empty when it is not known.
    void setScreenSize(const QSizeF& size);

signals:
    // A drag wrote to the window's columns. The picture follows with the next showLayout().
    void windowChanged(zoHPCWindowItem* window);

protected:
    zoHPCPicture& editedPicture() override { return m_picture; }

    void press(const QMouseEvent& event) override;
    void beginDrag() override;
    void drag(const QMouseEvent& event, const QPoint& way) override;
    void endDrag() override;
    void hover(const QPoint& position) override;
    QTreeWidgetItem* itemAt(const QPoint& position) override;
    QString toolTipAt(const QPoint& position) override;
    void zoom(double factor, const QPointF& about) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static QRect geometryOf(const zoHPCWindowItem& window);
    void setGeometryOf(zoHPCWindowItem& window, const QRect& geometry);
    bool isShown(const zoHPCWindowItem* window) const;
    void dragWindow(const QPoint& to, bool snaps);
    void snap(QRect& geometry);
    void paintGuides(QPainter& painter) const;
    void paintPlace(QPainter& painter) const;
    static QString placeText(const zoHPCWindowItem& window);
    // The window belongs to the drag no more.
    void letGo();
    void showCursor(const zoHPCScreensPicture::Hit& hit);

    zoHPCScreensPicture m_picture;
    std::shared_ptr<const zoHPCLayout> m_layout;
    zoHPCScreensPicture::Hit m_hit;         // of the press
    QRect m_before;                         // geometry of the dragged window at the press, in pixels
    zoHPCScreensPicture::EdgeLines m_lines; // what the dragged window snaps to
    std::vector<int> m_guidesX;             // the lines that it lies flush with, in pixels of its screen
    std::vector<int> m_guidesY;
    bool m_isWindowDragged = false;
};
