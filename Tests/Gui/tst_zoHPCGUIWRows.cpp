#include "zoHPCWindowTest.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCUndo.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTreeWidget>

// What a person does to several nodes and networks at once in the cluster window, and what windows call nodes then.
class tst_zoHPCGUIWRows final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void init();

    void boxChangesAllSelectedNodes();
    void mixedBoxIsTurnedOnByAClick();
    void otherKindsStayAsTheyAre();
    void networksAreEncryptedTogether();
    void networkValuesAreSetTogether();
    void nameIsThatOfOneAlone();
    void oneRowIsChangedAlone();
    void removalOfSeveralIsOneStep();
    void selectionComesBackWithUndo();
    void selectionThatComesBackIsActedUpon();
    void rowAfterRemovedOnesIsSelected_data();
    void rowAfterRemovedOnesIsSelected();
    void moveIsOneStep();
    void moveWaitsForTheEndOfTheSession();

    void renamedNodeKeepsItsWindows();
    void renameOverTheNameOfAnotherKeepsBoth();
    void renameIsOneStepWithItsWindows();
    void nameSetByAProgramLeavesTheWindows();
    void movedNodesOfOneNameKeepTheirWindows();

private:
    zoHPCTreeItem* node(const char* name) const;
    void select(std::initializer_list<const char*> names);
    template <class Widget>
    Widget* field(const char* name) const
    {
        return m_window->getEditor()->findChild<Widget*>(QLatin1String(name));
    }
    QStringList renderNodes() const;
    void type(const char* name, const QString& text);
    void settle() const;
    QString undoStep() const { return m_window->property("undoStep").toString(); }
    zoHPCTreeGUIW* tree() const { return m_window->getTree(); }
};

void tst_zoHPCGUIWRows::init()
{
    zoHPCWindowTest::init();
    m_window->replaceConfigString(QStringLiteral(
        "<cluster version=\"1\"><master><network><node name=\"a\"/><node name=\"b\"/>"
        "<node name=\"c\" enabled=\"false\"/></network><network><node name=\"d\"/></network></master>"
        "<display user=\"1\"><window node=\"a\"/><window node=\"b\"/><window node=\"a\"/></display>"
        "</cluster>"));
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    settle();
}

zoHPCTreeItem* tst_zoHPCGUIWRows::node(const char* name) const
{
    for (zoHPCTreeItem* node : tree()->getNodeItems()) {
        if (node->hostName() == QLatin1String(name))
            return node;
    }
    return nullptr;
}

void tst_zoHPCGUIWRows::select(std::initializer_list<const char*> names)
{
    tree()->setSelectedItem(node(*names.begin()));
    for (const char* name : names)
        node(name)->setSelected(true);
    settle();
}

QStringList tst_zoHPCGUIWRows::renderNodes() const
{
    QStringList names;
    for (const zoHPCWindowItem* window : m_window->getDisplayEditor()->getWindowItems()) {
        if (!window->renderNode().isEmpty())
            names << window->renderNode();
    }
    return names;
}

void tst_zoHPCGUIWRows::type(const char* name, const QString& text)
{
    tree()->setSelectedItem(node(name));
    auto* edit = field<QLineEdit>("m_hostName");
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void tst_zoHPCGUIWRows::settle() const
{
    QCoreApplication::processEvents();
    m_window->undoSteps()->commit();
    QCoreApplication::processEvents();
}

void tst_zoHPCGUIWRows::boxChangesAllSelectedNodes()
{
    select({"a", "b"});
    const QString before = m_window->documentText();
    const auto* note = field<QLabel>("m_selectionNote");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(),
             QStringLiteral("Changes apply to all 2 selected compute nodes; the name is that of a alone."));

    field<QCheckBox>("m_hostEnabled")->click();
    settle();

    QVERIFY(!node("a")->isEnabled());
    QVERIFY(!node("b")->isEnabled());
    QVERIFY(node("d")->isEnabled());
    QVERIFY(undoStep().contains(QStringLiteral("2 compute nodes")));
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
    QVERIFY(undoStep().isEmpty());

    select({"a", "d"});
    field<QCheckBox>("m_renderNode")->click();
    QVERIFY(!node("a")->isRenderNode());
    QVERIFY(!node("d")->isRenderNode());
    QVERIFY(node("b")->isRenderNode());
}

void tst_zoHPCGUIWRows::mixedBoxIsTurnedOnByAClick()
{
    select({"a", "c"});
    auto* box = field<QCheckBox>("m_hostEnabled");
    QCOMPARE(box->checkState(), Qt::PartiallyChecked);
    QVERIFY(node("a")->isEnabled()); // showing changes nothing
    QVERIFY(!node("c")->isEnabled());

    box->click();
    QCOMPARE(box->checkState(), Qt::Checked);
    QVERIFY(node("c")->isEnabled());

    box->click();
    QCOMPARE(box->checkState(), Qt::Unchecked);
    QVERIFY(!node("a")->isEnabled());
    QVERIFY(!node("c")->isEnabled());

    // And one row alone has but two states again.
    select({"d"});
    QVERIFY(!box->isTristate());
    QCOMPARE(box->checkState(), Qt::Checked);
}

void tst_zoHPCGUIWRows::otherKindsStayAsTheyAre()
{
    select({"a", "b"});
    tree()->findNetworkByIndex(2)->setSelected(true);
    tree()->master()->setSelected(true);

    field<QCheckBox>("m_hostEnabled")->click();

    QVERIFY(!node("b")->isEnabled());
    QVERIFY(tree()->findNetworkByIndex(2)->isEnabled());
    QVERIFY(tree()->master()->isEnabled());
}

void tst_zoHPCGUIWRows::networksAreEncryptedTogether()
{
    tree()->setSelectedItem(tree()->findNetworkByIndex(1));
    tree()->findNetworkByIndex(2)->setSelected(true);

    field<QCheckBox>("m_encrypted")->click();
    settle();

    QVERIFY(tree()->findNetworkByIndex(1)->isEncrypted());
    QVERIFY(tree()->findNetworkByIndex(2)->isEncrypted());
    QVERIFY2(undoStep().contains(QStringLiteral("2 networks")), qPrintable(undoStep()));
    m_window->undo();
    QVERIFY(!tree()->findNetworkByIndex(1)->isEncrypted());
    QVERIFY(!tree()->findNetworkByIndex(2)->isEncrypted());
}

void tst_zoHPCGUIWRows::networkValuesAreSetTogether()
{
    tree()->setSelectedItem(tree()->findNetworkByIndex(2));
    tree()->findNetworkByIndex(1)->setSelected(true);

    field<QComboBox>("m_networkSpeedSelection")->setCurrentIndex(3);
    field<QSpinBox>("m_servicePort")->setValue(9000);

    for (const int network : {1, 2}) {
        QCOMPARE(tree()->findNetworkByIndex(network)->getOption(QStringLiteral("speed")),
                 QStringLiteral("10g"));
        QCOMPARE(tree()->findNetworkByIndex(network)->getIntOption(zoHPCOption::ServicePort, 0), 9000);
    }
}

void tst_zoHPCGUIWRows::nameIsThatOfOneAlone()
{
    select({"a", "d"});
    auto* edit = field<QLineEdit>("m_hostName");
    edit->setFocus();

    QTest::keyClicks(edit, QStringLiteral("x"));

    QVERIFY(node("ax") != nullptr);
    QVERIFY(node("d") != nullptr);
    QVERIFY2(field<QLabel>("m_selectionNote")->text().contains(" ax "),
             qPrintable(field<QLabel>("m_selectionNote")->text()));
}

void tst_zoHPCGUIWRows::oneRowIsChangedAlone()
{
    select({"a", "b"});
    select({"d"});
    QVERIFY(!field<QLabel>("m_selectionNote")->isVisible());

    field<QCheckBox>("m_hostEnabled")->click();

    QVERIFY(!node("d")->isEnabled());
    QVERIFY(node("a")->isEnabled());
    QVERIFY(node("b")->isEnabled());
}

void tst_zoHPCGUIWRows::removalOfSeveralIsOneStep()
{
    const QString before = m_window->documentText();
    select({"b", "c", "d"});

    tree()->removeItem();
    settle();

    QCOMPARE(tree()->getNodeNames(), QStringList{QStringLiteral("a")});
    QCOMPARE(undoStep(), QStringLiteral("Delete 3 compute nodes"));
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
    QVERIFY(undoStep().isEmpty());
}

void tst_zoHPCGUIWRows::selectionComesBackWithUndo()
{
    select({"b", "c", "d"});
    tree()->removeItem();
    settle();
    QCOMPARE(tree()->selectedItems().size(), size_t(1));

    m_window->undo();

    QStringList selected;
    for (const zoHPCTreeItem* item : tree()->selectedItems())
        selected << item->hostName();
    QCOMPARE(selected, (QStringList{QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}));
    QCOMPARE(tree()->selectedItem(), node("b"));
}

void tst_zoHPCGUIWRows::selectionThatComesBackIsActedUpon()
{
    select({"a", "b", "d"});
    auto* const box = field<QCheckBox>("m_hostEnabled");
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    settle();
    QVERIFY(!node("a")->isEnabled() && !node("b")->isEnabled() && !node("d")->isEnabled());
    select({"c"});

    m_window->undo();
    QVERIFY(node("a")->isEnabled() && node("b")->isEnabled() && node("d")->isEnabled());
    QCOMPARE(tree()->selectedItems().size(), size_t(3));
    QVERIFY(field<QLabel>("m_selectionNote")->isVisible());
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    settle();

    QVERIFY(!node("a")->isEnabled() && !node("b")->isEnabled() && !node("d")->isEnabled());
}

void tst_zoHPCGUIWRows::rowAfterRemovedOnesIsSelected_data()
{
    QTest::addColumn<QStringList>("removed");

    QTest::newRow("one") << QStringList{QStringLiteral("b")};
    QTest::newRow("last-of-its-network") << QStringList{QStringLiteral("c")};
    QTest::newRow("several") << QStringList{QStringLiteral("a"), QStringLiteral("b")};
}

void tst_zoHPCGUIWRows::rowAfterRemovedOnesIsSelected()
{
    QFETCH(QStringList, removed);
    select({"a"});
    node("a")->setSelected(false);
    for (const QString& name : qAsConst(removed))
        node(qPrintable(name))->setSelected(true);
    auto* const rows = tree()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    rows->setCurrentItem(node(qPrintable(removed.last())), 0, QItemSelectionModel::NoUpdate);
    rows->setFocus();

    QTest::keyClick(rows, Qt::Key_Delete);

    QVERIFY(tree()->selectedItem() != nullptr);
    QCOMPARE(rows->selectedItems(), QList<QTreeWidgetItem*>{tree()->selectedItem()});
}

void tst_zoHPCGUIWRows::moveIsOneStep()
{
    const QString before = m_window->documentText();

    tree()->moveNodes({node("b")}, tree()->findNetworkByIndex(2), 0);
    settle();

    QCOMPARE(node("b")->getParent(), tree()->findNetworkByIndex(2));
    QCOMPARE(undoStep(), QStringLiteral("Move compute node b"));
    QVERIFY(node("b")->isDisplayNode());
    m_window->undo();
    QCOMPARE(m_window->documentText(), before);
    m_window->redo();
    QCOMPARE(node("b")->getParent(), tree()->findNetworkByIndex(2));
}

void tst_zoHPCGUIWRows::moveWaitsForTheEndOfTheSession()
{
    tree()->moveNodes({node("b")}, tree()->findNetworkByIndex(2), 0);
    settle();

    m_window->setIsRunning(true, QStringList());
    QVERIFY(undoStep().isEmpty());

    m_window->setIsRunning(false, QStringList());
    QVERIFY(!undoStep().isEmpty());
}

void tst_zoHPCGUIWRows::renamedNodeKeepsItsWindows()
{
    type("a", QStringLiteral("wall01"));

    QCOMPARE(renderNodes(),
             (QStringList{QStringLiteral("wall01"), QStringLiteral("b"), QStringLiteral("wall01")}));
    QVERIFY(node("wall01")->isDisplayNode());
}

void tst_zoHPCGUIWRows::renameOverTheNameOfAnotherKeepsBoth()
{
    type("a", QStringLiteral("b"));
    QCOMPARE(renderNodes(), (QStringList{QStringLiteral("b 1"), QStringLiteral("b"), QStringLiteral("b 1")}));

    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("2"));

    QCOMPARE(renderNodes(), (QStringList{QStringLiteral("b2"), QStringLiteral("b"), QStringLiteral("b2")}));
}

void tst_zoHPCGUIWRows::renameIsOneStepWithItsWindows()
{
    const QString before = m_window->documentText();
    type("a", QStringLiteral("wall01"));
    settle();

    QCOMPARE(undoStep(), QStringLiteral("Change \"Name\" of compute node wall01"));
    m_window->undo();

    QCOMPARE(m_window->documentText(), before);
    QVERIFY(undoStep().isEmpty());
    m_window->redo();
    QCOMPARE(renderNodes().first(), QStringLiteral("wall01"));
}

void tst_zoHPCGUIWRows::nameSetByAProgramLeavesTheWindows()
{
    tree()->setSelectedItem(node("a"));

    field<QLineEdit>("m_hostName")->setText(QStringLiteral("x"));

    QCOMPARE(renderNodes().first(), QStringLiteral("a"));
    QVERIFY(!node("x")->isDisplayNode());
}

void tst_zoHPCGUIWRows::movedNodesOfOneNameKeepTheirWindows()
{
    type("d", QStringLiteral("a")); // the second of its name
    tree()->setFocus();
    settle();
    for (zoHPCWindowItem* window : m_window->getDisplayEditor()->getWindowItems()) {
        if (window->renderNode() == QLatin1String("a"))
            window->setRenderNode(QStringLiteral("a 1"));
    }

    tree()->moveNodes({node("a")}, tree()->findNetworkByIndex(2), 1); // behind the other one

    QCOMPARE(renderNodes(), (QStringList{QStringLiteral("a 2"), QStringLiteral("b"), QStringLiteral("a 2")}));
}

ZO_TEST_MAIN(tst_zoHPCGUIWRows)
#include "tst_zoHPCGUIWRows.moc"
