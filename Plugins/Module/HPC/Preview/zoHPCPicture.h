#pragma once

class QPainter;
class QPalette;
class QRectF;

// A picture of a configuration, painted on whatever a QPainter can paint on: widgets, images, files.
class zoHPCPicture
{
public:
    // Fast leaves out what costs time and tells little: for frames while something is dragged.
    enum class Detail { Full, Fast };

    zoHPCPicture() = default;
    virtual ~zoHPCPicture() = default;

    zoHPCPicture(const zoHPCPicture&) = delete;
    zoHPCPicture& operator=(const zoHPCPicture&) = delete;

    // Takes everything into an area of this size and shape.
    virtual void fit(const QRectF& area) = 0;
    // So much to draw that frames in full detail come late.
    virtual bool isLarge() const = 0;

    // Fills the area, in the painter's units.
    virtual void paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                       Detail detail) const = 0;
};
