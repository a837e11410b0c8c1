#include "zoTestCase.h"

#include <zoHPCTreeFilter.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

#include <memory>

// The filter over a tree.
class tst_zoHPCTreeFilter final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void wordsChooseRows_data();
    void wordsChooseRows();
    void wayToARowIsExpanded();
    void hiddenRowsAreNotSelected();
    void hiddenRowIsNotCurrent();
    void escapeShowsAll();
    void escapeKeepsTheCurrentRowInSight();
    void escapeWithoutWordsGoesToTheParent();
    void currentRowThatComesIsShown();
    void rowThatComesAndDoesNotFitIsHidden();
    void rowWhoseTextComesToFitIsShown();
    void deepTreeNeedsNoStack();

private:
    QStringList shown() const;
    void collect(const QTreeWidgetItem* item, QStringList& names) const;

    std::unique_ptr<QTreeWidget> m_tree;
    std::unique_ptr<zoHPCTreeFilter> m_filter;
};

void tst_zoHPCTreeFilter::init()
{
    m_filter.reset();
    m_tree = std::make_unique<QTreeWidget>();
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (const char* display : {"First", "Second"}) {
        auto* const top = new QTreeWidgetItem(m_tree.get(), {QLatin1String(display)});
        for (const char* window : {"gpu01", "gpu02"}) {
            auto* const row = new QTreeWidgetItem(top, {QLatin1String(window)});
            new QTreeWidgetItem(row, {QStringLiteral("Left")});
            new QTreeWidgetItem(row, {QStringLiteral("Right")});
        }
    }
    m_filter = std::make_unique<zoHPCTreeFilter>(m_tree.get(),
                                                 [](const QTreeWidgetItem& row) { return row.text(0); });
}

void tst_zoHPCTreeFilter::collect(const QTreeWidgetItem* item, QStringList& names) const
{
    for (int i = 0; i < item->childCount(); ++i) {
        if (item->child(i)->isHidden())
            continue;
        names << item->child(i)->text(0);
        collect(item->child(i), names);
    }
}

QStringList tst_zoHPCTreeFilter::shown() const
{
    QStringList names;
    collect(m_tree->invisibleRootItem(), names);
    return names;
}

void tst_zoHPCTreeFilter::wordsChooseRows_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("count");

    QTest::newRow("row-with-all-below") << "second gpu01"
                                        << "Second gpu01 Left Right"
                                        << "3 of 14";
    QTest::newRow("row-below") << "right gpu02"
                               << "First gpu02 Right Second gpu02 Right"
                               << "2 of 14";
    QTest::newRow("any-case") << "GPU02 LEFT first"
                              << "First gpu02 Left"
                              << "1 of 14";
    QTest::newRow("none") << "gpu03"
                          << ""
                          << "0 of 14";
    QTest::newRow("one-word-of-two") << "gpu01 gpu03"
                                     << ""
                                     << "0 of 14";
    QTest::newRow("blanks")
        << "   "
        << "First gpu01 Left Right gpu02 Left Right Second gpu01 Left Right gpu02 Left Right"
        << "";
}

void tst_zoHPCTreeFilter::wordsChooseRows()
{
    QFETCH(QString, words);
    QFETCH(QString, rows);
    QFETCH(QString, count);

    m_filter->field()->setText(words);

    QCOMPARE(shown().join(QLatin1Char(' ')), rows);
    const auto* const label = m_filter->findChild<QLabel*>();
    QCOMPARE(label->isHidden() ? QString() : label->text(), count);
}

void tst_zoHPCTreeFilter::wayToARowIsExpanded()
{
    m_filter->field()->setText(QStringLiteral("right gpu02 first"));

    QVERIFY(m_tree->topLevelItem(0)->isExpanded());
    QVERIFY(m_tree->topLevelItem(0)->child(1)->isExpanded());
    QVERIFY(!m_tree->topLevelItem(1)->isExpanded());
}

void tst_zoHPCTreeFilter::hiddenRowsAreNotSelected()
{
    m_tree->expandAll();
    m_tree->selectAll();
    QCOMPARE(m_tree->selectedItems().size(), 14);

    m_filter->field()->setText(QStringLiteral("first gpu01"));
    m_filter->field()->clear();

    QStringList selected;
    for (const QTreeWidgetItem* item : m_tree->selectedItems())
        selected << item->text(0);
    selected.sort();
    QCOMPARE(selected, (QStringList{QStringLiteral("First"), QStringLiteral("Left"), QStringLiteral("Right"),
                                    QStringLiteral("gpu01")}));
}

void tst_zoHPCTreeFilter::hiddenRowIsNotCurrent()
{
    m_tree->setCurrentItem(m_tree->topLevelItem(0)->child(0)->child(0));

    m_filter->field()->setText(QStringLiteral("left"));
    QVERIFY(m_tree->currentItem());
    m_filter->field()->setText(QStringLiteral("second"));

    QVERIFY(!m_tree->currentItem());
}

void tst_zoHPCTreeFilter::escapeShowsAll()
{
    m_filter->field()->setText(QStringLiteral("gpu01"));

    QTest::keyClick(m_filter->field(), Qt::Key_Escape);

    QVERIFY(m_filter->field()->text().isEmpty());
    QCOMPARE(shown().size(), 14);
}

void tst_zoHPCTreeFilter::escapeKeepsTheCurrentRowInSight()
{
    for (int i = 0; i < 300; ++i)
        new QTreeWidgetItem(m_tree.get(), {QStringLiteral("node%1").arg(i)});
    m_tree->resize(200, 200);
    m_tree->show();
    m_filter->field()->setText(QStringLiteral("node27"));
    QTreeWidgetItem* const row = m_tree->findItems(QStringLiteral("node277"), Qt::MatchExactly).constFirst();
    m_tree->setCurrentItem(row);

    QTest::keyClick(m_filter->field(), Qt::Key_Escape);

    QCOMPARE(m_tree->currentItem(), row);
    const QRect place = m_tree->visualItemRect(row);
    QVERIFY(!place.isEmpty());
    QVERIFY(m_tree->viewport()->rect().contains(place.center()));
}

void tst_zoHPCTreeFilter::escapeWithoutWordsGoesToTheParent()
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    press.setAccepted(true);

    QApplication::sendEvent(m_filter->field(), &press);

    QVERIFY(!press.isAccepted());
}

void tst_zoHPCTreeFilter::currentRowThatComesIsShown()
{
    m_filter->field()->setText(QStringLiteral("gpu01"));

    auto* const added = new QTreeWidgetItem(m_tree->topLevelItem(0), {QStringLiteral("gpu77")});
    m_tree->setCurrentItem(added);
    QCoreApplication::processEvents();
    QVERIFY(!added->isHidden());

    m_filter->field()->setText(QStringLiteral("gpu02"));
    QVERIFY(added->isHidden());
}

void tst_zoHPCTreeFilter::rowThatComesAndDoesNotFitIsHidden()
{
    m_filter->field()->setText(QStringLiteral("gpu01"));

    auto* const added = new QTreeWidgetItem(m_tree->topLevelItem(0), {QStringLiteral("gpu77")});
    auto* const fitting = new QTreeWidgetItem(m_tree->topLevelItem(1), {QStringLiteral("gpu01b")});

    QTRY_VERIFY(added->isHidden());
    QVERIFY(!fitting->isHidden());
}

void tst_zoHPCTreeFilter::rowWhoseTextComesToFitIsShown()
{
    m_filter->field()->setText(QStringLiteral("gpu03"));
    QCOMPARE(shown(), QStringList());

    m_tree->topLevelItem(1)->child(0)->setText(0, QStringLiteral("gpu03"));

    QTRY_COMPARE(shown(), QStringList({QStringLiteral("Second"), QStringLiteral("gpu03"),
                                       QStringLiteral("Left"), QStringLiteral("Right")}));
}

void tst_zoHPCTreeFilter::deepTreeNeedsNoStack()
{
    QTreeWidgetItem* item = m_tree->topLevelItem(0);
    for (int i = 0; i < 2000; ++i)
        item = new QTreeWidgetItem(item, {QStringLiteral("deep")});
    item->setText(0, QStringLiteral("bottom"));

    m_filter->field()->setText(QStringLiteral("bottom"));

    QVERIFY(!item->isHidden());
    QVERIFY(m_tree->topLevelItem(1)->isHidden());
}

ZO_TEST_MAIN(tst_zoHPCTreeFilter)
#include "tst_zoHPCTreeFilter.moc"
