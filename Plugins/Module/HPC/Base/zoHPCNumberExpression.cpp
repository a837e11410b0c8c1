#include "zoHPCNumberExpression.h"

#include "zoText.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
using Unit = zoHPCNumberExpression::Unit;
using State = zoHPCNumberExpression::State;

struct UnitWord
{
    const char* word;
    Unit unit;
    double factor; // to the unit of the field
};

constexpr QChar s_minus{0x2212};
constexpr QChar s_arabicComma{0x60c};
constexpr QChar s_arabicMark{0x66b};
constexpr double Inch = 25.4;
constexpr UnitWord s_units[] = {
    {"mm", Unit::Millimetre, 1.0},  {"cm", Unit::Millimetre, 10.0},        {"m", Unit::Millimetre, 1000.0},
    {"in", Unit::Millimetre, Inch}, {"ft", Unit::Millimetre, 12.0 * Inch}, {"px", Unit::Pixel, 1.0},
    {"%", Unit::Fraction, 0.01},
};

// Reads by precedence: sums of products of signed numbers with units and brackets.
class Reader
{
public:
    Reader(const QString& text, Unit unit, double plainUnit)
        : m_text(text), m_unit(unit), m_plainUnit(plainUnit)
    {
    }

    zoHPCNumberExpression::Result read()
    {
        zoHPCNumberExpression::Result result;
        const double value = sum(0);
        skipBlanks();
        if (m_state == State::Acceptable && m_at < m_text.size())
            m_state = State::Invalid;
        if (m_state == State::Acceptable && !std::isfinite(value))
            m_state = State::Intermediate; // another divisor may follow
        result.state = m_state;
        result.value = value;
        result.isPlain = m_isPlain;
        return result;
    }

private:
    bool isGood() const { return m_state == State::Acceptable; }
    bool isAtEnd() const { return m_at >= m_text.size(); }

    void skipBlanks()
    {
        while (!isAtEnd() && m_text.at(m_at).isSpace())
            ++m_at;
    }

    bool take(QChar character)
    {
        skipBlanks();
        if (isAtEnd() || m_text.at(m_at) != character)
            return false;
        ++m_at;
        return true;
    }

    // What is missing may be typed yet; what is there is wrong for good.
    double stop()
    {
        if (isGood())
            m_state = isAtEnd() ? State::Intermediate : State::Invalid;
        return 0.0;
    }

    double sum(int depth)
    {
        double value = product(depth);
        while (isGood()) {
            if (take(QLatin1Char('+'))) {
                m_isPlain = false;
                value += product(depth);
            } else if (take(QLatin1Char('-'))) {
                m_isPlain = false;
                value -= product(depth);
            } else {
                break;
            }
        }
        return value;
    }

    double product(int depth)
    {
        double value = factor(depth);
        while (isGood()) {
            if (take(QLatin1Char('*'))) {
                m_isPlain = false;
                value *= factor(depth);
            } else if (take(QLatin1Char('/'))) {
                m_isPlain = false;
                value /= factor(depth);
            } else {
                break;
            }
        }
        return value;
    }

    double factor(int depth)
    {
        constexpr int Deepest = 30;
        if (depth > Deepest) {
            m_state = State::Invalid;
            return 0.0;
        }
        double sign = 1.0;
        if (take(QLatin1Char('-')))
            sign = -1.0;
        else
            take(QLatin1Char('+'));
        double value = 0.0;
        if (take(QLatin1Char('('))) {
            m_isPlain = false;
            value = sum(depth + 1);
            if (isGood() && !take(QLatin1Char(')')))
                return stop();
        } else {
            value = number();
        }
        return isGood() ? sign * value * unit() : 0.0;
    }

    double number()
    {
        skipBlanks();
        QString digits;
        bool hasMark = false;
        bool hasDigit = false;
        for (; !isAtEnd(); ++m_at) {
            const QChar character = m_text.at(m_at);
            // A raised one has a value, too.
            if (character.isDigit()) {
                digits += QChar(QLatin1Char(char('0' + character.digitValue())));
                hasDigit = true;
            } else if (!hasMark && zoHPCNumberExpression::isDecimalMark(character)) {
                digits += QLatin1Char('.');
                hasMark = true;
            } else {
                break;
            }
        }
        if (!hasDigit)
            return stop();
        return QLocale::c().toDouble(digits);
    }

    double unit()
    {
        skipBlanks();
        const int begin = m_at;
        while (!isAtEnd() && (m_text.at(m_at).isLetter() || m_text.at(m_at) == QLatin1Char('%')))
            ++m_at;
        const QString word = m_text.mid(begin, m_at - begin).toLower();
        if (word.isEmpty())
            return 1.0;
        m_isPlain = false;
        bool mayBecome = false;
        for (const UnitWord& known : s_units) {
            if (known.unit != m_unit)
                continue;
            if (word == QLatin1String(known.word))
                return known.factor / m_plainUnit;
            mayBecome = mayBecome || QLatin1String(known.word).startsWith(word);
        }
        m_state = mayBecome && isAtEnd() ? State::Intermediate : State::Invalid;
        return 1.0;
    }

    const QString& m_text;
    const Unit m_unit;
    const double m_plainUnit;
    int m_at = 0;
    State m_state = State::Acceptable;
    bool m_isPlain = true;
};
} // namespace

zoHPCNumberExpression::Result zoHPCNumberExpression::evaluate(const QString& text, Unit unit,
                                                              double plainUnit)
{
    constexpr int Longest = 200;
    if (text.size() > Longest)
        return {};
    QString plain = text;
    zoHPCNumberExpression::replaceMinus(plain);
    return Reader(plain, unit, plainUnit).read();
}

double zoHPCNumberExpression::lengthOf(const QString& unitWord)
{
    for (const UnitWord& known : s_units) {
        if (known.unit == Unit::Millimetre &&
            unitWord.compare(QLatin1String(known.word), Qt::CaseInsensitive) == 0)
            return known.factor;
    }
    return 0.0;
}

QStringList zoHPCNumberExpression::lengthUnits()
{
    QStringList words;
    for (const UnitWord& known : s_units) {
        if (known.unit == Unit::Millimetre)
            words << QLatin1String(known.word);
    }
    return words;
}

std::optional<int> zoHPCNumberExpression::wholeNumber(const QString& text)
{
    const Result result = evaluate(text, Unit::Pixel);
    if (result.state != State::Acceptable || result.value != std::floor(result.value) ||
        std::abs(result.value) > double(std::numeric_limits<int>::max()))
        return std::nullopt;
    return int(result.value);
}

std::optional<zoHPCNumberExpression::State> zoHPCNumberExpression::typedState(QString& text, Unit unit,
                                                                              const QLocale& locale,
                                                                              double minimum, double maximum)
{
    const QChar mark = QString(locale.decimalPoint()).front();
    replaceMarks(text, mark);
    if (isExpression(text)) {
        const Result result = evaluate(text, unit);
        const bool isOutside = result.value < minimum || result.value > maximum;
        return result.state == State::Acceptable && isOutside ? State::Intermediate : result.state;
    }
    // What is left would be taken for a separator between groups: a second mark, a blank, an apostrophe.
    // By its type: what front() gives with Qt 5 is a way into the text, which is gone in the next line.
    const QChar separator = QString(locale.groupSeparator()).front();
    const auto isSeparator = [separator, mark](QChar character) {
        return character != mark && (character == separator || character.isSpace());
    };
    if (text.count(mark) > 1 || std::any_of(text.cbegin(), text.cend(), isSeparator))
        return State::Invalid;
    return std::nullopt;
}

std::optional<zoHPCNumberExpression::State>
zoHPCNumberExpression::typedWholeState(QString& text, double minimum, double maximum)
{
    // Swallowing the mark alone would let the digits behind it through.
    replaceMinus(text);
    if (std::any_of(text.cbegin(), text.cend(), isDecimalMark))
        return State::Intermediate;
    if (isExpression(text)) {
        const State state = evaluate(text, Unit::Pixel).state;
        if (state != State::Acceptable)
            return state;
        const std::optional<int> value = wholeNumber(text);
        return value && *value >= minimum && *value <= maximum ? State::Acceptable : State::Intermediate;
    }
    const auto isPart = [](QChar character) {
        return character.isDigit() || character == QLatin1Char('-') || character == QLatin1Char('+');
    };
    if (!std::all_of(text.cbegin(), text.cend(), isPart))
        return State::Invalid;
    return std::nullopt;
}

std::optional<double> zoHPCNumberExpression::typedValue(QString& text, Unit unit, const QLocale& locale,
                                                        int decimals)
{
    replaceMarks(text, QString(locale.decimalPoint()).front());
    if (!isExpression(text))
        return std::nullopt;
    return QString::number(evaluate(text, unit).value, 'f', decimals).toDouble();
}

QString zoHPCNumberExpression::withoutGroups(const QString& text)
{
    static const QRegularExpression form(zoText("(?<![0-9.,])([1-9][0-9]{0,2}),([0-9]{3})(?![0-9.,])"));
    return QString(text).replace(form, zoText("\\1\\2"));
}

bool zoHPCNumberExpression::isExpression(const QString& text)
{
    const auto begin = std::find_if_not(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
    for (auto character = begin; character != text.cend(); ++character) {
        const bool isSign =
            *character == QLatin1Char('-') || *character == QLatin1Char('+') || *character == s_minus;
        if (isSign ? character != begin
                   : character->isLetter() || QString::fromLatin1("*/()%").contains(*character))
            return true;
    }
    return false;
}

bool zoHPCNumberExpression::isDecimalMark(QChar character)
{
    return character == QLatin1Char('.') || character == QLatin1Char(',') || character == s_arabicComma ||
           character == s_arabicMark;
}

void zoHPCNumberExpression::replaceMarks(QString& text, QChar mark)
{
    for (QChar& character : text) {
        if (isDecimalMark(character))
            character = mark;
    }
    replaceMinus(text);
}

void zoHPCNumberExpression::replaceMinus(QString& text)
{
    // Around the sign that a locale writes may stand marks of the direction.
    for (const QChar mark : {QChar(0x200e), QChar(0x200f), QChar(0x061c)})
        text.remove(mark);
    text.replace(s_minus, QLatin1Char('-'));
}
