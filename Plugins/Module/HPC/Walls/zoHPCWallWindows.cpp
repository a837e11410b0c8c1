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
} // namespace

zoHPCWallWindows::zoHPCWallWindows(const zoHPCWallPlan& plan, int tiles, int nodes) : m_tiles(tiles)
{
    const bool isSaid = plan.windowsPerNode > 0;
    const bool isGood = isSaid ? fill(plan, nodes, plan.windowsPerNode) : spread(plan, nodes);
    if (isGood)
        place(plan);
}

bool zoHPCWallWindows::refuse(zoHPCWallPlan::Field field, const QString& text)
{
    m_mistakes.push_back({field, text});
    return false;
}

// As many on each node as was said; the last one may have fewer.
bool zoHPCWallWindows::fill(const zoHPCWallPlan& plan, int nodes, int each)
{
    if (each > zoHPCWallPlan::MaximumScreens)
        return refuse(Field::WindowsPerNode, tooMany(each));
    if (plan.hasPairsOnNodes() && each % 2 != 0)
        return refuse(Field::WindowsPerNode,
                      tr("both eyes of a tile on one node take an even number of screens, not %1").arg(each));
    const int needed = plan.nodesNeeded(each);
    if (needed > nodes)
        return refuse(Field::Hosts, tr("%1 windows, %2 on each node, take %3 nodes: there are %4")
                                        .arg(QString::number(plan.windowCount()), QString::number(each),
                                             QString::number(needed), QString::number(nodes)));
    m_each.assign(std::size_t(nodesOfEye(plan, nodes)), each);
    return true;
}

// One window on each node, or two of a pair; with fewer nodes as many as it takes, on the first ones one more.
bool zoHPCWallWindows::spread(const zoHPCWallPlan& plan, int nodes)
{
    const int least = plan.usualWindowsPerNode();
    if (plan.nodesNeeded(least) <= nodes)
        return fill(plan, nodes, least);
    if (nodes < (plan.hasNodesOfEyes() ? eyesOf(plan) : 1))
        return refuse(Field::Hosts, tr("a node for each eye takes 2 nodes: there is 1"));
    // Those of an eye share the windows of this eye; both windows of a pair stay together.
    const int sharing = nodesOfEye(plan, nodes);
    const int atOnce = plan.hasPairsOnNodes() ? eyesOf(plan) : 1;
    const int parts = plan.hasNodesOfEyes() || plan.hasPairsOnNodes() ? m_tiles : m_tiles * eyesOf(plan);
    for (int node = 0; node < sharing; ++node)
        m_each.push_back(atOnce * (parts / sharing + (node < parts % sharing ? 1 : 0)));
    if (m_each.front() > zoHPCWallPlan::MaximumScreens)
        return refuse(Field::Hosts, tooMany(m_each.front()));
    if (m_each.front() != m_each.back())
        m_note = noteOf(plan, parts % sharing);
    else if (sharing * eyesOf(plan) < nodes && plan.hasNodesOfEyes())
        m_note = tr("one node has no window: each eye has as many nodes as the other one");
    return true;
}

QString zoHPCWallWindows::noteOf(const zoHPCWallPlan& plan, int first) const
{
    const QString most = QString::number(m_each.front());
    const QString least = QString::number(m_each.back());
    if (plan.hasNodesOfEyes())
        return tr("%1 windows on the first nodes of each eye, %2 on the others").arg(most, least);
    return first == 1 ? tr("%1 windows on the first node, %2 on each of the others").arg(most, least)
                      : tr("%1 windows on each of the first %2 nodes, %3 on the others")
                            .arg(most, QString::number(first), least);
}

QString zoHPCWallWindows::tooMany(int each)
{
    return tr("%1 screens on each node, %2 at most")
        .arg(QString::number(each), QString::number(zoHPCWallPlan::MaximumScreens));
}

int zoHPCWallWindows::nodesOfEye(const zoHPCWallPlan& plan, int nodes)
{
    return plan.hasNodesOfEyes() ? nodes / eyesOf(plan) : nodes;
}

// Node by node; where nodes have an eye of their own, after those of one eye as many for the other one.
void zoHPCWallWindows::place(const zoHPCWallPlan& plan)
{
    const int eyes = eyesOf(plan);
    const bool hasEyes = plan.hasNodesOfEyes();
    const int total = hasEyes ? m_tiles : m_tiles * eyes;
    // Windows of these nodes first for one eye, then for the other one.
    const std::size_t group = hasEyes && plan.eyeOrder == Plan::EyeOrder::LeftNodesFirst ? m_each.size() : 1;
    int first = 0;
    int node = 0;
    for (std::size_t begin = 0; first < total; begin += group) {
        const int firstOfGroup = first;
        int used = 0;
        for (int eye = 0; eye < (hasEyes ? eyes : 1); ++eye) {
            first = firstOfGroup;
            used = 0;
            for (std::size_t i = begin; i < begin + group && first < total; ++i, ++used) {
                const int end = std::min(total, first + m_each[i]);
                for (int screen = 0; first < end; ++first, ++screen)
                    m_windows.push_back(
                        {hasEyes ? first : first / eyes, hasEyes ? eye : first % eyes, node + used, screen});
            }
            node += used;
        }
    }
}
