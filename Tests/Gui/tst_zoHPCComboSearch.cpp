#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCComboSearch.h>
#include <zoHPCNodeNames.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListView>

#include <memory>

// The choice of nodes for a window: searched by typing into the open list, with marks of what nodes do already.
class tst_zoHPCComboSearch final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void typedTextShowsWhatHoldsIt();
    void foundRowIsChosen();
    void backspaceAndEscapeTakeBack();
    void closedListIsWholeAgain();
    void textWithoutMatchChangesNothing();
    void nodesInUseAndGatewaysAreMarked();
    void marksFollowTheConfiguration();

private:
    QStringList shown() const;
    void type(const QString& keys) { QTest::keyClicks(m_combo->view(), keys); }

    std::unique_ptr<QComboBox> m_combo;
    zoHPCComboSearch* m_search = nullptr;
};

void tst_zoHPCComboSearch::init()
{
    m_combo = std::make_unique<QComboBox>();
    m_combo->addItems({"gpu01", "gpu02", "viz01", "viz02"});
    m_search = new zoHPCComboSearch(m_combo.get());
    m_combo->show();
    QApplication::setActiveWindow(m_combo.get());
    m_combo->showPopup();
}

void tst_zoHPCComboSearch::cleanup()
{
    m_combo.reset();
    zoTestCase::cleanup();
}

QStringList tst_zoHPCComboSearch::shown() const
{
    QStringList rows;
    const auto* list = qobject_cast<QListView*>(m_combo->view());
    for (int row = 0; row < m_combo->count(); ++row) {
        if (!list->isRowHidden(row))
            rows << m_combo->itemText(row);
    }
    return rows;
}

void tst_zoHPCComboSearch::typedTextShowsWhatHoldsIt()
{
    type("02");

    QCOMPARE(shown(), (QStringList{"gpu02", "viz02"}));
    const auto* label = m_combo->view()->findChild<QLabel*>("m_comboSearch");
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), QString("Search: 02"));
    QCOMPARE(m_combo->currentText(), QString("gpu01")); // not before somebody chooses
}

void tst_zoHPCComboSearch::foundRowIsChosen()
{
    type("Z02");
    QCOMPARE(m_combo->view()->currentIndex().data().toString(), QString("viz02"));

    QTest::keyClick(m_combo->view(), Qt::Key_Return);

    QTRY_COMPARE(m_combo->currentText(), QString("viz02"));
}

void tst_zoHPCComboSearch::backspaceAndEscapeTakeBack()
{
    type("viz01");
    QCOMPARE(shown(), QStringList{"viz01"});

    QTest::keyClick(m_combo->view(), Qt::Key_Backspace);
    QCOMPARE(shown(), (QStringList{"viz01", "viz02"}));
    QTest::keyClick(m_combo->view(), Qt::Key_Escape);

    QCOMPARE(shown().size(), 4);
    QVERIFY(m_combo->view()->isVisible());
    QVERIFY(!m_combo->view()->findChild<QLabel*>("m_comboSearch")->isVisible());
}

void tst_zoHPCComboSearch::closedListIsWholeAgain()
{
    type("viz");

    m_combo->hidePopup();

    QTRY_COMPARE(shown().size(), 4);
    QVERIFY(m_search->text().isEmpty());
}

void tst_zoHPCComboSearch::textWithoutMatchChangesNothing()
{
    type("nobody");

    QVERIFY(shown().isEmpty());
    QCOMPARE(m_combo->currentText(), QString("gpu01"));
    QTest::keyClick(m_combo->view(), Qt::Key_Escape);
    QCOMPARE(shown().size(), 4);
}

void tst_zoHPCComboSearch::nodesInUseAndGatewaysAreMarked()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const gateway = setup.addNode("gate");
    setup.addNode("inner", setup.hosts.createNetwork(gateway, -1));
    setup.addNode("free");
    setup.addWindow("inner", QString());
    const auto layout = std::make_shared<const zoHPCLayout>(setup.layout());
    zoHPCNodeNames names;
    names.setStringList({"gate", "inner", "free"});
    QVERIFY(!names.index(0).data(Qt::DecorationRole).isValid()); // nobody was asked

    names.setLayoutSource([&layout] { return layout; });

    QCOMPARE(names.index(0).data(Qt::ToolTipRole).toString(), QString("gateway"));
    QCOMPARE(names.index(1).data(Qt::ToolTipRole).toString(), QString("has a window"));
    QCOMPARE(names.index(2).data(Qt::ToolTipRole).toString(), QString());
    QCOMPARE(names.index(1).data(Qt::AccessibleDescriptionRole).toString(), QString("has a window"));
    QCOMPARE(names.index(1).data().toString(), QString("inner")); // what the window gets
    const auto picture = [&names](int row) {
        return names.index(row).data(Qt::DecorationRole).value<QIcon>().pixmap(32, 32).toImage();
    };
    QVERIFY(picture(0) != picture(1));
    QVERIFY(picture(1) != picture(2));
    QVERIFY(picture(0) != picture(2));
}

void tst_zoHPCComboSearch::marksFollowTheConfiguration()
{
    zoHPCSetup setup;
    setup.addNode("a");
    setup.addNode("b");
    zoHPCWindowItem* const window = setup.addWindow("a", QString());
    auto layout = std::make_shared<const zoHPCLayout>(setup.layout());
    zoHPCNodeNames names;
    names.setStringList({"a", "b"});
    names.setLayoutSource([&layout] { return layout; });
    QCOMPARE(names.index(0).data(Qt::ToolTipRole).toString(), QString("has a window"));

    window->setRenderNode("b");
    layout = std::make_shared<const zoHPCLayout>(setup.layout());

    QCOMPARE(names.index(0).data(Qt::ToolTipRole).toString(), QString());
    QCOMPARE(names.index(1).data(Qt::ToolTipRole).toString(), QString("has a window"));
    layout.reset(); // its items are gone
    QCOMPARE(names.index(1).data(Qt::ToolTipRole).toString(), QString("has a window"));
}

ZO_TEST_MAIN(tst_zoHPCComboSearch)
#include "tst_zoHPCComboSearch.moc"
