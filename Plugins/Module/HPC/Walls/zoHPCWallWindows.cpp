#include "zoHPCWallWindows.h"

#include <algorithm>

namespace
{
using Plan = zoHPCWallPlan;
using Field = Plan::Field;

int eyesOf(const Plan& plan)
{
    return int(plan.stereoMode().eyes.size());
}

int roundedUp(int dividend, int divisor)
{
    return (dividend + divisor - 1) / divisor;
}
} // namespace

zoHPCWallWindows::zoHPCWallWindows(const zoHPCWallPlan& plan, int tiles, int nodes) : m_tiles(tiles)
{
    const int each = perNode(plan, nodes);
    if (each > 0)
        place(plan, each);
}

int zoHPCWallWindows::refuse(zoHPCWallPlan::Field field, const QString& text)
{
    m_mistakes.push_back({field, text});
    return 0;
}

// Windows on each node; 0 with a mistake.
int zoHPCWallWindows::perNode(const zoHPCWallPlan& plan, int nodes)
{
    const bool isSaid = plan.windowsPerNode > 0;
    const Field field = isSaid ? Field::WindowsPerNode : Field::Hosts;
    const int each = isSaid ? plan.windowsPerNode : spreadEvenly(plan, nodes);
    if (each == 0)
        return 0;
    if (each > zoHPCWallPlan::MaximumScreens)
        return refuse(field, tr("%1 screens on each host, %2 at most")
                                 .arg(QString::number(each), QString::number(zoHPCWallPlan::MaximumScreens)));
    if (plan.hasPairsOnNodes() && each % 2 != 0)
        return refuse(field,
                      tr("both eyes of a tile on one host take an even number of screens, not %1").arg(each));
    const int needed = plan.nodesNeeded(each);
    if (needed > nodes)
        return refuse(Field::Hosts, tr("%1 windows, %2 on each host, take %3 hosts: there are %4")
                                        .arg(QString::number(plan.windowCount()), QString::number(each),
                                             QString::number(needed), QString::number(nodes)));
    return each;
}

// One window on each node, or two of a pair; with fewer nodes as many as fill all of them.
int zoHPCWallWindows::spreadEvenly(const zoHPCWallPlan& plan, int nodes)
{
    const int least = plan.usualWindowsPerNode();
    if (plan.nodesNeeded(least) <= nodes)
        return least;
    // Those of an eye share the windows of this eye.
    const int parts = plan.hasNodesOfEyes() ? eyesOf(plan) : 1;
    const int windows = m_tiles * eyesOf(plan);
    if (nodes % parts != 0 || windows % nodes != 0)
        return refuse(Field::Hosts, tr("%1 windows do not spread evenly over %2 hosts")
                                        .arg(QString::number(windows), QString::number(nodes)));
    return windows / nodes;
}

void zoHPCWallWindows::place(const zoHPCWallPlan& plan, int each)
{
    const int eyes = eyesOf(plan);
    if (!plan.hasNodesOfEyes()) {
        for (int number = 0; number < m_tiles * eyes; ++number)
            m_windows.push_back({number / eyes, number % eyes, number / each, number % each});
        return;
    }
    const int group = plan.eyeOrder == Plan::EyeOrder::LeftNodesFirst ? m_tiles : each;
    int node = 0;
    for (int first = 0; first < m_tiles; first += group) {
        const int count = std::min(group, m_tiles - first);
        for (int eye = 0; eye < eyes; ++eye) {
            for (int i = 0; i < count; ++i)
                m_windows.push_back({first + i, eye, node + i / each, i % each});
            node += roundedUp(count, each);
        }
    }
}
