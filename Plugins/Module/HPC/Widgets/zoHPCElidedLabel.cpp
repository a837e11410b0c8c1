#include "zoHPCElidedLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int LeastCharacters = 6;
constexpr int Margin = 2;
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
    return fontMetrics().elidedText(m_text, Qt::ElideMiddle, contentsRect().width() - 2 * Margin);
}

QSize zoHPCElidedLabel::sizeHint() const
{
    return {widthOf(m_text), fontMetrics().height() + 2 * Margin};
}

QSize zoHPCElidedLabel::minimumSizeHint() const
{
    const int least = fontMetrics().averageCharWidth() * LeastCharacters;
    return {qMin(least, widthOf(m_text)), sizeHint().height()};
}

void zoHPCElidedLabel::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect().adjusted(Margin, 0, -Margin, 0),
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
    return fontMetrics().horizontalAdvance(text) + 2 * Margin + 1;
}
