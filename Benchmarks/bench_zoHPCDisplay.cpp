// The display section at a wall of 100 x 100 tiles, expanded and shown, and at 1,000 and 10,000 windows. Each
// work stands beside the least that the toolkit needs for it, or beside the plain way to write it, measured
// in the same run. Prints a table of the ratios of CPU medians, and their goals, at the end.

#include "zoBenchmark.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QComboBox>
#include <QDomDocument>
#include <QMap>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <utility>

namespace
{
using zoBenchmark::require;
using zoBenchmark::settle;

constexpr int Side = 100; // tiles of the wall, each way
constexpr int Tiles = Side * Side;
constexpr int Windows = 1000;
constexpr int Names = 10000;

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QDomDocument emptyDocument()
{
    QDomDocument document;
    QDomElement root = document.createElement(text("cluster"));
    root.setAttribute(text("version"), text("1"));
    document.appendChild(root);
    return document;
}

// A wall with its tiles, as it is saved, and windows with a viewport each.
QDomDocument wallDocument()
{
    QDomDocument document = emptyDocument();
    zoHPCProjectionItem wall(text("Wall"), text("wall"));
    wall.setInt(zoHPCProjectionItem::Rows, Side);
    wall.setInt(zoHPCProjectionItem::Columns, Side);
    wall.update();
    document.documentElement().appendChild(wall.toXML(document, text("projection")));
    zoHPCDisplayItem display;
    for (int i = 0; i < Windows; ++i) {
        auto* window = new zoHPCWindowItem;
        window->setRenderNode(QStringLiteral("node%1").arg(i));
        auto* viewport = new zoHPCViewportItem;
        viewport->setProjection(QStringLiteral("Wall row:%1 col:%2").arg(i / Side + 1).arg(i % Side + 1));
        window->addChild(viewport);
        display.addChild(window);
    }
    document.documentElement().appendChild(display.toXML(document, text("display")));
    return document;
}

// ---- Subjects, made once.

struct Wall
{
    Wall()
    {
        document = wallDocument();
        editor.loadFromXML(document);
        require(editor.getProjectionItems().size() == Tiles + 1, "tiles of the wall");
        require(editor.getWindowItems().size() == 2 * Windows, "windows and viewports");
        editor.open(nodeNames());
        expand();
    }

    static QStringList nodeNames()
    {
        QStringList names;
        for (int i = 0; i < Windows; ++i)
            names << QStringLiteral("node%1").arg(i);
        return names;
    }

    QTreeWidget* tree() const { return editor.findChild<QTreeWidget*>(text("m_projectionTree")); }
    zoHPCProjectionItem* wall() const { return static_cast<zoHPCProjectionItem*>(tree()->topLevelItem(0)); }

    void expand()
    {
        tree()->expandItem(wall());
        QCoreApplication::processEvents();
    }

    QDomDocument document;
    zoHPCDisplayGUII editor;
};

std::unique_ptr<Wall> s_wall;

// A power wall whose blends follow its overlap, shown and expanded.
struct BlendedWall
{
    BlendedWall()
    {
        QDomDocument document = emptyDocument();
        QDomElement wall = document.createElement(text("projection"));
        for (const auto& [name, value] :
             {std::pair("name", "Wall"), std::pair("type", "powerwall"), std::pair("rows", "100"),
              std::pair("columns", "100"), std::pair("width", "9000"), std::pair("height", "9000"),
              std::pair("distance", "1500"), std::pair("edgeblending", "true"), std::pair("overlapx", "1"),
              std::pair("overlapy", "1")})
            wall.setAttribute(text(name), text(value));
        document.documentElement().appendChild(wall);
        document.documentElement().appendChild(
            s_wall->document.documentElement().firstChildElement(text("display")).cloneNode());
        editor.loadFromXML(document);
        editor.open(Wall::nodeNames());
        auto* const tree = editor.findChild<QTreeWidget*>(text("m_projectionTree"));
        projection = static_cast<zoHPCProjectionItem*>(tree->topLevelItem(0));
        tree->expandItem(projection);
        QCoreApplication::processEvents();
        require(projection->childCount() == Tiles, "tiles of the blended wall");
    }

    zoHPCDisplayGUII editor;
    zoHPCProjectionItem* projection = nullptr;
};

// The least for a wall: its rows, with all columns, in a plain tree.
struct PlainWall
{
    PlainWall()
    {
        tree.setColumnCount(zoHPCProjectionItem::ColumnCount);
        for (int col = 1; col < tree.columnCount(); ++col)
            tree.setColumnHidden(col, true);
        tree.setUniformRowHeights(true);
        tree.addTopLevelItem(wall);
        tree.resize(320, 400);
        tree.show();
        tree.expandItem(wall);
    }

    void regenerate()
    {
        qDeleteAll(wall->takeChildren());
        QList<QTreeWidgetItem*> rows;
        rows.reserve(Tiles);
        for (int i = 0; i < Tiles; ++i) {
            auto* row = new QTreeWidgetItem;
            for (int col = 0; col < zoHPCProjectionItem::ColumnCount; ++col)
                row->setData(col, Qt::EditRole, i);
            rows.append(row);
        }
        wall->addChildren(rows);
    }

    QTreeWidget tree;
    QTreeWidgetItem* wall = new QTreeWidgetItem;
};

struct ManyWindows
{
    ManyWindows()
    {
        QDomDocument document = emptyDocument();
        zoHPCDisplayItem display;
        for (int i = 0; i < Names; ++i) {
            names << QStringLiteral("node%1").arg(i);
            auto* window = new zoHPCWindowItem;
            window->setRenderNode(names.last());
            display.addChild(window);
        }
        document.documentElement().appendChild(display.toXML(document, text("display")));
        editor.loadFromXML(document);
        editor.open(names);
        QCoreApplication::processEvents();
        for (zoHPCWindowItem* window : editor.getWindowItems())
            require(!window->renderNode().isEmpty(), "all nodes are known");
    }

    QStringList names;
    zoHPCDisplayGUII editor;
};

std::unique_ptr<BlendedWall> s_blendedWall;
std::unique_ptr<PlainWall> s_plainWall;
std::unique_ptr<ManyWindows> s_windows;

// ---- The plain way to write it.

void loadPlainly(QTreeWidget& projections, QTreeWidget& displays, const QDomDocument& document)
{
    projections.clear();
    displays.clear();
    const QDomElement root = document.documentElement();
    for (QDomElement e = root.firstChildElement(text("projection")); !e.isNull();
         e = e.nextSiblingElement(text("projection"))) {
        auto* item = new zoHPCProjectionItem(QString(), text("wall"));
        item->fromXML(e);
        // Builds the stored tiles and throws them away for those that the parameters give.
        const QDomNodeList nested = e.elementsByTagName(text("projection"));
        for (int i = 0; i < nested.count(); ++i) {
            auto* tile = new zoHPCProjectionItem(QString(), text("wall"));
            tile->fromXML(nested.at(i).toElement());
            item->addChild(tile);
        }
        item->update();
        projections.addTopLevelItem(item);
    }
    for (QDomElement e = root.firstChildElement(text("display")); !e.isNull();
         e = e.nextSiblingElement(text("display"))) {
        auto* item = new zoHPCDisplayItem;
        item->zoHPCTreeWidgetItem::fromXML(e);
        const QDomNodeList windows = e.elementsByTagName(text("window"));
        for (int i = 0; i < windows.count(); ++i) {
            auto* window = new zoHPCWindowItem;
            window->fromXML(windows.at(i).toElement());
            item->addChild(window);
        }
        item->update();
        displays.addTopLevelItem(item);
    }
    // Links the viewports.
    QMap<QString, QString> names;
    QMap<QString, QString> identifiers;
    for (const zoHPCProjectionItem* item :
         zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(&projections)) {
        names[item->getString(1)] = item->getString(0);
        identifiers[item->getString(0)] = item->getString(1);
    }
    for (zoHPCViewportItem* item : zoHPCTreeWidgetItem::subChildren<zoHPCViewportItem>(&displays)) {
        if (names.contains(item->getString(12)))
            item->setProjection(names[item->getString(12)]);
        else if (identifiers.contains(item->getString(13)))
            item->setString(12, identifiers[item->getString(13)]);
        else
            item->setProjection(QString());
    }
}

void setNodeNamesPlainly(QComboBox& combo, zoHPCDisplayGUII& editor, const QStringList& names)
{
    combo.clear();
    QMap<QString, int> counts;
    for (const QString& name : names) {
        const int count = ++counts[name];
        if (count == 2)
            combo.setItemText(combo.findText(name), QStringLiteral("%1 1").arg(name));
        combo.addItem(count == 1 ? name : QStringLiteral("%1 %2").arg(name, QString::number(count)));
    }
    for (zoHPCWindowItem* window : editor.getWindowItems()) {
        if (!names.contains(window->renderNode()))
            window->setRenderNode(QString());
    }
}

// In the tree of the dialog as it is shown.
void convertPlainly(QTreeWidget& tree)
{
    QTreeWidgetItem* wall = tree.topLevelItem(0);
    const int row = tree.indexOfTopLevelItem(wall);
    for (int i = 0; wall->childCount() > 0; ++i)
        tree.insertTopLevelItem(row + i, wall->takeChild(0));
    delete wall;
}

// ---- Works

void regenerate(benchmark::State& state)
{
    zoHPCProjectionItem* wall = s_wall->wall();
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        wall->update();
    }
    require(wall->childCount() == Tiles, "tiles after regeneration");
}

// The whole way of a changed field: tiles, links, panel.
void changeDistance(benchmark::State& state)
{
    zoHPCProjectionItem* wall = s_wall->wall();
    static double distance = 1000.0; // each round its own: equal values change nothing
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        wall->setDouble(zoHPCProjectionItem::Distance, distance += 1.0);
    }
    require(wall->childCount() == Tiles, "tiles after a change");
    require(static_cast<zoHPCProjectionItem*>(wall->child(77))->getDouble(zoHPCProjectionItem::Distance) ==
                distance,
            "tiles follow the change");
}

// The same where each tile has its own values.
void changeOverlap(benchmark::State& state)
{
    zoHPCProjectionItem* const wall = s_blendedWall->projection;
    static int overlap = 1;
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        wall->setInt(zoHPCProjectionItem::OverlapX, overlap = overlap % 50 + 1);
    }
    const auto* const tile = static_cast<zoHPCProjectionItem*>(wall->child(77));
    const double width = (9000.0 + 99.0 * overlap) / 100.0;
    require(wall->childCount() == Tiles, "tiles after a changed overlap");
    require(std::abs(tile->getDouble(zoHPCProjectionItem::RightEdge) - overlap / width) < 1e-9,
            "blends follow the overlap");
}

void regenerateFloor(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        s_plainWall->regenerate();
    }
    require(s_plainWall->wall->childCount() == Tiles, "rows of the floor");
}

void load(benchmark::State& state)
{
    zoHPCDisplayGUII editor;
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        editor.loadFromXML(s_wall->document);
    }
    require(editor.getProjectionItems().size() == Tiles + 1, "tiles loaded");
    require(editor.getViewportItems().last()->getString(13) == text("Wall row:10 col:100"),
            "viewports linked");
}

void loadFloor(benchmark::State& state)
{
    QTreeWidget projections;
    QTreeWidget displays;
    projections.setColumnCount(zoHPCProjectionItem::ColumnCount);
    displays.setColumnCount(zoHPCViewportItem::ColumnCount);
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        loadPlainly(projections, displays, s_wall->document);
    }
    require(projections.topLevelItem(0)->childCount() == Tiles, "tiles loaded plainly");
    require(displays.topLevelItem(0)->childCount() == Windows, "windows loaded plainly");
}

void nodeNames(benchmark::State& state)
{
    for (auto _ : state)
        s_windows->editor.setNodeNames(s_windows->names);
    require(s_windows->editor.getWindowItems().last()->renderNode() == s_windows->names.last(), "nodes kept");
}

void nodeNamesFloor(benchmark::State& state)
{
    QComboBox combo;
    for (auto _ : state)
        setNodeNamesPlainly(combo, s_windows->editor, s_windows->names);
    require(combo.count() == Names, "choices");
}

QDomDocument wallOnly()
{
    QDomDocument document = emptyDocument();
    QDomElement wall = document.createElement(text("projection"));
    wall.setAttribute(text("name"), text("W"));
    wall.setAttribute(text("type"), text("wall"));
    wall.setAttribute(text("rows"), Side);
    wall.setAttribute(text("columns"), Side);
    document.documentElement().appendChild(wall);
    return document;
}

// A wall that is shown and expanded in the dialog, ready to be converted.
struct Conversion
{
    Conversion() : document(wallOnly())
    {
        editor.open({});
        tree = editor.findChild<QTreeWidget*>(text("m_projectionTree"));
    }

    void prepare()
    {
        editor.loadFromXML(document);
        tree->expandItem(tree->topLevelItem(0));
        tree->setCurrentItem(tree->topLevelItem(0));
        settle();
    }

    void verify() const { require(tree->topLevelItemCount() == Tiles, "tiles at top level"); }

    QDomDocument document;
    zoHPCDisplayGUII editor;
    QTreeWidget* tree = nullptr;
};

void convert(benchmark::State& state)
{
    Conversion conversion;
    for (auto _ : state) {
        state.PauseTiming();
        conversion.prepare();
        state.ResumeTiming();
        conversion.editor.convertToPlanes();
    }
    conversion.verify();
}

void convertFloor(benchmark::State& state)
{
    Conversion conversion;
    for (auto _ : state) {
        state.PauseTiming();
        conversion.prepare();
        state.ResumeTiming();
        convertPlainly(*conversion.tree);
    }
    conversion.verify();
}
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    s_wall = std::make_unique<Wall>();
    s_blendedWall = std::make_unique<BlendedWall>();
    s_plainWall = std::make_unique<PlainWall>();
    s_windows = std::make_unique<ManyWindows>();

    // More often than the others: how an allocator puts memory together differs from time to time.
    zoBenchmark::Suite suite(15);
    suite.compare({"regenerating the wall", "10,000 bare rows of 40 columns", "", 0, 0, 1.1}, regenerate,
                  regenerateFloor);
    // As often as a screen is painted while a value is dragged.
    suite.compare({"changing a field of the wall", "10,000 bare rows of 40 columns", "", 0, 0, 0, 16},
                  changeDistance, regenerateFloor);
    suite.compare(
        {"changing the overlap of a blended wall", "10,000 bare rows of 40 columns", "", 0, 0, 0, 16},
        changeOverlap, regenerateFloor);
    suite.compare({"section from a ready document", "the same, every nested tile built", "", 0, 0, 0.25},
                  load, loadFloor);
    suite.compare({"10,000 node names, 10,000 windows", "one name after the other", "", 0, 0, 0.05},
                  nodeNames, nodeNamesFloor);
    suite.compare({"wall to planes", "one plane after the other", "", 0, 0, 0.2}, convert, convertFloor);
    suite.run(argc, argv);
    const bool met = suite.print();
    s_windows.reset();
    s_plainWall.reset();
    s_blendedWall.reset();
    s_wall.reset();
    return suite.finish(met);
}
