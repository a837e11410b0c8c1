#pragma once

#include <QDateTime>
#include <QPageLayout>
#include <QString>

#include <functional>

class QIODevice;
class QPainter;
class QPdfWriter;

// Writes PDF files of which the same pages have the same bytes.
class zoHPCPdfFile final
{
public:
    // What the pages show and which begins next: writer.newPage() ends one.
    using Pages = std::function<void(QPdfWriter& writer, QPainter& painter)>;

    zoHPCPdfFile() = delete;

    // The painter's unit is 1/resolution inch. False when the device fails. With SOURCE_DATE_EPOCH the file has that
    // date. Its creator is the program's name and version. Fonts are those of this machine and part of the file: elsewhere its bytes may differ.
    static bool write(QIODevice& device, const QString& title, const QPageLayout& page, int resolution,
                      const Pages& pages);

    // That of SOURCE_DATE_EPOCH, seconds since 1970, when it is set; now otherwise. In UTC.
    static QDateTime date();
};
