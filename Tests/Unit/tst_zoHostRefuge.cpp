#include "zoTestCase.h"

#include <zoHostRefuge.h>

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>

// Unsaved work that the usual folder does not take.
class tst_zoHostRefuge final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void workIsFoundAgain_data();
    void workIsFoundAgain();
    void nobodyElseMayReadIt();
    void fileIsAConfiguration();
    void folderThatTakesNothingIsPassedOver();
    void reasonsAreToldWhenNoFolderTakesIt();
    void whatIsNotOursIsLeftAlone();
    void oldestComesFirst();
    void foldersOutliveTheSession();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QString makeFolder(const QString& name) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_zoHostRefuge::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("TMPDIR", QFile::encodeName(makeFolder("tmp")));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(makeFolder("run")));
    QFile::setPermissions(path("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void tst_zoHostRefuge::cleanup()
{
    qunsetenv("TMPDIR");
    m_folder.reset();
    zoTestCase::cleanup();
}

QString tst_zoHostRefuge::makeFolder(const QString& name) const
{
    QDir(m_folder->path()).mkpath(name);
    return path(name);
}

void tst_zoHostRefuge::workIsFoundAgain_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("originFile");

    const QString text("<cluster version=\"1\">\n <master/>\n</cluster>\n");
    QTest::newRow("never-saved") << text << QString();
    QTest::newRow("file") << text << "/home/a/wall.zhpc";
    QTest::newRow("file-that-ends-comments") << text << "/home/a b/wall-->--.zhpc";
    QTest::newRow("file-with-any-characters") << text << QString::fromUtf8("/home/größe %20/日本.zhpc");
    QTest::newRow("text-without-a-line-end") << text.trimmed() << "/home/a/wall.zhpc";
    QTest::newRow("text-with-a-comment-at-its-end") << text + "<!-- b -->\n"
                                                    << "/home/a/wall.zhpc";
    QTest::newRow("no-text") << QString("no text at all") << QString();
}

void tst_zoHostRefuge::workIsFoundAgain()
{
    QFETCH(QString, text);
    QFETCH(QString, originFile);
    QString reasons;
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);

    const QString fileName = zoHostRefuge::keep(text, originFile, zoHostRefuge::folders(), reasons);
    const QVector<zoHostRefuge::Work> found = zoHostRefuge::find(zoHostRefuge::folders());

    QVERIFY(!fileName.isEmpty());
    QCOMPARE(QFileInfo(fileName).absolutePath(), path("tmp"));
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.constFirst().fileName, fileName);
    QCOMPARE(found.constFirst().text, text);
    QCOMPARE(found.constFirst().originFile, originFile);
    QVERIFY(found.constFirst().kept >= before);
    QVERIFY(found.constFirst().kept <= QDateTime::currentDateTimeUtc());
}

void tst_zoHostRefuge::nobodyElseMayReadIt()
{
    QString reasons;
    const mode_t before = ::umask(0);

    const QString fileName = zoHostRefuge::keep("<cluster/>", QString(), {path("tmp")}, reasons);

    QCOMPARE(::umask(before), mode_t(0)); // as it was
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(fileName).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0600));
}

void tst_zoHostRefuge::fileIsAConfiguration()
{
    QString reasons;
    QFile file(zoHostRefuge::keep("<cluster version=\"1\"/>\n", "/a/wall--1.zhpc", {path("tmp")}, reasons));
    QVERIFY(file.open(QIODevice::ReadOnly));

    QDomDocument document;
    QVERIFY(document.setContent(file.readAll()));

    QCOMPARE(document.documentElement().tagName(), QString("cluster"));
}

void tst_zoHostRefuge::folderThatTakesNothingIsPassedOver()
{
    const QString origin = makeFolder("walls") + "/wall.zhpc";
    QString reasons;

    const QString fileName = zoHostRefuge::keep("<cluster/>", origin, {path("none")}, reasons);

    QCOMPARE(QFileInfo(fileName).absolutePath(), path("walls"));
    QCOMPARE(zoHostRefuge::find({path("walls")}).size(), 1);
}

void tst_zoHostRefuge::reasonsAreToldWhenNoFolderTakesIt()
{
    QString reasons;

    QCOMPARE(zoHostRefuge::keep("<cluster/>", path("away/wall.zhpc"), {path("none")}, reasons), QString());

    QVERIFY2(reasons.contains(path("none/zohost-unsaved-")), qPrintable(reasons));
    QVERIFY2(reasons.contains(path("away/zohost-unsaved-")), qPrintable(reasons));
    QVERIFY2(reasons.contains("No such file or directory"), qPrintable(reasons));
}

void tst_zoHostRefuge::whatIsNotOursIsLeftAlone()
{
    const QString prefix = path("tmp") + QString("/zohost-unsaved-%1-").arg(::geteuid());
    const QByteArray work("<cluster/><!-- unsaved work of /a.zhpc 20260101T000000Z -->\n");
    const auto write = [](const QString& fileName, const QByteArray& bytes) {
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    write(prefix + "noise.zhpc", "<cluster/>\n");
    write(prefix + "empty.zhpc", "");
    write(path("other.zhpc"), work);
    QVERIFY(QFile::link(path("other.zhpc"), prefix + "link.zhpc"));
    QCOMPARE(::mkfifo(QFile::encodeName(prefix + "pipe.zhpc").constData(), 0600), 0);
    write(path("tmp") + QString("/zohost-unsaved-%1-other.zhpc").arg(::geteuid() + 1), work);
    if (::geteuid() == 0) {
        write(prefix + "owner.zhpc", work);
        QCOMPARE(::chown(QFile::encodeName(prefix + "owner.zhpc").constData(), 65534, 65534), 0);
    }

    QCOMPARE(zoHostRefuge::find(zoHostRefuge::folders()).size(), 0);
    write(prefix + "ours.zhpc", work);
    QCOMPARE(zoHostRefuge::find(zoHostRefuge::folders()).size(), 1);
}

void tst_zoHostRefuge::oldestComesFirst()
{
    const QString prefix = path("tmp") + QString("/zohost-unsaved-%1-").arg(::geteuid());
    for (const char* name : {"b", "c", "a"}) {
        QFile file(prefix + name + ".zhpc");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QString("%1<!-- unsaved work of  2026010%2T000000Z -->\n")
                       .arg(QLatin1String(name))
                       .arg(1 + (name[0] + 2) % 3)
                       .toUtf8());
    }
    QStringList texts;

    const QVector<zoHostRefuge::Work> found = zoHostRefuge::find(zoHostRefuge::folders());
    for (const zoHostRefuge::Work& work : found)
        texts << work.text;

    // 'a' is 97: 97 + 2 is 0 of 3, and so on.
    QCOMPARE(texts, (QStringList{"a", "b", "c"}));
}

void tst_zoHostRefuge::foldersOutliveTheSession()
{
    QCOMPARE(zoHostRefuge::folders().constFirst(), path("tmp"));

    qunsetenv("TMPDIR");

    QCOMPARE(zoHostRefuge::folders().constFirst(), QString("/var/tmp"));
}

ZO_TEST_MAIN(tst_zoHostRefuge)
#include "tst_zoHostRefuge.moc"
