#include "zoTestCase.h"

#include <zoHPCTextDelta.h>

#include <QApplication>

#include <QRandomGenerator>

#include <algorithm>

class tst_zoHPCTextDelta final : public zoTestCase
{
    Q_OBJECT

private slots:
    void eachTextComesFromTheOther_data();
    void eachTextComesFromTheOther();
    void randomTextsComeFromEachOther();
    void holdsOnlyWhatDiffers_data();
    void holdsOnlyWhatDiffers();
    void tellsWholeLines();
};

namespace
{
QStringList numbered(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QStringLiteral("  <node name=\"n%1\"/>\n").arg(i);
    return lines;
}
} // namespace

void tst_zoHPCTextDelta::eachTextComesFromTheOther_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("hunks");

    QTest::newRow("both-empty") << ""
                                << "" << 0;
    QTest::newRow("same") << "a\nb\n"
                          << "a\nb\n"
                          << 0;
    QTest::newRow("from-nothing") << ""
                                  << "a\nb\n"
                                  << 1;
    QTest::newRow("to-nothing") << "a\nb\n"
                                << "" << 1;
    QTest::newRow("first-line") << "a\nb\nc\n"
                                << "x\nb\nc\n"
                                << 1;
    QTest::newRow("last-line") << "a\nb\nc\n"
                               << "a\nb\nx\n"
                               << 1;
    QTest::newRow("no-last-newline") << "a\nb"
                                     << "a\nb\n"
                                     << 1;
    QTest::newRow("last-newline-goes") << "a\nb\n"
                                       << "a\nb" << 1;
    QTest::newRow("within-a-line") << "aXa\n"
                                   << "aYa\n"
                                   << 1;
    QTest::newRow("line-doubled") << "a\na\nb\n"
                                  << "a\na\na\nb\n"
                                  << 1;
    QTest::newRow("line-of-a-pair-goes") << "a\na\n"
                                         << "a\n"
                                         << 1;
    QTest::newRow("two-places") << "a\nb\nc\nd\ne\nf\n"
                                << "a\nX\nc\nd\nY\nf\n"
                                << 2;
    QTest::newRow("empty-lines") << "\n\n\n"
                                 << "\n\n\n\n"
                                 << 1;
    QTest::newRow("not-one-line-alike") << "a\nb\n"
                                        << "c\nd\ne\n"
                                        << 1;
    QTest::newRow("lone-surrogate") << QString(QChar(0xd800)) << QString(QChar(0xdc00)) << 1;
}

void tst_zoHPCTextDelta::eachTextComesFromTheOther()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(int, hunks);

    const zoHPCTextDelta delta = zoHPCTextDelta::between(before, after);

    QCOMPARE(int(delta.hunks().size()), hunks);
    QCOMPARE(delta.isEmpty(), hunks == 0);
    QCOMPARE(delta.applied(before), after);
    QCOMPARE(delta.reverted(after), before);
}

void tst_zoHPCTextDelta::randomTextsComeFromEachOther()
{
    QRandomGenerator random(20261122);
    const auto below = [&random](int bound) { return int(random.bounded(quint32(bound))); };
    for (int round = 0; round < 400; ++round) {
        // Few kinds of lines: each stands at many places.
        const int kinds = 1 + below(round % 2 == 0 ? 4 : 400);
        QStringList before;
        for (int i = below(300); i > 0; --i)
            before << QStringLiteral("%1\n").arg(below(kinds));
        QStringList after = before;
        for (int edits = below(30); edits > 0; --edits) {
            const int place = below(after.size() + 1);
            if (below(2) == 0)
                after.insert(place, QStringLiteral("%1\n").arg(below(kinds)));
            else if (place < after.size())
                after.erase(after.begin() + place,
                            after.begin() + std::min<int>(after.size(), place + below(120)));
        }
        const QString left = before.join(QString());
        const QString right = after.join(QString());

        const zoHPCTextDelta delta = zoHPCTextDelta::between(left, right);

        QCOMPARE(delta.applied(left), right);
        QCOMPARE(delta.reverted(right), left);
    }
}

void tst_zoHPCTextDelta::holdsOnlyWhatDiffers_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("removed");
    QTest::addColumn<int>("every");

    QTest::newRow("one") << 5000 << 1 << 0;
    QTest::newRow("as-many-as-are-near") << 100 << 48 << 0;
    QTest::newRow("one-more") << 100 << 49 << 0;
    QTest::newRow("thousands") << 100 << 9000 << 0;
    QTest::newRow("both-ends") << 0 << 0 << 9999;
    QTest::newRow("each-hundredth") << 0 << 0 << 100;
}

void tst_zoHPCTextDelta::holdsOnlyWhatDiffers()
{
    QFETCH(int, from);
    QFETCH(int, removed);
    QFETCH(int, every);
    const QStringList before = numbered(10000);
    QStringList after = before.mid(0, from) + before.mid(from + removed);
    int changed = 0;
    for (int i = 0; every > 0 && i < after.size(); i += every, ++changed)
        after[i] = QStringLiteral("  <node name=\"renamed%1\"/>\n").arg(i);

    const zoHPCTextDelta delta = zoHPCTextDelta::between(before.join(QString()), after.join(QString()));

    int lines = 0;
    for (const zoHPCTextDelta::Hunk& hunk : delta.hunks())
        lines += hunk.removed.count(QLatin1Char('\n')) + hunk.inserted.count(QLatin1Char('\n'));
    QCOMPARE(lines, removed + 2 * changed);
}

void tst_zoHPCTextDelta::tellsWholeLines()
{
    const zoHPCTextDelta delta =
        zoHPCTextDelta::between("<a>\n <node name=\"n1\"/>\n</a>\n", "<a>\n <node name=\"n2\"/>\n</a>\n");

    QCOMPARE(int(delta.hunks().size()), 1);
    QCOMPARE(delta.hunks().front().removed, QStringLiteral(" <node name=\"n1\"/>\n"));
    QCOMPARE(delta.hunks().front().inserted, QStringLiteral(" <node name=\"n2\"/>\n"));
    QCOMPARE(delta.hunks().front().before, 4);
    QCOMPARE(delta.hunks().front().after, 4);
}

ZO_TEST_MAIN(tst_zoHPCTextDelta)
#include "tst_zoHPCTextDelta.moc"
