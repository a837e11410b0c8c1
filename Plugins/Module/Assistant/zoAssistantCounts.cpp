#include "zoAssistantCounts.h"

QString zoAssistantCounts::nodes(int count)
{
    return count == 1 ? tr("1 node") : tr("%1 nodes").arg(count);
}

QString zoAssistantCounts::gateways(int count)
{
    return count == 1 ? tr("1 of them a gateway") : tr("%1 of them gateways").arg(count);
}

QString zoAssistantCounts::windows(int count)
{
    return count == 1 ? tr("1 window") : tr("%1 windows").arg(count);
}

QString zoAssistantCounts::problems(int count)
{
    if (count == 0)
        return tr("no problems");
    return count == 1 ? tr("1 problem") : tr("%1 problems").arg(count);
}

QString zoAssistantCounts::pagesPrinted(int count)
{
    return count == 1 ? tr("1 page printed") : tr("%1 pages printed").arg(count);
}
