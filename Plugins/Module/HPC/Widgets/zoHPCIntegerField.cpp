#include "zoHPCIntegerField.h"

#include "zoHPCNumberExpression.h"

zoHPCIntegerField::zoHPCIntegerField(QWidget* parent) : QSpinBox(parent) {}

QValidator::State zoHPCIntegerField::validate(QString& text, int& position) const
{
    const auto state = zoHPCNumberExpression::typedWholeState(text, minimum(), maximum());
    return state ? QValidator::State(*state) : QSpinBox::validate(text, position);
}

int zoHPCIntegerField::valueFromText(const QString& text) const
{
    if (zoHPCNumberExpression::isExpression(text))
        return zoHPCNumberExpression::wholeNumber(text).value_or(value());
    return QSpinBox::valueFromText(text);
}

void zoHPCIntegerField::fixup(QString& text) const
{
    // The base would take the marks out and with them make "63.5" 635.
    Q_UNUSED(text)
}
