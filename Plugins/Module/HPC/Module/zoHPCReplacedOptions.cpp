#include "zoHPCReplacedOptions.h"

#include "zoHPCTreeItem.h"

void zoHPCReplacedOptions::note(zoHPCTreeItem* item, const QString& option, const QString& value)
{
    m_options.push_back({item->watch(), option, value});
}

void zoHPCReplacedOptions::exchange()
{
    for (Option& option : m_options) {
        const std::shared_ptr<zoHPCTreeItem> item = option.item.lock();
        if (!item)
            continue;
        const QString value = item->getOption(option.name);
        item->setOption(option.name, option.value);
        option.value = value;
    }
}
