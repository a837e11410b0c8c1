#include "zoHPCNumberField.h"

#include <QLocale>

#include <algorithm>

namespace
{
constexpr QChar s_minus{0x2212};
constexpr QChar s_arabicComma{0x60c};
constexpr QChar s_arabicMark{0x66b};

QString plain(QString text, QChar mark)
{
    for (QChar& character : text) {
        if (zoHPCNumberField::isDecimalMark(character))
            character = mark;
    }
    zoHPCNumberField::replaceMinus(text);
    return text;
}
} // namespace

zoHPCNumberField::zoHPCNumberField(QWidget* parent) : QDoubleSpinBox(parent) {}

QValidator::State zoHPCNumberField::validate(QString& text, int& position) const
{
    const QChar mark = locale().decimalPoint();
    text = plain(text, mark);
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
    return QDoubleSpinBox::valueFromText(plain(text, locale().decimalPoint()));
}

bool zoHPCNumberField::isDecimalMark(QChar character)
{
    return character == QLatin1Char('.') || character == QLatin1Char(',') || character == s_arabicComma ||
           character == s_arabicMark;
}

void zoHPCNumberField::replaceMinus(QString& text)
{
    text.replace(s_minus, QLatin1Char('-'));
}
