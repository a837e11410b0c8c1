#pragma once

#include "zoAssistantFields.h"
#include "zoHPCWallBuilder.h"

class QLabel;
class QLineEdit;
class zoAssistantNumberField;

// The nodes that drive the wall, as hosts text or in the bracket form, with what was understood below; windows on each,
// and the name of the wall.
class zoAssistantNodeFields final : public zoAssistantFields
{
    Q_OBJECT

public:
    explicit zoAssistantNodeFields(QWidget* parent = nullptr);
    ~zoAssistantNodeFields() override;

    // Names of as many nodes as the plan takes.
    static QString example(const zoHPCWallPlan& plan);

    void showPlan(const zoHPCWallPlan& plan) override;
    void apply(zoHPCWallPlan& plan) const override;
    // Keys go to the names of nodes; what is typed takes their place.
    void focusHosts();

private:
    void showCount(const zoHPCWallPlan& plan);

    QLineEdit* m_hosts;
    QLabel* m_count;
    zoAssistantNumberField* m_windows;
    QLineEdit* m_name;
};
