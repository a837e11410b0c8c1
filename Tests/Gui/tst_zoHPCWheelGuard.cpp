#include "zoTestCase.h"

#include <zoHPCWheelGuard.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <memory>

// A panel that scrolls, with fields under the pointer.
class tst_zoHPCWheelGuard final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void wheelScrollsThePanel_data();
    void wheelScrollsThePanel();
    void fieldWithTheFocusTakesTheWheel();

private:
    // Over the middle of a widget, as a mouse does it.
    static void turn(QWidget* widget);

    std::unique_ptr<QScrollArea> m_area;
    QSpinBox* m_number = nullptr;
    QComboBox* m_choice = nullptr;
    QComboBox* m_editable = nullptr;
};

void tst_zoHPCWheelGuard::init()
{
    m_area = std::make_unique<QScrollArea>();
    auto* const panel = new QWidget;
    auto* const layout = new QVBoxLayout(panel);
    auto* const line = new QLineEdit;
    m_number = new QSpinBox;
    m_number->setValue(50);
    m_choice = new QComboBox;
    m_editable = new QComboBox;
    m_editable->setEditable(true);
    for (QComboBox* choice : {m_choice, m_editable}) {
        choice->addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        choice->setCurrentIndex(1);
    }
    for (QWidget* field : std::initializer_list<QWidget*>{line, m_number, m_choice, m_editable})
        layout->addWidget(field);
    panel->setMinimumHeight(2000);
    new zoHPCWheelGuard(panel);
    m_area->setWidget(panel);
    m_area->resize(300, 300);
    m_area->show();
    QApplication::setActiveWindow(m_area.get());
    line->setFocus();
    QTRY_VERIFY(line->hasFocus());
}

void tst_zoHPCWheelGuard::cleanup()
{
    m_area.reset();
}

void tst_zoHPCWheelGuard::wheelScrollsThePanel_data()
{
    QTest::addColumn<int>("field");

    QTest::newRow("number") << 0;
    QTest::newRow("choice") << 1;
    QTest::newRow("editable-choice") << 2;
}

void tst_zoHPCWheelGuard::wheelScrollsThePanel()
{
    QFETCH(int, field);
    QWidget* const fields[] = {m_number, m_choice, m_editable->lineEdit()};

    turn(fields[field]);

    QCOMPARE(m_number->value(), 50);
    QCOMPARE(m_choice->currentIndex(), 1);
    QCOMPARE(m_editable->currentIndex(), 1);
    QVERIFY(!fields[field]->hasFocus());
    QVERIFY(m_area->verticalScrollBar()->value() > 0);
}

void tst_zoHPCWheelGuard::fieldWithTheFocusTakesTheWheel()
{
    m_number->setFocus();
    QTRY_VERIFY(m_number->hasFocus());

    turn(m_number);

    QVERIFY(m_number->value() < 50);
    QCOMPARE(m_area->verticalScrollBar()->value(), 0);
}

void tst_zoHPCWheelGuard::turn(QWidget* widget)
{
    const QPoint place = widget->rect().center();
    constexpr QPoint NOTCH(0, -120);
    QWheelEvent event(place, widget->mapToGlobal(place), QPoint(), NOTCH, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // As the platform's event, which may give the focus.
    QSpontaneKeyEvent::setSpontaneous(&event);
    QApplication::instance()->notify(widget, &event);
}

ZO_TEST_MAIN(tst_zoHPCWheelGuard)
#include "tst_zoHPCWheelGuard.moc"
