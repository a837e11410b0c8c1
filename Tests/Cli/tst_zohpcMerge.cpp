#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTest>

namespace
{
using Change = QPair<QByteArray, QByteArray>; // what stands there, what then
using Changes = QVector<Change>;

QByteArray base()
{
    return zoCommandRun::zohpc(
               {"new", "--wall", "2x2", "--overlap", "40", "--hosts", "{ n1 - n4 spare } { io1 io2 }"})
        .output;
}

QByteArray changed(QByteArray text, const Changes& changes)
{
    for (const Change& change : changes) {
        const int at = text.indexOf(change.first);
        if (at < 0)
            qFatal("the text has no %s", change.first.constData());
        text.replace(at, change.first.size(), change.second);
    }
    // What a change of parameters means for tiles.
    return zoCommandRun::zohpc({"format", "-"}, text).output;
}

const Change s_distance{"distance=\"1500\"", "distance=\"1800\""};
const Change s_disabled{"<node name=\"n2\"/>", "<node name=\"n2\" enabled=\"false\"/>"};
const Change s_added{"   <node name=\"n1\"/>\n", "   <node name=\"n0\"/>\n   <node name=\"n1\"/>\n"};
const Change s_addedLast{"   <node name=\"spare\"/>\n",
                         "   <node name=\"spare\"/>\n   <node name=\"spare2\"/>\n"};
const Change s_removed{"   <node name=\"spare\"/>\n", ""};
const Change s_networkBefore{
    "  <network>\n   <node name=\"n1\"/>",
    "  <network>\n   <node name=\"x\"/>\n  </network>\n  <network>\n   <node name=\"n1\"/>"};
const Change s_speed{"  <network>\n   <node name=\"io1\"/>",
                     "  <network speed=\"10g\">\n   <node name=\"io1\"/>"};
const Change s_moved{"<window node=\"n4\"", "<window node=\"spare\""};
const Change s_size{"<window node=\"n4\" screen=\"0\" x=\"0\" y=\"0\" width=\"1920\"",
                    "<window node=\"n4\" screen=\"0\" x=\"0\" y=\"0\" width=\"1280\""};
const Change s_order{"   <node name=\"n1\"/>\n   <node name=\"n2\"/>\n",
                     "   <node name=\"n2\"/>\n   <node name=\"n1\"/>\n"};
const Change s_separation{"eyeseparation=\"65\"", "eyeseparation=\"63\""};
} // namespace

// "zohpc merge" as a whole process, by itself and as the merge driver of git.
class tst_zohpcMerge final : public zoTestCase
{
    Q_OBJECT

private slots:
    void changesOfBothAreThere_data();
    void changesOfBothAreThere();
    void conflictIsToldAndOursStays_data();
    void conflictIsToldAndOursStays();
    void everyMergeIsSound();
    void commentsAreNotLost();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void gitMergesWithTheDriver();
    void gitTellsConflicts();
    void gitTellsWhatWouldBeLost();
    void gitShowsDifferencesAsLines();
    void gitDifftoolShowsThemInWords();

private:
    zoCommandRun merge(const QByteArray& base, const QByteArray& ours, const QByteArray& theirs) const;
    // Runs a line of the shell in a repository, with zohpc on its path.
    zoCommandRun shell(const QString& folder, const QString& line) const;
    // With one commit of the base and the recipes of the manual.
    QString repository(const QByteArray& text) const;

    zoCliFiles m_files;
};

zoCommandRun tst_zohpcMerge::merge(const QByteArray& before, const QByteArray& ours,
                                   const QByteArray& theirs) const
{
    return zoCommandRun::zohpc({"merge", m_files.write("base.zhpc", before), m_files.write("ours.zhpc", ours),
                                m_files.write("theirs.zhpc", theirs)});
}

void tst_zohpcMerge::changesOfBothAreThere_data()
{
    QTest::addColumn<Changes>("ours");
    QTest::addColumn<Changes>("theirs");

    QTest::newRow("nothing") << Changes() << Changes();
    QTest::newRow("ours-alone") << Changes{s_distance} << Changes();
    QTest::newRow("theirs-alone") << Changes() << Changes{s_distance, s_disabled};
    QTest::newRow("the-same") << Changes{s_distance} << Changes{s_distance};
    QTest::newRow("values-of-two-items") << Changes{s_distance} << Changes{s_disabled};
    QTest::newRow("values-of-one-item") << Changes{s_moved} << Changes{s_size};
    QTest::newRow("node-added") << Changes{s_distance} << Changes{s_added};
    QTest::newRow("nodes-added-at-both-ends") << Changes{s_added} << Changes{s_addedLast};
    QTest::newRow("added-and-removed") << Changes{s_added} << Changes{s_removed};
    QTest::newRow("removed-by-both") << Changes{s_removed} << Changes{s_removed};
    QTest::newRow("network-added-in-front") << Changes{s_networkBefore} << Changes{s_speed};
    QTest::newRow("another-order") << Changes{s_distance} << Changes{s_order};
    // Node or projection, where it stood.
    QTest::newRow("node-renamed") << Changes{{"name=\"spare\"", "name=\"standby\""}}
                                  << Changes{{"name=\"spare\"/>", "name=\"spare\" enabled=\"false\"/>"}};
    QTest::newRow("several") << Changes{s_added, s_separation} << Changes{s_speed, s_distance, s_size};
}

void tst_zohpcMerge::changesOfBothAreThere()
{
    QFETCH(Changes, ours);
    QFETCH(Changes, theirs);
    const QByteArray text = base();
    // All changes, each once, to one text.
    Changes all = ours;
    for (const Change& change : qAsConst(theirs)) {
        if (!ours.contains(change))
            all.prepend(change);
    }

    const zoCommandRun run = merge(text, changed(text, ours), changed(text, theirs));
    const zoCommandRun turned = merge(text, changed(text, theirs), changed(text, ours));

    QCOMPARE(run.whole(), changed(text, all) + "--- errors\n--- exit code 0\n");
    QCOMPARE(turned.whole(), run.whole());
}

void tst_zohpcMerge::conflictIsToldAndOursStays_data()
{
    QTest::addColumn<Changes>("ours");
    QTest::addColumn<Changes>("theirs");
    QTest::addColumn<QByteArray>("conflict");

    const Change further{"distance=\"1500\"", "distance=\"2000\""};
    const Change described{"<node name=\"spare\"/>", "<node name=\"spare\" enabled=\"false\"/>"};
    QTest::newRow("value")
        << Changes{s_distance} << Changes{further}
        << QByteArray("projection[Wall]/distance: was \"1500\", ours is \"1800\", theirs \"2000\"");
    QTest::newRow("value-that-one-takes-away")
        << Changes{{"scenecompression=\"best\"", "scenecompression=\"fast\""}}
        << Changes{{" scenecompression=\"best\"", ""}}
        << QByteArray("master/scenecompression: was \"best\", ours is \"fast\", theirs nothing");
    QTest::newRow("theirs-removed") << Changes{described} << Changes{s_removed}
                                    << QByteArray("node[spare]: theirs has removed it, ours has changed it");
    QTest::newRow("ours-removed") << Changes{s_removed} << Changes{described}
                                  << QByteArray("node[spare]: ours has removed it, theirs has changed it");
    QTest::newRow("order") << Changes{s_order}
                           << Changes{{"   <node name=\"n3\"/>\n   <node name=\"n4\"/>\n",
                                       "   <node name=\"n4\"/>\n   <node name=\"n3\"/>\n"}}
                           << QByteArray("network[1]: both have another order of each node");
    QTest::newRow("window-on-a-removed-node")
        << Changes{s_removed} << Changes{s_moved}
        << QByteArray("a window names \"spare\", which the other side has removed");
    QTest::newRow("one-node-in-two-networks")
        << Changes{s_addedLast}
        << Changes{{"   <node name=\"io1\"/>\n", "   <node name=\"io1\"/>\n   <node name=\"spare2\"/>\n"}}
        << QByteArray("both have a node \"spare2\", in different places");
}

void tst_zohpcMerge::conflictIsToldAndOursStays()
{
    QFETCH(Changes, ours);
    QFETCH(Changes, theirs);
    QFETCH(QByteArray, conflict);
    const QByteArray text = base();

    const zoCommandRun run = merge(text, changed(text, ours), changed(text, theirs));

    QCOMPARE(run.errors, m_files.path("ours.zhpc").toUtf8() + ": conflict: " + conflict + '\n');
    QCOMPARE(run.exitCode, 1);
    for (const Change& change : qAsConst(ours))
        QVERIFY2(change.second.isEmpty() || run.output.contains(change.second), run.output.constData());
}

void tst_zohpcMerge::everyMergeIsSound()
{
    // Fewer columns on one side, a window on a tile that goes on the other.
    const QByteArray text = base();
    const QByteArray ours =
        changed(text, {{"rows=\"2\" columns=\"2\"", "rows=\"2\" columns=\"1\""},
                       {"projection=\"Wall row:1 col:2\"", "projection=\"Wall row:1 col:1\""},
                       {"projection=\"Wall row:2 col:2\"", "projection=\"Wall row:2 col:1\""}});
    const QByteArray theirs =
        changed(text, {{"  </window>\n </display>",
                        "  </window>\n  <window node=\"spare\" screen=\"0\" x=\"0\" y=\"0\" width=\"9\" "
                        "height=\"9\">\n   <viewport "
                        "projection=\"Wall row:1 col:2\" eye=\"mono\"/>\n  </window>\n </display>"}});

    const zoCommandRun run = merge(text, ours, theirs);

    QCOMPARE(run.errors,
             m_files.path("ours.zhpc").toUtf8() +
                 ": conflict: display[1]/window[5]/viewport[1]: shows \"Wall row:1 col:2\", which the other "
                 "side has removed\n");
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(zoCommandRun::zohpc({"format", "-"}, run.output).output, run.output);
}

void tst_zohpcMerge::commentsAreNotLost()
{
    const QByteArray text = base();
    QByteArray commented = text;
    commented.replace(" <projection name=\"Wall\"", " <!-- hm --><projection name=\"Wall\"");
    const QString ours = m_files.write("commented.zhpc", commented);
    const QString other = m_files.write("base.zhpc", text);

    const zoCommandRun refused = zoCommandRun::zohpc({"merge", other, ours, other, "-o", ours});
    const QByteArray after = zoCliFiles::read(ours);
    const zoCommandRun forced = zoCommandRun::zohpc({"merge", "--force", other, ours, other, "-o", ours});

    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errors.contains(": the comment is left out\n"), refused.errors.constData());
    QCOMPARE(after, commented);
    QCOMPARE(forced.exitCode, 0);
    QCOMPARE(zoCliFiles::read(ours), text);
}

void tst_zohpcMerge::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("two-files") << QStringList{"a", "b"} << QByteArray("zohpc merge: three files are needed");
    QTest::newRow("input-twice") << QStringList{"-", "-", "b"}
                                 << QByteArray("zohpc merge: standard input can be one of the files only");
}

void tst_zohpcMerge::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    QCOMPARE(zoCommandRun::zohpc(QStringList{"merge"} + arguments).whole(),
             "--- errors\n" + reason + "\nTry 'zohpc merge --help'.\n--- exit code 2\n");
}

zoCommandRun tst_zohpcMerge::shell(const QString& folder, const QString& line) const
{
    const QString path =
        QFileInfo(QStringLiteral(ZO_ZOHPC)).absolutePath() + QLatin1Char(':') + qEnvironmentVariable("PATH");
    return zoCommandRun::program(QStringLiteral("sh"), {"-ec", "cd '" + folder + "'\n" + line}, {},
                                 {"PATH=" + path, "LC_ALL=C.UTF-8", "HOME=" + folder, "GIT_CONFIG_NOSYSTEM=1",
                                  "GIT_AUTHOR_NAME=a", "GIT_AUTHOR_EMAIL=a@b", "GIT_COMMITTER_NAME=a",
                                  "GIT_COMMITTER_EMAIL=a@b"});
}

QString tst_zohpcMerge::repository(const QByteArray& text) const
{
    const QString folder = m_files.path(QString::fromLatin1(QTest::currentTestFunction()));
    QDir().mkpath(folder);
    QFile file(folder + QLatin1String("/wall.zhpc"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    file.close();
    const zoCommandRun run =
        shell(folder, "git init -q -b main .\n"
                      "git config merge.zhpc.driver 'zohpc merge --name %P %O %A %B -o %A'\n"
                      "git config diff.zhpc.textconv 'zohpc get'\n"
                      "git config difftool.zohpc.cmd 'zohpc diff \"$LOCAL\" \"$REMOTE\"'\n"
                      "echo '*.zhpc merge=zhpc diff=zhpc' > .gitattributes\n"
                      "git add .; git commit -qm base\n");
    return run.exitCode == 0 ? folder : QString();
}

void tst_zohpcMerge::gitMergesWithTheDriver()
{
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const QByteArray text = base();
    const QString folder = repository(text);
    QVERIFY(!folder.isEmpty());

    // Lines that a merge of lines takes for a conflict: neighbours.
    const zoCommandRun run = shell(folder, "git checkout -qb theirs\n"
                                           "sed -i 's/<node name=\"n2\"/& enabled=\"false\"/' wall.zhpc\n"
                                           "git commit -qam theirs\n"
                                           "git checkout -q main\n"
                                           "sed -i 's/<node name=\"n1\"/& enabled=\"false\"/' wall.zhpc\n"
                                           "git commit -qam ours\n"
                                           "git merge -q theirs -m merged\n"
                                           "git status --porcelain\n");

    QCOMPARE(run.exitCode, 0);
    QCOMPARE(zoCliFiles::read(folder + "/wall.zhpc"),
             changed(text, {s_disabled, {"<node name=\"n1\"/>", "<node name=\"n1\" enabled=\"false\"/>"}}));
}

void tst_zohpcMerge::gitTellsConflicts()
{
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const QByteArray text = base();
    const QString folder = repository(text);
    QVERIFY(!folder.isEmpty());

    const zoCommandRun run = shell(folder, "git checkout -qb theirs\n"
                                           "sed -i 's/distance=\"1500\"/distance=\"2000\"/g' wall.zhpc\n"
                                           "git commit -qam theirs\n"
                                           "git checkout -q main\n"
                                           "sed -i 's/distance=\"1500\"/distance=\"1800\"/g' wall.zhpc\n"
                                           "git commit -qam ours\n"
                                           "git merge theirs -m merged || echo stopped\n"
                                           "git status --porcelain\n");

    QVERIFY2(run.output.contains("\nCONFLICT (content): Merge conflict in wall.zhpc\n"),
             run.whole().constData());
    QVERIFY(run.output.endsWith("stopped\nUU wall.zhpc\n"));
    // The file is called what it is called in the repository.
    QVERIFY2(run.errors.startsWith("wall.zhpc: conflict: projection[Wall]/distance: was \"1500\", ours is "
                                   "\"1800\", theirs \"2000\"\n"),
             run.errors.constData());
    // A configuration, not a text with marks.
    QCOMPARE(zoCliFiles::read(folder + "/wall.zhpc"), changed(text, {s_distance}));
}

void tst_zohpcMerge::gitTellsWhatWouldBeLost()
{
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const QString folder = repository(base());
    QVERIFY(!folder.isEmpty());

    const zoCommandRun run = shell(folder, "git mv wall.zhpc \"a wall's \\$1.zhpc\"; git commit -qm moved\n"
                                           "git checkout -qb theirs\n"
                                           "sed -i 's/distance=\"1500\"/distance=\"2000\"/g' a*.zhpc\n"
                                           "git commit -qam theirs\n"
                                           "git checkout -q main\n"
                                           "sed -i 's/<master/<!-- mine -->&/' a*.zhpc\n"
                                           "git commit -qam ours\n"
                                           "git merge theirs -m merged || echo stopped\n");

    QVERIFY2(run.output.endsWith("stopped\n"), run.whole().constData());
    QVERIFY2(run.errors.contains("\na wall's $1.zhpc: not merged, for this would be lost"),
             run.errors.constData());
}

void tst_zohpcMerge::gitShowsDifferencesAsLines()
{
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const QString folder = repository(base());
    QVERIFY(!folder.isEmpty());

    const zoCommandRun run =
        shell(folder, "sed -i 's/<node name=\"n2\"/& enabled=\"false\"/' wall.zhpc; git diff -U0");

    QVERIFY2(run.output.endsWith("\n+node[n2]/enabled=false\n"), run.whole().constData());
    QCOMPARE(run.output.count("\n+"), 2); // the file's name, and the value
}

void tst_zohpcMerge::gitDifftoolShowsThemInWords()
{
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const QString folder = repository(base());
    QVERIFY(!folder.isEmpty());

    const zoCommandRun run = shell(folder, "sed -i 's/<node name=\"n2\"/& enabled=\"false\"/' wall.zhpc\n"
                                           "git difftool -y -t zohpc");

    QCOMPARE(run.output, QByteArray("node n2: disabled\n"));
}

ZO_TEST_MAIN(tst_zohpcMerge)
#include "tst_zohpcMerge.moc"
