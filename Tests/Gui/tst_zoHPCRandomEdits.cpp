#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCConfigEditGUIW.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

// The cluster window under all that can be done to its host tree and node editor, in random order.
class tst_zoHPCRandomEdits final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void documentIsThatOfAFreshLoad_data();
    void documentIsThatOfAFreshLoad();

private:
    struct Operation
    {
        const char* name;
        int weight;
        std::function<void()> run;
    };

    std::vector<Operation> operations();
    std::vector<Operation> treeOperations();
    std::vector<Operation> itemOperations();
    std::vector<Operation> editorOperations();
    std::vector<Operation> windowOperations();

    int random(int bound) { return int(m_random.bounded(quint32(bound))); }
    bool chance(int oneIn) { return random(oneIn) == 0; }
    QString oneOf(const QStringList& texts) { return texts.at(random(texts.size())); }
    QString hostsText();
    zoHPCTreeItem* randomItem();
    zoHPCTreeItem* randomNode();
    void moveItem();
    void changeWidget();
    void callEditorSlot();
    template <class Handle>
    void withDialog(Handle handle);

    QRandomGenerator m_random;
    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<zoHPCGUIW> m_window;
    zoHPCTreeGUIW* m_view = nullptr;
    zoHPCTreeEditGUIW* m_editor = nullptr;
    QTreeWidget* m_tree = nullptr;
    QStringList m_texts; // of former documents
};

namespace
{
// Where a tree of this many items is made small again.
constexpr std::size_t s_largestTree = 120;
const char* const s_names[] = {"n1", "n2",        "n3",   "n08",         "n09", "n10",
                               "a",  "localhost", "n1_2", "Network:/0/", "",    "%1"};
} // namespace

void tst_zoHPCRandomEdits::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
    m_view = m_window->getTree();
    m_editor = m_window->getEditor();
    m_tree = m_view->findChild<QTreeWidget*>();
    m_window->show();
    for (const char* const name : {"hosts", "other-hosts"}) {
        QFile file(m_folder->filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("f1 - f4 gw { x } { y }");
    }
}

void tst_zoHPCRandomEdits::cleanup()
{
    m_window.reset();
    m_texts.clear();
    m_folder.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCRandomEdits::documentIsThatOfAFreshLoad_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("steps");

    QTest::newRow("one") << 20261121U << 5000;
    QTest::newRow("two") << 4711U << 5000;
}

void tst_zoHPCRandomEdits::documentIsThatOfAFreshLoad()
{
    QFETCH(quint32, seed);
    QFETCH(int, steps);
    m_random.seed(seed);
    std::vector<const Operation*> wheel;
    const std::vector<Operation> all = operations();
    for (const Operation& operation : all)
        wheel.insert(wheel.end(), std::size_t(operation.weight), &operation);
    zoHPCGUIW fresh(nullptr, QStringLiteral("Fresh"));
    QStringList history;
    std::size_t largest = 0; // of the trees that were compared

    for (int step = 1; step <= steps; ++step) {
        std::vector<zoHPCTreeItem*> items;
        m_view->master()->getAllSubItems(items);
        if (items.size() > s_largestTree)
            m_window->setDefaultConfig();
        const Operation* operation = wheel[std::size_t(random(int(wheel.size())))];
        history << QLatin1String(operation->name);
        operation->run();
        if (step % 7 == 0)
            QCoreApplication::processEvents();
        if (step % 100 != 0)
            continue;

        largest = std::max<int>(largest, items.size());
        const QString text = m_window->documentText();
        fresh.setConfigString(text);
        const QString again = fresh.documentText();
        if (again != text)
            qInfo("after step %d of %s", step, qPrintable(history.join(QLatin1Char(' '))));
        QCOMPARE(again, text);
        QCOMPARE(fresh.getTree()->getNodeNames(), m_view->getNodeNames());
        QCOMPARE(fresh.getTree()->getNodeItems().size(), m_view->getNodeItems().size());
        history.clear();
        m_texts = m_texts.mid(std::max<int>(0, m_texts.size() - 5));
        m_texts << text;

        // What the editor shows is the item that is chosen.
        m_view->setSelectedItem(m_view->master());
        if (zoHPCTreeItem* node = randomNode()) {
            m_view->setSelectedItem(node);
            QCOMPARE(m_editor->findChild<QLineEdit*>(QStringLiteral("m_hostName"))->text(), node->hostName());
        }
    }
    // Not the same few rows all the time.
    QVERIFY(largest > s_largestTree / 2);
}

std::vector<tst_zoHPCRandomEdits::Operation> tst_zoHPCRandomEdits::operations()
{
    std::vector<Operation> all;
    for (auto part : {treeOperations(), itemOperations(), editorOperations(), windowOperations()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::vector<tst_zoHPCRandomEdits::Operation> tst_zoHPCRandomEdits::treeOperations()
{
    return {
        {"select", 12, [this] { m_view->setSelectedItem(chance(12) ? nullptr : randomItem()); }},
        {"add-host", 9, [this] { m_view->addHost(); }},
        {"add-network", 6, [this] { m_view->addNetwork(); }},
        {"remove", 3, [this] { m_view->removeItem(); }},
        {"action", 6,
         [this] {
             const QList<QAction*> actions{m_view->addNetworkAction(), m_view->addHostAction(),
                                           m_view->removeNetworkAction(), m_view->removeHostAction()};
             actions.at(random(actions.size()))->trigger();
         }},
        {"remove-by-key", 2,
         [this] {
             m_tree->setFocus();
             QTest::keyClick(m_tree, Qt::Key_Delete);
         }},
        {"hosts-text", 3, [this] { m_view->setHostString(hostsText()); }},
        {"hosts-text-again", 3, [this] { m_view->setHostString(m_view->getHostsString()); }},
        {"one-hosts-text", 1,
         [this] {
             std::stringstream out;
             m_view->getHostsString(randomItem(), out, random(3));
             m_view->getHostRangeString(randomItem()->items(), out, 0);
         }},
        {"hosts-file", 1,
         [this] {
             m_view->setHostFile(chance(2) ? QString() : m_folder->filePath(oneOf({"hosts", "missing"})));
         }},
        {"read-hosts-file", 1, [this] { m_view->loadNodesFile(); }},
        {"edit-hosts", 1,
         [this] {
             withDialog([this](QDialog* active) {
                 auto* dialog = qobject_cast<zoHPCConfigEditGUIW*>(active);
                 if (chance(2))
                     dialog->setText(hostsText());
                 dialog->setServersFile(chance(3) ? m_folder->filePath(QStringLiteral("other-hosts"))
                                                  : QString());
                 // The dialog may stand over a tree that changes.
                 if (chance(2))
                     m_view->removeItem();
             });
             chance(2) ? m_view->editHosts() : m_view->configAction()->trigger();
         }},
        {"menu", 1,
         [this] {
             QTimer::singleShot(0, qApp, [this] {
                 auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                 if (!menu)
                     return;
                 if (chance(2))
                     m_view->removeItem();
                 menu->close();
             });
             m_view->contextMenuRequested(m_tree->visualItemRect(randomItem()).center());
             QCoreApplication::processEvents();
         }},
        {"find-network", 1,
         [this] {
             const zoHPCTreeItem* network = m_view->findNetworkByIndex(random(6));
             QVERIFY(!network || network->isNetwork());
         }},
        {"current-item-changed", 2,
         [this] { m_view->currentItemChanged(chance(3) ? nullptr : randomItem(), nullptr); }},
        {"default-tree", 1,
         [this] {
             if (chance(4))
                 m_view->setDefaultConfig();
         }},
        {"running", 3,
         [this] {
             QStringList ids{QStringLiteral("n1"), QStringLiteral("n1_2"), QStringLiteral("Network:/0/")};
             ids << m_view->getNodeNames().mid(0, random(4));
             m_window->setIsRunning(chance(3), ids);
         }},
        {"collapse", 1, [this] { chance(2) ? m_tree->collapseAll() : m_tree->expandAll(); }},
    };
}

std::vector<tst_zoHPCRandomEdits::Operation> tst_zoHPCRandomEdits::itemOperations()
{
    return {
        {"create-node", 12,
         [this] {
             zoHPCTreeItem* item = randomItem();
             if (item->isNetwork())
                 m_view->createNode(item, QLatin1String(s_names[random(12)]), random(item->childCount() + 1));
         }},
        {"create-network", 6,
         [this] {
             zoHPCTreeItem* item = randomItem();
             if (!item->isNetwork())
                 m_view->createNetwork(item, chance(2) ? -1 : random(item->childCount() + 1));
         }},
        {"fill-range", 4,
         [this] {
             if (zoHPCTreeItem* node = randomNode())
                 m_view->insertHostRange(node);
         }},
        {"move", 4, [this] { moveItem(); }},
        {"delete", 2,
         [this] {
             // Not a way of the window, but of whoever embeds it; the item may be current or in the editor.
             zoHPCTreeItem* item = randomItem();
             if (!item->isMaster())
                 delete item;
         }},
        {"rename", 4,
         [this] {
             if (zoHPCTreeItem* node = randomNode())
                 node->setHostName(QLatin1String(s_names[random(12)]));
         }},
        {"enable", 4, [this] { randomItem()->setIsEnabled(chance(2)); }},
        {"render-node", 2,
         [this] {
             if (zoHPCTreeItem* node = randomNode())
                 node->setIsRenderNode(chance(2));
         }},
        {"option", 3,
         [this] {
             zoHPCTreeItem* item = randomItem();
             if (!item->isMaster())
                 item->setOption(oneOf({zoHPCOption::Description, zoHPCOption::LinkSpeed,
                                        zoHPCOption::IbDevice, zoHPCOption::Encrypted}),
                                 oneOf({QString(), QStringLiteral("true"), QStringLiteral("40g"),
                                        QStringLiteral("<&\"'>")}));
         }},
        {"clear-options", 1, [this] { randomItem()->clearOptions(); }},
        {"copy-options", 1,
         [this] {
             zoHPCTreeItem* item = randomItem();
             zoHPCTreeItem* other = randomItem();
             if (item != other && item->isNode() == other->isNode() &&
                 item->isNetwork() == other->isNetwork())
                 item->copyValuesFrom(other);
         }},
        {"marks", 1,
         [this] {
             zoHPCTreeItem* item = randomItem();
             item->setIsDisplayNode(chance(2));
             item->setIsRunning(chance(2));
             item->updateState();
         }},
    };
}

std::vector<tst_zoHPCRandomEdits::Operation> tst_zoHPCRandomEdits::editorOperations()
{
    return {
        {"widget", 16, [this] { changeWidget(); }},
        {"editor-slot", 8, [this] { callEditorSlot(); }},
        {"edit-item", 5, [this] { m_editor->setItem(chance(10) ? nullptr : randomItem()); }},
        {"edit-name", 2, [this] { m_editor->editName(); }},
        {"editor-running", 1, [this] { m_editor->setIsRunning(chance(3)); }},
    };
}

std::vector<tst_zoHPCRandomEdits::Operation> tst_zoHPCRandomEdits::windowOperations()
{
    const QString file = m_folder->filePath(QStringLiteral("kept.zhpc"));
    return {
        {"load-former", 2,
         [this] {
             if (m_texts.isEmpty())
                 return;
             if (chance(2))
                 m_window->setConfigString(oneOf(m_texts));
             else
                 m_window->replaceConfigString(oneOf(m_texts));
         }},
        {"save", 2, [this, file] { m_window->saveConfig(file); }},
        {"load", 2,
         [this, file] {
             if (QFile::exists(file))
                 m_window->loadConfig(file);
         }},
        {"edit-text", 1,
         [this] {
             withDialog([](QDialog*) {});
             m_window->editConfig();
         }},
        {"display-setup", 1,
         [this] {
             m_window->displaySetup();
             chance(2) ? m_window->getDisplayEditor()->accept() : m_window->getDisplayEditor()->reject();
         }},
        {"config-string", 2, [this] { m_texts << m_window->getConfigString(); }},
        {"new", 1,
         [this] {
             if (chance(4))
                 m_window->setDefaultConfig();
         }},
        {"display-state", 2, [this] { m_window->updateDisplayState(); }},
        {"apply-displays", 1, [this] { m_window->getDisplayEditor()->apply(); }},
    };
}

// Hosts, networks and ranges with what does not belong there.
QString tst_zoHPCRandomEdits::hostsText()
{
    const QStringList words{
        "{",       "}",   "{", "}", "n1", "n2", "n3", "n08", "-", "n12", "a", "gw[forwards=x|y]",
        "b[rt=0]", "[x]", "/", "(", ")",  "n1", "_",  ","};
    QString text;
    for (int i = random(160); i > 0; --i)
        text += oneOf(words) + (chance(6) ? QString() : QStringLiteral(" "));
    return text;
}

zoHPCTreeItem* tst_zoHPCRandomEdits::randomItem()
{
    std::vector<zoHPCTreeItem*> items;
    m_view->master()->getAllSubItems(items);
    return items[std::size_t(random(int(items.size())))];
}

zoHPCTreeItem* tst_zoHPCRandomEdits::randomNode()
{
    const std::vector<zoHPCTreeItem*> nodes = m_view->getNodeItems();
    return nodes.empty() ? nullptr : nodes[std::size_t(random(int(nodes.size())))];
}

// As a drag would: taken out of its row and put under another item, or dropped where it came from.
void tst_zoHPCRandomEdits::moveItem()
{
    zoHPCTreeItem* item = randomItem();
    zoHPCTreeItem* parent = item->getParent();
    if (!parent)
        return;
    const int row = parent->indexOfChild(item);
    QVERIFY(parent->takeChild(row) == item);
    if (chance(25)) { // dropped outside
        delete item;
        return;
    }
    zoHPCTreeItem* target = randomItem(); // what hangs below the item cannot be it any more
    if (target->isNetwork() != item->isNode())
        target = parent;
    target->insertChild(target == parent ? qMin(row, target->childCount()) : random(target->childCount() + 1),
                        item);
}

// A person changes what the editor shows.
void tst_zoHPCRandomEdits::changeWidget()
{
    auto* pages = m_editor->findChild<QStackedWidget*>(QStringLiteral("m_stackedEditPanel"));
    QList<QWidget*> widgets;
    const QList<QWidget*> all = pages->currentWidget()->findChildren<QWidget*>();
    for (QWidget* widget : all) {
        // Those of the form: not the line edits inside of spin boxes.
        if (widget->isEnabled() && widget->objectName().startsWith(QLatin1String("m_")) &&
            (qobject_cast<QComboBox*>(widget) || qobject_cast<QCheckBox*>(widget) ||
             qobject_cast<QSpinBox*>(widget) || qobject_cast<QLineEdit*>(widget)))
            widgets << widget;
    }
    if (widgets.isEmpty())
        return;
    QWidget* widget = widgets.at(random(widgets.size()));
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        combo->setCurrentIndex(random(combo->count()));
    else if (auto* box = qobject_cast<QCheckBox*>(widget))
        box->click();
    else if (auto* spin = qobject_cast<QSpinBox*>(widget))
        spin->setValue(chance(2) ? 8889 : spin->minimum() + random(spin->maximum() - spin->minimum()));
    else if (auto* line = qobject_cast<QLineEdit*>(widget))
        line->setText(QLatin1String(s_names[random(12)]));
}

// As a host may, whatever the editor shows and also with rows that no combo box has.
void tst_zoHPCRandomEdits::callEditorSlot()
{
    using Slot = void (zoHPCTreeEditGUIW::*)(int);
    const Slot rows[] = {&zoHPCTreeEditGUIW::setNetworkType,      &zoHPCTreeEditGUIW::ethernetSpeedChanged,
                         &zoHPCTreeEditGUIW::setSceneCompression, &zoHPCTreeEditGUIW::setImageCompression,
                         &zoHPCTreeEditGUIW::setStartStopAction,  &zoHPCTreeEditGUIW::setParallelFrames,
                         &zoHPCTreeEditGUIW::setQueueLength,      &zoHPCTreeEditGUIW::setStillSupersampling};
    switch (random(11)) {
    case 8:
        m_editor->servicePortChanged(random(70000));
        break;
    case 9:
        m_editor->setEncrypted(chance(2));
        break;
    case 10:
        m_editor->setHomogeneous(chance(2));
        break;
    default:
        (m_editor->*rows[random(8)])(random(12) - 1);
    }
}

// Handles the dialog that the next call opens, and closes it.
template <class Handle>
void tst_zoHPCRandomEdits::withDialog(Handle handle)
{
    QTimer::singleShot(0, qApp, [this, handle] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        handle(dialog);
        chance(3) ? dialog->reject() : dialog->accept();
    });
}

ZO_TEST_MAIN(tst_zoHPCRandomEdits)
#include "tst_zoHPCRandomEdits.moc"
