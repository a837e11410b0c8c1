#include "zoTestCase.h"

#include <zoServerChild.h>

#include <QApplication>
#include <QSignalSpy>

// Programs of a session as their starter sees them.
class tst_zoServerChild final : public zoTestCase
{
    Q_OBJECT

private slots:
    void reasonIsTheLastLineOfSubstance_data();
    void reasonIsTheLastLineOfSubstance();
};

void tst_zoServerChild::reasonIsTheLastLineOfSubstance_data()
{
    QTest::addColumn<QString>("errors"); // for printf
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("reason");

    const QStringList why{"why"};
    QTest::newRow("nothing") << "" << QStringList() << "exit status 7";
    QTest::newRow("line") << "why\\n" << why << "why";
    QTest::newRow("two-lines") << "first\\nwhy\\n" << QStringList({"first", "why"}) << "why";
    QTest::newRow("without-an-end") << "first\\nwhy" << QStringList("first") << "why";
    QTest::newRow("empty-lines") << "why\\n\\n  \\n" << why << "why";
    QTest::newRow("empty-without-an-end") << "why\\n  " << why << "why";
    // Nothing is wrong with that.
    QTest::newRow("toolkit") << "why\\nQStandardPaths: XDG_RUNTIME_DIR not set\\n" << why << "why";
    QTest::newRow("toolkit-without-an-end") << "why\\nQStandardPaths: XDG_RUNTIME" << why << "why";
    QTest::newRow("toolkit-alone") << "QStandardPaths: XDG_RUNTIME_DIR not set\\n"
                                   << QStringList() << "exit status 7";
}

void tst_zoServerChild::reasonIsTheLastLineOfSubstance()
{
    QFETCH(QString, errors);
    zoServerChild child;
    QSignalSpy ended(&child, &zoServerChild::ended);
    QStringList lines;
    connect(&child, &zoServerChild::errorLine, this, [&lines](const QString& line) { lines << line; });

    child.start({"/bin/sh", "-c", "printf '" + errors + "' >&2; exit 7"});

    QVERIFY(ended.wait());
    QTEST(lines, "lines");
    QTEST(child.lastLine(), "reason");
}

ZO_TEST_MAIN(tst_zoServerChild)
#include "tst_zoServerChild.moc"
