// What a step that can be undone costs at 10,000 nodes, beside one serialisation of the document, measured in the same
// run; and how much memory it takes. Prints a table of the ratios of CPU medians, and their goals, at the end.

#include "zoBenchmark.h"

#include <zoHPCGUIW.h>
#include <zoHPCHistory.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCUndo.h>

#include <QApplication>

#include <memory>
#include <vector>

namespace
{
using zoBenchmark::require;
using zoBenchmark::settle;

constexpr int Nodes = 10000;
constexpr int NodesPerNetwork = 100;
constexpr double MostSerialisations = 1.5;
constexpr double MostBytes = 4096; // of a step that changes one node

QString configuration()
{
    QString text = QStringLiteral("<cluster version=\"1\"><master>");
    for (int node = 0; node < Nodes; ++node) {
        if (node % NodesPerNetwork == 0)
            text += node == 0 ? QStringLiteral("<network>") : QStringLiteral("</network><network>");
        text += QStringLiteral("<node name=\"render%1\"/>").arg(node, 5, 10, QLatin1Char('0'));
    }
    return text + QStringLiteral("</network></master></cluster>");
}

class Cluster
{
public:
    Cluster()
    {
        m_window.replaceConfigString(configuration());
        m_window.show();
        settle();
        m_nodes = m_window.getTree()->getNodeItems();
        require(m_nodes.size() == std::size_t(Nodes), "nodes");
        m_window.undoSteps()->commit();
    }

    zoHPCGUIW& window() { return m_window; }

    void change(int node)
    {
        zoHPCTreeItem* const item = m_nodes[std::size_t(node)];
        item->setIsEnabled(!item->isEnabled());
    }

private:
    zoHPCGUIW m_window{nullptr, QStringLiteral("Module")};
    std::vector<zoHPCTreeItem*> m_nodes;
};

void changeOne(Cluster& cluster)
{
    cluster.change(Nodes / 2);
}

// What differs lies as far from each other as can be.
void changeBothEnds(Cluster& cluster)
{
    cluster.change(0);
    cluster.change(Nodes - 1);
}

void changeThousand(Cluster& cluster)
{
    for (int node = 0; node < Nodes; node += 10)
        cluster.change(node);
}

using Change = void (*)(Cluster&);

zoBenchmark::Function noteStep(Cluster& cluster, Change change)
{
    return [&cluster, change](benchmark::State& state) {
        zoHPCUndo& undo = *cluster.window().undoSteps();
        for (auto _ : state) {
            change(cluster);
            undo.commit();
        }
        require(undo.steps().text() == cluster.window().documentText(), "text of the step");
    };
}

zoBenchmark::Function serialise(Cluster& cluster, Change change)
{
    return [&cluster, change](benchmark::State& state) {
        for (auto _ : state) {
            change(cluster);
            benchmark::DoNotOptimize(cluster.window().documentText());
        }
        cluster.window().undoSteps()->commit();
    };
}

double bytesOfStep(Cluster& cluster, Change change)
{
    zoHPCUndo& undo = *cluster.window().undoSteps();
    undo.reset();
    change(cluster);
    undo.commit();
    require(undo.steps().stepCount() == 1, "one step");
    return double(undo.steps().size());
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    constexpr int Repetitions = 9;
    zoBenchmark::Suite suite(Repetitions);
    Cluster cluster;
    struct Work
    {
        const char* step;
        const char* beside;
        Change change;
    };
    const Work works[] = {
        {"step: one node", "serialise after the same", changeOne},
        {"step: first and last node", "serialise after both", changeBothEnds},
        {"step: every tenth node", "serialise after a thousand", changeThousand},
    };
    for (const Work& work : works) {
        zoBenchmark::Row row;
        row.work = work.step;
        row.beside = work.beside;
        row.goal = MostSerialisations;
        suite.compare(row, noteStep(cluster, work.change), serialise(cluster, work.change));
    }
    suite.run(argc, argv);
    bool met = suite.print();

    zoBenchmark::Row memory;
    memory.work = "memory of a step: one node";
    memory.beside = "the document";
    memory.value = bytesOfStep(cluster, changeOne);
    memory.besideValue = double(cluster.window().documentText().size()) * sizeof(QChar);
    memory.limit = MostBytes;
    memory.unit = "bytes";
    suite.append(memory);
    memory.work = "memory of a step: every tenth node";
    memory.value = bytesOfStep(cluster, changeThousand);
    memory.limit = MostBytes * Nodes / 10;
    suite.append(memory);
    met = suite.print() && met;
    return suite.finish(met);
}
