#include "zoAssistantFields.h"

#include <QGridLayout>

zoAssistantFields::zoAssistantFields(const QString& title, QWidget* parent) : QGroupBox(title, parent) {}

zoAssistantFields::~zoAssistantFields() = default;

bool zoAssistantFields::areFor(const zoHPCWallPlan& plan) const
{
    Q_UNUSED(plan)
    return true;
}

void zoAssistantFields::tighten(QLayout& layout)
{
    constexpr int Margin = 6; // pixels
    constexpr int Spacing = 4;
    layout.setContentsMargins(Margin, Spacing, Margin, Spacing);
    if (auto* grid = qobject_cast<QGridLayout*>(&layout))
        grid->setVerticalSpacing(Spacing);
}
