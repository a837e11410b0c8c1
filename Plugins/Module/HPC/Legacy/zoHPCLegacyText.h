#pragma once

#include <QString>
#include <QStringList>

// How the lists inside legacy parameters are separated.
namespace zoHPCLegacyText
{
// Parts of a text, empty ones included: part n is what section(separator, n, n) gives, found in one pass.
inline QStringList parts(const QString& text, char separator)
{
    return text.split(QLatin1Char(separator));
}

inline QString firstPart(const QString& text, char separator)
{
    return text.left(text.indexOf(QLatin1Char(separator)));
}

inline QString withoutQuotes(QString text)
{
    return text.remove(QLatin1Char('"'));
}

// The first field of an entry.
inline QString hostOf(const QString& entry)
{
    return withoutQuotes(firstPart(entry, ' '));
}
} // namespace zoHPCLegacyText
