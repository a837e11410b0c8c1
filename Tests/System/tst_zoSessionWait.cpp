#include "zoTestCase.h"

#include <zoSessionWait.h>

#include <QApplication>
#include <QTimer>

#include <memory>

// Waits of the cluster services: each end has its name, and a wait that cannot be is none.
class tst_zoSessionWait final : public zoTestCase
{
    Q_OBJECT

private slots:
    void doneBeforeItBegins();
    void doneWhenWoken();
    void wakingWithoutAReasonGoesOn();
    void timedOut();
    void doneAtTheLimitIsDone();
    void endedBeforeItBegins();
    void endedWhenWoken();
    void waitInsideAWaitIsEnded();
    void destroyedWhileItWaits();
    void endOfTheApplicationEndsIt();
    void nothingWaitsAfterTheApplicationEnded();
};

namespace
{
using Outcome = zoSessionWait::Outcome;
constexpr int Long = 600000; // ms: longer than the test may take

bool never()
{
    return false;
}

// Runs something where the application's own loop runs, until it ends the application.
template <typename Function>
void inApplication(Function function)
{
    QTimer::singleShot(0, qApp, function);
    QApplication::exec();
}
} // namespace

void tst_zoSessionWait::doneBeforeItBegins()
{
    zoSessionWait wait(never);
    bool isHandled = false;
    QTimer::singleShot(0, this, [&isHandled] { isHandled = true; });

    QCOMPARE(wait.until([] { return true; }, Long), Outcome::Done);

    QVERIFY(!isHandled);
    QCoreApplication::processEvents();
}

void tst_zoSessionWait::doneWhenWoken()
{
    zoSessionWait wait(never);
    bool isDone = false;
    QTimer::singleShot(0, this, [&] {
        isDone = true;
        wait.wake();
    });

    QCOMPARE(wait.until([&isDone] { return isDone; }, Long), Outcome::Done);
    QVERIFY(!wait.takeQuit());
}

void tst_zoSessionWait::wakingWithoutAReasonGoesOn()
{
    zoSessionWait wait(never);
    int count = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        ++count;
        wait.wake();
    });
    timer.start(0);

    QCOMPARE(wait.until([&count] { return count >= 3; }, Long), Outcome::Done);
    QCOMPARE(count, 3);
    wait.wake(); // nobody waits
}

void tst_zoSessionWait::timedOut()
{
    zoSessionWait wait(never);

    QCOMPARE(wait.until(never, 1), Outcome::TimedOut);
    QCOMPARE(wait.until(never, 0), Outcome::TimedOut);
    QVERIFY(!wait.takeQuit());
}

// What became true without a word counts all the same.
void tst_zoSessionWait::doneAtTheLimitIsDone()
{
    zoSessionWait wait(never);
    bool isDone = false;
    QTimer::singleShot(0, this, [&isDone] { isDone = true; });

    QCOMPARE(wait.until([&isDone] { return isDone; }, 50), Outcome::Done);
}

void tst_zoSessionWait::endedBeforeItBegins()
{
    zoSessionWait wait([] { return true; });

    QCOMPARE(wait.until([] { return true; }, Long), Outcome::Ended);
}

void tst_zoSessionWait::endedWhenWoken()
{
    bool isOver = false;
    zoSessionWait wait([&isOver] { return isOver; });
    QTimer::singleShot(0, this, [&] {
        isOver = true;
        wait.wake();
    });

    QCOMPARE(wait.until(never, Long), Outcome::Ended);
    QVERIFY(!wait.takeQuit());
    isOver = false;
    QCOMPARE(wait.until(never, 1), Outcome::TimedOut);
}

void tst_zoSessionWait::waitInsideAWaitIsEnded()
{
    zoSessionWait wait(never);
    Outcome inner = Outcome::Done;
    bool isDone = false;
    QTimer::singleShot(0, this, [&] {
        inner = wait.until([] { return true; }, Long);
        isDone = true;
        wait.wake();
    });

    QCOMPARE(wait.until([&isDone] { return isDone; }, Long), Outcome::Done);
    QCOMPARE(inner, Outcome::Ended);
}

void tst_zoSessionWait::destroyedWhileItWaits()
{
    auto wait = std::make_unique<zoSessionWait>(never);
    QTimer::singleShot(0, this, [&wait] { wait.reset(); });

    QCOMPARE(wait->until(never, Long), Outcome::Destroyed);
    QVERIFY(!wait);
}

// Told once; until it was taken no wait begins.
void tst_zoSessionWait::endOfTheApplicationEndsIt()
{
    zoSessionWait wait(never);
    Outcome first = Outcome::Done;
    Outcome second = Outcome::Done;
    int questions = 0;
    inApplication([&] {
        QTimer::singleShot(0, qApp, &QApplication::quit);
        first = wait.until(never, Long);
        second = wait.until(
            [&questions] {
                ++questions;
                return false;
            },
            Long);
    });

    QCOMPARE(first, Outcome::Ended);
    QCOMPARE(second, Outcome::Ended);
    QCOMPARE(questions, 0);
    QVERIFY(wait.takeQuit());
    QVERIFY(!wait.takeQuit());
    QCOMPARE(wait.until(never, 1), Outcome::TimedOut);
}

// Then a loop returns at once: whoever took that for a wait that was woken would spin.
void tst_zoSessionWait::nothingWaitsAfterTheApplicationEnded()
{
    zoSessionWait wait(never);
    int waits = 0;
    Outcome last = Outcome::TimedOut;
    inApplication([&] {
        QApplication::quit();
        while (last == Outcome::TimedOut && waits < 10) {
            last = wait.until(never, Long);
            ++waits;
        }
    });

    QCOMPARE(last, Outcome::Ended);
    QCOMPARE(waits, 1);
    QVERIFY(wait.takeQuit());
}

ZO_TEST_MAIN(tst_zoSessionWait)
#include "tst_zoSessionWait.moc"
