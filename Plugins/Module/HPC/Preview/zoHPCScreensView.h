#pragma once

#include "zoHPCDebounce.h"
#include "zoHPCScreensPicture.h"

#include <QPoint>
#include <QRect>
#include <QWidget>

#include <memory>
#include <vector>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows the screens. Windows that are not in full screen are dragged by their inside or their edges, which
// writes to their items at once; edges that come near those of other windows or of the screen lie flush with
// them unless the control key is held; Escape takes the drag back. Dragging beside them moves the sheet, the
// wheel comes nearer, a double click, or Home, takes everything into the picture; a click selects.
class zoHPCScreensView final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHPCScreensView(QWidget* parent = nullptr);
    ~zoHPCScreensView() override;

    const zoHPCScreensPicture& picture() const { return m_picture; }
    // What the next frame shows; changes that come quickly show less of large pictures.
    zoHPCPicture::Detail detail() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Null shows nothing, which ends a drag. The items of the layout must live until the next call.
    void showLayout(std::shared_ptr<const zoHPCLayout> layout);
    // Highlighted; announces nothing. Need not live.
    void setCurrentItem(const QTreeWidgetItem* item);
    // Of all screens, in pixels; empty when it is not known.
    void setScreenSize(const QSizeF& size);

    // Whether more layouts are to follow soon.
    void setIsChanging(bool changing);

public slots:
    // Takes everything into the picture, now and after changes, until the sheet is moved by hand.
    void fit();

signals:
    // A window or viewport was clicked.
    void itemActivated(QTreeWidgetItem* item);
    // A drag wrote to the window's columns. The picture follows with the next showLayout().
    void windowChanged(zoHPCWindowItem* window);

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
    enum class Drag { None, Sheet, Window };

    void zoom(double factor, const QPointF& about);
    static QRect geometryOf(const zoHPCWindowItem& window);
    void setGeometryOf(zoHPCWindowItem& window, const QRect& geometry);
    bool isShown(const zoHPCWindowItem* window) const;
    void dragWindow(const QPoint& to, bool snaps);
    void snap(QRect& geometry);
    void paintGuides(QPainter& painter) const;
    void endDrag();
    void showCursor(const zoHPCScreensPicture::Hit& hit);

    zoHPCScreensPicture m_picture;
    zoHPCDebounce m_debounce; // of wheel and keys
    std::shared_ptr<const zoHPCLayout> m_layout;
    zoHPCScreensPicture::Hit m_hit;         // of the press
    QRect m_before;                         // geometry of the dragged window at the press, in pixels
    zoHPCScreensPicture::EdgeLines m_lines; // what the dragged window snaps to
    std::vector<int> m_guidesX;             // the lines that it lies flush with, in pixels of its screen
    std::vector<int> m_guidesY;
    QPoint m_pressed;
    QPoint m_last;
    Drag m_drag = Drag::None;
    bool m_isPressed = false;
    bool m_isChanging = false;
    bool m_isFitted = true;
};
