#include "zoHPCPictureFile.h"

#include "zoHPCPicture.h"

#include <zoFileWriter.h>
#include <zoLog.h>
#include <zoSvgWriter.h>

#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QImage>
#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

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
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QCoreApplication::applicationName());
    writer.setTitle(picture.title());
    writer.setResolution(s_resolution);
    writer.setPageSize(
        QPageSize(QSizeF(size) * 72.0 / s_resolution, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    picture.paint(painter, QRectF(QPointF(0.0, 0.0), size), palette, zoHPCPicture::Detail::Full);
    if (!painter.end())
        return false;
    QByteArray bytes = buffer.data();
    setDate(bytes);
    return device.write(bytes) == bytes.size();
}

// The writer knows no date but now. A date of the same form leaves all offsets of the file as they are.
void zoHPCPictureFile::setDate(QByteArray& pdf)
{
    bool isNumber = false;
    const qint64 seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isNumber);
    const QByteArray begin("/CreationDate (D:");
    const int date = pdf.indexOf(begin);
    const int end = pdf.indexOf(')', date);
    if (!isNumber || date < 0 || end < 0)
        return;
    const int from = date + begin.size();
    QByteArray text = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
                          .toString(QString::fromLatin1("yyyyMMddHHmmss"))
                          .toLatin1();
    text += end - from == text.size() + 1 ? "Z" : "+00'00'"; // as the writer has it, by the local time
    if (text.size() == end - from)
        pdf.replace(from, text.size(), text);
}
