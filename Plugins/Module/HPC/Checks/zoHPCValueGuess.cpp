#include "zoHPCValueGuess.h"

#include "zoHPCSuggestion.h"

#include <QRegularExpression>

namespace
{
using Attribute = zoHPCGrammar::Attribute;
using Type = zoHPCGrammar::Type;

// No number is longer that somebody means.
constexpr int s_longestNumber = 64;

QString truth(const QString& value)
{
    static const QStringList s_yes{QString::fromLatin1("true"), QString::fromLatin1("yes"),
                                   QString::fromLatin1("on"), QString::fromLatin1("1")};
    static const QStringList s_no{QString::fromLatin1("false"), QString::fromLatin1("no"),
                                  QString::fromLatin1("off"), QString::fromLatin1("0")};
    const QString word = value.trimmed().toLower();
    if (s_yes.contains(word))
        return s_yes.first();
    if (s_no.contains(word))
        return s_no.first();
    return zoHPCSuggestion::closest(word, {s_yes.first(), s_no.first()});
}

// Numbers as they are written elsewhere: with a comma, blanks for the thousands, the unit, letters that look like digits.
QString number(const Attribute& attribute, const QString& value)
{
    if (value.size() > s_longestNumber)
        return {};
    static const QRegularExpression s_unit(QString::fromLatin1("\\s*(mm|px|pixels?)$"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression s_zeros(QString::fromLatin1("\\.0*$"));
    QString text = value.trimmed();
    text.remove(s_unit);
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    text.replace(QLatin1Char('O'), QLatin1Char('0')).replace(QLatin1Char('o'), QLatin1Char('0'));
    text.replace(QLatin1Char('l'), QLatin1Char('1')).replace(QLatin1Char('I'), QLatin1Char('1'));
    text.remove(QLatin1Char(' ')).remove(QLatin1Char('\''));
    while (text.contains(QLatin1String("..")))
        text.replace(QLatin1String(".."), QLatin1String("."));
    if (attribute.type == Type::Integer)
        text.remove(s_zeros);
    return attribute.accepts(text) ? text : QString();
}
} // namespace

QString zoHPCValueGuess::find(const Attribute& attribute, const QString& value)
{
    switch (attribute.type) {
    case Type::Truth:
    case Type::OptionTruth:
        return truth(value);
    case Type::Word:
        return zoHPCSuggestion::closest(value.trimmed(), attribute.words);
    case Type::Integer:
    case Type::Number:
        return number(attribute, value);
    case Type::Text:
        break;
    }
    return {};
}
