#pragma once

#include <QString>
#include <QStringView>

// A host name seen as a prefix and a number ("node07"), and the ranges of hosts that are counted with it
// ("node07 - node12"). A name that is not made so, or of digits only, has neither prefix nor number.
class zoHPCNumberedName final
{
public:
    // Hosts of one range are no further apart. Longer ones are typing mistakes and are not filled.
    static constexpr int LargestDistance = 10000;
    enum class Range { Filled, OtherPrefix, TooLong, Backwards };

    explicit zoHPCNumberedName(const QString& name);

    QStringView prefix() const { return m_prefix; }
    QStringView digits() const { return m_digits; }
    // 0 without a number and for one that does not fit.
    int number() const;

    // The name `offset` numbers further, with zeros to the width of the digits.
    QString name(int offset) const;

    // Whether the number is written as name() writes it, so that counting on from it gives names of its kind.
    bool isCountable() const;
    // What a range from this name to `last` is. A filled one may have nothing in between.
    Range rangeTo(const zoHPCNumberedName& last) const;
    // How many names a range from this one to `last` fills in; 0 when it is not filled.
    int namesBetween(const zoHPCNumberedName& last) const;
    // Hosts of the longest range that starts with this name.
    int longestRange() const;

private:
    QString m_name;
    QStringView m_prefix;
    QStringView m_digits;
};
