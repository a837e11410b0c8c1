#include "zoWindowPicture.h"

#include "zoTilePicture.h"

#include <QImage>
#include <QPainter>

zoWindowPicture::zoWindowPicture(const zoWallSetup& setup, const zoTestScene& scene, const zoWallNode& node,
                                 const zoWallWindow& window)
    : m_setup(setup), m_scene(scene), m_node(node), m_window(window)
{
}

bool zoWindowPicture::wantsQuadBuffer() const
{
    for (const zoWallViewport& viewport : m_window.viewports) {
        if (zoStereoMode::ofWord(viewport.eye) == zoStereoMode::Mode::QuadBuffer)
            return true;
    }
    return false;
}

std::vector<zoWindowPicture::Part> zoWindowPicture::parts(const QSize& size) const
{
    std::vector<Part> result;
    for (const zoWallViewport& viewport : m_window.viewports) {
        const QRect rect = zoViewportPicture::rectIn(size, viewport);
        if (!rect.isEmpty())
            result.push_back(
                {rect, zoViewportPicture({&m_setup, &m_scene, &m_node, &m_window, &viewport, m_content},
                                         rect.size())});
    }
    return result;
}

void zoWindowPicture::paint(QImage& image, const QPoint& origin, zoStereoMode::Eye buffer) const
{
    image.fill(Qt::black);
    if (m_content != zoShowContent::None) {
        for (const Part& part : parts(image.size()))
            part.picture.paint(image, part.rect, origin, buffer);
    }
    if (m_isFramed) {
        QPainter painter(&image);
        paintFrame(painter, image.size());
    }
}

void zoWindowPicture::paintFrame(QPainter& painter, const QSize& size) const
{
    constexpr int Frame = 3; // pixels
    painter.setRenderHint(QPainter::Antialiasing, false);
    QPen pen(zoTilePicture::colourOf(m_node.name), Frame);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(Frame / 2, Frame / 2, size.width() - Frame, size.height() - Frame);
}

QString zoWindowPicture::name() const
{
    return m_node.id + QLatin1Char('-') + QString::number(m_window.number);
}
