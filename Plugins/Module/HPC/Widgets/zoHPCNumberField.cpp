#include "zoHPCNumberField.h"

#include <QLocale>

#include <algorithm>

namespace
{
QString plain(QString text, QChar mark)
{
    for (QChar& character : text) {
        if (zoHPCNumberExpression::isDecimalMark(character))
            character = mark;
    }
    zoHPCNumberExpression::replaceMinus(text);
    return text;
}
} // namespace

zoHPCNumberField::zoHPCNumberField(QWidget* parent) : QDoubleSpinBox(parent) {}

QValidator::State zoHPCNumberField::validate(QString& text, int& position) const
{
    const QChar mark = locale().decimalPoint();
    text = plain(text, mark);
    if (zoHPCNumberExpression::isExpression(text)) {
        const zoHPCNumberExpression::Result result = zoHPCNumberExpression::evaluate(text, m_unit);
        const bool isOutside = result.value < minimum() || result.value > maximum();
        return result.state == QValidator::Acceptable && isOutside ? QValidator::Intermediate : result.state;
    }
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
    if (!zoHPCNumberExpression::isExpression(text))
        return QDoubleSpinBox::valueFromText(plain(text, locale().decimalPoint()));
    const double value = zoHPCNumberExpression::evaluate(text, m_unit).value;
    return QString::number(value, 'f', decimals()).toDouble(); // as many digits as it shows
}
