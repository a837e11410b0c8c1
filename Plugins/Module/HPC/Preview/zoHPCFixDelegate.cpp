#include "zoHPCFixDelegate.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

zoHPCFixDelegate::zoHPCFixDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

zoHPCFixDelegate::~zoHPCFixDelegate() = default;

void zoHPCFixDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const QString text = index.data().toString();
    if (text.isEmpty())
        return;
    QStyleOptionViewItem empty(option);
    initStyleOption(&empty, index);
    empty.text.clear();
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &empty, painter, option.widget);
    QStyleOptionButton shown = button(option, text);
    shown.state |= m_pressed == index ? QStyle::State_Sunken : QStyle::State_Raised;
    style->drawControl(QStyle::CE_PushButton, &shown, painter, option.widget);
}

QSize zoHPCFixDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    const QString text = index.data().toString();
    const QStyleOptionButton shown = button(option, text);
    const QSize label = shown.fontMetrics.size(Qt::TextShowMnemonic, text);
    return style->sizeFromContents(QStyle::CT_PushButton, &shown, label, option.widget) + QSize(8, 2);
}

bool zoHPCFixDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    Q_UNUSED(model)
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!isPress && event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* const mouse = static_cast<QMouseEvent*>(event);
    const QString text = index.data().toString();
    const bool isInside = !text.isEmpty() && button(option, text).rect.contains(mouse->pos());
    if (mouse->button() != Qt::LeftButton || !isInside) {
        m_pressed = QPersistentModelIndex();
        return false;
    }
    if (isPress) {
        m_pressed = index;
        return true;
    }
    const bool isClick = m_pressed == index;
    m_pressed = QPersistentModelIndex();
    if (isClick)
        emit clicked(index);
    return isClick;
}

QStyleOptionButton zoHPCFixDelegate::button(const QStyleOptionViewItem& option, const QString& text)
{
    QStyleOptionButton shown;
    shown.initFrom(option.widget ? option.widget : nullptr);
    shown.fontMetrics = option.fontMetrics;
    // Beside a message of several lines it stays as high as a button is.
    const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
    const QSize label = shown.fontMetrics.size(Qt::TextShowMnemonic, text);
    const int height = style->sizeFromContents(QStyle::CT_PushButton, &shown, label, option.widget).height();
    shown.rect = option.rect.adjusted(2, 1, -2, -1);
    if (height < shown.rect.height())
        shown.rect =
            QRect(shown.rect.left(), shown.rect.center().y() - height / 2, shown.rect.width(), height);
    shown.state = QStyle::State_Enabled;
    // User text: an ampersand in a node's name is no shortcut.
    shown.text = QString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
    return shown;
}
