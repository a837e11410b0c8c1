#include <zoHPCDisplayItem.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCRoomPicture.h>
#include <zoHPCScreensPicture.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{
const QRectF AREA(0.0, 0.0, 1280.0, 800.0);

// A wall of 100 x 100 tiles with overlap and blending over 10,000 nodes; 1,000 windows show a tenth of it.
struct Setup
{
    Setup()
    {
        auto* wall = new zoHPCProjectionItem(QStringLiteral("Wall"), QStringLiteral("powerwall"));
        wall->setInt(zoHPCProjectionItem::Rows, 100);
        wall->setInt(zoHPCProjectionItem::Columns, 100);
        wall->setDouble(zoHPCProjectionItem::OverlapX, 5.0);
        wall->setDouble(zoHPCProjectionItem::OverlapY, 5.0);
        wall->setBool(zoHPCProjectionItem::EdgeBlending, true);
        wall->update();
        projections.addTopLevelItem(wall);
        auto* display = new zoHPCDisplayItem;
        displays.addTopLevelItem(display);
        for (int i = 0; i < 1000; ++i) {
            auto* window = new zoHPCWindowItem;
            window->setRenderNode(QStringLiteral("n%1").arg(i + 1));
            auto* viewport = new zoHPCViewportItem;
            viewport->setProjection(QStringLiteral("Wall row:%1 col:%2")
                                        .arg(QString::number(i / 100 + 1), QString::number(i % 100 + 1)));
            window->addChild(viewport);
            display->addChild(window);
        }
        hosts.setHostString(QStringLiteral("n1 - n10000"));
    }

    zoHPCLayout layout() const { return zoHPCLayout(&projections, &displays, hosts.master()); }

    QTreeWidget projections;
    QTreeWidget displays;
    zoHPCTreeGUIW hosts;
};

std::unique_ptr<Setup> s_setup;

void readLayout(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(s_setup->layout().projections().size());
}

void findProblems(benchmark::State& state)
{
    const zoHPCLayout layout = s_setup->layout();
    // Nine of ten tiles are shown nowhere.
    if (zoHPCProblems::find(layout).size() != 9000)
        state.SkipWithError("wrong problems");
    for (auto _ : state)
        benchmark::DoNotOptimize(zoHPCProblems::find(layout).size());
}

template <class Picture>
void paintFrame(benchmark::State& state)
{
    Picture picture;
    picture.setLayout(s_setup->layout());
    picture.fit(AREA);
    const auto detail = state.range(0) != 0 ? zoHPCPicture::Detail::Full : zoHPCPicture::Detail::Fast;
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&image);
        picture.paint(painter, AREA, QPalette(), detail);
    }
}

BENCHMARK(readLayout)->Unit(benchmark::kMillisecond);
BENCHMARK(findProblems)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(paintFrame, zoHPCRoomPicture)
    ->ArgName("full")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(paintFrame, zoHPCScreensPicture)
    ->ArgName("full")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    s_setup = std::make_unique<Setup>();
    benchmark::RunSpecifiedBenchmarks();
    s_setup.reset();
    return 0;
}
