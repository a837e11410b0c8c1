#include "zoSvgWriter.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

namespace
{
// Texts hold what a person typed and how a file is called; no reader takes a file with what XML has no place for.
QByteArray withoutForbidden(const QByteArray& svg)
{
    constexpr char s_replacement[] = "\xef\xbf\xbd";
    QByteArray text;
    text.reserve(svg.size());
    for (int i = 0; i < svg.size(); ++i) {
        const auto byte = static_cast<unsigned char>(svg.at(i));
        const bool isControl = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
        // The two last characters of the first plane.
        const bool isNone =
            byte == 0xef && (svg.mid(i, 3) == "\xef\xbf\xbe" || svg.mid(i, 3) == "\xef\xbf\xbf");
        if (isControl || isNone)
            text += s_replacement;
        else
            text += svg.at(i);
        i += isNone ? 2 : 0;
    }
    return text;
}
} // namespace

bool zoSvgWriter::write(QIODevice& device, const QSize& size, int resolution,
                        const std::function<void(QPainter&)>& paint, const QString& title)
{
    if (!device.isOpen() && !device.open(QIODevice::WriteOnly))
        return false;
    if (!device.isWritable())
        return false;
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(resolution);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    // Written as it is given.
    generator.setTitle(title.toHtmlEscaped());
    QPainter painter;
    if (!painter.begin(&generator))
        return false;
    paint(painter);
    if (!painter.end())
        return false;
    const QByteArray svg = withoutForbidden(buffer.data());
    return device.write(svg) == svg.size();
}
