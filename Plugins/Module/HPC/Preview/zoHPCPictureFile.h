#pragma once

#include <QCoreApplication>
#include <QPalette>
#include <QSize>
#include <QString>

class QIODevice;
class zoHPCPicture;

// Writes a picture as a file: SVG and PDF with lines and texts of their own, PNG with pixels.
class zoHPCPictureFile final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCPictureFile)

public:
    // The format follows from the suffix. The old file stays whole until the new one is complete. Size is in
    // points of 1/96 inch; a PNG has `scale` pixels for each. Failures are logged; returns success.
    static bool save(const zoHPCPicture& picture, const QString& fileName, const QSize& size,
                     const QPalette& palette = QPalette(), double scale = 1.0);
    // Dates of a file are those of SOURCE_DATE_EPOCH, seconds since 1970, when that is set: the same picture has
    // the same bytes then. "svg", "png" or "pdf", in either case; false for other formats, and when the device fails.
    static bool write(const zoHPCPicture& picture, QIODevice& device, const QString& format,
                      const QSize& size, const QPalette& palette = QPalette(), double scale = 1.0);
    // For file dialogs.
    static QString filter();

private:
    static bool writeSvg(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                         const QPalette& palette);
    static bool writePng(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                         const QPalette& palette, double scale);
    static bool writePdf(const zoHPCPicture& picture, QIODevice& device, const QSize& size,
                         const QPalette& palette);
};
