#pragma once

#include "zoAssistantFields.h"
#include "zoHPCNumberExpression.h"

#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class zoAssistantNumberField;

// How many tiles a wall has, their pixels, how large it is, and how it is bent; what of it there is depends on the kind.
class zoAssistantSizeFields final : public zoAssistantFields
{
    Q_OBJECT

public:
    explicit zoAssistantSizeFields(QWidget* parent = nullptr);
    ~zoAssistantSizeFields() override;

    void showPlan(const zoHPCWallPlan& plan) override;
    void apply(zoHPCWallPlan& plan) const override;

private:
    void addGrid();
    void addSize();
    void addCave();
    void addCurve();
    void showRows(zoHPCWallPlan::Kind kind);
    void addRow(const QString& label, const std::vector<QWidget*>& widgets,
                const std::vector<zoHPCWallPlan::Kind>& kinds);
    zoAssistantNumberField* addNumber(const char* name, const QString& toolTip, double minimum,
                                      double maximum, int decimals, zoHPCNumberExpression::Unit unit);
    // The same without saying that it was edited.
    static zoAssistantNumberField* makeNumber(const char* name, const QString& toolTip, double minimum,
                                              double maximum, int decimals, zoHPCNumberExpression::Unit unit);

    struct Row
    {
        QWidget* label;
        QWidget* widget;
        std::vector<zoHPCWallPlan::Kind> kinds;
    };

    QGridLayout* m_layout;
    std::vector<Row> m_rows;
    zoAssistantNumberField* m_columns = nullptr;
    zoAssistantNumberField* m_rowCount = nullptr;
    QComboBox* m_pixels = nullptr;
    zoAssistantNumberField* m_width = nullptr;
    zoAssistantNumberField* m_height = nullptr;
    QComboBox* m_sizeOf = nullptr;
    zoAssistantNumberField* m_pitch = nullptr;
    zoAssistantNumberField* m_caveWidth = nullptr;
    zoAssistantNumberField* m_caveHeight = nullptr;
    zoAssistantNumberField* m_caveDepth = nullptr;
    std::vector<QCheckBox*> m_caveWalls;
    zoAssistantNumberField* m_radius = nullptr;
    zoAssistantNumberField* m_angle = nullptr;
    zoHPCWallPlan::Curvature m_curvature = zoHPCWallPlan::Curvature::Radius; // that was typed last
};
