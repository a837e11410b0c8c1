#include "zoWallPicture.h"

#include "zoViewportPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

zoWallPicture::zoWallPicture(zoWallSetup setup) : m_setup(std::move(setup))
{
    const int largest = std::max(m_setup.size.width(), m_setup.size.height());
    m_scale = largest > LargestSide ? double(LargestSide) / largest : 1.0;
    m_light = QImage(std::max(1, qRound(m_setup.size.width() * m_scale)),
                     std::max(1, qRound(m_setup.size.height() * m_scale)), QImage::Format_RGB32);
    m_light.fill(Qt::black);
}

bool zoWallPicture::add(const QString& node, int window, const QImage& picture)
{
    const zoWallNode* const found = m_setup.node(node);
    if (found == nullptr)
        return false;
    for (const zoWallWindow& candidate : found->windows) {
        if (candidate.number == window)
            return add(*found, candidate, picture);
    }
    return false;
}

bool zoWallPicture::add(const zoWallNode&, const zoWallWindow& window, const QImage& picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    for (const zoWallViewport& viewport : window.viewports) {
        const QRectF place(viewport.place.topLeft() * m_scale, viewport.place.size() * m_scale);
        const QRect target(QPoint(qRound(place.left()), qRound(place.top())),
                           QPoint(qRound(place.right()) - 1, qRound(place.bottom()) - 1));
        // On the wall a flipped picture is seen the right way round.
        QImage part = pixels.copy(zoViewportPicture::rectIn(pixels.size(), viewport))
                          .mirrored(viewport.flipX, viewport.flipY);
        if (part.isNull() || target.isEmpty())
            continue;
        if (part.size() != target.size())
            part = part.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        addLight(part, target.topLeft());
    }
    return true;
}

void zoWallPicture::addLight(const QImage& picture, const QPoint& place)
{
    std::array<double, 256> light{};
    for (std::size_t i = 0; i < light.size(); ++i)
        light[i] = std::pow(double(i) / 255.0, m_setup.gamma);
    const auto sum = [&](int a, int b) {
        if (a == 0 || b == 0)
            return a + b;
        const double both = light[std::size_t(a)] + light[std::size_t(b)];
        return int(std::lround(255.0 * std::pow(std::min(1.0, both), 1.0 / m_setup.gamma)));
    };
    const QRect target = QRect(place, picture.size()) & m_light.rect();
    for (int y = target.top(); y <= target.bottom(); ++y) {
        auto* const to = reinterpret_cast<QRgb*>(m_light.scanLine(y)) + target.left();
        const auto* const from =
            reinterpret_cast<const QRgb*>(picture.constScanLine(y - place.y())) + (target.left() - place.x());
        for (int x = 0; x < target.width(); ++x)
            to[x] = qRgb(sum(qRed(to[x]), qRed(from[x])), sum(qGreen(to[x]), qGreen(from[x])),
                         sum(qBlue(to[x]), qBlue(from[x])));
    }
}
