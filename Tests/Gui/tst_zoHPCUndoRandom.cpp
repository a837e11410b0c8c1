#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCHistory.h>
#include <zoHPCHostTree.h>
#include <zoHPCOption.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCProjectionType.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCUndo.h>
#include <zoHPCViewportItem.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

// Edits of the whole configuration in random order, undone to the first and redone to the last; the document has the
// same bytes each time. ZO_UNDO_EDITS says how many.
class tst_zoHPCUndoRandom final : public zoTestCase
{
    Q_OBJECT

public:
    tst_zoHPCUndoRandom()
    {
        // Ten thousand take longer than what the library grants a function (ms).
        if (qEnvironmentVariableIsEmpty("QTEST_FUNCTION_TIMEOUT"))
            qputenv("QTEST_FUNCTION_TIMEOUT", "3600000");
    }

private slots:
    void init();
    void cleanup();
    void eachStepHasItsBytes_data();
    void eachStepHasItsBytes();

private:
    using Operation = std::function<void()>;

    std::vector<Operation> hostOperations();
    std::vector<Operation> displayOperations();
    int random(int bound) { return int(m_random.bounded(quint32(bound))); }
    bool chance(int oneIn) { return random(oneIn) == 0; }
    QString name();
    zoHPCTreeItem* randomHost();
    QTreeWidgetItem* randomRow(QTreeWidget* tree);
    void deleteChosen(const char* tree);
    void changeField();
    void changeColumn(QTreeWidget* tree, int columns);
    void tellDifference(const char* what, std::size_t step, const QByteArray& wanted) const;
    QByteArray bytes() const { return m_window->documentText().toUtf8(); }

    QRandomGenerator m_random;
    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<zoHPCGUIW> m_window;
    zoHPCTreeGUIW* m_tree = nullptr;
    zoHPCDisplayGUII* m_dialog = nullptr;
    QTreeWidget* m_projections = nullptr;
    QTreeWidget* m_outputs = nullptr;
};

namespace
{
constexpr int s_mostHosts = 40;
constexpr int s_mostRows = 25; // of each tree of the display setup, generated ones not counted

int editCount()
{
    const int wanted = qEnvironmentVariableIntValue("ZO_UNDO_EDITS");
    return wanted > 0 ? wanted : 300;
}
} // namespace

void tst_zoHPCUndoRandom::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
    m_tree = m_window->getTree();
    m_dialog = m_window->getDisplayEditor();
    m_projections = m_dialog->findChild<QTreeWidget*>(QStringLiteral("m_projectionTree"));
    m_outputs = m_dialog->findChild<QTreeWidget*>(QStringLiteral("m_displayTree"));
    m_window->show();
}

void tst_zoHPCUndoRandom::cleanup()
{
    m_window.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCUndoRandom::eachStepHasItsBytes_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("one") << 20261122U;
    QTest::newRow("two") << 815U;
}

void tst_zoHPCUndoRandom::eachStepHasItsBytes()
{
    QFETCH(quint32, seed);
    m_random.seed(seed);
    std::vector<Operation> operations = hostOperations();
    for (const Operation& operation : displayOperations())
        operations.push_back(operation);
    m_window->setDefaultConfig();
    zoHPCUndo& undo = *m_window->undoSteps();
    std::vector<QByteArray> texts{bytes()};

    const int edits = editCount();
    for (int edit = 0; edit < edits; ++edit) {
        operations[std::size_t(random(int(operations.size())))]();
        undo.commit();
        const QByteArray text = bytes();
        if (text != texts.back())
            texts.push_back(text);
        QCOMPARE(undo.steps().stepCount() + 1, texts.size());
    }
    QVERIFY(texts.size() > std::size_t(edits / 3));

    for (std::size_t step = texts.size() - 1; step > 0; --step) {
        m_window->undo();
        tellDifference("undo", step, texts[step - 1]);
        QCOMPARE(bytes(), texts[step - 1]);
    }
    m_window->undo();
    QCOMPARE(bytes(), texts.front());
    for (std::size_t step = 1; step < texts.size(); ++step) {
        m_window->redo();
        tellDifference("redo", step, texts[step]);
        QCOMPARE(bytes(), texts[step]);
    }
    m_window->redo();
    QCOMPARE(bytes(), texts.back());
    // The undo of an undo is not a step.
    QCOMPARE(undo.steps().stepCount() + 1, texts.size());
    QVERIFY(undo.steps().size() < zoHPCHistory::Limit);
}

// Documents are longer than what a failed comparison shows.
void tst_zoHPCUndoRandom::tellDifference(const char* what, std::size_t step, const QByteArray& wanted) const
{
    const QList<QByteArray> is = bytes().split('\n');
    const QList<QByteArray> should = wanted.split('\n');
    for (int line = 0; line < qMax(is.size(), should.size()); ++line) {
        if (is.value(line) != should.value(line)) {
            qInfo("%s of step %d, line %d:\n%s\nshould be\n%s", what, int(step), line + 1,
                  is.value(line).constData(), should.value(line).constData());
            return;
        }
    }
}

std::vector<tst_zoHPCUndoRandom::Operation> tst_zoHPCUndoRandom::hostOperations()
{
    const auto isRoom = [this] { return m_tree->getNodeItems().size() < std::size_t(s_mostHosts); };
    return {
        [this] { m_tree->setSelectedItem(randomHost()); },
        [this, isRoom] {
            if (isRoom())
                m_tree->addHost();
        },
        [this, isRoom] {
            if (isRoom())
                m_tree->addNetwork();
        },
        [this] { m_tree->removeItem(); },
        [this] { randomHost()->setIsEnabled(chance(2)); },
        [this] {
            zoHPCTreeItem* const item = randomHost();
            if (item->isNode())
                item->setHostName(name());
        },
        [this] {
            zoHPCTreeItem* const item = randomHost();
            if (item->isNetwork())
                item->setOption(zoHPCOption::Description, name());
        },
        [this] { changeField(); },
        [this] { changeField(); },
        [this] {
            if (chance(4))
                m_tree->setHostString(QStringLiteral("n1-n%1 { a b } { c }").arg(random(20)));
        },
        [this] {
            if (chance(8))
                m_window->setConfigString(m_window->documentText());
        },
    };
}

std::vector<tst_zoHPCUndoRandom::Operation> tst_zoHPCUndoRandom::displayOperations()
{
    using Slot = void (zoHPCDisplayGUII::*)();
    const auto choose = [this](QTreeWidget* tree) {
        if (QTreeWidgetItem* const row = randomRow(tree))
            tree->setCurrentItem(row);
    };
    // Not by way of "this": with -fsanitize=vptr GCC 12 would take the object from a temporary that it never sets.
    const auto call = [this](QTreeWidget* tree, Slot slot) {
        return [dialog = m_dialog, tree, slot] {
            if (tree->topLevelItemCount() < s_mostRows)
                (dialog->*slot)();
        };
    };
    return {
        [this, choose] { choose(m_projections); },
        [this, choose] { choose(m_outputs); },
        call(m_projections, &zoHPCDisplayGUII::addProjection),
        call(m_outputs, &zoHPCDisplayGUII::addDisplay),
        call(m_outputs, &zoHPCDisplayGUII::addWindow),
        call(m_outputs, &zoHPCDisplayGUII::addViewport),
        call(m_projections, &zoHPCDisplayGUII::copyProjection),
        call(m_outputs, &zoHPCDisplayGUII::copyDisplay),
        call(m_projections, &zoHPCDisplayGUII::pasteProjection),
        call(m_outputs, &zoHPCDisplayGUII::pasteDisplay),
        call(m_projections, &zoHPCDisplayGUII::convertToPlanes),
        [this, choose] {
            // What a projection generates cannot be deleted by itself.
            choose(m_projections);
            if (m_projections->currentItem() && !m_projections->currentItem()->parent())
                deleteChosen("m_projectionTree");
        },
        [this, choose] {
            choose(m_outputs);
            deleteChosen("m_displayTree");
        },
        [this] { changeColumn(m_projections, zoHPCProjectionItem::ColumnCount); },
        [this] { changeColumn(m_outputs, zoHPCViewportItem::ColumnCount); },
        [this] {
            auto* const projection = dynamic_cast<zoHPCProjectionItem*>(randomRow(m_projections));
            if (projection && !projection->parent())
                projection->setName(name());
        },
        [this] {
            auto* const viewport = dynamic_cast<zoHPCViewportItem*>(randomRow(m_outputs));
            const auto* const projection = dynamic_cast<zoHPCProjectionItem*>(randomRow(m_projections));
            if (viewport && projection)
                viewport->setProjection(projection->getString(zoHPCProjectionItem::Name));
        },
        [this] { m_dialog->setEyeSeparation(float(random(200))); },
        [this] {
            m_window->displaySetup();
            m_dialog->addDisplay();
            QCoreApplication::processEvents();
            chance(2) ? m_dialog->accept() : m_dialog->reject();
        },
    };
}

QString tst_zoHPCUndoRandom::name()
{
    const char* const names[] = {"n1", "n2", "n08", "Wall", "<&\"'>", "gr\xc3\xbc\xc3\x9f", "a b", "%1", ""};
    return QString::fromUtf8(names[random(9)]);
}

zoHPCTreeItem* tst_zoHPCUndoRandom::randomHost()
{
    std::vector<zoHPCTreeItem*> items;
    m_tree->master()->getAllSubItems(items);
    return items[std::size_t(random(int(items.size())))];
}

QTreeWidgetItem* tst_zoHPCUndoRandom::randomRow(QTreeWidget* tree)
{
    QTreeWidgetItem* item = tree->topLevelItem(random(qMax(1, tree->topLevelItemCount())));
    while (item && item->childCount() > 0 && chance(2))
        item = item->child(random(item->childCount()));
    return item;
}

// By the action of the tree's menu, where that is enabled.
void tst_zoHPCUndoRandom::deleteChosen(const char* tree)
{
    const QList<QAction*> actions = m_dialog->findChild<QTreeWidget*>(QLatin1String(tree))->actions();
    for (QAction* const action : actions) {
        if (action->text() == QLatin1String("Delete"))
            action->trigger();
    }
}

// As a person changes what the editor shows.
void tst_zoHPCUndoRandom::changeField()
{
    auto* const pages =
        m_window->getEditor()->findChild<QStackedWidget*>(QStringLiteral("m_stackedEditPanel"));
    QList<QWidget*> fields;
    const QList<QWidget*> all =
        pages->currentWidget()->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^m_")));
    for (QWidget* const field : all) {
        if (qobject_cast<QComboBox*>(field) || qobject_cast<QCheckBox*>(field) ||
            qobject_cast<QSpinBox*>(field) || qobject_cast<QLineEdit*>(field))
            fields << field;
    }
    QWidget* const field = fields.value(random(std::max<int>(1, fields.size())));
    if (auto* combo = qobject_cast<QComboBox*>(field))
        combo->setCurrentIndex(random(combo->count()));
    else if (auto* box = qobject_cast<QCheckBox*>(field))
        box->click();
    else if (auto* number = qobject_cast<QSpinBox*>(field))
        number->setValue(1 + random(65535));
    else if (auto* line = qobject_cast<QLineEdit*>(field))
        line->setText(name());
}

// As a panel does: a value of the kind that is there.
void tst_zoHPCUndoRandom::changeColumn(QTreeWidget* tree, int columns)
{
    QTreeWidgetItem* const row = randomRow(tree);
    if (!row)
        return;
    const int column = 2 + random(columns - 2);
    const QVariant value = row->data(column, Qt::EditRole);
    switch (int(value.type())) {
    case QVariant::Double:
        row->setData(column, Qt::EditRole, double(random(400)) - 100.5);
        break;
    case QVariant::Int:
        row->setData(column, Qt::EditRole, 1 + random(4));
        break;
    case QVariant::Bool:
        row->setData(column, Qt::EditRole, !value.toBool());
        break;
    default:
        break;
    }
}

ZO_TEST_MAIN(tst_zoHPCUndoRandom)
#include "tst_zoHPCUndoRandom.moc"
