#include "zoHPCWindowTest.h"

#include <zoHPC.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCHistory.h>
#include <zoHPCOption.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCUndo.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDynamicPropertyChangeEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QTreeWidget>

// Undo and redo in the cluster window and its display setup, as a person and as a host use them.
class tst_zoHPCUndo final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void freshWindowHasNoSteps();
    void removedNodeComesBack();
    void eachEditIsAStep();
    void keysOfTheWindow();
    void typedNameIsOneStep();
    void keysOfAFieldUndoItsTyping();
    void valueThatIsChosenIsAStep();
    void fieldThatIsLeftBeginsAnother();
    void rowsOfAValueStay();
    void placeComesBack();
    void markFollowsUndo();
    void stepsBeginAnew_data();
    void stepsBeginAnew();
    void configurationThatComesAgainKeepsTheSteps();
    void valueReplacedByShowingIsNoStep();
    void hostHearsOfSteps();
    void menusAndBarsStayAsTheyWere();

    void dialogHasStepsOfItsOwn();
    void dialogShowsWhatItsButtonsDo();
    void dialogIsOneStepOfTheWindow();
    void dialogWithoutChangesIsNoStep_data();
    void dialogWithoutChangesIsNoStep();
    void cancelAfterUndoBringsBackTheBeginning();
    void fieldOfTheDialogIsOneStep();
    void placeInTheDialogComesBack();
    void fixOfTheHostTreeIsUndone();

    void sessionGetsOneDocument_data();
    void sessionGetsOneDocument();
    void rowsWaitForTheEndOfTheSession();

private:
    QTreeWidget* hostTree() const { return m_window->getTree()->master()->treeWidget(); }
    template <class Widget>
    Widget* inDialog(const char* name) const
    {
        return m_window->getDisplayEditor()->findChild<Widget*>(QLatin1String(name));
    }
    QString undoStep() const { return m_window->property("undoStep").toString(); }
    QString redoStep() const { return m_window->property("redoStep").toString(); }
    void showWindow();
    void settle() const;
    void select(const char* name);
    void openDialog();
    void wall();
};

namespace
{
const char* const s_wall =
    "<cluster version=\"1\"><master><network><node name=\"a\"/><node name=\"b\"/></network></master>"
    "<projection name=\"Wall\" type=\"powerwall\" rows=\"2\" columns=\"2\"/>"
    "<display user=\"1\"><window node=\"a\"><viewport projection=\"Wall 1:1\"/></window>"
    "<window node=\"b\"><viewport projection=\"Wall 1:2\"/></window></display></cluster>";
}

void tst_zoHPCUndo::showWindow()
{
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    settle();
}

// Until what was done is a step.
void tst_zoHPCUndo::settle() const
{
    QCoreApplication::processEvents();
    m_window->undoSteps()->commit();
    QCoreApplication::processEvents();
}

void tst_zoHPCUndo::select(const char* name)
{
    for (zoHPCTreeItem* node : m_window->getTree()->getNodeItems()) {
        if (node->hostName() == QLatin1String(name)) {
            m_window->getTree()->setSelectedItem(node);
            settle();
            return;
        }
    }
    QFAIL(name);
}

void tst_zoHPCUndo::openDialog()
{
    m_window->displaySetup();
    QApplication::setActiveWindow(m_window->getDisplayEditor());
    QVERIFY(QTest::qWaitForWindowActive(m_window->getDisplayEditor()));
    settle();
}

void tst_zoHPCUndo::wall()
{
    m_window->replaceConfigString(s_wall);
    showWindow();
}

void tst_zoHPCUndo::freshWindowHasNoSteps()
{
    showWindow();

    QVERIFY(undoStep().isEmpty());
    QVERIFY(redoStep().isEmpty());
    const QString text = m_window->documentText();
    m_window->undo();
    m_window->redo();
    QCOMPARE(m_window->documentText(), text);
}

void tst_zoHPCUndo::removedNodeComesBack()
{
    m_window->replaceConfigString(s_document);
    showWindow();
    const QString before = m_window->documentText();
    select("b");

    m_window->getTree()->removeItem();
    settle();
    const QString after = m_window->documentText();
    QVERIFY(after != before);
    QCOMPARE(undoStep(), QStringLiteral("Delete compute node b"));
    m_window->undo();

    QCOMPARE(m_window->documentText(), before);
    QCOMPARE(m_window->getTree()->selectedItem()->hostName(), QStringLiteral("b"));
    QVERIFY(undoStep().isEmpty());
    QCOMPARE(redoStep(), QStringLiteral("Delete compute node b"));
    m_window->redo();
    QCOMPARE(m_window->documentText(), after);
    QVERIFY(m_window->getTree()->selectedItem()->hostName() != QStringLiteral("b"));
}

void tst_zoHPCUndo::eachEditIsAStep()
{
    showWindow();
    m_window->getTree()->addHost();
    settle();
    m_window->getTree()->addHost();
    settle();
    m_window->getTree()->addNetwork();
    settle();

    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 3);
    QCOMPARE(undoStep(), QStringLiteral("Add network"));
    m_window->undo();
    QCOMPARE(undoStep(), QStringLiteral("Add compute node localhost"));
    // What follows takes the place of what was undone.
    m_window->getTree()->removeItem();
    settle();
    QVERIFY(redoStep().isEmpty());
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 3);
}

void tst_zoHPCUndo::keysOfTheWindow()
{
    showWindow();
    const QString before = m_window->documentText();
    hostTree()->setFocus();
    m_window->getTree()->addHost();
    settle();
    const QString after = m_window->documentText();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(m_window->documentText(), before);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(m_window->documentText(), after);
}

void tst_zoHPCUndo::typedNameIsOneStep()
{
    m_window->replaceConfigString(s_document);
    showWindow();
    select("b");
    const QString before = m_window->documentText();
    auto* name = m_window->getEditor()->findChild<QLineEdit*>("m_hostName");
    name->setFocus();

    // Each key has its time.
    for (const char key : {'g', 'p', 'u'}) {
        QTest::keyClick(name, key);
        settle();
    }

    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
    QCOMPARE(undoStep(), QStringLiteral("Change \"Name\" of compute node bgpu"));
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
    QCOMPARE(name->text(), QStringLiteral("b"));
    m_window->redo();
    QCOMPARE(name->text(), QStringLiteral("bgpu"));
}

void tst_zoHPCUndo::keysOfAFieldUndoItsTyping()
{
    m_window->replaceConfigString(s_document);
    showWindow();
    select("b");
    const QString before = m_window->documentText();
    auto* name = m_window->getEditor()->findChild<QLineEdit*>("m_hostName");
    name->setFocus();

    QTest::keyClicks(name, "xyz");
    QCOMPARE(name->text(), QStringLiteral("bxyz"));
    // At once: nobody waited for a step.
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(name->text(), QStringLiteral("b"));
    QCOMPARE(m_window->documentText(), before);
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(name->text(), QStringLiteral("bxyz"));
    // What is typed then is another step.
    QTest::keyClick(name, '1');
    settle();
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 2);
}

void tst_zoHPCUndo::valueThatIsChosenIsAStep()
{
    showWindow();
    auto* compression = m_window->getEditor()->findChild<QComboBox*>("m_imageCompression");
    compression->setFocus();

    compression->setCurrentIndex(1);
    settle();
    compression->setCurrentIndex(2);
    settle();

    QCOMPARE(undoStep(), QStringLiteral("Change \"Image compression\" of options"));
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 2);
    m_window->undo();
    QCOMPARE(compression->currentIndex(), 1);
    m_window->undo();
    QCOMPARE(compression->currentIndex(), 0);
}

void tst_zoHPCUndo::fieldThatIsLeftBeginsAnother()
{
    m_window->replaceConfigString(s_document);
    showWindow();
    select("b");
    auto* name = m_window->getEditor()->findChild<QLineEdit*>("m_hostName");
    name->setFocus();
    QTest::keyClick(name, '1');
    hostTree()->setFocus();
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1); // without waiting
    name->setFocus();
    name->deselect();
    name->end(false);
    QTest::keyClick(name, '2');
    settle();

    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 2);
    m_window->undo();
    QCOMPARE(name->text(), QStringLiteral("b1"));
}

void tst_zoHPCUndo::rowsOfAValueStay()
{
    m_window->replaceConfigString(s_document);
    showWindow();
    select("b");
    zoHPCTreeItem* const node = m_window->getTree()->selectedItem();
    node->setIsEnabled(false);
    settle();

    m_window->undo();

    QVERIFY(m_window->getTree()->selectedItem() == node);
    QVERIFY(node->isEnabled());
}

void tst_zoHPCUndo::placeComesBack()
{
    QString text = QStringLiteral("<cluster version=\"1\"><master>");
    for (int network = 0; network < 4; ++network) {
        text += QStringLiteral("<network>");
        for (int node = 0; node < 60; ++node)
            text += QStringLiteral("<node name=\"n%1-%2\"/>").arg(network).arg(node);
        text += QStringLiteral("</network>");
    }
    m_window->replaceConfigString(text + QStringLiteral("</master></cluster>"));
    showWindow();
    QTreeWidgetItem* const master = m_window->getTree()->master();
    hostTree()->collapseItem(master->child(1));
    select("n2-30");
    hostTree()->verticalScrollBar()->setValue(70);
    settle();

    m_window->getTree()->removeItem();
    settle();
    hostTree()->expandItem(master->child(1));
    hostTree()->collapseItem(master->child(0));
    hostTree()->verticalScrollBar()->setValue(3);
    m_window->getTree()->setSelectedItem(m_window->getTree()->master());
    settle();
    m_window->undo();

    QCOMPARE(m_window->getTree()->selectedItem()->hostName(), QStringLiteral("n2-30"));
    QVERIFY(master->child(0)->isExpanded());
    QVERIFY(!master->child(1)->isExpanded());
    QCOMPARE(hostTree()->verticalScrollBar()->value(), 70);
}

void tst_zoHPCUndo::markFollowsUndo()
{
    showWindow();
    m_window->getTree()->addHost();
    settle();
    m_window->saveConfig(path("saved.zhpc"));
    m_window->getTree()->addHost();
    settle();
    QVERIFY(m_window->differs());
    QTRY_VERIFY(m_window->isWindowModified());

    m_window->undo();
    QVERIFY(!m_window->differs());
    QTRY_VERIFY(!m_window->isWindowModified());
    // Saving is no end: further back is unsaved again, and forth is not.
    m_window->undo();
    QVERIFY(m_window->differs());
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->redo();
    QTRY_VERIFY(!m_window->isWindowModified());
}

void tst_zoHPCUndo::stepsBeginAnew_data()
{
    QTest::addColumn<QString>("way");

    QTest::newRow("new") << "new";
    QTest::newRow("load") << "load";
    QTest::newRow("service") << "service";
}

void tst_zoHPCUndo::stepsBeginAnew()
{
    QFETCH(QString, way);
    showWindow();
    write(path("other.zhpc"), s_wall);
    m_window->getTree()->addHost();
    settle();
    QVERIFY(!undoStep().isEmpty());

    if (way == QLatin1String("new"))
        m_window->setDefaultConfig();
    else if (way == QLatin1String("load"))
        m_window->loadConfig(path("other.zhpc"));
    else
        m_window->replaceConfigString(s_wall);
    settle();

    QVERIFY(undoStep().isEmpty());
    const QString text = m_window->documentText();
    m_window->undo();
    QCOMPARE(m_window->documentText(), text);
}

void tst_zoHPCUndo::configurationThatComesAgainKeepsTheSteps()
{
    showWindow();
    m_window->getTree()->addHost();
    settle();
    const QString step = undoStep();

    m_window->replaceConfigString(m_window->documentText());
    settle();

    QCOMPARE(undoStep(), step);
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
}

void tst_zoHPCUndo::valueReplacedByShowingIsNoStep()
{
    m_window->replaceConfigString(
        "<cluster version=\"1\"><master><network speed=\"odd\"><node name=\"a\"/></network>"
        "</master></cluster>");
    showWindow();
    select("a");
    m_window->getTree()->selectedItem()->setIsEnabled(false);
    settle();

    m_window->getTree()->setSelectedItem(m_window->getTree()->findNetworkByIndex(1));
    settle();
    QVERIFY(!m_window->documentText().contains(QLatin1String("odd")));

    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
    m_window->undo();
    QVERIFY(m_window->getTree()->getNodeItems().front()->isEnabled());
    QVERIFY(!redoStep().isEmpty());
    m_window->redo();
    QVERIFY(!m_window->getTree()->getNodeItems().front()->isEnabled());
}

void tst_zoHPCUndo::hostHearsOfSteps()
{
    class Ear final : public QObject
    {
    public:
        QByteArrayList names;

    protected:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::DynamicPropertyChange)
                names << static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
            return false;
        }
    } ear;
    showWindow();
    m_window->installEventFilter(&ear);

    m_window->getTree()->addHost();
    settle();
    QCOMPARE(ear.names, (QByteArrayList{"undoStep", "revision"}));
    ear.names.clear();
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "undo"));

    QCOMPARE(ear.names, (QByteArrayList{"undoStep", "redoStep", "revision"}));
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "redo"));
    QVERIFY(!undoStep().isEmpty());
}

void tst_zoHPCUndo::menusAndBarsStayAsTheyWere()
{
    QStringList texts;
    const QList<QAction*> menus = m_window->menuBar()->actions();
    for (const QAction* menu : menus) {
        for (const QAction* action : menu->menu()->actions())
            texts << action->text();
    }
    const QList<QToolBar*> bars = m_window->findChildren<QToolBar*>();
    for (const QToolBar* bar : bars) {
        for (const QAction* action : bar->actions())
            texts << action->text();
    }

    QVERIFY(texts.size() > 15);
    for (const QString& text : qAsConst(texts))
        QVERIFY2(!text.contains(QLatin1String("ndo")), qPrintable(text));
}

void tst_zoHPCUndo::dialogHasStepsOfItsOwn()
{
    wall();
    m_window->getTree()->addHost();
    settle();
    openDialog();
    auto* undo = inDialog<QPushButton>("m_undoButton");
    auto* redo = inDialog<QPushButton>("m_redoButton");
    auto* projections = inDialog<QTreeWidget>("m_projectionTree");
    const QString before = m_window->documentText();
    // The host's menu has nothing to do with what is above it.
    QVERIFY(undoStep().isEmpty());
    QVERIFY(!undo->isEnabled());
    QVERIFY(!redo->isEnabled());

    projections->setCurrentItem(projections->topLevelItem(0));
    projections->setFocus();
    settle();
    QTest::keyClick(projections, Qt::Key_Delete);
    settle();
    QCOMPARE(projections->topLevelItemCount(), 0);
    QVERIFY(undo->isEnabled());

    QTest::mouseClick(undo, Qt::LeftButton);
    QCOMPARE(m_window->documentText(), before);
    QVERIFY(projections->currentItem() == projections->topLevelItem(0));
    QVERIFY(projections->topLevelItem(0)->isSelected());
    QVERIFY(!undo->isEnabled());
    QTest::mouseClick(redo, Qt::LeftButton);
    QCOMPARE(projections->topLevelItemCount(), 0);
    projections->setFocus();
    QTest::keyClick(projections, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(m_window->documentText(), before);
    QTest::keyClick(projections, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(projections->topLevelItemCount(), 0);
    // By name nothing happens behind the dialog.
    m_window->undo();
    QCOMPARE(projections->topLevelItemCount(), 0);
}

void tst_zoHPCUndo::dialogShowsWhatItsButtonsDo()
{
    wall();
    openDialog();
    auto* projections = inDialog<QTreeWidget>("m_projectionTree");
    projections->setCurrentItem(projections->topLevelItem(0));
    settle();
    m_window->getDisplayEditor()->deleteItem();
    settle();

    const QString tip = inDialog<QPushButton>("m_undoButton")->toolTip();
    QCOMPARE(tip, QStringLiteral("Delete projection Wall (Ctrl+Z)"));
}

void tst_zoHPCUndo::dialogIsOneStepOfTheWindow()
{
    wall();
    const QString before = m_window->documentText();
    openDialog();
    m_window->getDisplayEditor()->addProjection();
    settle();
    m_window->getDisplayEditor()->addDisplay();
    settle();
    m_window->getDisplayEditor()->apply();
    m_window->getDisplayEditor()->addProjection();
    settle();

    m_window->getDisplayEditor()->accept();
    settle();

    const QString after = m_window->documentText();
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
    QCOMPARE(undoStep(), QStringLiteral("Change display setup"));
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
    m_window->redo();
    QCOMPARE(m_window->documentText(), after);
    // Each opening begins anew.
    openDialog();
    QVERIFY(!inDialog<QPushButton>("m_undoButton")->isEnabled());
}

void tst_zoHPCUndo::dialogWithoutChangesIsNoStep_data()
{
    QTest::addColumn<bool>("isAccepted");
    QTest::addColumn<bool>("isApplied");

    QTest::newRow("ok") << true << false;
    QTest::newRow("cancel") << false << false;
    QTest::newRow("apply-and-cancel") << false << true;
}

void tst_zoHPCUndo::dialogWithoutChangesIsNoStep()
{
    QFETCH(bool, isAccepted);
    QFETCH(bool, isApplied);
    wall();
    m_window->getTree()->addHost();
    settle();
    const QString before = m_window->documentText();
    openDialog();
    m_window->getDisplayEditor()->addProjection();
    settle();
    if (isApplied)
        m_window->getDisplayEditor()->apply();
    if (isAccepted)
        inDialog<QPushButton>("m_undoButton")->click();

    isAccepted ? m_window->getDisplayEditor()->accept() : m_window->getDisplayEditor()->reject();
    settle();

    QCOMPARE(m_window->documentText(), before);
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
}

void tst_zoHPCUndo::cancelAfterUndoBringsBackTheBeginning()
{
    wall();
    const QString before = m_window->documentText();
    openDialog();
    m_window->getDisplayEditor()->addProjection();
    settle();
    m_window->getDisplayEditor()->addDisplay();
    settle();
    inDialog<QPushButton>("m_undoButton")->click();

    m_window->getDisplayEditor()->reject();

    QCOMPARE(m_window->documentText(), before);
}

void tst_zoHPCUndo::fieldOfTheDialogIsOneStep()
{
    wall();
    openDialog();
    auto* projections = inDialog<QTreeWidget>("m_projectionTree");
    projections->setCurrentItem(projections->topLevelItem(0));
    settle();
    const QString before = m_window->documentText();
    auto* name = inDialog<QLineEdit>("m_name");
    QVERIFY(name);
    name->setFocus();
    name->end(false);

    for (const char key : {'e', 'd'}) {
        QTest::keyClick(name, key);
        settle();
    }
    QCOMPARE(int(m_window->undoSteps()->steps().stepCount()), 1);
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(m_window->documentText(), before);
    QCOMPARE(name->text(), QStringLiteral("Wall"));
}

void tst_zoHPCUndo::placeInTheDialogComesBack()
{
    wall();
    openDialog();
    auto* outputs = inDialog<QTreeWidget>("m_displayTree");
    auto* projections = inDialog<QTreeWidget>("m_projectionTree");
    projections->expandItem(projections->topLevelItem(0));
    outputs->collapseItem(outputs->topLevelItem(0)->child(0));
    outputs->setCurrentItem(outputs->topLevelItem(0)->child(1));
    settle();

    m_window->getDisplayEditor()->deleteItem();
    settle();
    projections->collapseAll();
    outputs->expandAll();
    settle();
    inDialog<QPushButton>("m_undoButton")->click();

    QVERIFY(outputs->currentItem() == outputs->topLevelItem(0)->child(1));
    QVERIFY(outputs->currentItem()->isSelected());
    QVERIFY(projections->topLevelItem(0)->isExpanded());
    QVERIFY(outputs->topLevelItem(0)->isExpanded());
    QVERIFY(!outputs->topLevelItem(0)->child(0)->isExpanded());
    // Delete means the row that came back.
    m_window->getDisplayEditor()->deleteItem();
    QCOMPARE(outputs->topLevelItem(0)->childCount(), 1);
}

void tst_zoHPCUndo::fixOfTheHostTreeIsUndone()
{
    wall();
    openDialog();
    zoHPCTreeItem* const node = m_window->getTree()->getNodeItems().front();
    node->setIsEnabled(false);
    settle();

    inDialog<QPushButton>("m_undoButton")->click();

    QVERIFY(m_window->getTree()->getNodeItems().front() == node);
    QVERIFY(node->isEnabled());
    inDialog<QPushButton>("m_redoButton")->click();
    QVERIFY(!node->isEnabled());
}

void tst_zoHPCUndo::sessionGetsOneDocument_data()
{
    QTest::addColumn<QString>("what");

    QTest::newRow("option-that-is-sent") << "option";
    QTest::newRow("name-that-is-not-sent") << "name";
    QTest::newRow("display-setup") << "display";
}

void tst_zoHPCUndo::sessionGetsOneDocument()
{
    QFETCH(QString, what);
    m_host->cluster.config = QLatin1String(s_wall);
    m_host->cluster.running = true;
    m_window.reset();
    const auto module = std::make_unique<zoHPC>();
    auto* const window = qobject_cast<zoHPCGUIW*>(m_host->modules.constFirst().window);
    window->undoSteps()->commit();
    const QString before = window->documentText();
    if (what == QLatin1String("option")) {
        window->getEditor()->findChild<QComboBox*>("m_imageCompression")->setCurrentIndex(2);
    } else if (what == QLatin1String("name")) {
        window->getTree()->getNodeItems().front()->setHostName("renamed");
    } else {
        window->displaySetup();
        window->getDisplayEditor()->setEyeSeparation(70);
        window->getDisplayEditor()->accept();
    }
    window->undoSteps()->commit();
    QVERIFY(window->documentText() != before);
    m_host->cluster.documents.clear();

    window->undo();
    QCoreApplication::processEvents();
    QCOMPARE(m_host->cluster.documents, QStringList{before});
    m_host->cluster.documents.clear();
    window->redo();
    QCoreApplication::processEvents();
    QCOMPARE(m_host->cluster.documents, QStringList{window->documentText()});
    QVERIFY(window->documentText() != before);
}

void tst_zoHPCUndo::rowsWaitForTheEndOfTheSession()
{
    showWindow();
    const QString before = m_window->documentText();
    m_window->getTree()->addHost();
    settle();
    const QString after = m_window->documentText();

    m_window->setIsRunning(true, {});
    QVERIFY(undoStep().isEmpty());
    m_window->undo();
    QCOMPARE(m_window->documentText(), after);
    // Values can be changed and undone.
    m_window->getTree()->getNodeItems().front()->setIsEnabled(false);
    settle();
    QVERIFY(!undoStep().isEmpty());
    m_window->undo();
    QCOMPARE(m_window->documentText(), after);
    m_window->setIsRunning(false, {});
    QCOMPARE(undoStep(), QStringLiteral("Add compute node localhost"));
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
}

ZO_TEST_MAIN(tst_zoHPCUndo)
#include "tst_zoHPCUndo.moc"
