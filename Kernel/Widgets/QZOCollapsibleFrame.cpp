#include "QZOCollapsibleFrame.h"

#include <QApplication>
#include <QChildEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace
{
constexpr int s_padding = 4;
constexpr int s_arrowSize = 10;
} // namespace

QZOCollapsibleFrame::QZOCollapsibleFrame(QWidget* parent) : QFrame(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    reserveTitle();
}

QZOCollapsibleFrame::~QZOCollapsibleFrame() = default;

QString QZOCollapsibleFrame::title() const
{
    return m_title;
}

void QZOCollapsibleFrame::setTitle(const QString& title)
{
    if (m_title == title)
        return;
    m_title = title;
    setAccessibleName(title);
    updateGeometry();
    update();
}

bool QZOCollapsibleFrame::isCollapsed() const
{
    return m_collapsed;
}

void QZOCollapsibleFrame::setCollapsed(bool collapsed)
{
    if (m_collapsed == collapsed)
        return;
    m_collapsed = collapsed;
    if (collapsed) {
        // The key focus must not stay on something that nobody sees.
        if (QWidget* focus = QApplication::focusWidget(); focus != nullptr && isAncestorOf(focus))
            setFocus(Qt::OtherFocusReason);
        const QList<QWidget*> content = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (QWidget* child : content) {
            if (!child->isWindow() && !child->isHidden())
                fold(child);
        }
        m_unfoldedMaximumHeight = maximumHeight();
        setMaximumHeight(titleHeight());
    } else {
        setMaximumHeight(m_unfoldedMaximumHeight);
        QList<QPointer<QWidget>> content;
        content.swap(m_folded);
        for (const QPointer<QWidget>& child : qAsConst(content)) {
            if (child && child->parentWidget() == this) {
                child->removeEventFilter(this);
                child->show();
            }
        }
    }
    updateGeometry();
    update();
    emit collapsedChanged(collapsed);
}

QSize QZOCollapsibleFrame::sizeHint() const
{
    return m_collapsed ? minimumSizeHint() : QFrame::sizeHint().expandedTo(minimumSizeHint());
}

QSize QZOCollapsibleFrame::minimumSizeHint() const
{
    QFont bold = font();
    bold.setBold(true);
    const int textWidth = QFontMetrics(bold).horizontalAdvance(m_title);
    const QSize title(textWidth + s_arrowSize + 4 * s_padding, titleHeight());
    return m_collapsed ? title : QFrame::minimumSizeHint().expandedTo(title);
}

bool QZOCollapsibleFrame::event(QEvent* event)
{
    const bool done = QFrame::event(event);
    switch (event->type()) {
    // The base class sets the margins anew at some of these.
    case QEvent::Polish:
    case QEvent::ParentChange:
    case QEvent::StyleChange:
    case QEvent::FontChange:
    case QEvent::LayoutRequest:
        reserveTitle();
        break;
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
    case QEvent::EnabledChange:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        update(titleRect());
        break;
    default:
        break;
    }
    return done;
}

bool QZOCollapsibleFrame::eventFilter(QObject* watched, QEvent* event)
{
    // The program shows a child while the frame is folded.
    if (m_collapsed && event->type() == QEvent::ShowToParent) {
        QWidget* const child = qobject_cast<QWidget*>(watched);
        if (child != nullptr && child->parentWidget() == this)
            child->hide();
    }
    return QFrame::eventFilter(watched, event);
}

void QZOCollapsibleFrame::childEvent(QChildEvent* event)
{
    QFrame::childEvent(event);
    // Children of a frame that a form creates folded come one by one afterwards.
    if (m_collapsed && event->added() && event->child()->isWidgetType()) {
        QWidget* const child = static_cast<QWidget*>(event->child());
        if (!child->isWindow())
            fold(child);
    }
}

void QZOCollapsibleFrame::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect title = titleRect();

    QStyleOption arrow;
    arrow.initFrom(this);
    if (arrow.state.testFlag(QStyle::State_MouseOver) && isEnabled() &&
        title.contains(mapFromGlobal(QCursor::pos()))) {
        QColor glow = palette().color(QPalette::Highlight);
        glow.setAlpha(40);
        painter.fillRect(title, glow);
    }
    arrow.rect =
        QRect(title.left() + s_padding, title.center().y() - s_arrowSize / 2, s_arrowSize, s_arrowSize);
    const QStyle::PrimitiveElement folded =
        isRightToLeft() ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight;
    style()->drawPrimitive(m_collapsed ? folded : QStyle::PE_IndicatorArrowDown, &arrow, &painter, this);

    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    const int textLeft = s_arrowSize + 2 * s_padding;
    const QRect text =
        QStyle::visualRect(layoutDirection(), title, title.adjusted(textLeft, 0, -s_padding, 0));
    style()->drawItemText(
        &painter, text, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, palette(), isEnabled(),
        painter.fontMetrics().elidedText(m_title, Qt::ElideRight, text.width()), QPalette::WindowText);

    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(title.bottomLeft(), title.bottomRight());

    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = title.adjusted(1, 1, -1, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void QZOCollapsibleFrame::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton && titleRect().contains(event->pos());
    if (!m_pressed)
        QFrame::mousePressEvent(event);
}

void QZOCollapsibleFrame::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_pressed && titleRect().contains(event->pos()))
        setCollapsed(!m_collapsed);
    else
        QFrame::mouseReleaseEvent(event);
    m_pressed = false;
}

void QZOCollapsibleFrame::keyPressEvent(QKeyEvent* event)
{
    // Keys that a field inside did not take come by here, too; they are none for the title.
    const QWidget* const focus = QApplication::focusWidget();
    const bool isOfField = focus != nullptr && focus != this && isAncestorOf(focus);
    const bool folds =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (folds && !isOfField)
        setCollapsed(!m_collapsed);
    else
        QFrame::keyPressEvent(event);
}

QRect QZOCollapsibleFrame::titleRect() const
{
    return QRect(0, 0, width(), titleHeight());
}

int QZOCollapsibleFrame::titleHeight() const
{
    return fontMetrics().height() + 2 * s_padding;
}

// The layout keeps below the title.
void QZOCollapsibleFrame::reserveTitle()
{
    const QMargins margins(frameWidth(), titleHeight(), frameWidth(), frameWidth());
    if (contentsMargins() != margins)
        setContentsMargins(margins);
    if (m_collapsed)
        setMaximumHeight(titleHeight());
}

void QZOCollapsibleFrame::fold(QWidget* child)
{
    m_folded.append(child);
    child->hide();
    child->installEventFilter(this);
}
