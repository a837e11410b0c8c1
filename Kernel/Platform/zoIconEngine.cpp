#include "zoIconEngine.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int s_sizes[] = {16, 22, 24, 32, 48, 64};

// Grey and faint, whatever the style.
QImage disabledLook(const QImage& image)
{
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        QRgb* const line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const int grey = qGray(line[x]);
            line[x] = qRgba(grey, grey, grey, qAlpha(line[x]) * 45 / 100);
        }
    }
    return result;
}

// The darkest strokes that the artwork has; what they must stand out by, as pictures need it.
const QColor s_stroke(0x27, 0x53, 0x9c);
constexpr double s_leastContrast = 3.0;
constexpr int s_haloPart = 16; // of the edge
constexpr int s_haloAlpha = 230;

double luminance(const QColor& colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

bool hidesStrokes(const QColor& background)
{
    const double one = luminance(background);
    const double other = luminance(s_stroke);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05) < s_leastContrast;
}

// Whether what is behind an icon, as far as the palette tells, swallows its strokes.
bool needsHalo(QIcon::Mode mode)
{
    if (mode == QIcon::Disabled || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return false;
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Selected)
        return hidesStrokes(palette.color(QPalette::Active, QPalette::Highlight));
    return hidesStrokes(palette.color(QPalette::Base)) || hidesStrokes(palette.color(QPalette::Window));
}

// A light rim around and below the artwork.
QImage onHalo(const QImage& image)
{
    const int rim = std::max(1, image.width() / s_haloPart);
    QImage light = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < light.height(); ++y) {
        QRgb* const line = reinterpret_cast<QRgb*>(light.scanLine(y));
        for (int x = 0; x < light.width(); ++x)
            line[x] = qRgba(255, 255, 255, qAlpha(line[x]) * s_haloAlpha / 255);
    }
    QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    for (int y = -rim; y <= rim; ++y) {
        for (int x = -rim; x <= rim; ++x) {
            if (x * x + y * y <= rim * rim + 1)
                painter.drawImage(x, y, light);
        }
    }
    painter.drawImage(0, 0, image);
    return result;
}
} // namespace

zoIconEngine::zoIconEngine(const QString& offFile, const QString& onFile)
    : m_offFile(offFile), m_onFile(onFile), m_cache(QSharedPointer<Cache>::create())
{
}

zoIconEngine::~zoIconEngine() = default;

QString zoIconEngine::key() const
{
    return QStringLiteral("zoIconEngine");
}

QIconEngine* zoIconEngine::clone() const
{
    return new zoIconEngine(*this);
}

QList<QSize> zoIconEngine::availableSizes(QIcon::Mode, QIcon::State) ZO_QT5_CONST
{
    QList<QSize> sizes;
    for (const int edge : s_sizes)
        sizes.append(QSize(edge, edge));
    return sizes;
}

QSize zoIconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State)
{
    const int edge = qMin(size.width(), size.height());
    return QSize(edge, edge);
}

QPixmap zoIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    const int edge = qMin(size.width(), size.height());
    if (edge <= 0)
        return {};
    const bool disabled = mode == QIcon::Disabled;
    const bool on = state == QIcon::On && !m_onFile.isEmpty();
    const bool halo = needsHalo(mode);
    const quint32 cacheKey = quint32(edge) << 3 | (halo ? 4U : 0U) | (disabled ? 2U : 0U) | (on ? 1U : 0U);
    QPixmap& picture = (*m_cache)[cacheKey];
    if (picture.isNull()) {
        picture = rendered(edge, disabled, on);
        if (halo)
            picture = QPixmap::fromImage(onHalo(picture.toImage()));
    }
    return picture;
}

void zoIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal ratio = painter->device()->devicePixelRatioF();
    QPixmap picture = pixmap(rect.size() * ratio, mode, state);
    picture.setDevicePixelRatio(ratio);
    const QSizeF size = QSizeF(picture.size()) / ratio;
    painter->drawPixmap(
        QPointF(rect.x() + (rect.width() - size.width()) / 2, rect.y() + (rect.height() - size.height()) / 2),
        picture);
}

QPixmap zoIconEngine::rendered(int edge, bool disabled, bool on) const
{
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(on ? m_onFile : m_offFile);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, edge, edge));
    painter.end();
    return QPixmap::fromImage(disabled ? disabledLook(image) : image);
}
