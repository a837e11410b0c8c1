#include "zoHPCSurveyLine.h"

#include "zoHPCSurvey.h"
#include "zoText.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <iterator>

namespace
{
struct UnitWord
{
    const char* word;
    double millimetres;
};

constexpr double Inch = 25.4;
constexpr UnitWord s_units[] = {{"mm", 1.0}, {"cm", 10.0}, {"m", 1000.0}, {"in", Inch}, {"ft", 12.0 * Inch}};

const char* const s_tolerances[] = {"\302\261", "+-", "+/-"};

// "3600x2000" is three words.
const QRegularExpression& sizeForm()
{
    static const QRegularExpression form(
        QString::fromUtf8("^([0-9][0-9.,]*(?:mm|cm|m|in|ft)?)[x\303\227]([0-9][0-9.,]*(?:mm|cm|m|in|ft)?)$"));
    return form;
}

const QRegularExpression& numberForm()
{
    static const QRegularExpression form(QString::fromUtf8(
        "^([+-]?(?:[0-9]+[.,]?[0-9]*|[.,][0-9]+)(?:[eE][+-]?[0-9]{1,3})?)([a-zA-Z\302\260]*)$"));
    return form;
}
} // namespace

zoHPCSurveyLine::zoHPCSurveyLine(const QString& text, double unit) : m_unit(unit)
{
    QString word;
    bool isInWord = false;
    bool isQuoted = false;
    bool wasQuoted = false;
    for (const QChar character : text) {
        if (character == QLatin1Char('"')) {
            isQuoted = !isQuoted;
            wasQuoted = true;
            isInWord = true;
        } else if (!isQuoted && (character.isSpace() || character == QLatin1Char('#'))) {
            if (isInWord)
                addWord(word, wasQuoted);
            word.clear();
            isInWord = wasQuoted = false;
            if (character == QLatin1Char('#'))
                return;
        } else if (!character.isPrint()) {
            setMistake(tr("a control character; the file is no text"));
            return;
        } else {
            word += character;
            isInWord = true;
        }
    }
    if (isQuoted)
        setMistake(tr("the quotation mark is not closed"));
    else if (isInWord)
        addWord(word, wasQuoted);
}

void zoHPCSurveyLine::addWord(const QString& text, bool isQuoted)
{
    if (!isQuoted) {
        const QRegularExpressionMatch size = sizeForm().match(text);
        if (size.hasMatch()) {
            m_words.push_back({size.captured(1), false});
            m_words.push_back({zoText("x"), false});
            m_words.push_back({size.captured(2), false});
            return;
        }
        for (const char* const sign : s_tolerances) {
            const QString prefix = QString::fromUtf8(sign);
            if (text.startsWith(prefix) && text.size() > prefix.size()) {
                m_words.push_back({prefix, false});
                m_words.push_back({text.mid(prefix.size()), false});
                return;
            }
        }
    }
    m_words.push_back({text, isQuoted});
}

void zoHPCSurveyLine::setMistake(const QString& text)
{
    if (m_mistake.isEmpty())
        m_mistake = text;
    m_at = int(m_words.size());
}

QString zoHPCSurveyLine::takeWord(const QString& what)
{
    if (isAtEnd()) {
        setMistake(tr("%1 is missing").arg(what));
        return {};
    }
    const QString word = m_words[std::size_t(m_at++)].text;
    if (word.isEmpty() || word.size() > LongestName)
        setMistake(word.isEmpty() ? tr("%1 is missing").arg(what)
                                  : tr("%1 of more than %2 characters").arg(what).arg(LongestName));
    return isGood() ? word : QString();
}

bool zoHPCSurveyLine::takeKeyword(const char* word)
{
    if (isAtEnd() || m_words[std::size_t(m_at)].isQuoted ||
        m_words[std::size_t(m_at)].text.compare(QString::fromUtf8(word), Qt::CaseInsensitive) != 0)
        return false;
    ++m_at;
    return true;
}

// The unit may be part of the word or be the next one; empty when there is none.
bool zoHPCSurveyLine::takeNumber(double& number, QString& unit)
{
    number = 0.0;
    unit.clear();
    if (isAtEnd())
        return false;
    const QRegularExpressionMatch match = numberForm().match(m_words[std::size_t(m_at)].text);
    if (!match.hasMatch())
        return false;
    ++m_at;
    bool isNumber = false;
    number = QLocale::c().toDouble(match.captured(1).replace(QLatin1Char(','), QLatin1Char('.')), &isNumber);
    unit = match.captured(2).toLower();
    if (unit.isEmpty() && !isAtEnd()) {
        const QString next = m_words[std::size_t(m_at)].text.toLower();
        if (unitOf(next) > 0.0 || next == QLatin1String("deg") || next == QString(QChar(0xb0))) {
            unit = next;
            ++m_at;
        }
    }
    return isNumber && std::isfinite(number);
}

double zoHPCSurveyLine::takeLength()
{
    if (!isGood())
        return 0.0;
    const int at = m_at;
    double number = 0.0;
    QString unit;
    const bool isNumber = takeNumber(number, unit);
    const double factor = unit.isEmpty() ? m_unit : unitOf(unit);
    if (!isNumber || factor <= 0.0) {
        const QString word =
            at < int(m_words.size()) ? m_words[std::size_t(at)].text.left(LongestName) : QString();
        setMistake(word.isEmpty() ? tr("a length is missing, such as 3200, 3.2 m or 12 in")
                                  : tr("\"%1\" is no length; one is 3200, 3.2 m or 12 in").arg(word));
        return 0.0;
    }
    if (std::abs(number * factor) > zoHPCSurvey::LargestLength) {
        setMistake(tr("a length of more than %1 m").arg(zoHPCSurvey::LargestLength / 1000.0));
        return 0.0;
    }
    return number * factor;
}

double zoHPCSurveyLine::takeAngle()
{
    if (!isGood())
        return 0.0;
    const int at = m_at;
    double number = 0.0;
    QString unit;
    const bool isNumber = takeNumber(number, unit);
    const bool isAngle = unit.isEmpty() || unit == QLatin1String("deg") || unit == QString(QChar(0xb0));
    if (!isNumber || !isAngle || number < 0.0 || number > 360.0) {
        const QString word =
            at < int(m_words.size()) ? m_words[std::size_t(at)].text.left(LongestName) : QString();
        setMistake(word.isEmpty() ? tr("an angle in degrees is missing")
                                  : tr("\"%1\" is no angle from 0 to 360 degrees").arg(word));
        return 0.0;
    }
    return number;
}

void zoHPCSurveyLine::takeSize(double& width, double& height)
{
    width = takeLength();
    if (isGood() && !takeKeyword("x"))
        takeKeyword("\303\227");
    height = takeLength();
}

void zoHPCSurveyLine::takeCounts(int& columns, int& rows)
{
    int* const counts[] = {&columns, &rows};
    for (int* const count : counts) {
        double number = 0.0;
        QString unit;
        constexpr double Most = 1000.0;
        if (!takeNumber(number, unit) || !unit.isEmpty() || number < 1.0 || number > Most ||
            number != std::floor(number)) {
            setMistake(tr("numbers of columns and rows from 1 to 1000 are missing, such as 3x2"));
            return;
        }
        *count = int(number);
        if (count == &columns && !takeKeyword("x"))
            takeKeyword("\303\227");
    }
}

bool zoHPCSurveyLine::isTolerance() const
{
    if (isAtEnd() || m_words[std::size_t(m_at)].isQuoted)
        return false;
    for (const char* const sign : s_tolerances) {
        if (m_words[std::size_t(m_at)].text == QString::fromUtf8(sign))
            return true;
    }
    return false;
}

double zoHPCSurveyLine::takeTolerance(double otherwise, bool isAngle)
{
    if (!isTolerance())
        return otherwise;
    ++m_at;
    const double tolerance = isAngle ? takeAngle() : takeLength();
    constexpr double Least = 1e-4;
    constexpr double MostDegrees = 90.0;
    constexpr double MostMillimetres = 10000.0;
    if (isGood() && (tolerance < Least || tolerance > (isAngle ? MostDegrees : MostMillimetres)))
        setMistake(isAngle ? tr("a tolerance is between 0.0001 and 90 degrees")
                           : tr("a tolerance is between 0.0001 and 10000 mm"));
    return isGood() ? tolerance : otherwise;
}

void zoHPCSurveyLine::end()
{
    if (isGood() && !isAtEnd())
        setMistake(tr("\"%1\" is not expected here").arg(m_words[std::size_t(m_at)].text.left(LongestName)));
}

double zoHPCSurveyLine::unitOf(const QString& word)
{
    for (const UnitWord& unit : s_units) {
        if (word.compare(QLatin1String(unit.word), Qt::CaseInsensitive) == 0)
            return unit.millimetres;
    }
    return 0.0;
}

QStringList zoHPCSurveyLine::units()
{
    QStringList result;
    for (const UnitWord& unit : s_units)
        result << QLatin1String(unit.word);
    return result;
}
