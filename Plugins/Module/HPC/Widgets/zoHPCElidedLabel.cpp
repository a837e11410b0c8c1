#include "zoHPCElidedLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int LEAST_CHARACTERS = 6;
constexpr int MARGIN = 2;
} // namespace

zoHPCElidedLabel::zoHPCElidedLabel(QWidget* parent) : QFrame(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void zoHPCElidedLabel::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QString zoHPCElidedLabel::shownText() const
{
    return fontMetrics().elidedText(m_text, Qt::ElideMiddle, contentsRect().width() - 2 * MARGIN);
}

QSize zoHPCElidedLabel::sizeHint() const
{
    return {widthOf(m_text), fontMetrics().height() + 2 * MARGIN};
}

QSize zoHPCElidedLabel::minimumSizeHint() const
{
    const int least = fontMetrics().averageCharWidth() * LEAST_CHARACTERS;
    return {qMin(least, widthOf(m_text)), sizeHint().height()};
}

void zoHPCElidedLabel::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect().adjusted(MARGIN, 0, -MARGIN, 0),
                          int(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine), palette(), isEnabled(),
                          shownText(), foregroundRole());
}

void zoHPCElidedLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    QFrame::changeEvent(event);
}

int zoHPCElidedLabel::widthOf(const QString& text) const
{
    // One more than the text needs: elidedText() rounds up.
    return fontMetrics().horizontalAdvance(text) + 2 * MARGIN + 1;
}
