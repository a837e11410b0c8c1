#pragma once

#include <QRectF>
#include <QSet>
#include <QString>

class QPainter;
class QPalette;
class QTreeWidgetItem;

// A picture of a configuration, painted on whatever a QPainter can paint on: widgets, images, files.
class zoHPCPicture
{
public:
    // Fast leaves out what costs time and tells little: for frames while something is dragged.
    enum class Detail { Full, Fast };
    // Rows of trees; never followed, so that they need not live.
    using Rows = QSet<const QTreeWidgetItem*>;

    zoHPCPicture() = default;
    virtual ~zoHPCPicture() = default;

    zoHPCPicture(const zoHPCPicture&) = delete;
    zoHPCPicture& operator=(const zoHPCPicture&) = delete;

    // What viewers of files call it; empty for none.
    virtual QString title() const { return {}; }
    // Takes everything into an area of this size and shape.
    virtual void fit(const QRectF& area) = 0;
    // Whether all names can be read where the last fit() into this area put them.
    virtual bool isReadable(const QRectF& area) const
    {
        Q_UNUSED(area)
        return true;
    }
    // So much to draw that frames in full detail come late.
    virtual bool isLarge() const = 0;

    // Fills the area, in the painter's units.
    virtual void paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                       Detail detail) const = 0;
};
