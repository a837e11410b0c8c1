#pragma once

#include <QString>
#include <QStringView>

// A host name seen as a prefix and a number ("node07"). A name that is not made so, or of digits only, has neither
// prefix nor number.
class zoHPCNumberedName final
{
public:
    explicit zoHPCNumberedName(const QString& name);

    QStringView prefix() const { return m_prefix; }
    QStringView digits() const { return m_digits; }
    // 0 without a number and for one that does not fit.
    int number() const;

    // The name `offset` numbers further, with zeros to the width of the digits.
    QString name(int offset) const;

    // Whether the number is written as name() writes it, so that counting on from it gives names of its kind.
    bool isCountable() const;

private:
    QString m_name;
    QStringView m_prefix;
    QStringView m_digits;
};
