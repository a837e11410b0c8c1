#include "zoTestCase.h"

#include "ui_CollapsibleForm.h"

#include <QApplication>
#include <QCursor>
#include <QSignalSpy>

#include <memory>

namespace
{
QPoint onTitle(const QWidget* frame)
{
    return QPoint(frame->width() / 2, 6);
}
} // namespace

// The frame that folds, in a form made with Designer.
class tst_QZOCollapsibleFrame final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void contentStandsBelowTheTitle();
    void clickOnTheTitleFoldsAndUnfolds();
    void clickOnTheContentDoesNot();
    void pressOutsideAndReleaseOnTheTitleDoesNot();
    void rightClickDoesNot();
    void keyOnTheTitleFoldsAndUnfolds_data();
    void keyOnTheTitleFoldsAndUnfolds();
    void keyInAFieldDoesNotFold_data();
    void keyInAFieldDoesNotFold();
    void otherKeysAreLeftToTheWindow();
    void foldedFrameIsAsHighAsItsTitle();
    void formMayStartFolded();
    void foldedContentIsNotInTheTabOrder();
    void focusInTheContentGoesToTheTitle();
    void hiddenChildStaysHiddenWhenUnfolded();
    void childShownWhileFoldedAppearsWithTheUnfolding();
    void childAddedWhileFoldedAppearsWithTheUnfolding();
    void childDestroyedWhileFoldedIsForgotten();
    void stateSurvivesHidingTheWindow();
    void maximumHeightComesBack();
    void setterAnnouncesOnlyChanges();
    void disabledFrameDoesNotFold();
    void frameShapeKeepsRoomForTheTitle();
    void titleGlowsUnderTheMouse();

private:
    std::unique_ptr<QWidget> m_window;
    Ui::CollapsibleForm m_form;
};

void tst_QZOCollapsibleFrame::init()
{
    m_window = std::make_unique<QWidget>();
    m_form.setupUi(m_window.get());
    m_window->resize(300, 300);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_QZOCollapsibleFrame::cleanup()
{
    if (qEnvironmentVariableIsSet("ZO_TEST_SCREENSHOTS") && m_window)
        m_window->grab().save(qEnvironmentVariable("ZO_TEST_SCREENSHOTS") +
                              QStringLiteral("/QZOCollapsibleFrame-") +
                              QString::fromLatin1(QTest::currentTestFunction()) + QStringLiteral(".png"));
    m_window.reset();
    zoTestCase::cleanup();
}

void tst_QZOCollapsibleFrame::contentStandsBelowTheTitle()
{
    const int titleHeight = m_form.m_open->fontMetrics().height();

    QVERIFY(m_form.m_name->isVisible());
    QVERIFY(m_form.m_name->y() > titleHeight);
    QCOMPARE(m_form.m_open->title(), QStringLiteral("Open at start"));
    QCOMPARE(m_form.m_open->accessibleName(), QStringLiteral("Open at start"));
}

void tst_QZOCollapsibleFrame::clickOnTheTitleFoldsAndUnfolds()
{
    QSignalSpy changed(m_form.m_open, &QZOCollapsibleFrame::collapsedChanged);

    QTest::mouseClick(m_form.m_open, Qt::LeftButton, Qt::NoModifier, onTitle(m_form.m_open));
    QVERIFY(m_form.m_open->isCollapsed());
    QVERIFY(!m_form.m_name->isVisible());
    QVERIFY(!m_form.m_check->isVisible());

    QTest::mouseClick(m_form.m_open, Qt::LeftButton, Qt::NoModifier, onTitle(m_form.m_open));
    QVERIFY(!m_form.m_open->isCollapsed());
    QVERIFY(m_form.m_name->isVisible());
    QVERIFY(m_form.m_check->isVisible());
    QCOMPARE(changed, (QList<QList<QVariant>>{{true}, {false}}));
}

void tst_QZOCollapsibleFrame::clickOnTheContentDoesNot()
{
    const QPoint below(m_form.m_open->width() / 2, m_form.m_open->height() - 2);

    QTest::mouseClick(m_form.m_open, Qt::LeftButton, Qt::NoModifier, below);

    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::pressOutsideAndReleaseOnTheTitleDoesNot()
{
    QTest::mousePress(m_form.m_open, Qt::LeftButton, Qt::NoModifier,
                      QPoint(m_form.m_open->width() / 2, m_form.m_open->height() - 2));
    QTest::mouseRelease(m_form.m_open, Qt::LeftButton, Qt::NoModifier, onTitle(m_form.m_open));

    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::rightClickDoesNot()
{
    QTest::mouseClick(m_form.m_open, Qt::RightButton, Qt::NoModifier, onTitle(m_form.m_open));

    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::keyOnTheTitleFoldsAndUnfolds_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void tst_QZOCollapsibleFrame::keyOnTheTitleFoldsAndUnfolds()
{
    QFETCH(int, key);
    m_form.m_open->setFocus();
    QVERIFY(m_form.m_open->hasFocus());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
    QVERIFY(m_form.m_open->isCollapsed());

    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::keyInAFieldDoesNotFold_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void tst_QZOCollapsibleFrame::keyInAFieldDoesNotFold()
{
    QFETCH(int, key);
    m_form.m_name->setFocus();
    QVERIFY(m_form.m_name->hasFocus());

    QTest::keyClick(m_form.m_name, Qt::Key(key));

    QVERIFY(!m_form.m_open->isCollapsed());
    QVERIFY(m_form.m_name->hasFocus());
}

void tst_QZOCollapsibleFrame::otherKeysAreLeftToTheWindow()
{
    m_form.m_open->setFocus();

    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(m_form.m_open, &press);

    QVERIFY(!press.isAccepted());
    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::foldedFrameIsAsHighAsItsTitle()
{
    const int open = m_form.m_open->height();

    m_form.m_open->setCollapsed(true);

    QTRY_VERIFY(m_form.m_open->height() < open / 2);
    QCOMPARE(m_form.m_open->height(), m_form.m_open->minimumSizeHint().height());
    QVERIFY(m_form.m_open->height() >= m_form.m_open->fontMetrics().height());
}

void tst_QZOCollapsibleFrame::formMayStartFolded()
{
    QVERIFY(m_form.m_closed->isCollapsed());
    QVERIFY(!m_form.m_first->isVisible());
    QVERIFY(!m_form.m_second->isVisible());

    QTest::mouseClick(m_form.m_closed, Qt::LeftButton, Qt::NoModifier, onTitle(m_form.m_closed));

    QVERIFY(m_form.m_first->isVisible());
    QVERIFY(m_form.m_second->isVisible());
}

void tst_QZOCollapsibleFrame::foldedContentIsNotInTheTabOrder()
{
    m_form.m_closed->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);

    QVERIFY(QApplication::focusWidget() != m_form.m_first);
    QVERIFY(!m_form.m_closed->isAncestorOf(QApplication::focusWidget()));
}

void tst_QZOCollapsibleFrame::focusInTheContentGoesToTheTitle()
{
    m_form.m_name->setFocus();
    QVERIFY(m_form.m_name->hasFocus());

    m_form.m_open->setCollapsed(true);

    QVERIFY(m_form.m_open->hasFocus());
}

void tst_QZOCollapsibleFrame::hiddenChildStaysHiddenWhenUnfolded()
{
    m_form.m_check->hide();

    m_form.m_open->setCollapsed(true);
    m_form.m_open->setCollapsed(false);

    QVERIFY(!m_form.m_check->isVisible());
    QVERIFY(m_form.m_name->isVisible());
}

void tst_QZOCollapsibleFrame::childShownWhileFoldedAppearsWithTheUnfolding()
{
    m_form.m_open->setCollapsed(true);

    m_form.m_name->show();
    QVERIFY(!m_form.m_name->isVisible());
    m_form.m_open->setCollapsed(false);

    QVERIFY(m_form.m_name->isVisible());
}

void tst_QZOCollapsibleFrame::childAddedWhileFoldedAppearsWithTheUnfolding()
{
    m_form.m_open->setCollapsed(true);

    QLineEdit* const late = new QLineEdit;
    m_form.openLayout->addRow(late);
    QCoreApplication::processEvents();
    QVERIFY(!late->isVisible());
    m_form.m_open->setCollapsed(false);

    QTRY_VERIFY(late->isVisible());
}

void tst_QZOCollapsibleFrame::childDestroyedWhileFoldedIsForgotten()
{
    m_form.m_open->setCollapsed(true);

    delete m_form.m_check;
    m_form.m_open->setCollapsed(false);

    QVERIFY(m_form.m_name->isVisible());
}

void tst_QZOCollapsibleFrame::stateSurvivesHidingTheWindow()
{
    m_form.m_open->setCollapsed(true);

    m_window->hide();
    m_window->show();

    QVERIFY(m_form.m_open->isCollapsed());
    QVERIFY(!m_form.m_name->isVisible());
    m_form.m_open->setCollapsed(false);
    QVERIFY(m_form.m_name->isVisible());
}

void tst_QZOCollapsibleFrame::maximumHeightComesBack()
{
    m_form.m_open->setMaximumHeight(150);

    m_form.m_open->setCollapsed(true);
    m_form.m_open->setCollapsed(false);

    QCOMPARE(m_form.m_open->maximumHeight(), 150);
}

void tst_QZOCollapsibleFrame::setterAnnouncesOnlyChanges()
{
    QSignalSpy changed(m_form.m_open, &QZOCollapsibleFrame::collapsedChanged);

    m_form.m_open->setCollapsed(false);
    QCOMPARE(changed.size(), 0);
    m_form.m_open->setCollapsed(true);
    m_form.m_open->setCollapsed(true);

    QCOMPARE(changed.size(), 1);
}

void tst_QZOCollapsibleFrame::disabledFrameDoesNotFold()
{
    m_form.m_open->setEnabled(false);

    QTest::mouseClick(m_form.m_open, Qt::LeftButton, Qt::NoModifier, onTitle(m_form.m_open));

    QVERIFY(!m_form.m_open->isCollapsed());
}

void tst_QZOCollapsibleFrame::frameShapeKeepsRoomForTheTitle()
{
    m_form.m_open->setFrameShape(QFrame::StyledPanel);
    m_form.openLayout->addRow(new QLineEdit);

    QTRY_VERIFY(m_form.m_open->contentsMargins().top() >= m_form.m_open->fontMetrics().height());
}

// It is painted anew when the mouse comes and when it goes.
void tst_QZOCollapsibleFrame::titleGlowsUnderTheMouse()
{
    class Paints final : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }

        int count = 0;
    };
    QWidget* const frame = m_form.m_open;
    const QPoint outside = m_window->mapToGlobal(QPoint(m_window->width() - 1, m_window->height() - 1));
    QCursor::setPos(outside);
    QCoreApplication::processEvents();
    Paints paints;
    frame->installEventFilter(&paints);
    const QImage before = frame->grab().toImage();

    paints.count = 0;
    QCursor::setPos(frame->mapToGlobal(onTitle(frame)));
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(frame->grab().toImage() != before);

    paints.count = 0;
    QCursor::setPos(outside);
    QTRY_VERIFY(paints.count > 0);
    QCOMPARE(frame->grab().toImage(), before);
}

ZO_TEST_MAIN(tst_QZOCollapsibleFrame)
#include "tst_QZOCollapsibleFrame.moc"
