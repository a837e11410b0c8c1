#pragma once

#include "zoHPCTreeWidgetItem.h"

#include <QCoreApplication>

// A display: stereo and camera settings shared by the windows below it.
class zoHPCDisplayItem : public zoHPCTreeWidgetItem
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCDisplayItem)

public:
    // Windows inside windows of a damaged document each claim the viewports below them. A display whose
    // windows would get more than this many viewports is refused with an error in the log.
    static constexpr int MaximumViewports = 100000;

    enum DisplayColumn {
        Text = 0,          // run time only
        EyeSeparation = 1, // mm
        Camera = 2,
        User = 3,
        HardwareSync = 4
    };

    zoHPCDisplayItem();
    ~zoHPCDisplayItem() override;

    double getEyeSeparation() const; // mm; for hosts and tests
    QString getCameraName() const;

    void setEyeSeparation(double separation);

    void update() override;
    QDomElement toXML(QDomDocument& document, const QString& tagName) const override;
    // Appends the windows found at any depth below the element.
    void fromXML(const QDomElement& element) override;
    const ColumnMap& getColumns() const override;

    // A copy with copies of everything below.
    virtual zoHPCDisplayItem* clone();
    using QTreeWidgetItem::clone;

    static const ColumnMap& columns();
};
