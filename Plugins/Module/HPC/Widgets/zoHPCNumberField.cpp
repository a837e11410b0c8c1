#include "zoHPCNumberField.h"

#include <QLocale>

zoHPCNumberField::zoHPCNumberField(QWidget* parent) : QDoubleSpinBox(parent) {}

QValidator::State zoHPCNumberField::validate(QString& text, int& position) const
{
    const auto state = zoHPCNumberExpression::typedState(text, m_unit, locale(), minimum(), maximum());
    return state ? QValidator::State(*state) : QDoubleSpinBox::validate(text, position);
}

double zoHPCNumberField::valueFromText(const QString& text) const
{
    QString typed = text;
    const auto value = zoHPCNumberExpression::typedValue(typed, m_unit, locale(), decimals());
    return value ? *value : QDoubleSpinBox::valueFromText(typed);
}
