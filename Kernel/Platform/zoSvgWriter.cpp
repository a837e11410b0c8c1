#include "zoSvgWriter.h"

#include <QPainter>
#include <QSvgGenerator>

bool zoSvgWriter::write(QIODevice& device, const QSize& size, int resolution,
                        const std::function<void(QPainter&)>& paint)
{
    QSvgGenerator generator;
    generator.setOutputDevice(&device);
    generator.setResolution(resolution);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    QPainter painter;
    if (!painter.begin(&generator))
        return false;
    paint(painter);
    return painter.end();
}
