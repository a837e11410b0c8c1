#pragma once

#include <QString>
#include <QValidator>

#include <optional>

// What a person types for a number: the number itself, one with a unit, or a sum of such: "3.2 m", "5520/3", "12 in",
// "2*1920 - 80". Point and comma, also those of Arabic script, are decimal marks; digits may be of any script, and groups
// of them are never separated.
class zoHPCNumberExpression final
{
public:
    // What a field counts, and so which units it takes: lengths mm, cm, m, in, ft; pixels px; parts %; others none.
    enum class Unit { None, Millimetre, Pixel, Fraction };

    struct Result
    {
        // Intermediate for what typing may complete, Invalid for what nothing completes.
        QValidator::State state = QValidator::Invalid;
        double value = 0.0; // in the unit of the field; when acceptable
        // Neither sum nor unit: what fields have always taken.
        bool isPlain = false;
    };

    zoHPCNumberExpression() = delete;

    static Result evaluate(const QString& text, Unit unit);
    // Of pixels or pieces; none for what is no whole number that an int holds.
    static std::optional<int> wholeNumber(const QString& text);
    // Whether a text is more than a number: something is to be computed.
    static bool isExpression(const QString& text);

    static bool isDecimalMark(QChar character);
    // A minus as on the keyboard: some locales write another one, and read both.
    static void replaceMinus(QString& text);
};
