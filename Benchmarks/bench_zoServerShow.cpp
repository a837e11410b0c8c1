// A frame of the test image in a window of 1920 x 1080 pixels, as a node draws it: with the processor, and with GL where
// the platform has it, beside the floor of either, a window filled with one colour. What is in one pass is compared with
// what needs one per eye.

#include "zoBenchmark.h"

#include <zoGLProbe.h>
#include <zoNodeShow.h>

#include <QGuiApplication>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

namespace
{
using zoBenchmark::require;

zoWallSetup setupOf(const char* eye, bool isBlended)
{
    zoWallViewport viewport;
    viewport.plane = {QStringLiteral("P"), {-1600, -900, -2000}, {1600, -900, -2000}, {1600, 900, -2000}};
    viewport.eye = QString::fromLatin1(eye);
    if (isBlended)
        viewport.edges = {240, 240, 120, 120};
    zoWallWindow window;
    window.geometry = {0, 0, 1920, 1080};
    window.viewports = {viewport};
    zoWallSetup setup;
    setup.nodes = {{QStringLiteral("n"), QStringLiteral("n"), QStringLiteral("n"), -1, {window}}};
    setup.walls = {viewport.plane};
    return setup;
}

void drawFrames(benchmark::State& state, const char* eye, bool isBlended, zoNodeShow::Drawing drawing,
                zoShowContent content)
{
    zoNodeShow show(setupOf(eye, isBlended));
    show.setDrawing(drawing);
    require(show.open().isEmpty(), "the window does not open");
    show.setContent(content);
    while (!QGuiApplication::topLevelWindows().first()->isExposed())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    show.draw();
    show.finish();
    require(show.picture(0).pixel(960, 540) != qRgb(0, 0, 0) || content == zoShowContent::None,
            "nothing was drawn");
    for (auto _ : state) {
        show.draw();
        show.finish();
        show.swap();
    }
}

void add(const std::string& name, const char* eye, bool isBlended, zoNodeShow::Drawing drawing,
         zoShowContent content = zoShowContent::TestImage)
{
    benchmark::RegisterBenchmark(
        name.c_str(), [=](benchmark::State& state) { drawFrames(state, eye, isBlended, drawing, content); })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
}

void addAll(const std::string& way, zoNodeShow::Drawing drawing)
{
    add(way + ": black", "mono", false, drawing, zoShowContent::None);
    add(way + ": tiles", "mono", false, drawing, zoShowContent::Tiles);
    add(way + ": test image", "mono", false, drawing);
    add(way + ": test image, blended", "mono", true, drawing);
    add(way + ": test image, both eyes interlaced", "horizontalinterlaced", false, drawing);
}
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    zoNodeShow::prepareApplication();
    QGuiApplication application(argc, argv);
    addAll("raster", zoNodeShow::Drawing::Raster);
    if (zoGLProbe::machine().isAvailable)
        addAll("GL, " + zoGLProbe::machine().renderer.toStdString(), zoNodeShow::Drawing::GL);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
