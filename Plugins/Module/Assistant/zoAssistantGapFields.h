#pragma once

#include "zoAssistantFields.h"

class QComboBox;
class QLabel;
class zoAssistantNumberField;

// What is between neighbouring tiles: nothing, an overlap that is blended, or the frames of monitors; in pixels and in
// millimetres, each of which follows the other.
class zoAssistantGapFields final : public zoAssistantFields
{
    Q_OBJECT

public:
    explicit zoAssistantGapFields(QWidget* parent = nullptr);
    ~zoAssistantGapFields() override;

    bool areFor(const zoHPCWallPlan& plan) const override;
    void showPlan(const zoHPCWallPlan& plan) override;
    void apply(zoHPCWallPlan& plan) const override;

private:
    enum class Gap { None, Overlap, Bezel };

    struct Axis
    {
        QLabel* label = nullptr;
        zoAssistantNumberField* pixels = nullptr;
        zoAssistantNumberField* millimetres = nullptr;
    };

    Axis addAxis(int row, const char* name, const QString& label);
    Gap gap() const;
    void enable();

    QComboBox* m_gap;
    Axis m_across;
    Axis m_down;
    zoHPCWallPlan::Unit m_unit = zoHPCWallPlan::Unit::Pixels; // that was typed last
    bool m_hasSize = false;                                   // of a pixel
};
