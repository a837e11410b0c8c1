#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFileInfo>
#include <QTest>

namespace
{
QByteArray wall()
{
    return zoCommandRun::zohpc({"new", "--wall", "2x1", "--size", "2000x500", "--hosts", "n1 n2"}).output;
}
} // namespace

// "zohpc set" as a whole process.
class tst_zohpcSet final : public zoTestCase
{
    Q_OBJECT

private slots:
    void valueIsWhatGetSays_data();
    void valueIsWhatGetSays();
    void restOfTheTextStays();
    void defaultsAreNotWritten_data();
    void defaultsAreNotWritten();
    void renamedItemsKeepWhatNamesThem_data();
    void renamedItemsKeepWhatNamesThem();
    void laterChangeFindsNewNames_data();
    void laterChangeFindsNewNames();
    void mistakeChangesNothing_data();
    void mistakeChangesNothing();
    void allMistakesAreTold();
    void sameValueTouchesNoByte();
    void changedFileIsCanonical();
    void commentsAreNotLost();
    void standardInputGoesToStandardOutput();
    void otherFileIsWritten();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcSet::valueIsWhatGetSays_data()
{
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("flag-of-a-node") << QStringList{"n1/enabled=false"} << "node[n1]/enabled"
                                    << QByteArray("false\n");
    QTest::newRow("truth-as-it-comes")
        << QStringList{"n1/enabled=FALSE"} << "n1/enabled" << QByteArray("false\n");
    QTest::newRow("truth-as-a-number")
        << QStringList{"display[1]/hardwaresync=1"} << "display[1]/hardwaresync" << QByteArray("true\n");
    QTest::newRow("number") << QStringList{"Wall/distance=2500"} << "Wall/distance" << QByteArray("2500\n");
    QTest::newRow("number-in-its-plain-form") << QStringList{"display[1]/eyeseparation=63.50"}
                                              << "display[1]/eyeseparation" << QByteArray("63.5\n");
    QTest::newRow("word") << QStringList{"network[1]/speed=10g"} << "network[1]/speed" << QByteArray("10g\n");
    QTest::newRow("text-with-signs") << QStringList{"network[1]/description=a=b [c]/d"}
                                     << "network[1]/description" << QByteArray("a=b [c]/d\n");
    QTest::newRow("all") << QStringList{"window[*]/fullscreen=false"} << "window[*]/fullscreen"
                         << QByteArray("false\nfalse\n");
    QTest::newRow("first-of-each") << QStringList{"window[*]/viewport[1]/flipx=true"}
                                   << "window[*]/viewport[*]/flipx" << QByteArray("true\ntrue\n");
    QTest::newRow("several") << QStringList{"Wall/width=3000", "window[1]/width=1280"} << "Wall/width"
                             << QByteArray("3000\n");
    QTest::newRow("later-one-holds") << QStringList{"Wall/width=3000", "Wall/width=3100"} << "Wall/width"
                                     << QByteArray("3100\n");
    QTest::newRow("node-of-a-window")
        << QStringList{"window[1]/node=n2"} << "window[1]/node" << QByteArray("n2\n");
    QTest::newRow("place-that-stays")
        << QStringList{"window[1]/viewport/position=custom", "window[1]/viewport/x2=0.25"}
        << "window[1]/viewport/x2" << QByteArray("0.25\n");
    QTest::newRow("computed-from-it")
        << QStringList{"Wall/width=4000"} << "projection[Wall row:1 col:1]/x1" << QByteArray("-2000\n");
    QTest::newRow("type") << QStringList{"Wall/type=wall"} << "projection[Wall row:1 col:2]/type"
                          << QByteArray("tile\n");
}

void tst_zohpcSet::valueIsWhatGetSays()
{
    QFETCH(QStringList, changes);
    QFETCH(QString, path);
    QFETCH(QByteArray, value);
    const QString file = m_files.write("wall.zhpc", wall());

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"set", file} + changes);

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"get", file, path}).output, value);
    QCOMPARE(zoCommandRun::zohpc({"format", "--check", file}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

void tst_zohpcSet::restOfTheTextStays()
{
    const QByteArray text = wall();
    const QString file = m_files.write("wall.zhpc", text);

    QCOMPARE(
        zoCommandRun::zohpc({"set", file, "display[1]/eyeseparation=60", "n2/rendernode=false"}).exitCode, 0);

    QByteArray expected = text;
    expected.replace("eyeseparation=\"65\"", "eyeseparation=\"60\"");
    expected.replace("<node name=\"n2\"/>", "<node name=\"n2\" rendernode=\"false\"/>");
    QCOMPARE(zoCliFiles::read(file), expected);
}

void tst_zohpcSet::defaultsAreNotWritten_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("back");

    QTest::newRow("true") << "n1/enabled=false"
                          << "n1/enabled=true";
    QTest::newRow("empty") << "n1/enabled=false"
                           << "n1/enabled=";
    QTest::newRow("false") << "network[1]/encrypted=true"
                           << "network[1]/encrypted=false";
    QTest::newRow("port") << "network[1]/serviceport=9000"
                          << "network[1]/serviceport=8889";
    QTest::newRow("text") << "network[1]/description=x"
                          << "network[1]/description=";
}

void tst_zohpcSet::defaultsAreNotWritten()
{
    QFETCH(QString, change);
    QFETCH(QString, back);
    const QByteArray text = wall();
    const QString file = m_files.write("wall.zhpc", text);

    QCOMPARE(zoCommandRun::zohpc({"set", file, change}).exitCode, 0);
    QVERIFY(zoCliFiles::read(file) != text);
    QCOMPARE(zoCommandRun::zohpc({"set", file, back}).exitCode, 0);
    QCOMPARE(zoCliFiles::read(file), text);
}

void tst_zohpcSet::renamedItemsKeepWhatNamesThem_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("node") << "n1/name=render1"
                          << "window[*]/node" << QByteArray("render1\nn2\n");
    QTest::newRow("node-with-signs") << "n1/name=_gpu-1.site"
                                     << "window[*]/node" << QByteArray("_gpu-1.site\nn2\n");
    QTest::newRow("projection") << "Wall/name=Front = 1"
                                << "window[*]/viewport/projection"
                                << QByteArray("Front = 1 row:1 col:1\nFront = 1 row:1 col:2\n");
}

void tst_zohpcSet::renamedItemsKeepWhatNamesThem()
{
    QFETCH(QString, change);
    QFETCH(QString, path);
    QFETCH(QByteArray, value);
    const QString file = m_files.write("wall.zhpc", wall());

    const zoCommandRun run = zoCommandRun::zohpc({"set", file, change});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"get", file, path}).output, value);
}

void tst_zohpcSet::laterChangeFindsNewNames_data()
{
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("new-name") << QStringList{"n2/name=m", "node[m]/enabled=false"} << "node[*]/enabled"
                              << QByteArray("true\nfalse\n");
    QTest::newRow("second-that-becomes-the-first")
        << QStringList{"n2/name=n1", "node[n1]/name=m", "node[n1]/enabled=false"} << "node[*]/enabled"
        << QByteArray("true\nfalse\n");
    QTest::newRow("projection") << QStringList{"Wall/name=Front", "Front/width=3000"} << "Front/width"
                                << QByteArray("3000\n");
    QTest::newRow("description") << QStringList{"network[1]/description=Farm", "network[Farm]/speed=10g"}
                                 << "network[1]/speed" << QByteArray("10g\n");
    QTest::newRow("window-that-names-another") << QStringList{"n1/name=y", "window[1]/node=n2", "y/name=z"}
                                               << "window[*]/node" << QByteArray("n2\nn2\n");
}

void tst_zohpcSet::laterChangeFindsNewNames()
{
    QFETCH(QStringList, changes);
    QFETCH(QString, path);
    QFETCH(QByteArray, value);
    const QString file = m_files.write("wall.zhpc", wall());

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"set", file} + changes);

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCommandRun::zohpc({"get", file, path}).output, value);
}

void tst_zohpcSet::mistakeChangesNothing_data()
{
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("no-value") << QStringList{"Wall/distance"}
                              << QByteArray("\"Wall/distance\" is no PATH=VALUE");
    QTest::newRow("no-path") << QStringList{"=5"} << QByteArray("\"=5\" is no PATH=VALUE");
    QTest::newRow("item") << QStringList{"Wall=5"}
                          << QByteArray("\"Wall\" is an item: say which of its values, as Wall/name");
    QTest::newRow("unknown-item") << QStringList{"n9/enabled=false"}
                                  << QByteArray("there is no \"n9\"; did you mean \"n1\"?");
    QTest::newRow("unknown-attribute")
        << QStringList{"n1/enabeld=false"}
        << QByteArray("node[n1] has no \"enabeld\"; did you mean \"enabled\"?");
    QTest::newRow("flag") << QStringList{"n1/enabled=no"}
                          << QByteArray("node[n1]/enabled: \"no\" is not true or false");
    QTest::newRow("word")
        << QStringList{"network[1]/speed=11g"}
        << QByteArray("network[1]/speed: \"11g\" is not one of wan, 1g, 10g, 10g1g, 40g, 40g10g; did you "
                      "mean \"1g\"?");
    QTest::newRow("number") << QStringList{"Wall/distance=far"}
                            << QByteArray("projection[Wall]/distance: \"far\" is not a number");
    QTest::newRow("whole-number") << QStringList{"Wall/rows=1.5"}
                                  << QByteArray("projection[Wall]/rows: \"1.5\" is not a whole number");
    QTest::newRow("limits") << QStringList{"network[1]/serviceport=65536"}
                            << QByteArray(
                                   "network[1]/serviceport: \"65536\" is not a whole number from 1 to 65535");
    QTest::newRow("computed")
        << QStringList{"Wall row:1 col:1/x1=5"}
        << QByteArray("projection[Wall row:1 col:1]/x1 is computed from the projection above it");
    QTest::newRow("name-of-a-node") << QStringList{"n1/name="}
                                    << QByteArray("node[n1]/name: a value is needed");
    // Each would be several hosts, or none, for all that reads the names in a list.
    for (const char* const name :
         {"a b", "a\tb", "a\nb", "a,b", "a|b", "a{b", "a}", "(a", "a[1-2]", "]", "a\x7f"})
        QTest::newRow(("host-" + QByteArray(name).toHex()).constData())
            << QStringList{QLatin1String("n1/name=") + name}
            << "node[n1]/name: \"" + QByteArray(name) + "\" is no name of one host";
    QTest::newRow("unknown-node")
        << QStringList{"window[1]/node=n3"}
        << QByteArray("display[1]/window[1] names the node \"n3\", which is not there; did you "
                      "mean \"n1\"?");
    QTest::newRow("unknown-projection")
        << QStringList{"window[1]/viewport/projection=Wal row:1 col:1"}
        << QByteArray(
               "display[1]/window[1]/viewport[1] shows \"Wal row:1 col:1\", which is not there; did you mean "
               "\"Wall row:1 col:1\"?");
    QTest::newRow("tile-that-goes") << QStringList{"Wall/columns=1"}
                                    << QByteArray("display[1]/window[2]/viewport[1] shows \"Wall row:1 "
                                                  "col:2\", which is not there; did you mean "
                                                  "\"Wall row:1 col:1\"?");
    QTest::newRow("place-that-is-computed")
        << QStringList{"window[1]/viewport/x2=0.25"}
        << QByteArray("display[1]/window[1]/viewport[1]/x2: \"0.25\" would not stay, but become \"1\"");
    QTest::newRow("one-of-two") << QStringList{"Wall/distance=900", "n1/enabled=no"}
                                << QByteArray("node[n1]/enabled: \"no\" is not true or false");
}

void tst_zohpcSet::mistakeChangesNothing()
{
    QFETCH(QStringList, changes);
    QFETCH(QByteArray, reason);
    const QByteArray text = wall();
    const QString file = m_files.write("wall.zhpc", text);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"set", file} + changes);

    QCOMPARE(run.whole(), "--- errors\n" + file.toUtf8() + ": " + reason + "\n--- exit code 2\n");
    QCOMPARE(zoCliFiles::read(file), text);
}

void tst_zohpcSet::allMistakesAreTold()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"set", "-", "n1/enabled=no", "n8/enabled=true", "x"}, wall());

    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors.count('\n'), 3);
}

void tst_zohpcSet::sameValueTouchesNoByte()
{
    // Not canonical, and with a comment: still nothing is lost.
    QByteArray text = wall();
    text.replace("<cluster version=\"1\">", "<cluster  version='1'><!-- ours -->");
    const QString file = m_files.write("wall.zhpc", text);
    const QDateTime before = QFileInfo(file).lastModified();

    const zoCommandRun run = zoCommandRun::zohpc({"set", file, "Wall/distance=1500.0", "n1/enabled=true"});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCliFiles::read(file), text);
    QCOMPARE(QFileInfo(file).lastModified(), before);
}

void tst_zohpcSet::changedFileIsCanonical()
{
    QByteArray text = wall();
    text.replace("<cluster version=\"1\">", "<cluster  version='1'>");
    const QString file = m_files.write("wall.zhpc", text);

    QCOMPARE(zoCommandRun::zohpc({"set", file, "Wall/distance=1600"}).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));

    QByteArray expected = wall();
    expected.replace("distance=\"1500\"", "distance=\"1600\"");
    expected.replace("-1500\"", "-1600\"");
    QCOMPARE(zoCliFiles::read(file), expected);
}

void tst_zohpcSet::commentsAreNotLost()
{
    QByteArray text = wall();
    text.replace("<cluster version=\"1\">", "<cluster version=\"1\"><!-- ours -->");
    const QString file = m_files.write("wall.zhpc", text);

    const zoCommandRun refused = zoCommandRun::zohpc({"set", file, "Wall/distance=1600"});
    const QByteArray after = zoCliFiles::read(file);
    const zoCommandRun forced = zoCommandRun::zohpc({"set", "--force", file, "Wall/distance=1600"});

    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errors.startsWith(file.toUtf8() + ":1:"), refused.errors.constData());
    QCOMPARE(after, text);
    QCOMPARE(forced.exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"get", file, "Wall/distance"}).output, QByteArray("1600\n"));
}

void tst_zohpcSet::standardInputGoesToStandardOutput()
{
    QByteArray expected = wall();
    expected.replace("eyeseparation=\"65\"", "eyeseparation=\"60\"");

    QCOMPARE(zoCommandRun::zohpc({"set", "-", "display[1]/eyeseparation=60"}, wall()).whole(),
             expected + "--- errors\n--- exit code 0\n");
    // The same value: the text all the same, for a pipe goes on.
    QCOMPARE(zoCommandRun::zohpc({"set", "-", "display[1]/eyeseparation=65"}, wall()).output, wall());
}

void tst_zohpcSet::otherFileIsWritten()
{
    const QByteArray text = wall();
    const QString file = m_files.write("wall.zhpc", text);
    const QString other = m_files.path("other.zhpc");

    QCOMPARE(zoCommandRun::zohpc({"set", file, "display[1]/eyeseparation=60", "-o", other}).exitCode, 0);

    QCOMPARE(zoCliFiles::read(file), text);
    QCOMPARE(zoCommandRun::zohpc({"get", other, "display[1]/eyeseparation"}).output, QByteArray("60\n"));
}

void tst_zohpcSet::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("no-file") << QStringList() << QByteArray("no file given");
    QTest::newRow("no-change") << QStringList{"-"} << QByteArray("no PATH=VALUE given");
}

void tst_zohpcSet::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    QCOMPARE(zoCommandRun::zohpc(QStringList{"set"} + arguments).whole(),
             "--- errors\nzohpc set: " + reason + "\nTry 'zohpc set --help'.\n--- exit code 2\n");
}

ZO_TEST_MAIN(tst_zohpcSet)
#include "tst_zohpcSet.moc"
