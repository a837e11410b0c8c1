#include "zoRasterSurface.h"

#include "zoShowWindow.h"
#include "zoWindowPicture.h"

#include <QPainter>

zoRasterSurface::zoRasterSurface()
    : m_window(std::make_unique<zoShowWindow>(QSurface::RasterSurface))
    , m_store(std::make_unique<QBackingStore>(m_window.get()))
{
}

zoRasterSurface::~zoRasterSurface() = default;

QString zoRasterSurface::description() const
{
    return QStringLiteral("raster");
}

void zoRasterSurface::draw(const zoWindowPicture& picture)
{
    const QSize size = m_window->size();
    if (m_frame.size() != size)
        m_frame = QImage(size, QImage::Format_RGB32);
    if (!m_frame.isNull())
        picture.paint(m_frame, m_window->mapToGlobal(QPoint(0, 0)));
}

QImage zoRasterSurface::frame(const zoWindowPicture& picture)
{
    QImage image(m_window->size(), QImage::Format_RGB32);
    if (!image.isNull())
        picture.paint(image, m_window->mapToGlobal(QPoint(0, 0)));
    return image;
}

void zoRasterSurface::swap()
{
    if (m_frame.isNull() || !m_window->isExposed())
        return;
    const QRect all(QPoint(0, 0), m_frame.size());
    m_store->resize(m_frame.size());
    m_store->beginPaint(all);
    QPainter painter(m_store->paintDevice());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, m_frame);
    painter.end();
    m_store->endPaint();
    m_store->flush(all);
}
