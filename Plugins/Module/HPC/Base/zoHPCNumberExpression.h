#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

#include <optional>

// What a person types for a number: the number itself, one with a unit, or a sum of such: "3.2 m", "5520/3", "12 in",
// "2*1920 - 80". Point and comma, also those of Arabic script, are decimal marks; digits may be of any script, and groups
// of them are never separated. One reader for all fields and texts that take numbers from a person.
//
// Stable: all names of this header.
class zoHPCNumberExpression final
{
public:
    // What a field counts, and so which units it takes: lengths mm, cm, m, in, ft; pixels px; parts %; others none.
    enum class Unit { None, Millimetre, Pixel, Fraction };

    // As those of Qt's validators: Intermediate for what typing may complete, Invalid for what nothing completes.
    enum class State { Invalid, Intermediate, Acceptable };

    struct Result
    {
        State state = State::Invalid;
        double value = 0.0; // in the unit of the field; when acceptable
        // Neither sum nor unit: what fields have always taken.
        bool isPlain = false;
    };

    zoHPCNumberExpression() = delete;

    // Of a length, a number that names no unit counts so many millimetres, and so does the value.
    static Result evaluate(const QString& text, Unit unit, double plainUnit = 1.0);
    // Millimetres of "mm" and the like, in any case; 0 for a word that is no unit of length.
    static double lengthOf(const QString& unitWord);
    static QStringList lengthUnits();
    // Of pixels or pieces; none for what is no whole number that an int holds.
    static std::optional<int> wholeNumber(const QString& text);

    // What a field says of its text, without prefix and suffix, beside the rules of Qt's own fields; none where those
    // decide. The mark that was typed becomes that of the locale.
    static std::optional<State> typedState(QString& text, Unit unit, const QLocale& locale, double minimum,
                                           double maximum);
    // Of a field without a fraction: while a mark stands in it, it is Intermediate, so that "63.5" never becomes 635.
    static std::optional<State> typedWholeState(QString& text, double minimum, double maximum);
    // What an acceptable text of a field stands for, with as many decimals as it shows; none where Qt's rules decide. The
    // mark and the minus are then as these take them.
    static std::optional<double> typedValue(QString& text, Unit unit, const QLocale& locale, int decimals);
    // Whether a text is more than a number: something is to be computed.
    static bool isExpression(const QString& text);

    // The same text where commas separate groups of three digits, as "2,000" may be 2 or 2000; unchanged where there is
    // but one reading.
    static QString withoutGroups(const QString& text);

    static bool isDecimalMark(QChar character);
    // A minus as on the keyboard: some locales write another one, and read both.
    static void replaceMinus(QString& text);

private:
    static void replaceMarks(QString& text, QChar mark);
};
