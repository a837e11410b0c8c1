#pragma once

#include "zoHPCDebounce.h"
#include "zoHPCPicture.h"

#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class zoHPCLayout;

// Shows one picture of a configuration, takes everything into it until it is moved by hand, and leaves out detail
// of a large one while much changes.
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
    // Highlighted; announces nothing. Need not live.
    virtual void setCurrentItem(const QTreeWidgetItem* item) = 0;
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

    // Factor from one step of the wheel, or one press of a key, to the next.
    static constexpr double ZoomPerStep = 1.15;

    virtual zoHPCPicture& editedPicture() = 0;
    virtual bool isDragging() const = 0;
    // What a person sees has moved by hand: no longer fitted. Moves that follow each other quickly are shown in
    // less detail; those of a drag are by themselves.
    enum class Move { Single, Dragged };
    void noteMove(Move move);
    // After a new layout.
    void fitAgain();

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    zoHPCDebounce m_debounce{this}; // of wheel and keys
    bool m_isChanging = false;
    bool m_isFitted = true;
};
