// The layout preview at a wall of 100 x 100 tiles with overlap and blending, over 10,000 nodes and 1,000
// windows, beside the bare painting of as many shapes and the bare walk over as many rows. A frame is
// everything that the preview does for a change while values are dragged: reading, placing and painting.

#include "zoBenchmark.h"

#include <zoHPCDisplayItem.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCRoomPicture.h>
#include <zoHPCScreensPicture.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{
using zoBenchmark::require;

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
    require(zoHPCProblems::find(layout).size() == 9000, "nine of ten tiles are shown nowhere");
    for (auto _ : state)
        benchmark::DoNotOptimize(zoHPCProblems::find(layout).size());
}

// The least that reading takes: each row is visited once, with its name.
void walk(benchmark::State& state)
{
    for (auto _ : state) {
        int size = 0;
        for (const zoHPCProjectionItem* item :
             zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(&s_setup->projections))
            size += item->getString(zoHPCProjectionItem::Name).size();
        for (const zoHPCViewportItem* item :
             zoHPCTreeWidgetItem::subChildren<zoHPCViewportItem>(&s_setup->displays))
            size += item->getString(zoHPCViewportItem::Projection).size();
        for (const zoHPCTreeItem* node : s_setup->hosts.getNodeItems())
            size += node->hostName().size();
        benchmark::DoNotOptimize(size);
    }
}

// A change of the wall as the pane follows it.
template <class Picture>
void frame(benchmark::State& state, zoHPCPicture::Detail detail)
{
    Picture picture;
    picture.setLayout(s_setup->layout());
    picture.fit(AREA);
    require(picture.isLarge(), "less detail while it changes");
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    for (auto _ : state) {
        picture.setLayout(s_setup->layout());
        picture.fit(AREA);
        QPainter painter(&image);
        picture.paint(painter, AREA, QPalette(), detail);
    }
}

template <class Picture>
void fastFrame(benchmark::State& state)
{
    frame<Picture>(state, zoHPCPicture::Detail::Fast);
}

template <class Picture>
void fullFrame(benchmark::State& state)
{
    frame<Picture>(state, zoHPCPicture::Detail::Full);
}

// The bare work of a painter: one shape and its outline for each tile, side by side.
template <int columns, int rows>
void shapes(benchmark::State& state)
{
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    const double width = AREA.width() / columns;
    const double height = AREA.height() / rows;
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(AREA, Qt::white);
        painter.setPen(Qt::black);
        painter.setBrush(QColor(0x56, 0xB4, 0xE9, 80));
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const double x = column * width;
                const double y = row * height;
                const QPointF corners[] = {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
                painter.drawConvexPolygon(corners, 4);
            }
        }
    }
}
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    s_setup = std::make_unique<Setup>();

    zoBenchmark::Suite suite(9);
    const std::string tiles = "10,000 bare polygons";
    const std::string windows = "1,000 bare polygons";
    const std::string rows = "each row visited once";
    suite.compare({"room while dragged", tiles, "", 0, 0, 0, 16.0}, fastFrame<zoHPCRoomPicture>,
                  shapes<100, 100>);
    suite.compare({"screens while dragged", windows, "", 0, 0, 0, 16.0}, fastFrame<zoHPCScreensPicture>,
                  shapes<40, 25>);
    suite.compare({"room in full detail", tiles, ""}, fullFrame<zoHPCRoomPicture>, shapes<100, 100>);
    suite.compare({"screens in full detail", windows, ""}, fullFrame<zoHPCScreensPicture>, shapes<40, 25>);
    suite.compare({"reading the layout", rows, ""}, readLayout, walk);
    suite.compare({"finding 9,000 problems", rows, ""}, findProblems, walk);
    suite.run(argc, argv);
    const bool met = suite.print();
    s_setup.reset();
    return suite.finish(met);
}
