#pragma once

#include "zoHPCPicture.h"

#include <QRectF>
#include <QString>
#include <QStringList>

// A sheet with a picture of a configuration: its title above, what it does not say itself in lines below.
class zoPictureSheet final : public zoHPCPicture
{
public:
    // The picture must outlive the sheet.
    zoPictureSheet(zoHPCPicture& picture, const QString& title, const QStringList& lines);

    // Of what the picture has no room for.
    void addLines(const QStringList& lines) { m_lines += lines; }

    QString title() const override { return m_title; }
    void fit(const QRectF& area) override;
    bool isLarge() const override { return m_picture.isLarge(); }
    bool isReadable(const QRectF& area) const override { return m_picture.isReadable(inside(area)); }
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

private:
    // Where the picture is on the sheet.
    QRectF inside(const QRectF& area) const;
    // The lines, broken where the sheet ends; as many as there is room for.
    QStringList shownLines(const QRectF& area) const;

    zoHPCPicture& m_picture;
    QString m_title;
    QStringList m_lines;
};
