#include "zoHPCPictureFile.h"

#include "zoHPCPdfFile.h"
#include "zoHPCPicture.h"

#include <zoFileWriter.h>
#include <zoLog.h>
#include <zoSvgWriter.h>

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>

namespace
{
// Points of a picture per inch, in all formats: texts are as large beside lines as on the screen.
constexpr int s_resolution = 96;
constexpr int s_largestSide = 32767;

bool isPossible(const QSize& size)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= s_largestSide &&
           size.height() <= s_largestSide;
}
} // namespace

bool zoHPCPictureFile::save(const zoHPCPicture& picture, const QString& fileName, const QSize& size,
                            const QPalette& palette, double scale)
{
    const QString format = QFileInfo(fileName).suffix();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!write(picture, buffer, format, size, palette, scale)) {
        zoLog::error("%s", qUtf8Printable(tr("Unable to write picture %1 in the format \"%2\" at %3 x %4")
                                              .arg(fileName, format, QString::number(size.width()),
                                                   QString::number(size.height()))));
        return false;
    }
    QString reason;
    if (zoFileWriter::write(fileName, buffer.data(), &reason) != zoFileWriter::Result::Written) {
        zoLog::error("%s", qUtf8Printable(tr("Unable to save picture %1: %2").arg(fileName, reason)));
        return false;
    }
    return true;
}

bool zoHPCPictureFile::write(const zoHPCPicture& picture, QIODevice& device, const QString& format,
                             const QSize& size, const QPalette& palette, double scale)
{
    if (!isPossible(size))
        return false;
    const QString kind = format.toLower();
    if (kind == QLatin1String("svg"))
        return writeSvg(picture, device, size, palette);
    if (kind == QLatin1String("png"))
        return writePng(picture, device, size, palette, scale);
    if (kind == QLatin1String("pdf"))
        return writePdf(picture, device, size, palette);
    return false;
}

QString zoHPCPictureFile::filter()
{
    return tr("Scalable picture (*.svg);;Picture (*.png);;Document (*.pdf)");
}

bool zoHPCPictureFile::writeSvg(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                                const QPalette& palette)
{
    return zoSvgWriter::write(
        device, size, s_resolution,
        [&](QPainter& painter) {
            picture.paint(painter, QRectF(QPointF(0.0, 0.0), size), palette, zoHPCPicture::Detail::Full);
        },
        picture.title());
}

bool zoHPCPictureFile::writePng(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                                const QPalette& palette, double scale)
{
    const QSizeF pixels = QSizeF(size) * scale;
    if (!(scale > 0.0) || !isPossible(pixels.toSize()))
        return false;
    QImage image(pixels.toSize(), QImage::Format_RGB32);
    if (image.isNull())
        return false;
    image.setDevicePixelRatio(scale);
    image.setDotsPerMeterX(qRound(s_resolution * scale / 0.0254));
    image.setDotsPerMeterY(qRound(s_resolution * scale / 0.0254));
    QPainter painter;
    if (!painter.begin(&image))
        return false;
    picture.paint(painter, QRectF(QPointF(0.0, 0.0), size), palette, zoHPCPicture::Detail::Full);
    return painter.end() && image.save(&device, "PNG");
}

bool zoHPCPictureFile::writePdf(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                                const QPalette& palette)
{
    const QPageLayout page(
        QPageSize(QSizeF(size) * 72.0 / s_resolution, QPageSize::Point, QString(), QPageSize::ExactMatch),
        QPageLayout::Portrait, QMarginsF());
    return zoHPCPdfFile::write(
        device, picture.title(), page, s_resolution, [&](QPdfWriter& writer, QPainter& painter) {
            Q_UNUSED(writer)
            picture.paint(painter, QRectF(QPointF(0.0, 0.0), size), palette, zoHPCPicture::Detail::Full);
        });
}
