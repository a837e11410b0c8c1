#include "zoIconEngine.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

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

QList<QSize> zoIconEngine::availableSizes(QIcon::Mode, QIcon::State) const
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
    const quint32 cacheKey = quint32(edge) << 2 | (disabled ? 2U : 0U) | (on ? 1U : 0U);
    QPixmap& picture = (*m_cache)[cacheKey];
    if (picture.isNull())
        picture = rendered(edge, disabled, on);
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
