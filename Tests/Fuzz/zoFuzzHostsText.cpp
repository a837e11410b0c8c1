#include "zoFuzzing.h"

#include <zoHPCHostsText.h>
#include <zoHPCNumberedName.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QStringList>

#include <map>
#include <vector>

// Hosts text: whatever was read, written again, reads back as the same tree with the same options.

namespace
{
// Each range may have up to 10,000 hosts. That is fine, and many of them are only slow.
constexpr int MaximumHostsInRanges = 11000;

int hostsInRanges(const QString& text)
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
            return sum;
        previous = number;
        isRange = false;
    }
    return sum;
}

// Pre-order with the number of children: tells trees apart.
QString outline(zoHPCTreeItem* master)
{
    std::vector<zoHPCTreeItem*> items;
    master->getAllSubItems(items);
    QString text;
    for (zoHPCTreeItem* item : items) {
        text += item->isNetwork() ? QLatin1Char('{') : QLatin1Char('.');
        text += item->hostName() + QLatin1Char(' ') + QString::number(item->childCount());
        const std::map<QString, QString>& options = item->getOptions();
        for (const auto& option : options)
            text += QLatin1Char(' ') + option.first + QLatin1Char('=') + option.second;
        text += QLatin1Char('\n');
    }
    return text;
}

// What the format cannot say: one network without hosts is an empty text. A host named "-" (from a token such
// as "-[a]") reads as the sign of a range, and a range from a name without a number ("host - 2") has no hosts
// in between.
bool isSaid(const QString& written, const zoHPCTreeItem* master)
{
    if (written.isEmpty())
        return master->childCount() == 0;
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
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzing::textOf(data, size);
    if (hostsInRanges(text) > MaximumHostsInRanges)
        return 0;
    static zoHPCTreeGUIW* const view = new zoHPCTreeGUIW;
    view->setHostString(QString());

    view->setHostString(text);
    // Something to lose.
    std::vector<zoHPCTreeItem*> items;
    view->master()->getAllSubItems(items);
    for (std::size_t i = 1; i < items.size(); i += 1 + items.size() / 50)
        items[i]->setOption(QStringLiteral("description"), QString::number(i));
    const QString before = outline(view->master());
    const QString written = view->getHostsString();
    zoFuzzing::requireSame(outline(view->master()), before, "writing changes nothing");

    const bool isWhole = isSaid(written, view->master());

    view->setHostString(written);
    if (isWhole) {
        zoFuzzing::requireSame(outline(view->master()), before, "what was written reads back the same");
        zoFuzzing::requireSame(view->getHostsString(), written, "and is written the same");
    }
    view->setHostString(QString());
    return 0;
}
