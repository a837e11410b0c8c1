#include "zoHPCIntegerField.h"

#include "zoHPCNumberField.h"

#include <algorithm>

zoHPCIntegerField::zoHPCIntegerField(QWidget* parent) : QSpinBox(parent) {}

QValidator::State zoHPCIntegerField::validate(QString& text, int& position) const
{
    // Swallowing the mark alone would let the digits behind it through.
    zoHPCNumberField::replaceMinus(text);
    if (std::any_of(text.cbegin(), text.cend(), zoHPCNumberField::isDecimalMark))
        return QValidator::Intermediate;
    const auto isPart = [](QChar character) {
        return character.isDigit() || character == QLatin1Char('-') || character == QLatin1Char('+');
    };
    if (!std::all_of(text.cbegin(), text.cend(), isPart))
        return QValidator::Invalid;
    return QSpinBox::validate(text, position);
}

void zoHPCIntegerField::fixup(QString& text) const
{
    // The base would take the marks out and with them make "63.5" 635.
    Q_UNUSED(text)
}
