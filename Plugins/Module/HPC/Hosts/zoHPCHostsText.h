#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

// Splits hosts text into its tokens in one pass: braces, "-", option blocks and hosts with their option block
// glued to them ("gw1[rt=0,a=b]").
class zoHPCHostsText final
{
public:
    explicit zoHPCHostsText(const QString& text);

    // Goes to the next token; false at the end.
    bool next();
    // Parentheses read as braces. Valid until the next call of next().
    QStringView token() const { return m_token; }

    static QStringList tokens(const QString& text);

    // What a host token names: the part before its option block without characters that names cannot have.
    static QString hostName(QStringView token);
    // The value of "rt" in the token's option block; false when there is none.
    static bool renderOption(QStringView token, QString& value);

private:
    void readBlock(const QChar* position);

    QString m_text;
    QString m_buffer;
    QStringView m_token;
    const QChar* m_position;
    const QChar* m_end;
};

// A host name seen as a prefix and a number ("node07"). A name that is not made so, or of digits only, has
// neither.
class zoHPCNumberedName final
{
public:
    explicit zoHPCNumberedName(const QString& name);

    QStringView prefix() const { return m_prefix; }
    QStringView digits() const { return m_digits; }
    // 0 for no number and for one that does not fit.
    int number() const;

    // The name `offset` numbers further, with zeros to the width of the digits.
    QString name(int offset) const;

private:
    QString m_name;
    QStringView m_prefix;
    QStringView m_digits;
};
