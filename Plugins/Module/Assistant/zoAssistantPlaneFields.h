#pragma once

#include "zoAssistantFields.h"

class QPushButton;
class QTableWidget;

// Screens that stand anywhere: a table with a row for each.
class zoAssistantPlaneFields final : public zoAssistantFields
{
    Q_OBJECT

public:
    explicit zoAssistantPlaneFields(QWidget* parent = nullptr);
    ~zoAssistantPlaneFields() override;

    bool areFor(const zoHPCWallPlan& plan) const override;
    void showPlan(const zoHPCWallPlan& plan) override;
    void apply(zoHPCWallPlan& plan) const override;

private:
    void add();
    void remove();
    void showPlane(int row, const zoHPCWallPlan::Plane& plane);
    zoHPCWallPlan::Plane planeOf(int row) const;

    QTableWidget* m_table;
    QPushButton* m_remove;
};
