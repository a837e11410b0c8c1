#pragma once

#include "zoHPCWallPlan.h"

#include <QGroupBox>

// Fields for some of what a person says of a new wall.
class zoAssistantFields : public QGroupBox
{
    Q_OBJECT

public:
    ~zoAssistantFields() override;

    // Whether such a wall has any of them; the dialog shows no others.
    virtual bool areFor(const zoHPCWallPlan& plan) const;
    // Announces nothing, and leaves what is being typed as it is.
    virtual void showPlan(const zoHPCWallPlan& plan) = 0;
    // Writes what the fields say into the plan.
    virtual void apply(zoHPCWallPlan& plan) const = 0;

signals:
    void edited();

protected:
    static constexpr double MostMillimetres = 1e6; // that a field takes
    static constexpr int RowSpacing = 6;           // pixels between the fields of a row

    zoAssistantFields(const QString& title, QWidget* parent);
    // The dialog has many fields and must fit on small screens.
    static void tighten(QLayout& layout);
};
