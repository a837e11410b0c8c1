#include "zoTestCase.h"

#include <QZOToolBar.h>

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QSignalSpy>
#include <QToolButton>

// The host's tool bar.
class tst_QZOToolBar final : public zoTestCase
{
    Q_OBJECT

private slots:
    void titleIsTheWindowTitle();
    void addedActionIsAButtonThatTriggersIt();
    void sitsInTheAreaOfAMainWindow();
};

void tst_QZOToolBar::titleIsTheWindowTitle()
{
    QWidget parent;

    const QZOToolBar* const bar = new QZOToolBar(QStringLiteral("Quick"), &parent);

    QCOMPARE(bar->windowTitle(), QStringLiteral("Quick"));
    QCOMPARE(bar->toggleViewAction()->text(), QStringLiteral("Quick"));
    QCOMPARE(bar->parentWidget(), &parent);
}

void tst_QZOToolBar::addedActionIsAButtonThatTriggersIt()
{
    QZOToolBar bar;
    QAction action(QStringLiteral("Start"));
    QSignalSpy triggered(&action, &QAction::triggered);

    bar.addAction(&action);
    bar.show();
    QToolButton* const button = qobject_cast<QToolButton*>(bar.widgetForAction(&action));
    QVERIFY(button != nullptr);
    QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(triggered.size(), 1);
}

void tst_QZOToolBar::sitsInTheAreaOfAMainWindow()
{
    QMainWindow window;
    QZOToolBar* const bar = new QZOToolBar(QStringLiteral("Quick"), &window);
    bar->setAllowedAreas(Qt::BottomToolBarArea);

    window.addToolBar(Qt::BottomToolBarArea, bar);

    QCOMPARE(window.toolBarArea(bar), Qt::BottomToolBarArea);
    QVERIFY(bar->inherits("QToolBar"));
}

ZO_TEST_MAIN(tst_QZOToolBar)
#include "tst_QZOToolBar.moc"
