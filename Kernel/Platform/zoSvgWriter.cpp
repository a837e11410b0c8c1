#include "zoSvgWriter.h"

#include <QPainter>
#include <QSvgGenerator>

bool zoSvgWriter::write(QIODevice& device, const QSize& size, int resolution,
                        const std::function<void(QPainter&)>& paint, const QString& title)
{
    QSvgGenerator generator;
    generator.setOutputDevice(&device);
    generator.setResolution(resolution);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    // Written as it is given.
    generator.setTitle(title.toHtmlEscaped());
    QPainter painter;
    if (!painter.begin(&generator))
        return false;
    paint(painter);
    return painter.end();
}
