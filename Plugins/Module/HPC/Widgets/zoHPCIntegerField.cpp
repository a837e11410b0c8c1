#include "zoHPCIntegerField.h"

#include "zoHPCNumberExpression.h"

#include <algorithm>

zoHPCIntegerField::zoHPCIntegerField(QWidget* parent) : QSpinBox(parent) {}

QValidator::State zoHPCIntegerField::validate(QString& text, int& position) const
{
    // Swallowing the mark alone would let the digits behind it through.
    zoHPCNumberExpression::replaceMinus(text);
    if (std::any_of(text.cbegin(), text.cend(), zoHPCNumberExpression::isDecimalMark))
        return QValidator::Intermediate;
    if (zoHPCNumberExpression::isExpression(text)) {
        const QValidator::State state =
            zoHPCNumberExpression::evaluate(text, zoHPCNumberExpression::Unit::Pixel).state;
        if (state != QValidator::Acceptable)
            return state;
        const std::optional<int> value = zoHPCNumberExpression::wholeNumber(text);
        return value && *value >= minimum() && *value <= maximum() ? QValidator::Acceptable
                                                                   : QValidator::Intermediate;
    }
    const auto isPart = [](QChar character) {
        return character.isDigit() || character == QLatin1Char('-') || character == QLatin1Char('+');
    };
    if (!std::all_of(text.cbegin(), text.cend(), isPart))
        return QValidator::Invalid;
    return QSpinBox::validate(text, position);
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
