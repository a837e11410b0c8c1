#include "zoHPCNumberField.h"

#include <QLocale>

#include <algorithm>

namespace
{
QString withMark(QString text, QChar mark)
{
    for (QChar& character : text) {
        if (character == QLatin1Char('.') || character == QLatin1Char(','))
            character = mark;
    }
    return text;
}
} // namespace

zoHPCNumberField::zoHPCNumberField(QWidget* parent) : QDoubleSpinBox(parent) {}

QValidator::State zoHPCNumberField::validate(QString& text, int& position) const
{
    const QChar mark = locale().decimalPoint();
    text = withMark(text, mark);
    // What is left would be taken for a separator between groups: a second mark, a blank, an apostrophe.
    const auto isSeparator = [separator = locale().groupSeparator(), mark](QChar character) {
        return character != mark && (character == separator || character.isSpace());
    };
    if (text.count(mark) > 1 || std::any_of(text.cbegin(), text.cend(), isSeparator))
        return QValidator::Invalid;
    return QDoubleSpinBox::validate(text, position);
}

double zoHPCNumberField::valueFromText(const QString& text) const
{
    return QDoubleSpinBox::valueFromText(withMark(text, locale().decimalPoint()));
}
