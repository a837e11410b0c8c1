#include "zoTestCase.h"

#include <QZODataWidgetMapper.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QStringListModel>

// Widgets bound to a row of a model.
class tst_QZODataWidgetMapper final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void chosenRowIsShown();
    void choosingARowWritesNothing();
    void changeIsInTheModelAtOnce();
    void typedKeysAreInTheModelAtOnce();
    void changedModelShows();
    void rowsAnywhereInATreeAreBound();
    void withoutARowNothingIsWritten();
    void removedRowIsLetGo();
    void resetModelIsLetGo();
    void losingTheFocusWritesNothing();
    void escapeReachesTheWindow();
    void tabMovesTheFocusAlong();
    void cursorStaysWhileTyping();
    void unfinishedNumberStaysWhileTyping();
    void valueBeyondTheWidgetStays_data();
    void valueBeyondTheWidgetStays();
    void unsetValueStaysUnset();
    void comboStandsForItsData();
    void comboWithoutDataStandsForItsText();
    void unknownChoiceShowsNoneAndStays();
    void editableComboStandsForItsText();
    void refilledChoiceShowsTheValueAfterRefresh();
    void silentChangeShowsAfterRefresh();

private:
    QVariant value(int row, int column) const { return m_model->index(row, column).data(Qt::EditRole); }

    std::unique_ptr<QStandardItemModel> m_model;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<QZODataWidgetMapper> m_mapper;
    QLineEdit* m_edit = nullptr;
    QSpinBox* m_spin = nullptr;
    QDoubleSpinBox* m_double = nullptr;
    QCheckBox* m_check = nullptr;
    QComboBox* m_combo = nullptr;
    QComboBox* m_editable = nullptr;
};

void tst_QZODataWidgetMapper::init()
{
    m_model = std::make_unique<QStandardItemModel>(2, 6);
    const QVariantList rows[] = {
        {QStringLiteral("first"), 1, 1.5, true, QStringLiteral("a"), QStringLiteral("x")},
        {QStringLiteral("second"), 2, 2.5, false, QStringLiteral("b"), QStringLiteral("y")}};
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 6; ++column)
            m_model->setData(m_model->index(row, column), rows[row].at(column), Qt::EditRole);
    }

    m_window = std::make_unique<QWidget>();
    m_edit = new QLineEdit(m_window.get());
    m_spin = new QSpinBox(m_window.get());
    m_double = new QDoubleSpinBox(m_window.get());
    m_check = new QCheckBox(m_window.get());
    m_combo = new QComboBox(m_window.get());
    m_combo->addItem(QStringLiteral("Choice A"), QStringLiteral("a"));
    m_combo->addItem(QStringLiteral("Choice B"), QStringLiteral("b"));
    m_editable = new QComboBox(m_window.get());
    m_editable->setEditable(true);
    m_editable->addItems({QStringLiteral("x"), QStringLiteral("y")});

    m_mapper = std::make_unique<QZODataWidgetMapper>();
    m_mapper->setModel(m_model.get());
    QWidget* const widgets[] = {m_edit, m_spin, m_double, m_check, m_combo, m_editable};
    for (int column = 0; column < 6; ++column)
        m_mapper->addMapping(widgets[column], column);
}

void tst_QZODataWidgetMapper::chosenRowIsShown()
{
    m_mapper->setCurrentRow(m_model->index(1, 0));

    QVERIFY(m_mapper->hasCurrentRow());
    QCOMPARE(m_edit->text(), QStringLiteral("second"));
    QCOMPARE(m_spin->value(), 2);
    QCOMPARE(m_double->value(), 2.5);
    QCOMPARE(m_check->isChecked(), false);
    QCOMPARE(m_combo->currentText(), QStringLiteral("Choice B"));
    QCOMPARE(m_editable->currentText(), QStringLiteral("y"));
}

void tst_QZODataWidgetMapper::choosingARowWritesNothing()
{
    const QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);

    for (const int row : {0, 1, 0, 1})
        m_mapper->setCurrentRow(m_model->index(row, 0));

    QCOMPARE(changes.count(), 0);
}

void tst_QZODataWidgetMapper::changeIsInTheModelAtOnce()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));

    m_edit->setText(QStringLiteral("new"));
    QCOMPARE(value(0, 0), QVariant(QStringLiteral("new")));
    m_spin->setValue(7);
    QCOMPARE(value(0, 1), QVariant(7));
    m_double->setValue(7.25);
    QCOMPARE(value(0, 2), QVariant(7.25));
    m_check->click();
    QCOMPARE(value(0, 3), QVariant(false));
    m_combo->setCurrentIndex(1);
    QCOMPARE(value(0, 4), QVariant(QStringLiteral("b")));
    m_editable->setEditText(QStringLiteral("free"));
    QCOMPARE(value(0, 5), QVariant(QStringLiteral("free")));
    QCOMPARE(value(1, 0), QVariant(QStringLiteral("second")));
}

void tst_QZODataWidgetMapper::typedKeysAreInTheModelAtOnce()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_edit->clear();

    QTest::keyClicks(m_edit, QStringLiteral("ab"));
    QCOMPARE(value(0, 0), QVariant(QStringLiteral("ab")));

    m_spin->selectAll();
    QTest::keyClicks(m_spin, QStringLiteral("42"));
    QCOMPARE(value(0, 1), QVariant(42));
}

void tst_QZODataWidgetMapper::changedModelShows()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));

    m_model->setData(m_model->index(0, 1), 9, Qt::EditRole);
    m_model->setData(m_model->index(1, 1), 10, Qt::EditRole); // not the current row

    QCOMPARE(m_spin->value(), 9);
}

void tst_QZODataWidgetMapper::rowsAnywhereInATreeAreBound()
{
    auto* parent = m_model->item(1);
    QList<QStandardItem*> child;
    for (int column = 0; column < 6; ++column)
        child << new QStandardItem;
    child.at(0)->setData(QStringLiteral("child"), Qt::EditRole);
    parent->appendRow(child);

    m_mapper->setCurrentRow(child.at(0)->index());
    QCOMPARE(m_edit->text(), QStringLiteral("child"));
    m_edit->setText(QStringLiteral("changed"));

    QCOMPARE(child.at(0)->data(Qt::EditRole), QVariant(QStringLiteral("changed")));
    QCOMPARE(value(0, 0), QVariant(QStringLiteral("first")));
    m_mapper->setCurrentRow(m_model->index(0, 0));
    QCOMPARE(m_edit->text(), QStringLiteral("first"));
}

void tst_QZODataWidgetMapper::withoutARowNothingIsWritten()
{
    m_edit->setText(QStringLiteral("nowhere"));
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_mapper->setCurrentRow(QModelIndex());
    QVERIFY(!m_mapper->hasCurrentRow());

    m_edit->setText(QStringLiteral("nowhere"));
    m_spin->setValue(50);

    QCOMPARE(value(0, 0), QVariant(QStringLiteral("first")));
    QCOMPARE(value(0, 1), QVariant(1));
}

void tst_QZODataWidgetMapper::removedRowIsLetGo()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));

    m_model->removeRow(0);
    m_edit->setText(QStringLiteral("late"));

    QVERIFY(!m_mapper->hasCurrentRow());
    QCOMPARE(value(0, 0), QVariant(QStringLiteral("second")));
}

void tst_QZODataWidgetMapper::resetModelIsLetGo()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));

    m_model->clear();
    m_edit->setText(QStringLiteral("late"));
    m_mapper->refresh();

    QVERIFY(!m_mapper->hasCurrentRow());
    QCOMPARE(m_model->rowCount(), 0);
}

void tst_QZODataWidgetMapper::losingTheFocusWritesNothing()
{
    m_model->setData(m_model->index(0, 2), 1.23456789, Qt::EditRole);
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_window->show();
    m_double->setFocus();

    m_edit->setFocus();
    QApplication::processEvents();

    QCOMPARE(value(0, 2), QVariant(1.23456789));
}

void tst_QZODataWidgetMapper::escapeReachesTheWindow()
{
    class Window final : public QWidget
    {
    public:
        int escapes = 0;

    protected:
        void keyPressEvent(QKeyEvent* event) override { escapes += event->key() == Qt::Key_Escape ? 1 : 0; }
    };
    Window window;
    m_edit->setParent(&window);
    m_mapper->setCurrentRow(m_model->index(0, 0));

    QTest::keyClick(m_edit, Qt::Key_Escape);

    QCOMPARE(window.escapes, 1);
}

void tst_QZODataWidgetMapper::tabMovesTheFocusAlong()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    m_edit->setFocus();

    QTest::keyClick(m_edit, Qt::Key_Tab);

    QCOMPARE(m_window->focusWidget(), m_spin);
}

void tst_QZODataWidgetMapper::cursorStaysWhileTyping()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_edit->setCursorPosition(2);

    QTest::keyClicks(m_edit, QStringLiteral("__"));

    QCOMPARE(m_edit->text(), QStringLiteral("fi__rst"));
    QCOMPARE(m_edit->cursorPosition(), 4);
}

void tst_QZODataWidgetMapper::unfinishedNumberStaysWhileTyping()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_double->selectAll();

    QTest::keyClicks(m_double, QStringLiteral("4"));
    QCOMPARE(m_double->text(), QStringLiteral("4"));
    QCOMPARE(value(0, 2), QVariant(4.0));
    QTest::keyClicks(m_double, m_double->locale().decimalPoint());
    QTest::keyClicks(m_double, QStringLiteral("2"));

    QCOMPARE(value(0, 2), QVariant(4.2));
}

void tst_QZODataWidgetMapper::valueBeyondTheWidgetStays_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("kept");

    QTest::newRow("above-the-range") << 1 << QVariant(1000);
    QTest::newRow("text-of-no-number") << 1 << QVariant(QStringLiteral("many"));
    QTest::newRow("more-decimals") << 2 << QVariant(0.123456);
    QTest::newRow("double-above-the-range") << 2 << QVariant(5000.0);
    QTest::newRow("text-as-flag") << 3 << QVariant(QStringLiteral("yes"));
}

void tst_QZODataWidgetMapper::valueBeyondTheWidgetStays()
{
    QFETCH(int, column);
    QFETCH(QVariant, kept);
    m_model->setData(m_model->index(0, column), kept, Qt::EditRole);

    m_mapper->setCurrentRow(m_model->index(0, 0));
    m_edit->setText(QStringLiteral("another field"));
    m_mapper->setCurrentRow(m_model->index(1, 0));

    QCOMPARE(value(0, column), kept);
}

void tst_QZODataWidgetMapper::unsetValueStaysUnset()
{
    for (int column = 0; column < 6; ++column)
        m_model->setData(m_model->index(0, column), QVariant(), Qt::EditRole);

    m_mapper->setCurrentRow(m_model->index(1, 0));
    m_mapper->setCurrentRow(m_model->index(0, 0));

    for (int column = 0; column < 6; ++column)
        QVERIFY2(!value(0, column).isValid(), qPrintable(QString::number(column)));
    QCOMPARE(m_spin->value(), 0);
    QCOMPARE(m_edit->text(), QString());
}

void tst_QZODataWidgetMapper::comboStandsForItsData()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));

    QTest::keyClick(m_combo, Qt::Key_Down);

    QCOMPARE(m_combo->currentText(), QStringLiteral("Choice B"));
    QCOMPARE(value(0, 4), QVariant(QStringLiteral("b")));
}

void tst_QZODataWidgetMapper::comboWithoutDataStandsForItsText()
{
    QComboBox combo;
    QStringListModel names({QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("a 1")});
    combo.setModel(&names);
    m_mapper->removeMapping(m_combo);
    m_mapper->addMapping(&combo, 4);
    m_mapper->setCurrentRow(m_model->index(0, 0));
    QCOMPARE(combo.currentIndex(), 0);

    combo.setCurrentIndex(1);

    QCOMPARE(value(0, 4), QVariant(QStringLiteral("A")));
    m_mapper->setCurrentRow(m_model->index(1, 0));
    QCOMPARE(combo.currentIndex(), -1);
    m_mapper->setCurrentRow(m_model->index(0, 0));
    QCOMPARE(combo.currentIndex(), 1);
}

void tst_QZODataWidgetMapper::unknownChoiceShowsNoneAndStays()
{
    m_model->setData(m_model->index(0, 4), QStringLiteral("c"), Qt::EditRole);

    m_mapper->setCurrentRow(m_model->index(0, 0));

    QCOMPARE(m_combo->currentIndex(), -1);
    QCOMPARE(value(0, 4), QVariant(QStringLiteral("c")));
}

void tst_QZODataWidgetMapper::editableComboStandsForItsText()
{
    m_model->setData(m_model->index(0, 5), QStringLiteral("not listed"), Qt::EditRole);

    m_mapper->setCurrentRow(m_model->index(0, 0));
    QCOMPARE(m_editable->currentText(), QStringLiteral("not listed"));
    m_editable->setCurrentIndex(1);

    QCOMPARE(value(0, 5), QVariant(QStringLiteral("y")));
}

void tst_QZODataWidgetMapper::refilledChoiceShowsTheValueAfterRefresh()
{
    m_mapper->setCurrentRow(m_model->index(1, 0));
    {
        const QSignalBlocker blocker(m_combo);
        m_combo->clear();
        m_combo->addItem(QStringLiteral("Choice C"), QStringLiteral("c"));
        m_combo->addItem(QStringLiteral("Choice B"), QStringLiteral("b"));
    }

    m_mapper->refresh();

    QCOMPARE(m_combo->currentText(), QStringLiteral("Choice B"));
    QCOMPARE(value(1, 4), QVariant(QStringLiteral("b")));
}

void tst_QZODataWidgetMapper::silentChangeShowsAfterRefresh()
{
    m_mapper->setCurrentRow(m_model->index(0, 0));
    {
        const QSignalBlocker blocker(m_model.get());
        m_model->setData(m_model->index(0, 1), 33, Qt::EditRole);
    }
    QCOMPARE(m_spin->value(), 1);

    m_mapper->refresh();

    QCOMPARE(m_spin->value(), 33);
}

ZO_TEST_MAIN(tst_QZODataWidgetMapper)
#include "tst_QZODataWidgetMapper.moc"
