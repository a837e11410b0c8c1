#include "zoHPCPictureView.h"

#include <QPainter>

zoHPCPictureView::zoHPCPictureView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&m_debounce, &zoHPCDebounce::settled, this, QOverload<>::of(&QWidget::update));
}

zoHPCPictureView::~zoHPCPictureView() = default;

zoHPCPicture::Detail zoHPCPictureView::detail() const
{
    const bool isQuick = isDragging() || ((m_isChanging || m_debounce.isQuick()) && picture().isLarge());
    return isQuick ? zoHPCPicture::Detail::Fast : zoHPCPicture::Detail::Full;
}

QSize zoHPCPictureView::sizeHint() const
{
    return QSize(480, 360);
}

QSize zoHPCPictureView::minimumSizeHint() const
{
    return QSize(160, 120);
}

void zoHPCPictureView::setIsChanging(bool changing)
{
    if (m_isChanging == changing)
        return;
    m_isChanging = changing;
    update();
}

void zoHPCPictureView::fit()
{
    m_isFitted = true;
    editedPicture().fit(rect());
    update();
}

void zoHPCPictureView::noteMove(Move move)
{
    if (move == Move::Single)
        m_debounce.note();
    m_isFitted = false;
    update();
}

void zoHPCPictureView::fitAgain()
{
    if (m_isFitted)
        editedPicture().fit(rect());
}

void zoHPCPictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    picture().paint(painter, rect(), palette(), detail());
}

void zoHPCPictureView::resizeEvent(QResizeEvent*)
{
    fitAgain();
}

void zoHPCPictureView::mouseDoubleClickEvent(QMouseEvent*)
{
    fit();
}
