#include "zoTestCase.h"

#include <zoHPCHostTree.h>
#include <zoHPCHostsReading.h>

#include <QApplication>
#include <QTest>

namespace
{
// "offset: reason", one below the other.
QStringList notes(const zoHPCHostsReading& reading)
{
    QStringList result;
    for (const zoHPCHostsReading::Note& note : reading.notes())
        result << QString::number(note.offset) + QStringLiteral(": ") + note.reason;
    return result;
}
} // namespace

// Hosts as people type them.
class tst_zoHPCHostsReading final : public zoTestCase
{
    Q_OBJECT

private slots:
    void textIsReadWithItsNotes_data();
    void textIsReadWithItsNotes();
    void textIsWhatTheHostTreeReads();
};

void tst_zoHPCHostsReading::textIsReadWithItsNotes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QStringList>("expected");

    using Outcome = zoHPCHostsReading::Outcome;
    const int read = int(Outcome::Read);
    const int otherwise = int(Outcome::ReadOtherwise);
    const int refused = int(Outcome::Refused);
    QTest::newRow("hosts-text") << "{ a1 - a3 gw[rt=0] { c } }" << read << "{ a1 - a3 gw[rt=0] { c } }"
                                << QStringList();
    QTest::newRow("brackets") << "n[1-3]" << read << "n1 n2 n3" << QStringList();
    QTest::newRow("empty") << "" << read << "" << QStringList();
    QTest::newRow("lost-characters") << "a n_1" << otherwise << "a n_1"
                                     << QStringList{"2: \"n_1\" reads as \"n1\""};
    QTest::newRow("range-of-nothing")
        << "a1 - b3" << otherwise << "a1 - b3"
        << QStringList{"5: \"a1 - b3\" fills nothing: the names differ before their number"};
    QTest::newRow("place-before-brackets")
        << "n[1-2] b_c" << otherwise << "n1 n2 b_c" << QStringList{"7: \"b_c\" reads as \"bc\""};
    QTest::newRow("not-closed") << "a { b" << refused << "" << QStringList{"2: \"{\" is not closed"};
    QTest::newRow("backwards") << "a n[2-1]" << refused << "" << QStringList{"4: \"2-1\" runs backwards"};
    QTest::newRow("hint") << "a1b - a4b" << refused << "a1b - a4b"
                          << QStringList{
                                 "6: \"a1b - a4b\" is no range: both names must be text with a number at its "
                                 "end; write \"a[1-4]b\""};
}

void tst_zoHPCHostsReading::textIsReadWithItsNotes()
{
    QFETCH(QString, text);
    QFETCH(int, outcome);
    QFETCH(QString, read);
    QFETCH(QStringList, expected);

    zoHPCHostsReading reading;
    const int result = int(reading.read(text));

    QCOMPARE(result, outcome);
    QCOMPARE(notes(reading), expected);
    QCOMPARE(reading.text(), read);
}

void tst_zoHPCHostsReading::textIsWhatTheHostTreeReads()
{
    zoHPCHostsReading reading;
    zoHPCHostTree tree;

    QCOMPARE(reading.read(QStringLiteral("head[rt=0] gate[rt=0] { n[08-11] m1 - m3 }")),
             zoHPCHostsReading::Outcome::Read);
    tree.setHostString(reading.text());

    QStringList names;
    for (const QString& name : reading.outline().hostNames())
        names << name;
    QCOMPARE(names, tree.getNodeNames());
    QCOMPARE(names, (QStringList{"head", "gate", "n08", "n09", "n10", "n11", "m1", "m2", "m3"}));
}

ZO_TEST_MAIN(tst_zoHPCHostsReading)
#include "tst_zoHPCHostsReading.moc"
