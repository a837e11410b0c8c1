// The host tree at 10,000 and 100,000 nodes, each work beside the least that the toolkit needs for it,
// measured in the same run; and inputs that invite quadratic time, beside their doubles. Prints a table of
// the ratios of CPU medians, and their goals, at the end.

#include "zoBenchmark.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCDocumentText.h>
#include <zoHPCDocumentWriter.h>
#include <zoHPCGUIW.h>
#include <zoHPCHostsText.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QDomDocument>
#include <QLineEdit>
#include <QMap>
#include <QSet>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <malloc.h>

namespace
{
using zoBenchmark::require;
using zoBenchmark::settle;

constexpr int NodesPerNetwork = 100;

// ---- The least: a plain tree widget, filled in bulk.

class PlainTree
{
public:
    explicit PlainTree(bool shown = true)
    {
        m_tree.setHeaderHidden(true);
        m_tree.setUniformRowHeights(true);
        m_tree.resize(320, 400);
        m_tree.addTopLevelItem(master);
        master->setText(0, QStringLiteral("Options"));
        if (shown)
            m_tree.show();
        m_tree.expandItem(master);
    }

    static QTreeWidgetItem* newItem(const QString& text)
    {
        auto* item = new QTreeWidgetItem;
        item->setText(0, text);
        return item;
    }

    // One scan of the text, items in lists, attached and expanded.
    void read(const QString& text)
    {
        const QString networkText = QStringLiteral("Network");
        QList<QTreeWidgetItem*> networks;
        QList<QTreeWidgetItem*> nodes;
        const QChar* p = text.constData();
        const QChar* end = p + text.size();
        while (p != end) {
            const QChar c = *p;
            if (c == QLatin1Char('{')) {
                networks.append(newItem(networkText));
                ++p;
            } else if (c == QLatin1Char('}')) {
                networks.last()->addChildren(nodes);
                nodes.clear();
                ++p;
            } else if (c == QLatin1Char(' ') || c == QLatin1Char('\n')) {
                ++p;
            } else {
                const QChar* begin = p;
                while (p != end && *p != QLatin1Char(' ') && *p != QLatin1Char('\n'))
                    ++p;
                nodes.append(newItem(QString(begin, int(p - begin))));
            }
        }
        attach(networks);
    }

    void read(const QDomDocument& document)
    {
        const QString networkText = QStringLiteral("Network");
        const QString nameKey = QStringLiteral("name");
        QList<QTreeWidgetItem*> networks;
        const QDomElement section = document.documentElement().firstChildElement();
        for (QDomElement n = section.firstChildElement(); !n.isNull(); n = n.nextSiblingElement()) {
            networks.append(newItem(networkText));
            QList<QTreeWidgetItem*> nodes;
            for (QDomElement e = n.firstChildElement(); !e.isNull(); e = e.nextSiblingElement())
                nodes.append(newItem(e.attribute(nameKey)));
            networks.last()->addChildren(nodes);
        }
        attach(networks);
    }

    void setLook(const QIcon& networkIcon, const QIcon& nodeIcon, const QBrush& brush)
    {
        const bool blocked = m_tree.model()->blockSignals(true);
        for (int i = 0; i < master->childCount(); ++i) {
            QTreeWidgetItem* network = master->child(i);
            network->setIcon(0, networkIcon);
            network->setForeground(0, brush);
            for (int k = 0; k < network->childCount(); ++k) {
                network->child(k)->setIcon(0, nodeIcon);
                network->child(k)->setForeground(0, brush);
            }
        }
        m_tree.model()->blockSignals(blocked);
        m_tree.viewport()->repaint();
    }

    void clear() { qDeleteAll(master->takeChildren()); }

    QTreeWidgetItem* const master = new QTreeWidgetItem;

private:
    void attach(const QList<QTreeWidgetItem*>& networks)
    {
        // The master is expanded: laying out waits until all is there.
        master->addChildren(networks);
        for (QTreeWidgetItem* network : networks)
            m_tree.expandItem(network);
    }

    QTreeWidget m_tree;
};

// ---- What both sides work on, once per size.

struct Subject
{
    explicit Subject(int count)
    {
        for (int i = 0; i < count; ++i) {
            if (i % NodesPerNetwork == 0) {
                folding += QLatin1String("{ ");
                apart += QLatin1String("{ ");
            }
            names << QStringLiteral("node%1").arg(i, 6, 10, QLatin1Char('0'));
            folding += names.last() + QLatin1Char(' ');
            apart += QStringLiteral("node%1 ").arg(2 * i, 6, 10, QLatin1Char('0'));
            if (i % NodesPerNetwork == NodesPerNetwork - 1) {
                folding += QLatin1String("}\n");
                apart += QLatin1String("}\n");
            }
        }
        view.resize(320, 400);
        view.show();
        view.setHostString(folding);
        settle();
        document = zoHPCDocumentText::toText(save());
        require(text() == document, "text and document are the same");
    }

    // The way of the window: no document in between.
    QString text()
    {
        zoHPCDocumentWriter writer;
        writer.openElement(QStringLiteral("cluster"));
        view.writeSection(writer);
        writer.closeElement();
        return writer.takeText();
    }

    QDomDocument save()
    {
        QDomDocument result;
        result.appendChild(result.createElement(QStringLiteral("cluster")));
        view.saveToXML(result);
        return result;
    }

    QDomDocument plainSave() const
    {
        QDomDocument result;
        QDomElement root = result.createElement(QStringLiteral("cluster"));
        result.appendChild(root);
        QDomElement section = result.createElement(QStringLiteral("master"));
        root.appendChild(section);
        section.setAttribute(QStringLiteral("scenecompression"), QStringLiteral("best"));
        const QString nameKey = QStringLiteral("name");
        const QString networkTag = QStringLiteral("network");
        const QString nodeTag = QStringLiteral("node");
        for (int i = 0; i < plain.master->childCount(); ++i) {
            QDomElement network = result.createElement(networkTag);
            for (int k = 0; k < plain.master->child(i)->childCount(); ++k) {
                QDomElement node = result.createElement(nodeTag);
                node.setAttribute(nameKey, plain.master->child(i)->child(k)->text(0));
                network.appendChild(node);
            }
            section.appendChild(network);
        }
        return result;
    }

    QString appendNames() const
    {
        QString text;
        const QTreeWidgetItem* master = view.master();
        for (int i = 0; i < master->childCount(); ++i) {
            const QTreeWidgetItem* network = master->child(i);
            for (int k = 0; k < network->childCount(); ++k) {
                text += static_cast<const zoHPCTreeItem*>(network->child(k))->hostName();
                text += QLatin1Char('\n');
            }
        }
        return text;
    }

    // As the main window leaves the nodes of a configuration: with unique names, each second one a display
    // node.
    void mark()
    {
        bool display = false;
        for (zoHPCTreeItem* node : view.getNodeItems()) {
            node->setUniqueHostName(node->hostName());
            node->setIsDisplayNode(display = !display);
        }
    }

    void verify()
    {
        view.setHostString(folding);
        require(view.getNodeNames() == names, "nodes read from hosts text");
        plain.clear();
        plain.read(folding);
        require(plain.master->childCount() == view.master()->childCount() &&
                    plain.master->child(0)->childCount() == view.master()->child(0)->childCount() &&
                    plain.master->child(0)->child(1)->text(0) == names.at(1),
                "the floor's tree");
        require(view.getHostsString().count(QLatin1String(" - ")) == view.master()->childCount(),
                "one range per network");
        require(plainSave().toString(1) == document, "document text equals the floor's");
        QDomDocument parsed;
        require(zoHPCDocumentText::parse(document, parsed), "document parses");
        view.setDefaultConfig();
        view.loadFromXML(parsed);
        require(view.getNodeNames() == names, "nodes read from the document");
        view.setIsRunning(true, names);
        int running = 0;
        for (const zoHPCTreeItem* node : view.getNodeItems())
            running += node->isRunning();
        require(running == names.size(), "all nodes running");
        view.setIsRunning(false, {});
        for (const zoHPCTreeItem* node : view.getNodeItems())
            running -= !node->isRunning();
        require(running == 0, "no node running");
        view.setHostString(apart);
        require(!view.getHostsString().contains(QLatin1String(" - ")) &&
                    view.getHostsString().count(QLatin1String("node")) == names.size(),
                "nothing folds");
    }

    QStringList names;
    QString folding; // consecutive names, each written out
    QString apart;   // names that do not fold
    QString document;
    zoHPCTreeGUIW view;
    PlainTree plain;
};

std::map<int, std::unique_ptr<Subject>> s_subjects; // emptied before the application goes

Subject& subject(int count)
{
    std::unique_ptr<Subject>& known = s_subjects[count];
    if (!known) {
        known = std::make_unique<Subject>(count);
        known->verify();
    }
    return *known;
}

// ---- Works

using Function = void (*)(benchmark::State&, int);

void readText(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    for (auto _ : state) {
        state.PauseTiming();
        s.view.setHostString(QString());
        s.view.setHostString(QString()); // destroys what the first one took out
        settle();
        state.ResumeTiming();
        s.view.setHostString(s.folding);
    }
}

void readTextFloor(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    for (auto _ : state) {
        state.PauseTiming();
        s.plain.clear();
        settle();
        state.ResumeTiming();
        s.plain.read(s.folding);
    }
}

void readTextOverOld(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.view.setHostString(QString());
    s.view.setHostString(s.folding);
    s.view.setHostString(s.folding);
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        s.view.setHostString(s.folding);
    }
}

void readTextOverMarked(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.view.setHostString(s.folding);
    s.mark();
    s.view.setHostString(s.folding);
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        s.view.setHostString(s.folding);
    }
    s.view.setHostString(QString());
}

void writeText(benchmark::State& state, Subject& s, const QString& text)
{
    s.view.setHostString(text);
    settle();
    for (auto _ : state)
        benchmark::DoNotOptimize(s.view.getHostsString());
}

void writeTextFloor(benchmark::State& state, Subject& s, const QString& text)
{
    s.view.setHostString(text);
    settle();
    for (auto _ : state)
        benchmark::DoNotOptimize(s.appendNames());
}

void writeFolding(benchmark::State& state, int count)
{
    writeText(state, subject(count), subject(count).folding);
}

void writeFoldingFloor(benchmark::State& state, int count)
{
    writeTextFloor(state, subject(count), subject(count).folding);
}

void writeApart(benchmark::State& state, int count)
{
    writeText(state, subject(count), subject(count).apart);
}

void writeApartFloor(benchmark::State& state, int count)
{
    writeTextFloor(state, subject(count), subject(count).apart);
}

void writeSection(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.view.setHostString(s.folding);
    for (auto _ : state)
        benchmark::DoNotOptimize(s.text());
}

void writeSectionFloor(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.plain.clear();
    s.plain.read(s.folding);
    for (auto _ : state)
        benchmark::DoNotOptimize(s.plainSave().toString(1));
}

void readSection(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    for (auto _ : state) {
        state.PauseTiming();
        s.view.setDefaultConfig();
        s.view.setDefaultConfig();
        settle();
        state.ResumeTiming();
        QDomDocument document;
        zoHPCDocumentText::parse(s.document, document);
        s.view.loadFromXML(document);
    }
}

void readSectionFloor(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    for (auto _ : state) {
        state.PauseTiming();
        s.plain.clear();
        settle();
        state.ResumeTiming();
        QDomDocument document;
        document.setContent(s.document);
        s.plain.read(document);
    }
}

void setRunning(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.view.setHostString(s.folding);
    settle();
    auto* viewport = s.view.findChild<QTreeWidget*>()->viewport();
    bool running = false;
    for (auto _ : state) {
        running = !running;
        s.view.setIsRunning(running, running ? s.names : QStringList());
        viewport->repaint();
    }
    s.view.setIsRunning(false, {});
}

void setRunningFloor(benchmark::State& state, int count)
{
    Subject& s = subject(count);
    s.plain.clear();
    s.plain.read(s.folding);
    settle();
    bool running = false;
    const QBrush brush = s.view.palette().brush(QPalette::Text);
    for (auto _ : state) {
        running = !running;
        s.plain.setLook(zoHPCTreeItem::getIcon(0, true, running, false, false),
                        zoHPCTreeItem::getIcon(1, true, running, false, false), brush);
    }
}

// The cluster window with a node that is being renamed, every tenth of the nodes driving a window.
struct Renaming
{
    explicit Renaming(int count)
    {
        std::unique_ptr<zoHPCDisplayItem> display = std::make_unique<zoHPCDisplayItem>();
        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("cluster"));
        root.setAttribute(QStringLiteral("version"), 1);
        document.appendChild(root);
        for (int i = 0; i < count; i += 10) {
            auto* item = new zoHPCWindowItem;
            item->setRenderNode(subject(count).names.at(i));
            display->addChild(item);
        }
        root.appendChild(display->toXML(document, QStringLiteral("display")));
        window.getTree()->setHostString(subject(count).folding);
        window.getDisplayEditor()->loadFromXML(document);
        window.show();
        node = window.getTree()->getNodeItems()[static_cast<size_t>(count / 2)];
        window.getTree()->setSelectedItem(node);
        name = window.findChild<QLineEdit*>(QStringLiteral("m_hostName"));
        require(name->text() == subject(count).names.at(count / 2), "the node that is renamed");
        settle();
    }

    // Types a letter, or takes it away.
    void stroke()
    {
        if (name->text().endsWith(QLatin1Char('x')))
            name->backspace();
        else
            name->insert(QStringLiteral("x"));
    }

    void verify()
    {
        QSet<QString> renderNodes;
        for (const zoHPCWindowItem* item : window.getDisplayEditor()->getWindowItems())
            renderNodes.insert(item->renderNode());
        int marked = 0;
        for (const zoHPCTreeItem* item : window.getTree()->getNodeItems()) {
            marked += item->isDisplayNode();
            require(item->isDisplayNode() == renderNodes.contains(item->uniqueHostName()), "marked nodes");
        }
        const int count = window.getTree()->getNodeNames().size();
        require(node->uniqueHostName() == name->text(), "unique name of the renamed node");
        // The windows follow the name, but not in the floor, which types without telling.
        require(marked == count / 10 || marked == count / 10 - 1, "number of marked nodes");
    }

    zoHPCGUIW window{nullptr, QStringLiteral("Module")};
    zoHPCTreeItem* node = nullptr;
    QLineEdit* name = nullptr;
};

std::map<int, std::unique_ptr<Renaming>> s_renamings; // emptied before the application goes

Renaming& renaming(int count)
{
    std::unique_ptr<Renaming>& known = s_renamings[count];
    if (!known)
        known = std::make_unique<Renaming>(count);
    return *known;
}

void keyStroke(benchmark::State& state, int count)
{
    Renaming& r = renaming(count);
    for (auto _ : state)
        r.stroke();
    r.verify();
}

// The rule as it is told: groups by name, one name after the other, one mark after the other.
void updatePlainly(zoHPCGUIW& window)
{
    const std::vector<zoHPCTreeItem*> nodes = window.getTree()->getNodeItems();
    QMap<QString, QList<zoHPCTreeItem*>> groups;
    for (zoHPCTreeItem* node : nodes)
        groups[node->hostName()].append(node);
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        for (int k = 0; k < group->size(); ++k)
            group->at(k)->setUniqueHostName(
                group->size() == 1 ? group.key()
                                   : QStringLiteral("%1 %2").arg(group.key(), QString::number(k + 1)));
    }
    QSet<QString> renderNodes;
    for (const zoHPCWindowItem* item : window.getDisplayEditor()->getWindowItems())
        renderNodes.insert(item->renderNode());
    for (zoHPCTreeItem* node : nodes)
        node->setIsDisplayNode(renderNodes.contains(node->uniqueHostName()));
}

void keyStrokeFloor(benchmark::State& state, int count)
{
    Renaming& r = renaming(count);
    // The window's own way is shut off meanwhile.
    const bool blocked = r.name->blockSignals(true);
    for (auto _ : state) {
        r.stroke();
        r.node->setHostName(r.name->text());
        updatePlainly(r.window);
    }
    r.name->blockSignals(blocked);
    r.verify();
}

struct Work
{
    const char* work;
    Function function;
    const char* floor;
    Function floorFunction;
    double goals[2];
};

const Work s_works[] = {
    {"hosts text -> tree", readText, "scan, bulk items", readTextFloor, {2.0, 2.75}},
    {"the same over an old tree", readTextOverOld, "scan, bulk items", readTextFloor, {4, 6.5}},
    {"the same over a marked tree", readTextOverMarked, "scan, bulk items", readTextFloor, {4, 6.5}},
    {"tree -> hosts text, folding", writeFolding, "append names", writeFoldingFloor, {1.2, 1.2}},
    {"tree -> hosts text, nothing folds", writeApart, "append names apart", writeApartFloor, {3, 3}},
    {"tree section -> text", writeSection, "DOM, toString", writeSectionFloor, {0.9, 0.9}},
    {"text -> tree section", readSection, "setContent, bulk items", readSectionFloor, {1.25, 1.25}},
    {"all nodes to running or back", setRunning, "icons and colours, quiet", setRunningFloor, {1.5, 2.0}},
    {"key stroke in a node's name", keyStroke, "names and marks one by one", keyStrokeFloor, {0.25, 0.25}},
};
const int s_counts[] = {10000, 100000};
// How often the time may multiply when the size does by ten: a triple per doubling.
const double s_growthGoal = 38.5;

// ---- Growth

// Everything that grows with the tree: rebuilding it over an equal one, marking, running, writing, saving,
// loading.
void useTree(benchmark::State& state, const QString& text)
{
    zoHPCTreeGUIW view;
    view.resize(320, 400);
    view.show();
    for (auto _ : state) {
        view.setHostString(text);
        QCoreApplication::processEvents();
        for (zoHPCTreeItem* node : view.getNodeItems())
            node->setIsDisplayNode(true);
        view.setHostString(text);
        view.setIsRunning(true, view.getNodeNames());
        benchmark::DoNotOptimize(view.getHostsString());
        QDomDocument document;
        document.appendChild(document.createElement(QStringLiteral("cluster")));
        view.saveToXML(document);
        view.loadFromXML(document);
        QCoreApplication::processEvents();
    }
}

void splitText(benchmark::State& state, const QString& text)
{
    for (auto _ : state) {
        zoHPCHostsText reader(text);
        while (reader.next())
            benchmark::DoNotOptimize(reader.token());
    }
}

void enterIds(benchmark::State& state, const QString& text)
{
    zoHPCTreeGUIW view;
    view.setHostString(text);
    std::vector<zoHPCTreeItem*> items;
    view.master()->getAllSubItems(items);
    for (auto _ : state) {
        std::map<QString, zoHPCTreeItem*> ids;
        for (zoHPCTreeItem* item : items)
            item->addToIDCache(ids);
        require(ids.size() == items.size(), "an id per item");
    }
}

struct Growth
{
    const char* work;
    void (*function)(benchmark::State&, const QString&);
    const char* unit; // of the text, repeated
    int count;
};

const Growth s_growths[] = {
    {"tree of equal names", useTree, "n ", 3000},
    {"tree of gateways", useTree, "gw { a } ", 1500},
    {"tree of networks", useTree, "{ a } ", 2000},
    {"tree of ranges", useTree, "n1 - n100 x ", 30},
    {"tree with render options", useTree, "n[rt=0] ", 2000},
    {"tree of blanks", useTree, " ", 500000},
    {"tree of open brackets", useTree, "[ ", 200000},
    {"split blanks", splitText, " ", 500000},
    {"split open brackets", splitText, "[", 500000},
    {"split open brackets apart", splitText, "[ ", 500000},
    {"split closed brackets", splitText, "]", 500000},
    {"split open braces", splitText, "{", 500000},
    {"split forwards, never closed", splitText, "[forwards=", 100000},
    {"split forwards, never opened", splitText, "forwards=]", 100000},
    {"ids of equal gateways", enterIds, "gw { x } ", 5000},
};
// How often the time may multiply when the size doubles.
const double s_doublingGoal = 3.0;

double heapPerNode(int count, bool plain)
{
    const QString text = subject(count).folding;
    QString detached = text; // the names of both sides are made anew
    detached.detach();
    std::unique_ptr<PlainTree> plainTree;
    std::unique_ptr<zoHPCTreeGUIW> view;
    if (plain)
        plainTree = std::make_unique<PlainTree>(false);
    else
        view = std::make_unique<zoHPCTreeGUIW>();
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    if (plain)
        plainTree->read(detached);
    else
        view->setHostString(detached);
    const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    return double(after - before) / count;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);

    zoBenchmark::Suite suite(7);
    for (const Work& work : s_works) {
        for (int i = 0; i < 2; ++i) {
            const int nodes = s_counts[i];
            suite.compare(
                {work.work, work.floor, std::to_string(nodes), 0, 0, work.goals[i]},
                [run = work.function, nodes](benchmark::State& state) { run(state, nodes); },
                [run = work.floorFunction, nodes](benchmark::State& state) { run(state, nodes); });
        }
    }
    for (const Growth& growth : s_growths) {
        const auto grown = [&growth](int count) {
            return [&growth, count](benchmark::State& state) {
                growth.function(state, QString::fromLatin1(growth.unit).repeated(count));
            };
        };
        const std::string work = growth.work;
        suite.compare({work + ", twice", work, std::to_string(2 * growth.count), 0, 0, s_doublingGoal},
                      grown(2 * growth.count), grown(growth.count));
    }
    suite.run(argc, argv);

    // Growth has a table of its own.
    const std::vector<zoBenchmark::Row> rows = suite.takeRows();
    std::vector<zoBenchmark::Row> growths;
    std::map<std::string, double> atFirstSize;
    for (const zoBenchmark::Row& row : rows) {
        if (row.work == row.beside + ", twice") {
            growths.push_back(row);
            continue;
        }
        suite.append(row);
        if (row.size == std::to_string(s_counts[0]))
            atFirstSize[row.work] = row.value;
        else
            growths.insert(growths.begin(), {row.work + ", ten times", row.work, row.size, row.value,
                                             atFirstSize[row.work], s_growthGoal});
    }
    for (int nodes : s_counts) {
        heapPerNode(nodes, false); // warms what is made once
        suite.append({"heap per node", "bulk items with their name", std::to_string(nodes),
                      heapPerNode(nodes, false), heapPerNode(nodes, true), 1.05, 0, "bytes"});
    }
    bool met = suite.print();
    for (const zoBenchmark::Row& row : growths)
        suite.append(row);
    met &= suite.print();
    s_renamings.clear();
    s_subjects.clear();
    return suite.finish(met);
}
