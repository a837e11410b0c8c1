#pragma once

#include "zoHPCDebounce.h"
#include "zoHPCPicture.h"

#include <QPoint>
#include <QString>
#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows one picture of a configuration, takes everything into it until it is moved by hand, and leaves out detail
// of a large one while much changes. Tells clicks from drags; the wheel and the keys + and - come nearer, a double
// click and Home take everything in.
class zoHPCPictureView : public QWidget
{
    Q_OBJECT

public:
    ~zoHPCPictureView() override;

    virtual const zoHPCPicture& picture() const = 0;
    // What the next frame shows; changes that come quickly show less of large pictures.
    zoHPCPicture::Detail detail() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Null shows nothing. The items of the layout must live until the next call.
    virtual void showLayout(std::shared_ptr<const zoHPCLayout> layout) = 0;
    // Highlighted; announces nothing.
    virtual void setCurrentItems(const zoHPCPicture::Rows& items) = 0;
    // Whether more layouts are to follow soon.
    void setIsChanging(bool changing);

public slots:
    // Takes everything into the picture, now and after changes, until the picture is moved by hand.
    void fit();

signals:
    // What the picture shows at this place was clicked.
    void itemActivated(QTreeWidgetItem* item);

protected:
    explicit zoHPCPictureView(QWidget* parent);

    virtual zoHPCPicture& editedPicture() = 0;

    // A press of the left or the middle button was moved far enough and is not released yet.
    bool isDragging() const { return m_isDragging; }
    QPoint pressed() const { return m_pressed; } // where the last press was
    // Nothing that moves belongs to the last press any more.
    void forgetPress();

    virtual void press(const QMouseEvent& event) { Q_UNUSED(event) }
    virtual void beginDrag() {}
    // `way` leads from the event before.
    virtual void drag(const QMouseEvent& event, const QPoint& way) = 0;
    // Released, after a drag or without one.
    virtual void endDrag() {}
    // Without a button.
    virtual void hover(const QPoint& position) { Q_UNUSED(position) }
    // What a click there is on.
    virtual QTreeWidgetItem* itemAt(const QPoint& position) = 0;
    // Null for none.
    virtual QString toolTipAt(const QPoint& position) = 0;
    virtual void zoom(double factor, const QPointF& about) = 0;

    // What a person sees has moved by hand: no longer fitted. Moves that follow each other quickly are shown in
    // less detail; those of a drag are by themselves.
    enum class Move { Single, Dragged };
    void noteMove(Move move);
    // After a new layout.
    void fitAgain();

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
    zoHPCDebounce m_debounce{this}; // of wheel and keys
    QPoint m_pressed;
    QPoint m_last;
    bool m_isPressed = false;
    bool m_isDragging = false;
    bool m_isChanging = false;
    bool m_isFitted = true;
};
