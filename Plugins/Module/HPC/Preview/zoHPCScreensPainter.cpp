#include "zoHPCScreensPainter.h"

#include "zoHPCDisplayTables.h"
#include "zoHPCLayout.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace
{
// Larger ones say no more.
constexpr double LargestLetters = 15.0;
constexpr double NumberLetters = 12.0;

QString sizeText(const QSizeF& size)
{
    return QString::number(qRound(size.width())) + QString::fromUtf8(" × ") +
           QString::number(qRound(size.height()));
}
} // namespace

zoHPCScreensPainter::zoHPCScreensPainter(QPainter& painter, const zoHPCPictureStyle& style,
                                         zoHPCPicture::Detail detail, const Placement& placement,
                                         const zoHPCPicture::Rows& current)
    : m_painter(painter), m_style(style), m_detail(detail), m_placement(placement), m_current(current)
{
}

void zoHPCScreensPainter::paintNode(const zoHPCScreenNode& node) const
{
    const QRectF card = m_placement.toPicture(node.card);
    m_texts.clear();
    const bool isBad = node.name.isEmpty() || !node.isKnown || !node.isEnabled;
    const double corner = std::min(6.0, 0.03 * m_placement.screenHeight * m_placement.scale);
    // Dashes cost much and are not seen round a card as small as a stamp.
    const bool isSmall = corner < 2.0;
    m_painter.setPen(isBad ? QPen(m_style.bad, isSmall ? 1.0 : 1.5, isSmall ? Qt::SolidLine : Qt::DashLine)
                           : QPen(m_style.grid, 1.0));
    m_painter.setBrush(m_style.panel);
    if (isSmall)
        m_painter.drawRect(card);
    else
        m_painter.drawRoundedRect(card, corner, corner);

    QString title = node.name;
    if (node.name.isEmpty())
        title = tr("No render node");
    else if (!node.isKnown)
        title = tr("%1 (not in the cluster)").arg(node.name);
    else if (!node.isEnabled)
        title = tr("%1 (disabled)").arg(node.name);
    if (m_placement.isNumbered)
        title.clear();
    const double gap = m_placement.gap();
    const double height = m_placement.title();
    QFont font = m_style.font;
    font.setBold(true);
    m_painter.setFont(font);
    paintText(QRectF(card.left() + gap, card.top(), card.width() - 2 * gap, height),
              Qt::AlignLeft | Qt::AlignVCenter, title, isBad ? m_style.bad : m_style.text, 0.75 * height);
    m_painter.setFont(m_style.font);
    for (const Screen& screen : node.screens)
        paintScreen(screen);
    if (m_placement.isNumbered)
        paintText(card, Qt::AlignCenter, QString::number(node.number), m_style.text, NumberLetters);
}

bool zoHPCScreensPainter::isReadable(const zoHPCScreenNode& node, const Placement& placement)
{
    constexpr int SmallestLetters = zoHPCPictureStyle::SmallestLetters;
    const auto fits = [](const QString& text, double width, double height, bool isBold) {
        QFont font;
        font.setBold(isBold);
        font.setPixelSize(qBound(1, static_cast<int>(height), static_cast<int>(LargestLetters)));
        return font.pixelSize() >= SmallestLetters && QFontMetricsF(font).horizontalAdvance(text) <= width;
    };
    const double titleWidth = placement.toPicture(node.card).width() - 2 * placement.gap();
    if (!fits(node.name, titleWidth, 0.75 * placement.title(), true))
        return false;
    for (const Screen& screen : node.screens) {
        if (0.65 * placement.screenTitle() < SmallestLetters)
            return false;
        for (const Window& window : screen.windows) {
            const double width = placement.toPicture(window.geometry).width();
            for (const Viewport& viewport : window.viewports) {
                if (!fits(viewport.projection, viewport.area.width() * width - 8.0,
                          0.8 * placement.screenTitle(), false))
                    return false;
            }
        }
    }
    return true;
}

void zoHPCScreensPainter::paintScreen(const Screen& screen) const
{
    const QRectF face = m_placement.toPicture(QRectF(screen.origin, screen.size));
    const bool isSmall = face.width() < 40.0;
    m_painter.setPen(
        QPen(m_style.faintText, 1.0, screen.isSizeKnown || isSmall ? Qt::SolidLine : Qt::DashLine));
    m_painter.setBrush(m_style.background);
    m_painter.drawRect(face);

    const QRectF bounds = m_placement.toPicture(screen.bounds.translated(screen.origin));
    const double height = m_placement.screenTitle();
    paintText(QRectF(bounds.left(), bounds.top() - height, bounds.width(), height),
              Qt::AlignLeft | Qt::AlignVCenter, screenName(screen.number), m_style.faintText, 0.75 * height);

    for (const Window& window : screen.windows)
        paintWindow(screen, window);
    for (const QRectF& overlap : screen.overlaps) {
        const QRectF place = m_placement.toPicture(overlap.translated(screen.origin));
        m_painter.setPen(QPen(m_style.bad, 2.0));
        m_painter.setBrush(QBrush(zoHPCPictureStyle::withAlpha(m_style.bad, 0.7), Qt::DiagCrossPattern));
        m_painter.drawRect(place);
    }
    for (const Window& window : screen.windows) {
        if (!window.isCovered)
            paintCaption(screen, window);
    }
}

void zoHPCScreensPainter::paintWindow(const Screen& screen, const Window& window) const
{
    const QRectF place = m_placement.toPicture(window.geometry.translated(screen.origin));
    m_painter.fillRect(place, zoHPCPictureStyle::withAlpha(m_style.text, 0.10));
    for (const Viewport& viewport : window.viewports)
        paintViewport(viewport, place);
    if (!window.isCovered)
        paintViewportTexts(window, place);
    if (window.isOffScreen && place.width() > 0.0 && place.height() > 0.0)
        paintOffScreen(screen, place);
    paintOutline(window, place);
}

void zoHPCScreensPainter::paintViewportTexts(const Window& window, const QRectF& place) const
{
    // One for each eye may fill the same place: their texts go one below the other.
    std::map<std::array<double, 4>, std::pair<int, int>> rows; // painted, of all
    const auto rowsOf = [&rows](const Viewport& viewport) -> std::pair<int, int>& {
        const QRectF& area = viewport.area;
        return rows[{area.x(), area.y(), area.width(), area.height()}];
    };
    const bool isAlone = window.viewports.size() < 2;
    for (const Viewport& viewport : window.viewports) {
        if (!isAlone)
            ++rowsOf(viewport).second;
    }
    for (const Viewport& viewport : window.viewports) {
        if (m_detail == zoHPCPicture::Detail::Fast && viewport.area.width() * place.width() < 60.0)
            continue;
        const std::pair<int, int> row =
            isAlone ? std::make_pair(0, 1)
                    : std::make_pair(rowsOf(viewport).first++, rowsOf(viewport).second);
        paintViewportText(viewport, place, row.first, row.second);
    }
}

// Marks what is not on the screen, and nothing else.
void zoHPCScreensPainter::paintOffScreen(const Screen& screen, const QRectF& place) const
{
    m_painter.save();
    const QRectF face = m_placement.toPicture(QRectF(screen.origin, screen.size));
    QRegion outside(place.toAlignedRect());
    outside -= face.toAlignedRect();
    m_painter.setClipRegion(outside, Qt::IntersectClip);
    m_painter.setBrush(QBrush(zoHPCPictureStyle::withAlpha(m_style.bad, 0.7), Qt::BDiagPattern));
    m_painter.drawRect(place);
    m_painter.restore();
}

void zoHPCScreensPainter::paintOutline(const Window& window, const QRectF& place) const
{
    const bool isBad = window.overlaps || window.isOffScreen;
    m_painter.setBrush(Qt::NoBrush);
    if (isCurrent(window.item)) {
        const double width = zoHPCPictureStyle::markWidth(place, m_current.size());
        m_painter.setPen(QPen(m_style.background, 1.7 * width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        m_painter.drawRect(place);
        m_painter.setPen(QPen(m_style.current, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    } else if (isBad) {
        m_painter.setPen(QPen(m_style.bad, 2.5, window.isOffScreen ? Qt::DashLine : Qt::SolidLine));
    } else {
        m_painter.setPen(QPen(m_style.line, 1.0));
    }
    m_painter.drawRect(place);
}

void zoHPCScreensPainter::paintCaption(const Screen& screen, const Window& window) const
{
    const QRectF place = m_placement.toPicture(window.geometry.translated(screen.origin));
    const bool isBad = window.overlaps || window.isOffScreen;
    QString text = window.isFullScreen ? tr("%1, full screen").arg(window.name)
                                       : tr("%1, %2 at %3, %4")
                                             .arg(window.name, sizeText(window.geometry.size()),
                                                  QString::number(qRound(window.geometry.x())),
                                                  QString::number(qRound(window.geometry.y())));
    if (window.isOffScreen)
        text = tr("%1, partly off the screen").arg(text);
    if (window.overlaps)
        text = tr("%1, overlaps").arg(text);
    const double height = m_placement.screenTitle();
    const QRectF box(place.left() + 4.0, place.top() + 3.0, place.width() - 8.0, height);
    paintText(box, Qt::AlignLeft | Qt::AlignTop, text, isBad ? m_style.bad : m_style.text, 0.65 * height,
              isBad ? zoHPCPictureStyle::withAlpha(m_style.background, 0.85) : QColor());
}

void zoHPCScreensPainter::paintViewport(const Viewport& viewport, const QRectF& place) const
{
    const QRectF& part = viewport.area;
    const QRectF box(place.left() + part.left() * place.width(), place.top() + part.top() * place.height(),
                     part.width() * place.width(), part.height() * place.height());
    const unsigned eyes = zoHPCLayout::eyesOf(viewport.eye);
    const bool isStereo = viewport.eye != QLatin1String("mono") && !viewport.eye.isEmpty();
    QColor color = m_style.bothEyes;
    if (eyes == zoHPCLayout::LeftEye)
        color = m_style.leftEye;
    else if (eyes == zoHPCLayout::RightEye)
        color = m_style.rightEye;
    const bool isHighlighted =
        isCurrent(viewport.item) || isCurrent(viewport.shown) || isCurrent(viewport.shownTop);

    if (viewport.projection.isEmpty()) {
        m_painter.setPen(QPen(m_style.bad, 1.5, Qt::DashLine));
        m_painter.setBrush(QBrush(zoHPCPictureStyle::withAlpha(m_style.bad, 0.5), Qt::FDiagPattern));
        m_painter.drawRect(box);
    } else {
        m_painter.fillRect(box, zoHPCPictureStyle::withAlpha(color, isStereo ? 0.45 : 0.25));
        // The outline of one that fills its window is the window's.
        if (part != QRectF(0.0, 0.0, 1.0, 1.0)) {
            m_painter.setBrush(Qt::NoBrush);
            m_painter.setPen(QPen(m_style.line, 1.0));
            m_painter.drawRect(box);
        }
    }
    // Modes that divide the window among the eyes show where.
    m_painter.setPen(QPen(m_style.line, 1.0, Qt::DotLine));
    if (viewport.eye == QLatin1String("splitleftright"))
        m_painter.drawLine(QPointF(box.center().x(), box.top()), QPointF(box.center().x(), box.bottom()));
    else if (viewport.eye == QLatin1String("splitbottomtop"))
        m_painter.drawLine(QPointF(box.left(), box.center().y()), QPointF(box.right(), box.center().y()));
    if (isHighlighted) {
        m_painter.setBrush(Qt::NoBrush);
        const double width = 0.85 * zoHPCPictureStyle::markWidth(box, m_current.size());
        const double inset = 0.8 * width;
        m_painter.setPen(QPen(m_style.current, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        m_painter.drawRect(box.adjusted(inset, inset, -inset, -inset));
    }
}

void zoHPCScreensPainter::paintViewportText(const Viewport& viewport, const QRectF& place, int row,
                                            int rows) const
{
    // The number of the node is what leads to the list below.
    if (m_placement.isNumbered)
        return;
    const QRectF& part = viewport.area;
    const QRectF box(place.left() + part.left() * place.width(), place.top() + part.top() * place.height(),
                     part.width() * place.width(), part.height() * place.height());
    // As large as the viewport has room for, where the screen is small. Names of tiles differ at their ends.
    constexpr double Part = 0.4;
    constexpr double Enough = 13.0;
    const double height =
        std::max(m_placement.screenTitle(), std::min(Enough / 0.8, Part * box.height() / std::max(1, rows)));
    const double top = box.center().y() + (2.0 * row - rows) * height;
    const QRectF upper(box.left() + 4.0, top, box.width() - 8.0, height);
    const bool isEmpty = viewport.projection.isEmpty();
    paintText(upper, Qt::AlignHCenter | Qt::AlignBottom, isEmpty ? tr("No projection") : viewport.projection,
              isEmpty ? m_style.bad : m_style.text, 0.8 * height, QColor(), Qt::ElideLeft);
    QString eye = eyeName(viewport.eye);
    if (viewport.isFlippedX || viewport.isFlippedY)
        eye = eye.isEmpty() ? tr("flipped") : tr("%1, flipped").arg(eye);
    if (!eye.isEmpty())
        paintText(upper.translated(0.0, height), Qt::AlignHCenter | Qt::AlignTop, eye, m_style.text,
                  0.65 * height);
}

void zoHPCScreensPainter::paintText(const QRectF& box, int flags, const QString& text, const QColor& color,
                                    double height, const QColor& ground, Qt::TextElideMode elide) const
{
    // Smaller letters cannot be read; what they would say is in the tool tip.
    constexpr double Smallest = zoHPCPictureStyle::SmallestLetters;
    if (height < Smallest || box.width() < 2.0 * Smallest)
        return;
    const QFont before = m_painter.font();
    QFont font = before;
    font.setPixelSize(static_cast<int>(std::min(height, LargestLetters)));
    m_painter.setFont(font);
    const QFontMetricsF metrics(font, m_painter.device());
    const QString shown = metrics.elidedText(text, elide, box.width());
    // A mark in place of what is left out, and no more, says nothing.
    constexpr int Fewest = 3;
    const QRectF covered = metrics.boundingRect(box, flags | Qt::TextSingleLine, shown);
    const bool isTaken = std::any_of(m_texts.begin(), m_texts.end(),
                                     [&covered](const QRectF& other) { return other.intersects(covered); });
    if (isTaken || shown.isEmpty() || (shown != text && shown.size() < Fewest)) {
        m_painter.setFont(before);
        return;
    }
    m_texts.push_back(covered);
    if (ground.isValid()) {
        const QRectF behind(box.topLeft(), QSizeF(metrics.horizontalAdvance(shown), metrics.height()));
        m_painter.fillRect(behind.adjusted(-2.0, 0.0, 2.0, 0.0), ground);
    }
    m_painter.setPen(color);
    m_painter.drawText(box, flags | Qt::TextSingleLine, shown);
    m_painter.setFont(before);
}

QString zoHPCScreensPainter::screenName(int number)
{
    if (number == zoHPCLayout::ExtendedDesktop)
        return tr("Extended desktop");
    if (number == zoHPCLayout::PrimaryScreen)
        return tr("Primary screen");
    return tr("Screen %1").arg(QString::number(static_cast<qint64>(number) + 1));
}

QString zoHPCScreensPainter::eyeName(const QString& eye)
{
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    if (!mode || mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Mono)
        return QString();
    return QCoreApplication::translate("zoHPCDisplayGUII", mode->text);
}
