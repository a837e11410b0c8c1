// Many rows of the display setup: filtering windows by their nodes, and setting a value of all that are selected. Prints
// the time for each row at 500 and at 4,000 windows: what is linear costs as much for each.

#include "zoBenchmark.h"

#include <zoHPCDisplayGUII.h>

#include <QApplication>
#include <QCheckBox>
#include <QDomDocument>
#include <QLineEdit>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{
using zoBenchmark::require;

// A dialog with so many windows, shown.
struct Setup
{
    explicit Setup(int windows)
    {
        QString text = QStringLiteral("<cluster version='1'><display>");
        QStringList nodes;
        for (int i = 0; i < windows; ++i) {
            nodes << QStringLiteral("node%1").arg(i);
            text +=
                QStringLiteral("<window node='%1' screen='0' width='1920' height='1080' fullscreen='true'>"
                               "<viewport position='fill' eye='mono'/></window>")
                    .arg(nodes.last());
        }
        QDomDocument document;
        require(document.setContent(text + QStringLiteral("</display></cluster>")), "document");
        editor.loadFromXML(document);
        editor.open(nodes);
        QCoreApplication::processEvents();
    }

    QTreeWidget* tree() { return editor.findChild<QTreeWidget*>(QStringLiteral("m_displayTree")); }
    QLineEdit* filter() { return editor.findChild<QLineEdit*>(QStringLiteral("m_outputFilter")); }

    zoHPCDisplayGUII editor;
};

void filterRows(benchmark::State& state)
{
    const int windows = int(state.range(0));
    Setup setup(windows);
    setup.filter()->setText(QStringLiteral("node7"));
    require(setup.tree()->topLevelItem(0)->child(0)->isHidden(), "another node is hidden");
    require(!setup.tree()->topLevelItem(0)->child(7)->isHidden(), "the node is shown");
    for (auto _ : state) {
        setup.filter()->setText(QStringLiteral("node8"));
        setup.filter()->setText(QStringLiteral("node7"));
    }
    state.counters["rows/s"] =
        benchmark::Counter(2.0 * windows, benchmark::Counter::kIsIterationInvariantRate);
}

void setAllSelected(benchmark::State& state)
{
    const int windows = int(state.range(0));
    Setup setup(windows);
    setup.tree()->selectAll();
    auto* const fullScreen = setup.editor.findChild<QCheckBox*>(QStringLiteral("m_severalFullScreen"));
    fullScreen->click();
    const auto* const last = setup.tree()->topLevelItem(0)->child(windows - 1);
    require(last->data(11, Qt::EditRole).toString() == QStringLiteral("false"), "the last window is set");
    for (auto _ : state)
        fullScreen->click();
    state.counters["rows/s"] =
        benchmark::Counter(1.0 * windows, benchmark::Counter::kIsIterationInvariantRate);
}

BENCHMARK(filterRows)->Arg(500)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(setAllSelected)->Arg(500)->Arg(4000)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
