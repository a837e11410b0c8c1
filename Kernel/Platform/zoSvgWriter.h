#pragma once

#include <zoKernelExport.h>

#include <QSize>
#include <QString>

#include <functional>

class QIODevice;
class QPainter;

// Writes what a painter draws as SVG, so that modules need no SVG library of their own.
class ZO_KERNEL_EXPORT zoSvgWriter final
{
public:
    // `paint` draws from (0, 0) to `size`, in points of which `resolution` make an inch. A closed device
    // is opened. False when it takes no bytes; then nothing is drawn. Viewers show the title, if there is one.
    static bool write(QIODevice& device, const QSize& size, int resolution,
                      const std::function<void(QPainter&)>& paint, const QString& title = QString());
};
