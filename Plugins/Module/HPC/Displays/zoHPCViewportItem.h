#pragma once

#include "zoHPCWindowItem.h"

// A rectangle of a window that shows one projection for one eye.
class zoHPCViewportItem final : public zoHPCWindowItem
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCViewportItem)

public:
    enum ViewportColumn {
        ProjectionIdentifier = 12, // run time only
        Projection = 13,           // name
        Position = 14,
        X1 = 15, // fractions of the window, from its lower left corner
        Y1 = 16,
        X2 = 17,
        Y2 = 18,
        FlipX = 19,
        FlipY = 20,
        Eye = 21,
        ColumnCount = 22
    };

    // Corners beyond it are pixels.
    static constexpr double LargestFraction = 16.0;

    zoHPCViewportItem();
    ~zoHPCViewportItem() override;

    void setViewport(double x1, double y1, double x2, double y2);
    // Whether the corners are given in pixels instead of fractions, as imported configurations do.
    bool isInPixels() const;
    // Equal names change nothing. The identifier is not touched.
    void setProjection(const QString& name);

    void update() override;
    const ColumnMap& getColumns() const override;

    zoHPCViewportItem* clone() override;
    using QTreeWidgetItem::clone;

    static const ColumnMap& columns();
};
