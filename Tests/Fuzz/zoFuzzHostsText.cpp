#include "zoFuzzHosts.h"
#include "zoFuzzing.h"

#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <map>
#include <vector>

// Hosts text: whatever was read, written again, reads back as the same tree with the same options.

namespace
{
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
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzing::textOf(data, size);
    if (!zoFuzzHosts::isSmall(text))
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

    const bool isWhole = zoFuzzHosts::isSaid(written, view->master()->childCount());

    view->setHostString(written);
    if (isWhole) {
        zoFuzzing::requireSame(outline(view->master()), before, "what was written reads back the same");
        zoFuzzing::requireSame(view->getHostsString(), written, "and is written the same");
    }
    view->setHostString(QString());
    return 0;
}
