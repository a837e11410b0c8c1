#include "zoHostLinkButton.h"

#include <QPainter>

namespace
{
constexpr double s_frame = 2.0;  // pixels
constexpr double s_radius = 3.0; // of its corners
} // namespace

zoHostLinkButton::zoHostLinkButton(const QString& text, const QString& description, QWidget* parent)
    : QCommandLinkButton(text, description, parent)
{
    setAutoDefault(true);
}

zoHostLinkButton::~zoHostLinkButton() = default;

void zoHostLinkButton::paintEvent(QPaintEvent* event)
{
    QCommandLinkButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), s_frame));
    constexpr double Inset = s_frame / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset), s_radius, s_radius);
}
