#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCLayoutPane.h>
#include <zoHPCProblemsView.h>
#include <zoHPCRoomView.h>
#include <zoHPCScreensView.h>

#include <QApplication>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeView>

#include <algorithm>
#include <memory>

// The layout preview in the display-setup dialog.
class tst_zoHPCDisplayPreview final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void previewShowsTheSetup();
    void clickInThePictureSelectsTheRow();
    void selectedRowIsHighlighted();
    void changedFieldIsShown();
    void dragChangesTheFields();
    void dragIsNotAppliedBeforeTheDialogIs();
    void cancelBringsThePictureBack();
    void lostNodeIsAProblem();
    void fixChangesTheHostTree();
    void cancelTakesFixesOfTheHostTreeBack();
    void cancelTakesBackWhatALaterFixChangedAgain();
    void okKeepsFixesOfTheHostTree();
    void cancelLeavesHostsThatWereReplaced();
    void problemOfAHostSelectsItInItsTree();
    void deletedRowLeavesThePicture();
    void dialogMayOutliveTheHostTree();

private:
    void load(const char* file);
    void fixProblem(zoHPCProblem::Kind kind, const QString& about);
    zoHPCLayoutPane* pane() const { return m_dialog->findChild<zoHPCLayoutPane*>(); }
    QTreeWidget* tree(const char* name) const
    {
        return m_dialog->findChild<QTreeWidget*>(QLatin1String(name));
    }

    std::unique_ptr<zoHPCTreeGUIW> m_hosts;
    std::unique_ptr<zoHPCDisplayGUII> m_dialog;
};

void tst_zoHPCDisplayPreview::init()
{
    m_hosts = std::make_unique<zoHPCTreeGUIW>();
    m_dialog = std::make_unique<zoHPCDisplayGUII>();
    m_dialog->setHostTree(m_hosts.get());
    load("powerwall-2x2");
    m_dialog->open(m_hosts->getNodeNames());
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
}

void tst_zoHPCDisplayPreview::cleanup()
{
    m_dialog.reset();
    m_hosts.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCDisplayPreview::load(const char* file)
{
    QFile source(QStringLiteral(ZO_DATA_DIR "/cluster/%1.zhpc").arg(QLatin1String(file)));
    QVERIFY(source.open(QIODevice::ReadOnly));
    QDomDocument document;
    QVERIFY(zoHPCDocumentText::parse(QString::fromUtf8(source.readAll()), document));
    m_hosts->loadFromXML(document);
    m_dialog->loadFromXML(document);
}

// By its button's key; the pane must be up to date.
void tst_zoHPCDisplayPreview::fixProblem(zoHPCProblem::Kind kind, const QString& about)
{
    const std::vector<zoHPCProblem>& problems = pane()->problemsView()->problems();
    const auto problem = std::find_if(problems.begin(), problems.end(), [&](const zoHPCProblem& candidate) {
        return candidate.kind == kind && candidate.message.contains(about);
    });
    QVERIFY(problem != problems.end());
    QTreeView* const list = pane()->problemsView()->findChild<QTreeView*>();
    list->setCurrentIndex(list->model()->index(static_cast<int>(problem - problems.begin()), 0));
    QTest::keyClick(list, Qt::Key_Space);
}

void tst_zoHPCDisplayPreview::previewShowsTheSetup()
{
    QVERIFY(pane()->isVisible());
    QTRY_COMPARE(pane()->roomView()->picture().walls().size(), size_t(1));
    QCOMPARE(pane()->screensView()->picture().nodes().size(), size_t(4));
    QCOMPARE(pane()->problemCount(), 0);
}

void tst_zoHPCDisplayPreview::clickInThePictureSelectsTheRow()
{
    pane()->refresh();
    zoHPCRoomView* const room = pane()->roomView();
    const zoHPCRoomCamera& camera = room->picture().camera();

    QTest::mouseClick(room, Qt::LeftButton, Qt::NoModifier,
                      camera.toPicture(camera.see({-900.0, 500.0, -2500.0}), room->rect()).toPoint());
    QCOMPARE(tree("m_projectionTree")->currentItem(), tree("m_projectionTree")->topLevelItem(0)->child(0));

    pane()->findChild<QTabWidget*>()->setCurrentIndex(1);
    zoHPCScreensView* const screens = pane()->screensView();
    auto* const window = dynamic_cast<zoHPCWindowItem*>(tree("m_displayTree")->topLevelItem(0)->child(2));
    QTest::mouseClick(screens, Qt::LeftButton, Qt::NoModifier,
                      screens->picture().placeOf(window).center().toPoint());
    QCOMPARE(tree("m_displayTree")->currentItem(), window->child(0));
    QVERIFY(tree("m_projectionTree")->selectedItems().isEmpty());
}

void tst_zoHPCDisplayPreview::selectedRowIsHighlighted()
{
    pane()->refresh();
    const QImage before = pane()->roomView()->grab().toImage();

    tree("m_projectionTree")->setCurrentItem(tree("m_projectionTree")->topLevelItem(0)->child(1));
    const QImage tile = pane()->roomView()->grab().toImage();
    tree("m_displayTree")->setCurrentItem(tree("m_displayTree")->topLevelItem(0)->child(2));
    const QImage window = pane()->roomView()->grab().toImage();

    QVERIFY(tile != before);
    QVERIFY(window != before);
    QVERIFY(window != tile);
}

void tst_zoHPCDisplayPreview::changedFieldIsShown()
{
    tree("m_projectionTree")->setCurrentItem(tree("m_projectionTree")->topLevelItem(0));

    m_dialog->findChild<QSpinBox*>(QStringLiteral("m_columns"))->setValue(3);

    QTRY_VERIFY(!pane()->roomView()->picture().walls().empty() &&
                pane()->roomView()->picture().walls()[0].columns == 3);
    // Two tiles more than there are windows.
    QCOMPARE(pane()->problemCount(), 2);
}

void tst_zoHPCDisplayPreview::dragChangesTheFields()
{
    auto* const window = dynamic_cast<zoHPCWindowItem*>(tree("m_displayTree")->topLevelItem(0)->child(0));
    window->setBool(zoHPCWindowItem::FullScreen, false);
    tree("m_displayTree")->setCurrentItem(window);
    pane()->findChild<QTabWidget*>()->setCurrentIndex(1);
    pane()->refresh();
    zoHPCScreensView* const view = pane()->screensView();
    const QPoint start = view->picture().placeOf(window).center().toPoint();

    QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(40, 10), view->mapToGlobal(start + QPoint(40, 10)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view, &move);
    QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, start + QPoint(40, 10));

    QVERIFY(window->getInt(zoHPCWindowItem::X) > 0);
    QCOMPARE(m_dialog->findChild<QSpinBox*>(QStringLiteral("m_windowX"))->value(),
             window->getInt(zoHPCWindowItem::X));
    QCOMPARE(m_dialog->findChild<QSpinBox*>(QStringLiteral("m_windowY"))->value(),
             window->getInt(zoHPCWindowItem::Y));
}

void tst_zoHPCDisplayPreview::dragIsNotAppliedBeforeTheDialogIs()
{
    QSignalSpy changed(m_dialog.get(), &zoHPCDisplayGUII::displayChanged);

    dragChangesTheFields();
    QCOMPARE(changed.size(), 0);
    m_dialog->apply();

    QCOMPARE(changed.size(), 1);
}

void tst_zoHPCDisplayPreview::cancelBringsThePictureBack()
{
    tree("m_projectionTree")->setCurrentItem(tree("m_projectionTree")->topLevelItem(0));
    m_dialog->findChild<QSpinBox*>(QStringLiteral("m_columns"))->setValue(3);

    m_dialog->reject();
    m_dialog->open(m_hosts->getNodeNames());

    QTRY_VERIFY(!pane()->roomView()->picture().walls().empty());
    QCOMPARE(pane()->roomView()->picture().walls()[0].columns, 2);
}

void tst_zoHPCDisplayPreview::lostNodeIsAProblem()
{
    m_dialog->reject();
    m_dialog->open({QStringLiteral("wall-r1-c1")});

    // Three windows lost their nodes without a word of their tree.
    QTRY_COMPARE(pane()->problemCount(), 3);
}

void tst_zoHPCDisplayPreview::fixChangesTheHostTree()
{
    QSignalSpy hosts(m_hosts.get(), &zoHPCTreeGUIW::hostsChanged);
    zoHPCTreeItem* const node = m_hosts->getNodeItems()[1];
    node->setIsEnabled(false);
    QTRY_COMPARE(pane()->problemCount(), 1);
    QTreeView* const list = pane()->problemsView()->findChild<QTreeView*>();

    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Space);

    QVERIFY(node->isEnabled());
    QCOMPARE(hosts.size(), 1);
}

void tst_zoHPCDisplayPreview::cancelTakesFixesOfTheHostTreeBack()
{
    zoHPCTreeItem* const network = m_hosts->findNetworkByIndex(1);
    zoHPCTreeItem* const node = m_hosts->getNodeItems()[1];
    zoHPCTreeItem* const other = m_hosts->getNodeItems()[2];
    node->setIsEnabled(false);
    network->setIsEnabled(false);
    other->setOption(QStringLiteral("note"), QStringLiteral("kept"));
    pane()->refresh();
    fixProblem(zoHPCProblem::Kind::WindowWithDisabledNode, node->hostName());
    QVERIFY(node->isEnabled());
    QVERIFY(network->isEnabled());
    QSignalSpy hosts(m_hosts.get(), &zoHPCTreeGUIW::hostsChanged);
    QSignalSpy displays(m_dialog.get(), &zoHPCDisplayGUII::displayChanged);

    m_dialog->apply();
    m_dialog->reject();

    QVERIFY(!node->isEnabled());
    QVERIFY(!network->isEnabled());
    QVERIFY(other->isEnabled());
    QCOMPARE(other->getOption(QStringLiteral("note")), QStringLiteral("kept"));
    QCOMPARE(hosts.size(), 1);
    QCOMPARE(displays.size(), 1); // of Apply

    // Once.
    node->setIsEnabled(true);
    m_dialog->reject();
    QVERIFY(node->isEnabled());
}

void tst_zoHPCDisplayPreview::cancelTakesBackWhatALaterFixChangedAgain()
{
    zoHPCTreeItem* const node = m_hosts->getNodeItems()[1];
    for (int i = 0; i < 2; ++i) {
        node->setOption(zoHPCOption::Enabled, QStringLiteral("false"));
        pane()->refresh();
        fixProblem(zoHPCProblem::Kind::WindowWithDisabledNode, node->hostName());
        QVERIFY(node->isEnabled());
    }

    m_dialog->reject();

    QVERIFY(!node->isEnabled());
}

void tst_zoHPCDisplayPreview::okKeepsFixesOfTheHostTree()
{
    zoHPCTreeItem* const node = m_hosts->getNodeItems()[1];
    node->setIsEnabled(false);
    pane()->refresh();
    fixProblem(zoHPCProblem::Kind::WindowWithDisabledNode, node->hostName());

    m_dialog->accept();
    m_dialog->open(m_hosts->getNodeNames());
    m_dialog->reject();

    QVERIFY(node->isEnabled());
}

void tst_zoHPCDisplayPreview::cancelLeavesHostsThatWereReplaced()
{
    m_hosts->getNodeItems()[1]->setIsEnabled(false);
    pane()->refresh();
    fixProblem(zoHPCProblem::Kind::WindowWithDisabledNode, m_hosts->getNodeItems()[1]->hostName());

    // As when the cluster service brings another configuration while the dialog is open.
    load("powerwall-2x2");
    QSignalSpy hosts(m_hosts.get(), &zoHPCTreeGUIW::hostsChanged);
    m_dialog->reject();

    for (const zoHPCTreeItem* node : m_hosts->getNodeItems())
        QVERIFY(node->isEnabled());
    QCOMPARE(hosts.size(), 0);
}

void tst_zoHPCDisplayPreview::problemOfAHostSelectsItInItsTree()
{
    zoHPCTreeItem* const network = m_hosts->createNetwork(m_hosts->master(), -1);
    pane()->refresh();
    QCOMPARE(pane()->problemCount(), 1);
    QTreeView* const list = pane()->problemsView()->findChild<QTreeView*>();

    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualRect(list->model()->index(0, 0)).center());

    QCOMPARE(m_hosts->selectedItem(), network);
}

void tst_zoHPCDisplayPreview::deletedRowLeavesThePicture()
{
    pane()->refresh();
    tree("m_projectionTree")->setCurrentItem(tree("m_projectionTree")->topLevelItem(0));

    m_dialog->deleteItem();

    QVERIFY(pane()->roomView()->picture().walls().empty());
    QTRY_COMPARE(pane()->problemCount(), 4);
}

void tst_zoHPCDisplayPreview::dialogMayOutliveTheHostTree()
{
    m_hosts.reset();

    pane()->refresh();

    QCOMPARE(pane()->problemCount(), 4);
}

ZO_TEST_MAIN(tst_zoHPCDisplayPreview)

#include "tst_zoHPCDisplayPreview.moc"
