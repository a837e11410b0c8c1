#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace
{
QList<QByteArray> sortedWords(const QByteArray& text)
{
    QList<QByteArray> words = text.simplified().split(' ');
    std::sort(words.begin(), words.end());
    return words;
}
} // namespace

// zohpc side by side with the cluster tools that are installed.
class tst_zohpcHostsPeers final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void foldsLikeNodeset_data();
    void foldsLikeNodeset();
    void expandsLikeNodeset_data();
    void expandsLikeNodeset();
    void refusesWhatNodesetRefuses_data();
    void refusesWhatNodesetRefuses();
    void foldsLikeScontrol_data();
    void foldsLikeScontrol();
    void expandsLikeScontrol_data();
    void expandsLikeScontrol();

private:
    static void addNames();
    static void addBrackets();
    zoCommandRun nodeset(const QStringList& arguments, const QByteArray& input = QByteArray()) const;
    zoCommandRun scontrol(const QString& what, const QString& hosts) const;

    QTemporaryDir m_folder;
};

void tst_zohpcHostsPeers::init()
{
    // The batch system's client folds names without a daemon when it has a configuration of a few lines.
    QFile file(m_folder.filePath("slurm.conf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("ClusterName=c\nSlurmctldHost=localhost\nNodeName=localhost\nPartitionName=p Nodes=localhost\n"
               "AuthType=auth/none\n");
}

zoCommandRun tst_zohpcHostsPeers::nodeset(const QStringList& arguments, const QByteArray& input) const
{
    return zoCommandRun::program(QStringLiteral("nodeset"), arguments, input,
                                 {"PATH=" + qEnvironmentVariable("PATH"), "LC_ALL=C.UTF-8"});
}

zoCommandRun tst_zohpcHostsPeers::scontrol(const QString& what, const QString& hosts) const
{
    return zoCommandRun::program(QStringLiteral("scontrol"), {"show", what, hosts}, {},
                                 {"PATH=" + qEnvironmentVariable("PATH"), "LC_ALL=C.UTF-8",
                                  "SLURM_CONF=" + m_folder.filePath("slurm.conf")});
}

void tst_zohpcHostsPeers::addNames()
{
    QTest::addColumn<QByteArray>("names");

    QTest::newRow("padded") << QByteArray("gpu01 gpu02 gpu03 gpu20 gpu10 gpu09");
    QTest::newRow("mixed-padding") << QByteArray("a1 a2 a3 a01 a02 a10 a010 a0 a00 a9 a99 a100");
    QTest::newRow("several-prefixes") << QByteArray("viz1 gpu2 gpu1 io3 viz2 login");
    QTest::newRow("with-and-without-number") << QByteArray("n n1 n2 N1 n2a n2-a b b1");
    QTest::newRow("past-a-power-of-ten") << QByteArray("n8 n9 n10 n11 n98 n99 n100 n101 m09 m10 m099 m100");
    QTest::newRow("grid") << QByteArray("r1n1 r1n2 r2n1 r2n2 r3n1 r3n2");
    QTest::newRow("suffix") << QByteArray("n1-ib n2-ib n3-ib n10-ib n2");
    QTest::newRow("numbers-alone") << QByteArray("1 2 3 12 07");
    QByteArray many;
    for (int i = 0; i < 1000; ++i)
        many += "node" + QByteArray::number(i * 7919 % 1009).rightJustified(4, '0') + ' ';
    QTest::newRow("thousand-shuffled") << many;
}

void tst_zohpcHostsPeers::addBrackets()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("list-and-range") << "gpu[01-16,20]";
    QTest::newRow("several-words") << "gpu[01-03],viz[1-2],login1";
    QTest::newRow("several-in-one-name") << "rack[1-2]node[01-04]";
    QTest::newRow("grows") << "n[8-11],m[098-101]";
}

void tst_zohpcHostsPeers::foldsLikeNodeset_data()
{
    addNames();
}

void tst_zohpcHostsPeers::foldsLikeNodeset()
{
    if (QStandardPaths::findExecutable(QStringLiteral("nodeset")).isEmpty())
        QSKIP("nodeset (Debian package clustershell) is not installed");
    QFETCH(QByteArray, names);
    names += '\n'; // the peer takes the last character for the line end

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "fold", "-b"}, names);
    const zoCommandRun withSteps = zoCommandRun::zohpc({"hosts", "fold", "-b", "--steps"}, names);

    QCOMPARE(run.whole(), nodeset({"-f"}, names).whole());
    QCOMPARE(withSteps.whole(), nodeset({"--autostep=3", "-f"}, names).whole());
    QCOMPARE(sortedWords(nodeset({"-e", QString::fromUtf8(run.output.trimmed())}).output),
             sortedWords(zoCommandRun::zohpc({"hosts", "expand", "--sort"}, names).output));
}

void tst_zohpcHostsPeers::expandsLikeNodeset_data()
{
    addBrackets();
    QTest::newRow("steps") << "n[1-9/2],m[01-10/3]";
    QTest::newRow("in-front") << "[1-3]a";
    QTest::newRow("suffix") << "n[1-3]-ib";
    QTest::newRow("domain") << "n[1-3].example.org,m.example.org";
    QTest::newRow("blanks-in-brackets") << "n[1, 3 ]";
    // Words of every form, the same in each run. Only brackets that touch are missing: the peer refuses them.
    quint32 state = 1;
    const auto number = [&](int below) {
        state = state * 1664525 + 1013904223;
        return int((state >> 16) % quint32(below));
    };
    for (int row = 0; row < 20; ++row) {
        QStringList words;
        for (int i = 0; i < 5; ++i) {
            QString word = QStringList{"n", "gpu-", "x.", "a0b"}.at(number(4));
            for (int k = number(3); k > 0; --k) {
                const int width = number(4);
                const int first = number(21);
                const auto digits = [width](int value) {
                    return QString::number(value).rightJustified(width, QLatin1Char('0'));
                };
                word += '[' + digits(first) + '-' + digits(first + number(7));
                word += number(2) == 0 ? "/" + QString::number(1 + number(3)) : QString();
                word += ',' + digits(30 + number(9)) + ']' + QStringList{"-ib", "m", ".org"}.at(number(3));
            }
            words << word;
        }
        QTest::newRow(("words-" + QByteArray::number(row)).constData()) << words.join(QLatin1Char(','));
    }
}

void tst_zohpcHostsPeers::expandsLikeNodeset()
{
    if (QStandardPaths::findExecutable(QStringLiteral("nodeset")).isEmpty())
        QSKIP("nodeset (Debian package clustershell) is not installed");
    QFETCH(QString, text);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", "--sort", "-s", " ", text});

    QCOMPARE(run.whole(), nodeset({"-e", text}).whole());
}

void tst_zohpcHostsPeers::refusesWhatNodesetRefuses_data()
{
    QTest::addColumn<QString>("text");

    for (const char* text : {"n[a-b]", "n[]", "n[1-2", "n1-2]", "n[3-1]", "n[1-]", "n[1,,2]", "n[1-9/0]",
                             "n[1-2]]", "n[[1-2]]", "n[1-3x]"})
        QTest::newRow(text) << text;
}

void tst_zohpcHostsPeers::refusesWhatNodesetRefuses()
{
    if (QStandardPaths::findExecutable(QStringLiteral("nodeset")).isEmpty())
        QSKIP("nodeset (Debian package clustershell) is not installed");
    QFETCH(QString, text);

    const zoCommandRun peer = nodeset({"-e", text});
    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", text});

    QVERIFY(peer.exitCode > 0);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
    QVERIFY(!run.errors.isEmpty());
}

void tst_zohpcHostsPeers::foldsLikeScontrol_data()
{
    addNames();
    QTest::newRow("unsorted-with-duplicates") << QByteArray("n10 n9 n01 n02 m n1 n2 n10 a1 a1");
}

void tst_zohpcHostsPeers::foldsLikeScontrol()
{
    if (QStandardPaths::findExecutable(QStringLiteral("scontrol")).isEmpty())
        QSKIP("scontrol (Debian package slurm-client) is not installed");
    QFETCH(QByteArray, names);
    const QString list = QString::fromUtf8(names.simplified().replace(' ', ','));

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "fold", "-b", "--keep-order"}, names);

    // Its ranges of padded numbers grow past their width, ours end there as nodeset's do: compare what they
    // stand for.
    const zoCommandRun peer = scontrol(QStringLiteral("hostlist"), list);
    QCOMPARE(peer.exitCode, 0);
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand"}, run.output).output,
             zoCommandRun::zohpc({"hosts", "expand"}, peer.output).output);
    QCOMPARE(scontrol(QStringLiteral("hostnames"), QString::fromUtf8(run.output.trimmed())).output,
             zoCommandRun::zohpc({"hosts", "expand"}, names).output);
}

void tst_zohpcHostsPeers::expandsLikeScontrol_data()
{
    addBrackets();
    QTest::newRow("order-and-duplicates") << "n[1,3,2,2],m,n[1-2]";
    QTest::newRow("padding-longer-than-the-end") << "n[0001-2]";
    QTest::newRow("padding-only-at-the-end") << "n[8-011]";
    QTest::newRow("adjacent-brackets") << "n[1-2][3-4]";
}

void tst_zohpcHostsPeers::expandsLikeScontrol()
{
    if (QStandardPaths::findExecutable(QStringLiteral("scontrol")).isEmpty())
        QSKIP("scontrol (Debian package slurm-client) is not installed");
    QFETCH(QString, text);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", text});

    QCOMPARE(run.whole(), scontrol(QStringLiteral("hostnames"), text).whole());
}

ZO_TEST_MAIN(tst_zohpcHostsPeers)
#include "tst_zohpcHostsPeers.moc"
