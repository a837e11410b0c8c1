#include "zoHPCSurveyLine.h"

#include "zoHPCDocumentWriter.h"
#include "zoHPCNumberExpression.h"
#include "zoHPCSurvey.h"
#include "zoText.h"

#include <QRegularExpression>

#include <cmath>

namespace
{
const char* const s_tolerances[] = {"\302\261", "+-", "+/-"};

const QChar s_degree(0xb0);

// "3600x2000" is three words.
const QRegularExpression& sizeForm()
{
    static const QRegularExpression form(QString::fromUtf8(
        "^([0-9(.,][0-9.,()+*/cfimntCFIMNT-]*)[xX\303\227]([0-9(.,][0-9.,()+*/cfimntCFIMNT-]*)$"));
    return form;
}

bool isOperator(const QString& word)
{
    return word.size() == 1 && QString::fromLatin1("+-*/").contains(word.at(0));
}

bool isUnit(const QString& word)
{
    return zoHPCNumberExpression::lengthOf(word) > 0.0 ||
           word.compare(QLatin1String("deg"), Qt::CaseInsensitive) == 0 || word == s_degree;
}
} // namespace

zoHPCSurveyLine::zoHPCSurveyLine(const QString& text, double unit) : m_unit(unit)
{
    QString word;
    bool isInWord = false;
    bool isQuoted = false;
    bool wasQuoted = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
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
        } else if (character.category() == QChar::Other_Control) {
            setMistake(tr("a control character; the file is no text"));
            return;
        } else if (zoHPCDocumentWriter::findUnwritable(text.mid(i, 2)) == 0 ||
                   character.category() == QChar::Other_Format) {
            // A name goes into a document; marks of direction and the like make two names look the same.
            constexpr int Hexadecimal = 16;
            setMistake(tr("character %1 is U+%2, which no name can have")
                           .arg(QString::number(i + 1),
                                QString::number(character.unicode(), Hexadecimal).toUpper()));
            return;
        } else {
            word += character;
            if (character.isHighSurrogate())
                word += text.at(++i);
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

// The next words that are one number or sum: its unit and what follows an operator may be words of their own.
QString zoHPCSurveyLine::takeSum()
{
    constexpr int Longest = 200;
    QString sum;
    while (!isAtEnd() && sum.size() < Longest) {
        const Word& word = m_words[std::size_t(m_at)];
        const bool isOpen =
            isOperator(sum.right(1)) || sum.count(QLatin1Char('(')) > sum.count(QLatin1Char(')'));
        if (!sum.isEmpty() && (word.isQuoted || !(isOpen || isOperator(word.text) || isUnit(word.text))))
            break;
        sum += sum.isEmpty() ? word.text : QLatin1Char(' ') + word.text;
        ++m_at;
    }
    return sum;
}

double zoHPCSurveyLine::takeLength()
{
    if (!isGood())
        return 0.0;
    const QString text = takeSum();
    using Number = zoHPCNumberExpression;
    const auto read = [this](const QString& sum) {
        return Number::evaluate(sum, Number::Unit::Millimetre, m_unit);
    };
    const Number::Result result = read(text);
    const double length = result.value * m_unit;
    if (result.state != Number::State::Acceptable) {
        setMistake(text.isEmpty()
                       ? tr("a length is missing, such as 3200, 3.2 m or 12 in")
                       : tr("\"%1\" is no length; one is 3200, 3.2 m or 12 in").arg(text.left(LongestName)));
        return 0.0;
    }
    if (std::abs(length) > zoHPCSurvey::LargestLength) {
        setMistake(tr("a length of more than %1 m").arg(zoHPCSurvey::LargestLength / 1000.0));
        return 0.0;
    }
    // Who separates groups of digits by a comma means another length, if there is one as long.
    const QString other = Number::withoutGroups(text);
    if (other != text && std::abs(read(other).value * m_unit) < zoHPCSurvey::LargestLength) {
        setMistake(tr("\"%1\" may be %2 or %3: write the one that is meant")
                       .arg(text, QString(text).replace(QLatin1Char(','), QLatin1Char('.')), other));
        return 0.0;
    }
    return length;
}

double zoHPCSurveyLine::takeAngle()
{
    if (!isGood())
        return 0.0;
    const QString text = takeSum();
    static const QRegularExpression degrees(QString::fromUtf8("\\s*(?:deg|\302\260)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    using Number = zoHPCNumberExpression;
    const Number::Result result = Number::evaluate(QString(text).remove(degrees), Number::Unit::None);
    if (result.state != Number::State::Acceptable || result.value < 0.0 || result.value > 360.0) {
        setMistake(text.isEmpty()
                       ? tr("an angle in degrees is missing")
                       : tr("\"%1\" is no angle from 0 to 360 degrees").arg(text.left(LongestName)));
        return 0.0;
    }
    return result.value;
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
        using Number = zoHPCNumberExpression;
        const Number::Result result = Number::evaluate(takeSum(), Number::Unit::None);
        const double number = result.value;
        constexpr double Most = 1000.0;
        if (result.state != Number::State::Acceptable || number < 1.0 || number > Most ||
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
