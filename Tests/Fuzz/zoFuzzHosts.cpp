#include "zoFuzzHosts.h"

#include <zoHPCHostsText.h>
#include <zoHPCNumberedName.h>

#include <QStringList>

namespace
{
// Each range may have up to 10,000 hosts. That is fine, and many of them are only slow.
constexpr int MaximumHostsInRanges = 11000;
} // namespace

bool zoFuzzHosts::isSmall(const QString& text)
{
    int sum = 0;
    int previous = 0;
    bool isRange = false;
    const QStringList tokens = zoHPCHostsText::tokens(text);
    for (const QString& token : tokens) {
        if (token == QLatin1String("-")) {
            isRange = true;
            continue;
        }
        const int number = zoHPCNumberedName(zoHPCHostsText::hostName(token)).number();
        if (isRange && number > previous)
            sum += int(qMin<qint64>(qint64(number) - previous, 10000));
        if (sum > MaximumHostsInRanges)
            return false;
        previous = number;
        isRange = false;
    }
    return true;
}

bool zoFuzzHosts::isSaid(const QString& written, int networks)
{
    if (written.isEmpty())
        return networks == 0;
    const QStringList lines = written.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QString entry = line.trimmed();
        if (entry == QLatin1String("-") || entry.startsWith(QLatin1String("- ")) ||
            entry.endsWith(QLatin1String(" -")))
            return false;
        const int range = entry.indexOf(QLatin1String(" - "));
        if (range >= 0 && zoHPCNumberedName(entry.left(range)).digits().isEmpty())
            return false;
    }
    return true;
}
