#include "zoHPCWindowTest.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCLayoutPane.h>
#include <zoHPCRoomView.h>
#include <zoHPCScreensView.h>
#include <zoHPCUndo.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTreeWidget>

// What is selected in the display setup is what is shown, marked and acted upon.
class tst_zoHPCDisplaySelection final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void keysGoToTheTree_data();
    void keysGoToTheTree();
    void selectionThatComesBackIsActedUpon();
    void deletedWindowsComeBackSelected();
    void deletedProjectionsComeBackSelected();
    void oneRowThatIsNotTheCurrentOneComesBackSelected();
    void fieldsOfOneOfSeveralProjectionsSayWhose();
    void rowAfterDeletedOnesIsSelected_data();
    void rowAfterDeletedOnesIsSelected();
    void allSelectedWindowsAreMarkedInBothPictures();
    void dialogIsWithinTheScreen();

private:
    template <class Widget = QWidget>
    Widget* inDialog(const char* name) const
    {
        return m_window->getDisplayEditor()->findChild<Widget*>(QLatin1String(name));
    }
    QTreeWidget* projections() const { return inDialog<QTreeWidget>("m_projectionTree"); }
    QTreeWidget* outputs() const { return inDialog<QTreeWidget>("m_displayTree"); }
    QTreeWidgetItem* window(int row) const { return outputs()->topLevelItem(0)->child(row); }
    QString page() const { return inDialog<QStackedWidget>("m_panels")->currentWidget()->objectName(); }
    QList<int> selectedWindows() const;
    void load(const char* projections);
    void select(std::initializer_list<QTreeWidgetItem*> rows);
    void settle() const;
};

namespace
{
const char* const s_wall =
    "<projection name=\"Wall\" type=\"powerwall\" rows=\"2\" columns=\"2\" width=\"4000\" "
    "height=\"2000\" distance=\"2000\"/>";
const char* const s_planes =
    "<projection name=\"P1\" type=\"plane\"/><projection name=\"P2\" type=\"plane\"/>"
    "<projection name=\"P3\" type=\"plane\"/>";
} // namespace

// Four windows, each with a tile of the wall.
void tst_zoHPCDisplaySelection::load(const char* projections)
{
    QString text =
        QStringLiteral("<cluster version=\"1\"><master><network><node name=\"n\"/></network></master>");
    text += QLatin1String(projections) + QStringLiteral("<display user=\"1\">");
    for (int i = 0; i < 4; ++i)
        text += QStringLiteral("<window node=\"n\" screen=\"%1\" width=\"1920\" height=\"1080\">"
                               "<viewport projection=\"Wall row:%2 col:%3\" position=\"fill\" eye=\"mono\"/>"
                               "</window>")
                    .arg(i)
                    .arg(i / 2 + 1)
                    .arg(i % 2 + 1);
    m_window->replaceConfigString(text + QStringLiteral("</display></cluster>"));
    m_window->displaySetup();
    QApplication::setActiveWindow(m_window->getDisplayEditor());
    QVERIFY(QTest::qWaitForWindowActive(m_window->getDisplayEditor()));
    settle();
}

// Until what was done is a step.
void tst_zoHPCDisplaySelection::settle() const
{
    QCoreApplication::processEvents();
    m_window->undoSteps()->commit();
    QCoreApplication::processEvents();
}

// The first one is current.
void tst_zoHPCDisplaySelection::select(std::initializer_list<QTreeWidgetItem*> rows)
{
    QTreeWidget* const tree = (*rows.begin())->treeWidget();
    tree->setCurrentItem(*rows.begin(), 0, QItemSelectionModel::ClearAndSelect);
    for (QTreeWidgetItem* row : rows)
        row->setSelected(true);
    tree->setFocus();
    settle();
}

QList<int> tst_zoHPCDisplaySelection::selectedWindows() const
{
    QList<int> rows;
    for (int row = 0; row < outputs()->topLevelItem(0)->childCount(); ++row) {
        if (window(row)->isSelected())
            rows << row;
    }
    return rows;
}

void tst_zoHPCDisplaySelection::keysGoToTheTree_data()
{
    QTest::addColumn<QString>("projections");
    QTest::addColumn<QString>("tree");

    QTest::newRow("projections") << s_wall << "m_projectionTree";
    QTest::newRow("no-projections") << ""
                                    << "m_displayTree";
}

void tst_zoHPCDisplaySelection::keysGoToTheTree()
{
    QFETCH(QString, projections);
    QFETCH(QString, tree);
    load(qPrintable(projections));
    auto* const rows = inDialog<QTreeWidget>(qPrintable(tree));
    QCOMPARE(QApplication::focusWidget(), rows);
    QVERIFY(rows->selectedItems().isEmpty());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);

    QCOMPARE(rows->currentItem(), rows->topLevelItem(0));
    QVERIFY(rows->topLevelItem(0)->isSelected());
    QVERIFY(page() != QLatin1String("m_nothingPage"));
    // And again when it is opened again.
    m_window->getDisplayEditor()->reject();
    m_window->displaySetup();
    QApplication::setActiveWindow(m_window->getDisplayEditor());
    QVERIFY(QTest::qWaitForWindowActive(m_window->getDisplayEditor()));
    QCOMPARE(QApplication::focusWidget(), rows);
}

void tst_zoHPCDisplaySelection::selectionThatComesBackIsActedUpon()
{
    load(s_wall);
    const auto widths = [this] {
        QStringList result;
        for (int row = 0; row < 4; ++row)
            result << window(row)->data(zoHPCWindowItem::Width, Qt::EditRole).toString();
        return result;
    };
    const auto type = [this](const QString& text) {
        auto* const field = inDialog<QLineEdit>("m_severalNumber9");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        outputs()->setFocus();
        settle();
    };
    select({window(1), window(2), window(3)});
    type(QStringLiteral("1000"));
    const QStringList changed = widths();
    QCOMPARE(changed, (QStringList{QStringLiteral("1920"), QStringLiteral("1000"), QStringLiteral("1000"),
                                   QStringLiteral("1000")}));
    select({window(0)});

    inDialog<QPushButton>("m_undoButton")->click();
    QCOMPARE(selectedWindows(), (QList<int>{1, 2, 3}));
    QCOMPARE(page(), QStringLiteral("m_severalPage"));
    inDialog<QPushButton>("m_redoButton")->click();
    QCOMPARE(widths(), changed);
    QCOMPARE(selectedWindows(), (QList<int>{1, 2, 3}));
    QCOMPARE(page(), QStringLiteral("m_severalPage"));
    type(QStringLiteral("800"));

    QCOMPARE(widths(), (QStringList{QStringLiteral("1920"), QStringLiteral("800"), QStringLiteral("800"),
                                    QStringLiteral("800")}));
}

void tst_zoHPCDisplaySelection::deletedWindowsComeBackSelected()
{
    load(s_wall);
    select({window(0), window(2)});
    QTest::keyClick(outputs(), Qt::Key_Delete);
    settle();
    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 2);

    inDialog<QPushButton>("m_undoButton")->click();

    QCOMPARE(selectedWindows(), (QList<int>{0, 2}));
    QCOMPARE(page(), QStringLiteral("m_severalPage"));
    outputs()->setFocus();
    QTest::keyClick(outputs(), Qt::Key_Delete);
    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 2);
}

void tst_zoHPCDisplaySelection::deletedProjectionsComeBackSelected()
{
    load(s_planes);
    select({projections()->topLevelItem(0), projections()->topLevelItem(2)});
    QTest::keyClick(projections(), Qt::Key_Delete);
    settle();
    QCOMPARE(projections()->topLevelItemCount(), 1);

    inDialog<QPushButton>("m_undoButton")->click();

    QCOMPARE(projections()->selectedItems(),
             (QList<QTreeWidgetItem*>{projections()->topLevelItem(0), projections()->topLevelItem(2)}));
    projections()->setFocus();
    QTest::keyClick(projections(), Qt::Key_Delete);
    QCOMPARE(projections()->topLevelItemCount(), 1);
}

void tst_zoHPCDisplaySelection::oneRowThatIsNotTheCurrentOneComesBackSelected()
{
    load(s_planes);
    select({projections()->topLevelItem(0), projections()->topLevelItem(2)});
    projections()->topLevelItem(0)->setSelected(false);
    settle();
    projections()->topLevelItem(1)->setData(0, Qt::EditRole, QStringLiteral("other"));
    settle();

    inDialog<QPushButton>("m_undoButton")->click();

    QCOMPARE(projections()->selectedItems(), QList<QTreeWidgetItem*>{projections()->topLevelItem(2)});
}

void tst_zoHPCDisplaySelection::fieldsOfOneOfSeveralProjectionsSayWhose()
{
    load(s_planes);
    const auto* const note = inDialog<QLabel>("m_projectionNote");
    select({projections()->topLevelItem(1)});
    QVERIFY(!note->isVisible());

    select({projections()->topLevelItem(1), projections()->topLevelItem(2)});
    QVERIFY(note->isVisible());
    QVERIFY(note->text().startsWith(QStringLiteral("2 ")));
    QVERIFY(note->text().contains(QStringLiteral("P2")));
    projections()->topLevelItem(1)->setText(0, QStringLiteral("renamed"));
    QVERIFY(note->text().contains(QStringLiteral("renamed")));

    select({projections()->topLevelItem(0)});
    QVERIFY(!note->isVisible());
}

void tst_zoHPCDisplaySelection::rowAfterDeletedOnesIsSelected_data()
{
    QTest::addColumn<bool>("isOutput");

    QTest::newRow("projection") << false;
    QTest::newRow("window") << true;
}

void tst_zoHPCDisplaySelection::rowAfterDeletedOnesIsSelected()
{
    QFETCH(bool, isOutput);
    load(s_planes);
    QTreeWidget* const tree = isOutput ? outputs() : projections();
    select({isOutput ? window(1) : tree->topLevelItem(1)});

    QTest::keyClick(tree, Qt::Key_Delete);
    settle();

    QVERIFY(tree->currentItem());
    QCOMPARE(tree->selectedItems(), QList<QTreeWidgetItem*>{tree->currentItem()});
}

void tst_zoHPCDisplaySelection::allSelectedWindowsAreMarkedInBothPictures()
{
    load(s_wall);
    auto* const pane = m_window->getDisplayEditor()->findChild<zoHPCLayoutPane*>();
    pane->refresh();
    zoHPCRoomView* const room = pane->roomView();
    zoHPCScreensView* const screens = pane->screensView();
    const auto shots = [&](int tab, const std::vector<QPoint>& places) {
        inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(tab);
        settle();
        const QImage image = (tab == 0 ? static_cast<QWidget*>(room) : screens)->grab().toImage();
        std::vector<QRgb> colours;
        for (const QPoint& place : places)
            colours.push_back(image.pixel(place));
        return colours;
    };
    std::vector<QPoint> inRoom;
    for (const QPointF& tile :
         {QPointF(-1500, 300), QPointF(1500, 300), QPointF(-1500, -800), QPointF(1500, -800)}) {
        const zoHPCRoomCamera& camera = room->picture().camera();
        inRoom.push_back(camera.toPicture(camera.see({tile.x(), tile.y(), -2000.0}), room->rect()).toPoint());
    }
    inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(1);
    settle();
    std::vector<QPoint> inScreens;
    for (int row = 0; row < 4; ++row)
        inScreens.push_back(
            screens->picture().placeOf(static_cast<zoHPCWindowItem*>(window(row))).topLeft().toPoint());
    const std::vector<QRgb> plainRoom = shots(0, inRoom);
    const std::vector<QRgb> plainScreens = shots(1, inScreens);

    select({window(0), window(1), window(3)});

    const std::vector<QRgb> markedRoom = shots(0, inRoom);
    const std::vector<QRgb> markedScreens = shots(1, inScreens);
    for (size_t i = 0; i < 4; ++i) {
        QCOMPARE(markedRoom[i] != plainRoom[i], i != 2);
        QCOMPARE(markedScreens[i] != plainScreens[i], i != 2);
    }
}

void tst_zoHPCDisplaySelection::dialogIsWithinTheScreen()
{
    m_window->getDisplayEditor()->resize(5000, 5000);

    load(s_wall);

    const zoHPCDisplayGUII& dialog = *m_window->getDisplayEditor();
    const QSize screen = dialog.screen()->availableGeometry().size();
    const QSize smallest = dialog.minimumSizeHint();
    QVERIFY(dialog.width() <= std::max(smallest.width(), screen.width() - 16));
    QVERIFY(dialog.height() <= std::max(smallest.height(), screen.height() - 40));
}

ZO_TEST_MAIN(tst_zoHPCDisplaySelection)
#include "tst_zoHPCDisplaySelection.moc"
