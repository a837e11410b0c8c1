#pragma once

#include "zoHPCDisplayItem.h"

// A render window on one screen of a render node.
class zoHPCWindowItem : public zoHPCDisplayItem
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCWindowItem)

public:
    enum WindowColumn {
        Node = 5,
        Screen = 6,
        X = 7, // pixels
        Y = 8,
        Width = 9,
        Height = 10,
        FullScreen = 11
    };

    zoHPCWindowItem();
    ~zoHPCWindowItem() override;

    QString renderNode() const;

    void setRenderNode(const QString& node);

    void update() override;
    QDomElement toXML(QDomDocument& document, const QString& tagName) const override;
    // Appends the viewports found at any depth below the element.
    void fromXML(const QDomElement& element) override;
    // The same with the viewports found already.
    void fromElements(const QDomElement& element, const QList<QDomElement>& viewports);
    const ColumnMap& getColumns() const override;

    zoHPCWindowItem* clone() override;
    using QTreeWidgetItem::clone;

    static const ColumnMap& columns();

protected:
    // Text of a row, in the warning colour while what it needs is not assigned.
    void setLabel(const QString& label, bool assigned);
};
