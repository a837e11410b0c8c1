#pragma once

#include "zoHPCNumberExpression.h"

#include <QDoubleSpinBox>

// A field for a number with a fraction. Point and comma, also those of Arabic script, are all its decimal mark,
// whatever the locale; groups of digits are not separated, so that none can be taken for the other. It also takes sums
// and units, "5520/3" and "3.2 m", and shows what comes of them once the focus leaves.
class zoHPCNumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit zoHPCNumberField(QWidget* parent = nullptr);

    // What it counts; none before.
    void setUnit(zoHPCNumberExpression::Unit unit) { m_unit = unit; }
    zoHPCNumberExpression::Unit unit() const { return m_unit; }

    // The mark that was typed becomes that of the locale.
    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;

private:
    zoHPCNumberExpression::Unit m_unit = zoHPCNumberExpression::Unit::None;
};
