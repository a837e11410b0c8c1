#include "zoViewportPicture.h"

#include "zoBlendRamp.h"
#include "zoOffAxisView.h"
#include "zoTestScene.h"
#include "zoTilePicture.h"

#include <QPainter>

#include <algorithm>

using zoStereoMode::Eye;
using zoStereoMode::Mode;

namespace
{
// Copies what the right eye sees to its rows, columns or channels.
void mix(QImage& left, const QImage& right, Mode mode, const QPoint& origin)
{
    const QRgb keep = zoStereoMode::leftChannels(mode);
    for (int y = 0; y < left.height(); ++y) {
        const bool isRightRow = ((origin.y() + y) & 1) != 0;
        if (mode == Mode::RowInterlaced && !isRightRow)
            continue;
        auto* const to = reinterpret_cast<QRgb*>(left.scanLine(y));
        const auto* const from = reinterpret_cast<const QRgb*>(right.constScanLine(y));
        if (mode == Mode::RowInterlaced) {
            std::copy_n(from, left.width(), to);
        } else if (mode == Mode::ColumnInterlaced) {
            for (int x = 1 - (origin.x() & 1); x < left.width(); x += 2)
                to[x] = from[x];
        } else {
            for (int x = 0; x < left.width(); ++x)
                to[x] = (to[x] & keep) | (from[x] & ~keep);
        }
    }
}
} // namespace

zoViewportPicture::zoViewportPicture(const Subject& subject, const QSize& pixels)
    : m_subject(subject), m_pixels(pixels), m_mode(zoStereoMode::ofWord(subject.viewport->eye))
{
}

QRect zoViewportPicture::rectIn(const QSize& window, const zoWallViewport& viewport)
{
    const int left = qRound(viewport.area.left() * window.width());
    const int top = qRound(viewport.area.top() * window.height());
    const int right = qRound(viewport.area.right() * window.width());
    const int bottom = qRound(viewport.area.bottom() * window.height());
    return {left, top, right - left, bottom - top};
}

QSize zoViewportPicture::eyeSize() const
{
    return eyeRect(Eye::Left).size();
}

QRect zoViewportPicture::eyeRect(Eye eye) const
{
    const QRect all(QPoint(0, 0), m_pixels);
    const bool isRight = eye == Eye::Right;
    // Of an odd number the middle row or column stays black: both eyes have the same pixels.
    const int halfWidth = m_pixels.width() / 2;
    const int halfHeight = m_pixels.height() / 2;
    if (m_mode == Mode::SplitLeftRight)
        return {isRight ? m_pixels.width() - halfWidth : 0, 0, halfWidth, m_pixels.height()};
    if (m_mode == Mode::SplitTopBottom)
        return {0, isRight ? m_pixels.height() - halfHeight : 0, m_pixels.width(), halfHeight};
    return all;
}

zoWallPoint zoViewportPicture::eyePoint(Eye eye) const
{
    zoWallPoint point = m_subject.setup->head;
    if (eye == Eye::Left)
        point.x -= m_subject.viewport->eyeSeparation / 2.0;
    if (eye == Eye::Right)
        point.x += m_subject.viewport->eyeSeparation / 2.0;
    return point;
}

void zoViewportPicture::paintEye(QPainter& painter, const QRect& target, Eye eye) const
{
    const zoWallViewport& viewport = *m_subject.viewport;
    switch (m_subject.content) {
    case zoShowContent::None:
        painter.fillRect(target, Qt::black);
        break;
    case zoShowContent::Tiles:
        zoTilePicture(*m_subject.node, *m_subject.window, viewport, m_pixels).paint(painter, target, eye);
        break;
    case zoShowContent::TestImage: {
        QRectF moved(target);
        painter.save();
        painter.setClipRect(target, Qt::IntersectClip);
        if (eye == Eye::Right && !viewport.rightEyeOffset.isNull()) {
            painter.fillRect(target, Qt::black);
            moved.translate(
                double(viewport.rightEyeOffset.x()) * target.width() / std::max(1, m_pixels.width()),
                -double(viewport.rightEyeOffset.y()) * target.height() / std::max(1, m_pixels.height()));
        }
        m_subject.scene->paint(painter, moved, zoOffAxisView(viewport.plane, eyePoint(eye)));
        painter.restore();
        break;
    }
    }
}

zoBlendRamp zoViewportPicture::ramp() const
{
    const QSize size = eyeSize();
    return {edges(), size.width(), size.height(), gamma()};
}

double zoViewportPicture::gamma() const
{
    return m_subject.setup->gamma;
}

zoWallEdges zoViewportPicture::edges() const
{
    const QSize size = eyeSize();
    zoWallEdges result;
    const QSizeF meant(m_subject.window->geometry.width() * m_subject.viewport->area.width(),
                       m_subject.window->geometry.height() * m_subject.viewport->area.height());
    // Texts that fade cannot be read.
    if (m_subject.content == zoShowContent::TestImage && meant.width() >= 1.0 && meant.height() >= 1.0) {
        const double x = size.width() / meant.width();
        const double y = size.height() / meant.height();
        const zoWallEdges& given = m_subject.viewport->edges;
        result = {given.left * x, given.right * x, given.top * y, given.bottom * y};
    }
    return result;
}

bool zoViewportPicture::flipX() const
{
    return m_subject.viewport->flipX;
}

bool zoViewportPicture::flipY() const
{
    return m_subject.viewport->flipY;
}

bool zoViewportPicture::needsMore() const
{
    const bool fades = m_subject.content == zoShowContent::TestImage && !m_subject.viewport->edges.isEmpty();
    return fades || (flipX() || flipY()) ||
           (zoStereoMode::isForBothEyes(m_mode) && m_mode != Mode::QuadBuffer);
}

QImage zoViewportPicture::eyePicture(Eye eye) const
{
    const QSize size = eyeSize();
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    paintEye(painter, QRect(QPoint(0, 0), size), eye);
    painter.end();
    ramp().apply(image);
    return (flipX() || flipY()) ? image.mirrored(flipX(), flipY()) : image;
}

void zoViewportPicture::paint(QImage& window, const QRect& rect, const QPoint& origin, Eye buffer) const
{
    if (rect.isEmpty())
        return;
    QPainter painter(&window);
    if (m_mode == Mode::SplitLeftRight || m_mode == Mode::SplitTopBottom) {
        painter.fillRect(rect, Qt::black);
        for (const Eye eye : {Eye::Left, Eye::Right})
            painter.drawImage(rect.topLeft() + eyeRect(eye).topLeft(), eyePicture(eye));
        return;
    }
    if (zoStereoMode::isForBothEyes(m_mode) && m_mode != Mode::QuadBuffer) {
        QImage left = eyePicture(Eye::Left);
        mix(left, eyePicture(Eye::Right), m_mode, origin + rect.topLeft());
        painter.drawImage(rect.topLeft(), left);
        return;
    }
    const Eye eye = m_mode == Mode::QuadBuffer ? buffer : zoStereoMode::onlyEye(m_mode);
    if (needsMore())
        painter.drawImage(rect.topLeft(), eyePicture(eye));
    else
        paintEye(painter, rect, eye);
}
