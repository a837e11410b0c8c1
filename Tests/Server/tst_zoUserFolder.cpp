#include "zoTestCase.h"

#include <zoUserFolder.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
mode_t rightsOf(const QString& folder)
{
    struct stat info = {};
    return stat(QFile::encodeName(folder).constData(), &info) == 0 ? info.st_mode & 0777 : 0;
}
} // namespace

// The folder that libraries and locks use while somebody is logged in.
class tst_zoUserFolder final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase() { qputenv("XDG_RUNTIME_DIR", m_before); }

    void goodFolderStays();
    void unusableFolderIsReplaced_data();
    void unusableFolderIsReplaced();
    void ownFolderWithWideRightsIsNarrowed();
    void linkOfSomebodyIsNotFollowed();
    void fileOfThatNameIsLeftAlone();
    void folderOfSomebodyElseIsLeftAlone();
    void compositorKeepsItsFolder();
    void locksMeetThere();

private:
    QString file(const QString& name) const { return m_directory->filePath(name); }

    const QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_zoUserFolder::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    qunsetenv("XDG_RUNTIME_DIR");
    qunsetenv("WAYLAND_DISPLAY");
}

void tst_zoUserFolder::goodFolderStays()
{
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_directory->path()));

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QCOMPARE(qgetenv("XDG_RUNTIME_DIR"), QFile::encodeName(m_directory->path()));
    QVERIFY(!QFile::exists(file("made")));
}

void tst_zoUserFolder::unusableFolderIsReplaced_data()
{
    QTest::addColumn<QByteArray>("folder");

    QTest::newRow("unset") << QByteArray();
    QTest::newRow("missing") << QByteArray("/no/such/folder");
    QTest::newRow("file") << QByteArray("/dev/null");
    QTest::newRow("wide-rights") << QByteArray("wide");
}

void tst_zoUserFolder::unusableFolderIsReplaced()
{
    QFETCH(QByteArray, folder);
    if (folder == "wide") {
        folder = QFile::encodeName(file("wide"));
        QCOMPARE(mkdir(folder.constData(), 0755), 0);
    }
    if (!folder.isEmpty())
        qputenv("XDG_RUNTIME_DIR", folder);

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QCOMPARE(qgetenv("XDG_RUNTIME_DIR"), QFile::encodeName(file("made")));
    QCOMPARE(rightsOf(file("made")), mode_t(0700));
}

void tst_zoUserFolder::ownFolderWithWideRightsIsNarrowed()
{
    QCOMPARE(mkdir(QFile::encodeName(file("made")).constData(), 0755), 0);

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QCOMPARE(qgetenv("XDG_RUNTIME_DIR"), QFile::encodeName(file("made")));
    QCOMPARE(rightsOf(file("made")), mode_t(0700));
}

void tst_zoUserFolder::linkOfSomebodyIsNotFollowed()
{
    QVERIFY(QDir().mkdir(file("elsewhere")));
    QVERIFY(QFile::link(file("elsewhere"), file("made")));

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QVERIFY(qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"));
}

void tst_zoUserFolder::fileOfThatNameIsLeftAlone()
{
    QFile planted(file("made"));
    QVERIFY(planted.open(QIODevice::WriteOnly));

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QVERIFY(qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"));
    QVERIFY(QFileInfo(file("made")).isFile());
}

void tst_zoUserFolder::folderOfSomebodyElseIsLeftAlone()
{
    if (geteuid() != 0)
        QSKIP("only root can give folders away");
    constexpr uid_t Nobody = 65534;
    QVERIFY(QDir().mkdir(file("made")));
    QCOMPARE(chown(QFile::encodeName(file("made")).constData(), Nobody, Nobody), 0);

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QVERIFY(qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"));
}

void tst_zoUserFolder::compositorKeepsItsFolder()
{
    qputenv("XDG_RUNTIME_DIR", "/no/such/folder");
    qputenv("WAYLAND_DISPLAY", "wayland-0");

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QCOMPARE(qgetenv("XDG_RUNTIME_DIR"), QByteArray("/no/such/folder"));
}

void tst_zoUserFolder::locksMeetThere()
{
    QCOMPARE(zoUserFolder::path(), zoUserFolder::fallback());

    zoUserFolder::provide(QFile::encodeName(file("made")));

    QCOMPARE(zoUserFolder::path(), QFile::encodeName(file("made")));
}

ZO_TEST_MAIN(tst_zoUserFolder)
#include "tst_zoUserFolder.moc"
