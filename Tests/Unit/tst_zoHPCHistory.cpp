#include "zoTestCase.h"

#include <zoHPCHistory.h>
#include <zoHPCStepName.h>

#include <QApplication>

#include <algorithm>

class tst_zoHPCHistory final : public zoTestCase
{
    Q_OBJECT

private slots:
    void stepsGoBackAndForth();
    void recordEndsWhatWasUndone();
    void stepGoesOn();
    void stepThatLeadsNowhereGoes();
    void closedStepDoesNotGoOn();
    void stepDoesNotGoOnAfterUndo();
    void changeOfItsOwnIsNoStep();
    void changeOfItsOwnLeadsToBothSides();
    void oldestStepsGoFirst_data();
    void oldestStepsGoFirst();
    void stepsTakeWhatTheyChange();
    void stepHasItsName_data();
    void stepHasItsName();
};

namespace
{
QString nameOf(const zoHPCTextDelta&)
{
    return QStringLiteral("again");
}

void record(zoHPCHistory& history, const QString& text, const QString& name = QString())
{
    zoHPCHistory::Step step;
    step.delta = zoHPCTextDelta::between(history.text(), text);
    step.name = name;
    history.record(step, text);
}
} // namespace

void tst_zoHPCHistory::stepsGoBackAndForth()
{
    zoHPCHistory history;
    history.reset("0\n");
    QVERIFY(!history.undoStep());
    QVERIFY(!history.redoStep());
    record(history, "0\n1\n", "first");
    record(history, "0\n1\n2\n", "second");

    QCOMPARE(history.undoStep()->name, QStringLiteral("second"));
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n1\n"));
    QCOMPARE(history.undoStep()->name, QStringLiteral("first"));
    QCOMPARE(history.redoStep()->name, QStringLiteral("second"));
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n"));
    QVERIFY(!history.undoStep());
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n"));
    history.redo();
    history.redo();
    QCOMPARE(history.text(), QStringLiteral("0\n1\n2\n"));
    QVERIFY(!history.redoStep());
    history.redo();
    QCOMPARE(history.text(), QStringLiteral("0\n1\n2\n"));

    history.reset("x\n");
    QVERIFY(!history.undoStep());
    QCOMPARE(history.size(), 0);
}

void tst_zoHPCHistory::recordEndsWhatWasUndone()
{
    zoHPCHistory history;
    history.reset("0\n");
    record(history, "1\n");
    const qint64 size = history.size();
    record(history, "2\n");
    history.undo();
    history.undo();
    record(history, "3\n");

    QVERIFY(!history.redoStep());
    QCOMPARE(int(history.stepCount()), 1);
    QCOMPARE(history.size(), size);
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n"));
}

void tst_zoHPCHistory::stepGoesOn()
{
    zoHPCHistory history;
    history.reset("0\n");
    record(history, "1\n");

    QVERIFY(history.extend("12\n", QByteArray("there"), nameOf));
    QVERIFY(history.extend("123\n", QByteArray("there"), nameOf));

    QCOMPARE(int(history.stepCount()), 1);
    QCOMPARE(history.undoStep()->name, QStringLiteral("again"));
    QCOMPARE(history.undoStep()->placeAfter, QByteArray("there"));
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n"));
    history.redo();
    QCOMPARE(history.text(), QStringLiteral("123\n"));
}

void tst_zoHPCHistory::stepThatLeadsNowhereGoes()
{
    zoHPCHistory history;
    history.reset("0\n");
    record(history, "1\n");
    record(history, "2\n");

    QVERIFY(history.extend("1\n", QByteArray(), nameOf));

    QCOMPARE(int(history.stepCount()), 1);
    QCOMPARE(history.text(), QStringLiteral("1\n"));
    // The one before belongs to something else.
    QVERIFY(!history.extend("3\n", QByteArray(), nameOf));
}

void tst_zoHPCHistory::closedStepDoesNotGoOn()
{
    zoHPCHistory history;
    history.reset("0\n");
    QVERIFY(!history.extend("1\n", QByteArray(), nameOf));
    record(history, "1\n");
    history.close();

    QVERIFY(!history.extend("2\n", QByteArray(), nameOf));
    QCOMPARE(history.text(), QStringLiteral("1\n"));
}

void tst_zoHPCHistory::stepDoesNotGoOnAfterUndo()
{
    zoHPCHistory history;
    history.reset("0\n");
    record(history, "1\n");
    record(history, "2\n");
    history.undo();

    QVERIFY(!history.extend("3\n", QByteArray(), nameOf));
    history.redo();
    QVERIFY(!history.extend("3\n", QByteArray(), nameOf));
}

void tst_zoHPCHistory::changeOfItsOwnIsNoStep()
{
    zoHPCHistory history;
    history.reset("0\n");

    history.absorb("00\n");

    QCOMPARE(history.text(), QStringLiteral("00\n"));
    QVERIFY(!history.undoStep());
}

void tst_zoHPCHistory::changeOfItsOwnLeadsToBothSides()
{
    zoHPCHistory history;
    history.reset("0\n");
    record(history, "1\n");
    record(history, "2\n");
    history.undo();

    history.absorb("1\nx\n");

    history.undo();
    QCOMPARE(history.text(), QStringLiteral("0\n"));
    history.redo();
    QCOMPARE(history.text(), QStringLiteral("1\nx\n"));
    history.redo();
    QCOMPARE(history.text(), QStringLiteral("2\n"));
    history.undo();
    QCOMPARE(history.text(), QStringLiteral("1\nx\n"));
}

void tst_zoHPCHistory::oldestStepsGoFirst_data()
{
    QTest::addColumn<int>("spare"); // bytes beyond what ten steps take
    QTest::addColumn<int>("left");

    QTest::newRow("none-fits") << -1000000 << 0;
    QTest::newRow("one-byte-less") << -1 << 9;
    QTest::newRow("exactly") << 0 << 10;
    QTest::newRow("one-byte-more") << 1 << 10;
}

void tst_zoHPCHistory::oldestStepsGoFirst()
{
    QFETCH(int, spare);
    QFETCH(int, left);
    zoHPCHistory first;
    first.reset("0\n");
    for (int i = 1; i <= 10; ++i)
        record(first, QString(QLatin1Char(char('a' + i))) + QLatin1Char('\n'));
    zoHPCHistory history(std::max<qint64>(qint64(0), first.size() + spare));
    history.reset("0\n");

    for (int i = 1; i <= 10; ++i)
        record(history, QString(QLatin1Char(char('a' + i))) + QLatin1Char('\n'));

    QCOMPARE(int(history.stepCount()), left);
    QVERIFY(history.size() <= std::max<qint64>(qint64(0), first.size() + spare));
    QCOMPARE(history.text(), QStringLiteral("k\n"));
    for (int i = 0; i < left; ++i)
        history.undo();
    QCOMPARE(history.text(), left == 10 ? QStringLiteral("0\n")
                                        : QString(QLatin1Char(char('a' + 10 - left))) + QLatin1Char('\n'));
    QVERIFY(!history.undoStep());
}

void tst_zoHPCHistory::stepsTakeWhatTheyChange()
{
    QString text;
    for (int i = 0; i < 10000; ++i)
        text += QStringLiteral("  <node name=\"n%1\"/>\n").arg(i);
    zoHPCHistory history;
    history.reset(text);

    for (int i = 0; i < 100; ++i) {
        text.replace(QStringLiteral("\"n%1\"").arg(i * 100), QStringLiteral("\"m%1\"").arg(i * 100));
        record(history, text);
    }

    // A step changes one line in ten thousand.
    QVERIFY(history.size() < 100 * 1024);
}

void tst_zoHPCHistory::stepHasItsName_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isStructural");

    const QString wall = " <projection name=\"Wall\" type=\"wall\"/>\n";
    const QString front = " <projection name=\"Front &amp; left\" type=\"plane\"/>\n";
    const QString window = "  <window node=\"gpu01\" screen=\"0\"/>\n";
    const QString viewport = "   <viewport projection=\"Wall\"/>\n";
    const QString empty = "   <viewport projection=\"\"/>\n";
    QTest::newRow("delete-projection") << wall + window + viewport << window + empty << ""
                                       << "Delete projection Wall" << true;
    QTest::newRow("name-with-escapes") << front << ""
                                       << ""
                                       << "Delete projection Front & left" << true;
    QTest::newRow("add-node") << "  <node name=\"a\"/>\n"
                              << "  <node name=\"a\"/>\n  <node name=\"b\"/>\n"
                              << ""
                              << "Add compute node b" << true;
    QTest::newRow("add-same-node") << "  <node name=\"a\"/>\n"
                                   << "  <node name=\"a\"/>\n  <node name=\"a\"/>\n"
                                   << ""
                                   << "Add compute node a" << true;
    QTest::newRow("add-two-nodes") << ""
                                   << "  <node name=\"a\"/>\n  <node name=\"b\"/>\n"
                                   << ""
                                   << "Add 2 compute nodes" << true;
    QTest::newRow("add-window-with-viewport") << "" << window + viewport << ""
                                              << "Add window gpu01" << true;
    QTest::newRow("add-nameless-network") << ""
                                          << "  <network/>\n"
                                          << ""
                                          << "Add network" << true;
    QTest::newRow("add-display") << ""
                                 << " <display user=\"1\"/>\n"
                                 << ""
                                 << "Add display" << true;
    QTest::newRow("children-are-no-projections")
        << wall
        << " <projection name=\"Wall\" type=\"cave\">\n  <projection name=\"Left\"/>\n </projection>\n"
        << ""
        << "Change projection Wall" << false;
    QTest::newRow("convert") << wall << front + " <projection name=\"B\"/>\n"
                             << ""
                             << "Convert projection Wall to planes" << true;
    QTest::newRow("field") << window << "  <window node=\"gpu01\" screen=\"1\"/>\n"
                           << "Screen"
                           << "Change \"Screen\" of window gpu01" << false;
    QTest::newRow("value") << window << "  <window node=\"gpu01\" screen=\"1\"/>\n"
                           << ""
                           << "Change window gpu01" << false;
    QTest::newRow("options") << " <master scenecompression=\"best\">\n"
                             << " <master>\n"
                             << "Data compression"
                             << "Change \"Data compression\" of options" << false;
    QTest::newRow("hosts-text") << "  <network>\n   <node name=\"a\"/>\n  </network>\n"
                                << "  <network/>\n  <network/>\n"
                                << ""
                                << "Change cluster computers" << true;
    QTest::newRow("moved-node") << "  <network>\n   <node name=\"a\"/>\n   <node name=\"b\"/>\n  </network>\n"
                                   "  <network>\n   <node name=\"c\"/>\n   <node name=\"d\"/>\n  </network>\n"
                                << "  <network>\n   <node name=\"b\"/>\n  </network>\n"
                                   "  <network>\n   <node name=\"c\"/>\n   <node name=\"d\"/>\n"
                                   "   <node name=\"a\"/>\n  </network>\n"
                                << ""
                                << "Move compute node a" << true;
    QTest::newRow("renamed-node") << "   <node name=\"a\"/>\n  <window node=\"a\"/>\n"
                                  << "   <node name=\"b\"/>\n  <window node=\"b\"/>\n"
                                  << "Name"
                                  << "Change \"Name\" of compute node b" << false;
    QTest::newRow("something-else") << "<x/>\n"
                                    << "<y/>\n"
                                    << ""
                                    << "Change configuration" << false;
}

void tst_zoHPCHistory::stepHasItsName()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, field);

    const zoHPCStepName step(zoHPCTextDelta::between(before, after), field);

    QTEST(step.text(), "name");
    QTEST(step.isStructural(), "isStructural");
}

ZO_TEST_MAIN(tst_zoHPCHistory)
#include "tst_zoHPCHistory.moc"
