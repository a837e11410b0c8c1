#include "zoFullDisk.h"
#include "zoTestCase.h"

#include <zoFileWriter.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <memory>

namespace
{
// Lets an ordinary user run the tests of rights, whoever runs the program.
class OrdinaryUser final
{
public:
    OrdinaryUser() : m_isRoot(::getuid() == 0)
    {
        if (m_isRoot && ::setresuid(Nobody, Nobody, 0) != 0)
            qFatal("setresuid failed");
    }
    ~OrdinaryUser()
    {
        if (m_isRoot && ::setresuid(0, 0, 0) != 0)
            qFatal("setresuid failed");
    }

    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    static constexpr uid_t Nobody = 65534;

private:
    bool m_isRoot;
};

// A disk that takes so many bytes per file. The signal of a longer one ends a process that does not see to it.
class FullDisk final
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};
} // namespace

// Files that are written whole.
class tst_zoFileWriter final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fileIsMadeOrReplaced();
    void linkStaysALink();
    void pipeStaysAPipe();
    void fileInAFolderOfSomebodyElseIsOverwritten();
    void fullDiskLeavesAFileThatIsOverwrittenWhole();
    void fullDiskDamagesAnOverwrittenFileThatCannotBeRead();
    void fileOfSomebodyElseStays();
    void fullDiskLeavesTheOldFileWhole_data();
    void fullDiskLeavesTheOldFileWhole();
    void fullDiskLeavesNoNewFile();
    void diskThatFillsUpMeanwhileIsTold();
    void rightsAreKept_data();
    void rightsAreKept();
    void ownerIsKept();
    void memberOfTheGroupDoesNotTakeTheFile();
    void attributesAndAccessListAreKept();
    void accessListOfTheFolderIsNotTakenOver();
    void namesOfAFileStayTogether();
    void missingTargetOfALinkIsMade();
    void oldBytesStayUntilTheNewOnesAreThere();
    void killLeavesTheOldOrTheNewFile_data();
    void killLeavesTheOldOrTheNewFile();
    void endOfTheProcessLeavesNoRemains_data();
    void endOfTheProcessLeavesNoRemains();
    void nameWithoutBytesIsRefused_data();
    void nameWithoutBytesIsRefused();
    void fileNamedAfterUnreadableBytesIsWritten();
    void guardIsAskedFirst();
    void guardIsToldWhatWasWritten();
    void canWriteTellsWhatWriteWould();
    void missingFolderHasAReason();
    void longestNameIsWritten();

private:
    using Result = zoFileWriter::Result;

    QString path(const QString& name) const { return m_folder->filePath(name); }
    QByteArray encoded(const QString& name) const { return QFile::encodeName(path(name)); }
    struct stat statusOf(const QString& name) const;
    static QByteArray contentOf(const QString& fileName);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_zoFileWriter::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_zoFileWriter::cleanup()
{
    zoFileWriter::setGuard({});
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0700);
    m_folder.reset();
}

struct stat tst_zoFileWriter::statusOf(const QString& name) const
{
    struct stat status
    {
    };
    ::lstat(encoded(name).constData(), &status);
    return status;
}

QByteArray tst_zoFileWriter::contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_zoFileWriter::fileIsMadeOrReplaced()
{
    QCOMPARE(zoFileWriter::write(path("a"), "a longer text\n"), Result::Written);
    QCOMPARE(zoFileWriter::write(path("a"), "short\n"), Result::Written);

    QCOMPARE(contentOf(path("a")), QByteArray("short\n"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a"});
}

void tst_zoFileWriter::linkStaysALink()
{
    QVERIFY(QDir(m_folder->path()).mkdir("there"));
    QCOMPARE(zoFileWriter::write(path("there/a"), "old"), Result::Written);
    QVERIFY(QFile::link(path("there/a"), path("link")));

    QCOMPARE(zoFileWriter::write(path("link"), "new"), Result::Written);

    QVERIFY(QFileInfo(path("link")).isSymLink());
    QCOMPARE(contentOf(path("there/a")), QByteArray("new"));
}

void tst_zoFileWriter::pipeStaysAPipe()
{
    const QByteArray name = QFile::encodeName(path("pipe"));
    QCOMPARE(::mkfifo(name.constData(), 0600), 0);
    const int reader = ::open(name.constData(), O_RDONLY | O_NONBLOCK);
    QVERIFY(reader >= 0);

    const Result result = zoFileWriter::write(path("pipe"), "text");

    char bytes[16];
    const ssize_t size = ::read(reader, bytes, sizeof bytes);
    ::close(reader);
    QCOMPARE(result, Result::Written);
    QCOMPARE(QByteArray(bytes, int(size)), QByteArray("text"));
    struct stat after
    {
    };
    QCOMPARE(::stat(name.constData(), &after), 0);
    QVERIFY(S_ISFIFO(after.st_mode));
}

void tst_zoFileWriter::fileInAFolderOfSomebodyElseIsOverwritten()
{
    QCOMPARE(zoFileWriter::write(path("a"), "a longer text"), Result::Written);
    if (::getuid() == 0)
        QCOMPARE(::chown(QFile::encodeName(path("a")).constData(), OrdinaryUser::Nobody, gid_t(-1)), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0555), 0);
    Result result{};
    {
        const OrdinaryUser user;
        result = zoFileWriter::write(path("a"), "new");
    }
    QCOMPARE(result, Result::Written);
    QCOMPARE(contentOf(path("a")), QByteArray("new"));
}

// The old bytes are put back: a damaged file is told only when there was no way to read them.
void tst_zoFileWriter::fullDiskLeavesAFileThatIsOverwrittenWhole()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    if (::getuid() == 0)
        QCOMPARE(::chown(encoded("a").constData(), OrdinaryUser::Nobody, gid_t(-1)), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0555), 0);
    Result result{};
    {
        const OrdinaryUser user;
        const FullDisk disk(1024);
        result = zoFileWriter::write(path("a"), QByteArray(100000, 'x'));
    }
    QCOMPARE(result, Result::NotWritten);
    QCOMPARE(contentOf(path("a")), QByteArray("old"));
}

void tst_zoFileWriter::fullDiskDamagesAnOverwrittenFileThatCannotBeRead()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    if (::getuid() == 0)
        QCOMPARE(::chown(encoded("a").constData(), OrdinaryUser::Nobody, gid_t(-1)), 0);
    QCOMPARE(::chmod(encoded("a").constData(), 0200), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0555), 0);
    Result result{};
    {
        const OrdinaryUser user;
        const FullDisk disk(1024);
        result = zoFileWriter::write(path("a"), QByteArray(100000, 'x'));
    }
    QCOMPARE(result, Result::Damaged);
}

void tst_zoFileWriter::fileOfSomebodyElseStays()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::chmod(QFile::encodeName(path("a")).constData(), 0444), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0777), 0);
    Result result{};
    {
        const OrdinaryUser user;
        result = zoFileWriter::write(path("a"), "new");
    }
    QCOMPARE(result, Result::NotOpened);
    QCOMPARE(contentOf(path("a")), QByteArray("old"));
}

void tst_zoFileWriter::fullDiskLeavesTheOldFileWhole_data()
{
    QTest::addColumn<int>("size");

    // Buffers of files are of 16 KiB.
    for (const int size : {0, 1, 800, 16383, 16384, 16385, 32767, 32768, 32769, 65536, 100000})
        QTest::newRow(qPrintable(QString::number(size))) << size;
}

void tst_zoFileWriter::fullDiskLeavesTheOldFileWhole()
{
    QFETCH(int, size);
    zoFullDisk disk(m_folder->path());
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    disk.fill();
    QString reason;

    const Result result = zoFileWriter::write(path("a"), QByteArray(size, 'x'), &reason);

    // An empty file needs no room.
    QCOMPARE(result, size == 0 ? Result::Written : Result::NotWritten);
    QCOMPARE(reason, size == 0 ? QString() : disk.reason());
    QCOMPARE(contentOf(path("a")), size == 0 ? QByteArray() : QByteArray("old"));
    QCOMPARE(disk.countFiles(), 1);
}

void tst_zoFileWriter::fullDiskLeavesNoNewFile()
{
    zoFullDisk disk(m_folder->path());
    disk.fill();
    QString reason;

    QCOMPARE(zoFileWriter::write(path("a"), QByteArray(800, 'x'), &reason), Result::NotWritten);

    QCOMPARE(reason, disk.reason());
    QCOMPARE(disk.countFiles(), 0);
}

// The first bytes find room: the reason is that of the rest.
void tst_zoFileWriter::diskThatFillsUpMeanwhileIsTold()
{
    zoFullDisk disk(m_folder->path());
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::link(encoded("a").constData(), encoded("b").constData()), 0);
    disk.fill(4096);
    QString reason;
    QString reasonOfOverwriting;

    QCOMPARE(zoFileWriter::write(path("new"), QByteArray(10000, 'x'), &reason), Result::NotWritten);
    QCOMPARE(zoFileWriter::write(path("a"), QByteArray(10000, 'x'), &reasonOfOverwriting),
             Result::NotWritten);

    QCOMPARE(reason, disk.reason());
    QCOMPARE(reasonOfOverwriting, disk.reason());
    QCOMPARE(contentOf(path("b")), QByteArray("old"));
    QCOMPARE(disk.countFiles(), 2);
}

void tst_zoFileWriter::rightsAreKept_data()
{
    QTest::addColumn<int>("mode");

    QTest::newRow("private") << 0600;
    QTest::newRow("group") << 0664;
    QTest::newRow("everybody") << 0666;
    QTest::newRow("program") << 0755;
    QTest::newRow("program-of-the-owner") << 04755;
}

void tst_zoFileWriter::rightsAreKept()
{
    QFETCH(int, mode);
    if (::getuid() == 0)
        QCOMPARE(::chown(QFile::encodeName(m_folder->path()).constData(), OrdinaryUser::Nobody, gid_t(-1)),
                 0);
    const OrdinaryUser user; // what writing takes off, it takes off from ordinary users
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::chmod(encoded("a").constData(), mode_t(mode)), 0);
    const auto before = statusOf("a");

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(int(statusOf("a").st_mode & 07777U), mode);
    QVERIFY(statusOf("a").st_ino != before.st_ino);
}

void tst_zoFileWriter::ownerIsKept()
{
    if (::getuid() != 0)
        QSKIP("only root writes files of others");
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::chown(encoded("a").constData(), 1234, 5678), 0);
    QCOMPARE(::chmod(encoded("a").constData(), 0640), 0);

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    const auto after = statusOf("a");
    QCOMPARE(int(after.st_uid), 1234);
    QCOMPARE(int(after.st_gid), 5678);
    QCOMPARE(int(after.st_mode & 07777U), 0640);
}

void tst_zoFileWriter::memberOfTheGroupDoesNotTakeTheFile()
{
    if (::getuid() != 0)
        QSKIP("only root makes files of others");
    constexpr gid_t group = 5678;
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::chown(encoded("a").constData(), 1234, group), 0);
    QCOMPARE(::chmod(encoded("a").constData(), 0660), 0);
    QCOMPARE(::chown(QFile::encodeName(m_folder->path()).constData(), 1234, group), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0770), 0);
    const auto before = statusOf("a");
    QCOMPARE(::setgroups(1, &group), 0);
    Result result{};
    {
        const OrdinaryUser user;
        result = zoFileWriter::write(path("a"), "the text of a member");
    }
    QCOMPARE(::setgroups(0, nullptr), 0);

    QCOMPARE(result, Result::Written);
    QCOMPARE(contentOf(path("a")), QByteArray("the text of a member"));
    const auto after = statusOf("a");
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a"});
}

namespace
{
// An access list as the file systems keep it: version 2, then tag, rights and number of each entry. The owner
// reads and writes, user 1234 reads, nobody else does anything.
const QByteArray s_accessList = QByteArray::fromHex("02000000"
                                                    "0100"
                                                    "0600"
                                                    "ffffffff"
                                                    "0200"
                                                    "0400"
                                                    "d2040000"
                                                    "0400"
                                                    "0000"
                                                    "ffffffff"
                                                    "1000"
                                                    "0400"
                                                    "ffffffff"
                                                    "2000"
                                                    "0000"
                                                    "ffffffff");

bool setAttribute(const QByteArray& file, const char* name, const QByteArray& value)
{
    return ::setxattr(file.constData(), name, value.constData(), size_t(value.size()), 0) == 0;
}

QByteArray attribute(const QByteArray& file, const char* name)
{
    char value[256];
    const ssize_t size = ::getxattr(file.constData(), name, value, sizeof value);
    return size < 0 ? QByteArray() : QByteArray(value, int(size));
}
} // namespace

void tst_zoFileWriter::attributesAndAccessListAreKept()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    if (!setAttribute(encoded("a"), "user.note", "of a wall") ||
        !setAttribute(encoded("a"), "system.posix_acl_access", s_accessList))
        QSKIP("this file system has no attributes");
    const auto before = statusOf("a");

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    const auto after = statusOf("a");
    QVERIFY(after.st_ino != before.st_ino);
    QCOMPARE(after.st_mode, before.st_mode);
    QCOMPARE(attribute(encoded("a"), "user.note"), QByteArray("of a wall"));
    QCOMPARE(attribute(encoded("a"), "system.posix_acl_access"), s_accessList);
}

void tst_zoFileWriter::accessListOfTheFolderIsNotTakenOver()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::chmod(encoded("a").constData(), 0600), 0);
    if (!setAttribute(QFile::encodeName(m_folder->path()), "system.posix_acl_default", s_accessList))
        QSKIP("this file system has no access lists");

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(attribute(encoded("a"), "system.posix_acl_access"), QByteArray());
    QCOMPARE(int(statusOf("a").st_mode & 07777U), 0600);
}

void tst_zoFileWriter::namesOfAFileStayTogether()
{
    QCOMPARE(zoFileWriter::write(path("a"), "a longer text"), Result::Written);
    QCOMPARE(::link(encoded("a").constData(), encoded("b").constData()), 0);

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(contentOf(path("b")), QByteArray("new"));
    QCOMPARE(statusOf("a").st_ino, statusOf("b").st_ino);
}

void tst_zoFileWriter::missingTargetOfALinkIsMade()
{
    QVERIFY(QDir(m_folder->path()).mkdir("there"));
    QCOMPARE(::symlink("there/a", encoded("link").constData()), 0);

    QCOMPARE(zoFileWriter::write(path("link"), "new"), Result::Written);

    QVERIFY(S_ISLNK(statusOf("link").st_mode));
    QCOMPARE(contentOf(path("there/a")), QByteArray("new"));
}

void tst_zoFileWriter::oldBytesStayUntilTheNewOnesAreThere()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(::link(encoded("a").constData(), encoded("b").constData()), 0);
    QByteArray meanwhile;

    const Result result = zoFileWriter::write(path("a"), [&] {
        meanwhile = contentOf(path("a"));
        return QByteArray("new");
    });

    QCOMPARE(result, Result::Written);
    QCOMPARE(meanwhile, QByteArray("old"));
}

void tst_zoFileWriter::killLeavesTheOldOrTheNewFile_data()
{
    QTest::addColumn<bool>("isOverwritten");

    QTest::newRow("replaced") << false;
    QTest::newRow("overwritten") << true;
}

void tst_zoFileWriter::killLeavesTheOldOrTheNewFile()
{
    QFETCH(bool, isOverwritten);
    const QByteArray first(30000, 'a');
    const QByteArray second(30000, 'b');
    QCOMPARE(zoFileWriter::write(path("a"), first), Result::Written);
    if (isOverwritten)
        QCOMPARE(::link(encoded("a").constData(), encoded("b").constData()), 0);

    for (int i = 0; i < 100; ++i) {
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t writer = ::fork();
        if (writer == 0) {
            char byte = 0;
            for (;; byte = char(!byte)) {
                zoFileWriter::write(path("a"), byte == 0 ? second : first);
                if (::write(ends[1], &byte, 1) != 1)
                    ::_exit(1);
            }
        }
        char byte = 0;
        QCOMPARE(::read(ends[0], &byte, 1), ssize_t(1)); // it is at work
        ::usleep(useconds_t(i * 7 % 100));
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        ::close(ends[0]);
        ::close(ends[1]);

        const QByteArray content = contentOf(path("a"));
        QCOMPARE(content.size(), first.size());
        if (!isOverwritten)
            QVERIFY(content == first || content == second);
    }
}

void tst_zoFileWriter::endOfTheProcessLeavesNoRemains_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isNew");

    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        QTest::addRow("new-%d", number) << number << true;
        QTest::addRow("replaced-%d", number) << number << false;
    }
}

void tst_zoFileWriter::endOfTheProcessLeavesNoRemains()
{
    QFETCH(int, number);
    QFETCH(bool, isNew);
    if (!isNew)
        QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);

    const pid_t writer = ::fork();
    if (writer == 0) {
        const rlimit none{0, 0}; // no core file
        ::setrlimit(RLIMIT_CORE, &none);
        std::signal(number, SIG_DFL);
        zoFileWriter::write(path("a"), [number]() -> QByteArray {
            ::raise(number); // in the middle
            return "new";
        });
        ::_exit(0); // not reached: the signal comes when the file is there
    }
    int status = 0;
    QCOMPARE(::waitpid(writer, &status, 0), writer);

    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), number);
    QCOMPARE(contentOf(path("a")), QByteArray("new"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList("a"));
}

void tst_zoFileWriter::nameWithoutBytesIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    QTest::newRow("empty") << ""
                           << "the file name is empty";
    QTest::newRow("half-of-a-character")
        << QString("a") + QChar(0xd800) << "the encoding of the locale has not";
    // As a file dialog shows a name that is no text.
    QTest::newRow("unreadable") << QString("a") + QChar(QChar::ReplacementCharacter)
                                << "bytes of this name are";
}

void tst_zoFileWriter::nameWithoutBytesIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    if (!name.isEmpty())
        name = path(name);
    QString told;

    QCOMPARE(zoFileWriter::write(name, "new", &told), Result::NotOpened);
    QVERIFY2(told.startsWith(reason), qPrintable(told));
    QVERIFY(!zoFileWriter::canWrite(name, &told));
    QVERIFY2(told.startsWith(reason), qPrintable(told));

    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

// Somebody may have given the file that very name.
void tst_zoFileWriter::fileNamedAfterUnreadableBytesIsWritten()
{
    const QByteArray name = encoded("a\xef\xbf\xbd");
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT, 0600);
    QVERIFY(file >= 0);
    ::close(file);

    QCOMPARE(zoFileWriter::write(QFile::decodeName(name), "new"), Result::Written);

    QCOMPARE(contentOf(QFile::decodeName(name)), QByteArray("new"));
}

void tst_zoFileWriter::guardIsAskedFirst()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QStringList asked;
    bool isBuilt = false;
    zoFileWriter::setGuard({[&](const QString& fileName) {
                                asked << fileName;
                                return fileName != path("a");
                            },
                            {}});
    QString reason = "of something else";

    const Result refused = zoFileWriter::write(
        path("a"),
        [&] {
            isBuilt = true;
            return QByteArray("new");
        },
        &reason);
    const Result allowed = zoFileWriter::write(path("b"), "new");

    QCOMPARE(refused, Result::NotOpened);
    QCOMPARE(reason, QString());
    QVERIFY(!isBuilt);
    QCOMPARE(contentOf(path("a")), QByteArray("old"));
    QCOMPARE(allowed, Result::Written);
    QCOMPARE(asked, QStringList({path("a"), path("b")}));
}

void tst_zoFileWriter::guardIsToldWhatWasWritten()
{
    QStringList written;
    zoFileWriter::setGuard({{}, [&](const QString& fileName) { written << fileName; }});

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);
    QCOMPARE(zoFileWriter::write(path("none/a"), "new"), Result::NotOpened);

    QCOMPARE(written, QStringList{path("a")});
}

void tst_zoFileWriter::canWriteTellsWhatWriteWould()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QVERIFY(QDir(m_folder->path()).mkdir("there"));
    QString reason;

    QVERIFY(zoFileWriter::canWrite(path("a"), &reason));
    QCOMPARE(reason, QString());
    QVERIFY(zoFileWriter::canWrite(path("there/a")));
    QVERIFY(!zoFileWriter::canWrite(path("none/a"), &reason));
    QCOMPARE(reason, QStringLiteral("No such file or directory"));
    QVERIFY(!zoFileWriter::canWrite(path("there"), &reason));
    QCOMPARE(reason, QStringLiteral("Is a directory"));
    QVERIFY(!zoFileWriter::canWrite(QString(), &reason));
    QVERIFY(!zoFileWriter::canWrite(path(QString(256, QLatin1Char('n'))), &reason));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({"a", "there"}));
    QCOMPARE(::chmod(encoded("a").constData(), 0444), 0);
    QCOMPARE(::chmod(encoded("there").constData(), 0555), 0);
    const OrdinaryUser user;
    QVERIFY(!zoFileWriter::canWrite(path("a"), &reason));
    QVERIFY(!zoFileWriter::canWrite(path("there/a"), &reason));
    QCOMPARE(reason, QStringLiteral("Permission denied"));
}

void tst_zoFileWriter::missingFolderHasAReason()
{
    QString reason;

    QCOMPARE(zoFileWriter::write(path("none/a"), "text", &reason), Result::NotOpened);

    QCOMPARE(reason, QStringLiteral("No such file or directory"));
}

void tst_zoFileWriter::longestNameIsWritten()
{
    const QString name = QString(255, QLatin1Char('n'));

    QCOMPARE(zoFileWriter::write(path(name), "text"), Result::Written);
    QCOMPARE(zoFileWriter::write(path(name), "again"), Result::Written);

    QCOMPARE(contentOf(path(name)), QByteArray("again"));
}

ZO_TEST_MAIN(tst_zoFileWriter)
#include "tst_zoFileWriter.moc"
