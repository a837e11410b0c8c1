#include "zoTestCase.h"

#include <zoFileWriter.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <functional>
#include <memory>
#include <vector>

namespace
{
// What the writer asked of the system, in order; it finds these functions before those of the library.
std::vector<std::string> s_calls;
bool s_hasUnnamedFiles = true;
int s_linkError = 0;
int s_lockError = 0;
std::function<void()> s_beforeRename;

template <class Function>
Function* systemFunction(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

int refused(int error)
{
    errno = error;
    return -1;
}
} // namespace

extern "C" Q_DECL_EXPORT int openat(int folder, const char* name, int flags, ...)
{
    if ((flags & O_TMPFILE) == O_TMPFILE && !s_hasUnnamedFiles)
        return refused(EOPNOTSUPP);
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return systemFunction<int(int, const char*, int, ...)>("openat")(folder, name, flags, mode);
}

extern "C" Q_DECL_EXPORT int flock(int file, int operation) noexcept
{
    if (s_lockError != 0)
        return refused(s_lockError);
    return systemFunction<int(int, int)>("flock")(file, operation);
}

extern "C" Q_DECL_EXPORT int linkat(int fromFolder, const char* from, int toFolder, const char* to,
                                    int flags) noexcept
{
    if (s_linkError != 0)
        return refused(s_linkError);
    const int result = systemFunction<int(int, const char*, int, const char*, int)>("linkat")(
        fromFolder, from, toFolder, to, flags);
    if (result == 0)
        s_calls.emplace_back("link");
    return result;
}

extern "C" Q_DECL_EXPORT int fsync(int file)
{
    struct stat status
    {
    };
    ::fstat(file, &status);
    s_calls.emplace_back(S_ISDIR(status.st_mode) ? "fsync folder" : "fsync file");
    return systemFunction<int(int)>("fsync")(file);
}

extern "C" Q_DECL_EXPORT int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    s_calls.emplace_back("rename");
    if (s_beforeRename)
        s_beforeRename();
    return systemFunction<int(int, const char*, int, const char*)>("renameat")(fromFolder, from, toFolder,
                                                                               to);
}

// Files without a name until their bytes are on the disk, and what is left of them when their writer is killed.
class tst_zoNewFile final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void bytesAreOnTheDiskBeforeTheName_data();
    void bytesAreOnTheDiskBeforeTheName();
    void killedWriterLeavesNothing();
    void remainsAreRemovedByTheNextWriter_data();
    void remainsAreRemovedByTheNextWriter();
    void remainsOfTheLongestNameAreRemoved();
    void fileOfALivingWriterStays_data();
    void fileOfALivingWriterStays();
    void writersThatAreKilledSideBySideLeaveNothing_data();
    void writersThatAreKilledSideBySideLeaveNothing();
    void fileThatOnlyLooksLikeRemainsStays_data();
    void fileThatOnlyLooksLikeRemainsStays();
    void fileThatCannotBeLinkedHasANameBefore_data();
    void fileThatCannotBeLinkedHasANameBefore();
    void fileSystemWithoutLocksIsWrittenTo_data();
    void fileSystemWithoutLocksIsWrittenTo();
    void newFileIsAsAnyOtherWouldBe_data();
    void newFileIsAsAnyOtherWouldBe();

private:
    using Result = zoFileWriter::Result;

    QString path(const QString& name) const { return m_folder->filePath(name); }
    QByteArray encoded(const QString& name) const { return QFile::encodeName(path(name)); }
    QByteArray contentOf(const QString& name) const;
    QStringList names() const;
    bool hasUnnamedFiles() const;
    // A process that writes the file and is killed before it takes its name; the names of what it leaves.
    QStringList leaveRemains(const QString& name) const;
    static void addKinds();

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_zoNewFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_zoNewFile::cleanup()
{
    s_hasUnnamedFiles = true;
    s_linkError = 0;
    s_lockError = 0;
    s_beforeRename = {};
    m_folder.reset();
}

QByteArray tst_zoNewFile::contentOf(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList tst_zoNewFile::names() const
{
    return QDir(m_folder->path())
        .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

bool tst_zoNewFile::hasUnnamedFiles() const
{
    const int file = ::open(QFile::encodeName(m_folder->path()).constData(), O_TMPFILE | O_WRONLY, 0600);
    ::close(file);
    return file >= 0;
}

QStringList tst_zoNewFile::leaveRemains(const QString& name) const
{
    const QStringList before = names();
    const pid_t writer = ::fork();
    if (writer == 0) {
        s_beforeRename = [] { ::raise(SIGKILL); };
        zoFileWriter::write(path(name), "of the one that is killed");
        ::_exit(0);
    }
    ::waitpid(writer, nullptr, 0);
    QStringList left = names();
    for (const QString& known : before)
        left.removeAll(known);
    return left;
}

void tst_zoNewFile::addKinds()
{
    QTest::addColumn<bool>("isUnnamed");

    QTest::newRow("unnamed") << true;
    QTest::newRow("named") << false;
}

void tst_zoNewFile::bytesAreOnTheDiskBeforeTheName_data()
{
    QTest::addColumn<bool>("isUnnamed");
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<QString>("calls");

    QTest::newRow("new") << true << true << "fsync file, link, fsync folder";
    QTest::newRow("replaced") << true << false << "fsync file, link, rename, fsync folder";
    QTest::newRow("new-named") << false << true << "fsync file, rename, fsync folder";
    QTest::newRow("replaced-named") << false << false << "fsync file, rename, fsync folder";
}

void tst_zoNewFile::bytesAreOnTheDiskBeforeTheName()
{
    QFETCH(bool, isUnnamed);
    QFETCH(bool, isNew);
    QFETCH(QString, calls);
    if (isUnnamed && !hasUnnamedFiles())
        QSKIP("this file system has no files without a name");
    s_hasUnnamedFiles = isUnnamed;
    if (!isNew)
        QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    s_calls.clear();

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QStringList told;
    for (const std::string& call : s_calls)
        told << QString::fromStdString(call);
    QCOMPARE(told.join(", "), calls);
    QCOMPARE(names(), QStringList("a"));
}

void tst_zoNewFile::killedWriterLeavesNothing()
{
    if (!hasUnnamedFiles())
        QSKIP("this file system has no files without a name");
    for (const char* old : {"", "old"}) {
        if (*old != '\0')
            QCOMPARE(zoFileWriter::write(path("a"), old), Result::Written);
        const QStringList before = names();

        const pid_t writer = ::fork();
        if (writer == 0) {
            zoFileWriter::write(path("a"), []() -> QByteArray {
                ::raise(SIGKILL);
                return "new";
            });
            ::_exit(0);
        }
        int status = 0;
        QCOMPARE(::waitpid(writer, &status, 0), writer);

        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(names(), before);
        QCOMPARE(contentOf("a"), QByteArray(old));
    }
}

void tst_zoNewFile::remainsAreRemovedByTheNextWriter_data()
{
    addKinds();
}

void tst_zoNewFile::remainsAreRemovedByTheNextWriter()
{
    QFETCH(bool, isUnnamed);
    s_hasUnnamedFiles = isUnnamed;
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    QCOMPARE(zoFileWriter::write(path("b"), "of another file"), Result::Written);
    QCOMPARE(leaveRemains("a").size(), 1);
    QCOMPARE(leaveRemains("b").size(), 1);
    QCOMPARE(contentOf("a"), QByteArray("old"));

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(contentOf("a"), QByteArray("new"));
    QCOMPARE(names().filter(QRegularExpression("^a")), QStringList("a"));
    QCOMPARE(names().filter(QRegularExpression("^b")).size(), 2); // not ours to look at
}

// The ending finds no room behind such a name.
void tst_zoNewFile::remainsOfTheLongestNameAreRemoved()
{
    const QString longest(255, QLatin1Char('n'));
    QCOMPARE(zoFileWriter::write(path(longest), "old"), Result::Written);
    QCOMPARE(leaveRemains(longest).size(), 1);

    QCOMPARE(zoFileWriter::write(path(longest), "new"), Result::Written);

    QCOMPARE(names(), QStringList(longest));
    QCOMPARE(contentOf(longest), QByteArray("new"));
}

void tst_zoNewFile::fileOfALivingWriterStays_data()
{
    addKinds();
}

void tst_zoNewFile::fileOfALivingWriterStays()
{
    QFETCH(bool, isUnnamed);
    s_hasUnnamedFiles = isUnnamed;
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    int ready[2];
    int goOn[2];
    QCOMPARE(::pipe(ready), 0);
    QCOMPARE(::pipe(goOn), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
        ::close(goOn[1]); // ends with the test at the latest
        char byte = 0;
        s_beforeRename = [&] {
            if (::write(ready[1], "r", 1) != 1 || ::read(goOn[0], &byte, 1) != 1)
                ::_exit(2);
        };
        ::_exit(zoFileWriter::write(path("a"), "of the slow one") == Result::Written ? 0 : 1);
    }
    char byte = 0;
    QCOMPARE(::read(ready[0], &byte, 1), ssize_t(1));

    QCOMPARE(zoFileWriter::write(path("a"), "of the quick one"), Result::Written);

    QCOMPARE(contentOf("a"), QByteArray("of the quick one"));
    QCOMPARE(names().size(), 2);
    QCOMPARE(::write(goOn[1], "g", 1), ssize_t(1));
    int status = 0;
    QCOMPARE(::waitpid(writer, &status, 0), writer);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    QCOMPARE(contentOf("a"), QByteArray("of the slow one"));
    QCOMPARE(names(), QStringList("a"));
    for (const int end : {ready[0], ready[1], goOn[0], goOn[1]})
        ::close(end);
}

void tst_zoNewFile::writersThatAreKilledSideBySideLeaveNothing_data()
{
    addKinds();
}

void tst_zoNewFile::writersThatAreKilledSideBySideLeaveNothing()
{
    QFETCH(bool, isUnnamed);
    s_hasUnnamedFiles = isUnnamed;
    QCOMPARE(zoFileWriter::write(path("a"), QByteArray(20000, 'a')), Result::Written);
    constexpr int count = 6;
    for (int round = 0; round < 10; ++round) {
        std::vector<pid_t> writers;
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        for (int i = 0; i < count; ++i) {
            const pid_t writer = ::fork();
            if (writer == 0) {
                const QByteArray bytes(20000, char('a' + i));
                for (;;) {
                    if (zoFileWriter::write(path("a"), bytes) != Result::Written)
                        ::_exit(1);
                    if (::write(ends[1], "w", 1) != 1)
                        ::_exit(2);
                }
            }
            writers.push_back(writer);
        }
        char bytes[count];
        QCOMPARE(::read(ends[0], bytes, 1), ssize_t(1)); // they are at work
        ::usleep(useconds_t(round * 700));
        for (const pid_t writer : writers)
            ::kill(writer, SIGKILL);
        for (const pid_t writer : writers) {
            int status = 0;
            QCOMPARE(::waitpid(writer, &status, 0), writer);
            QVERIFY(WIFSIGNALED(status)); // none failed
        }
        ::close(ends[0]);
        ::close(ends[1]);
        const QByteArray content = contentOf("a");
        QCOMPARE(content, QByteArray(20000, content.at(0)));
    }

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(names(), QStringList("a"));
}

void tst_zoNewFile::fileThatOnlyLooksLikeRemainsStays_data()
{
    QTest::addColumn<QString>("kind");

    for (const char* kind : {"link", "second-name", "folder", "pipe", "of-somebody-else", "locked"})
        QTest::newRow(kind) << kind;
}

// Dates and sums are what people put at the ends of names, too.
void tst_zoNewFile::fileThatOnlyLooksLikeRemainsStays()
{
    QFETCH(QString, kind);
    if (kind == "of-somebody-else" && ::getuid() != 0)
        QSKIP("only root makes files of others");
    const QStringList others{"a.20261122", "a.0123456789abcdef", "a~"};
    for (const QString& other : others)
        QCOMPARE(zoFileWriter::write(path(other), "of a person"), Result::Written);
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    const QString name = leaveRemains("a").value(0);
    QVERIFY(name.startsWith("a."));
    const QByteArray there = encoded(name);
    int lock = -1;
    if (kind == "second-name") {
        QCOMPARE(::link(there.constData(), encoded("second").constData()), 0);
    } else if (kind == "of-somebody-else") {
        QCOMPARE(::chown(there.constData(), 1234, 5678), 0);
    } else if (kind == "locked") {
        lock = ::open(there.constData(), O_RDONLY | O_CLOEXEC);
        QCOMPARE(::flock(lock, LOCK_EX | LOCK_NB), 0);
    } else {
        QVERIFY(QFile::remove(path(name)));
        const int made = kind == "link"     ? ::symlink("a.20261122", there.constData())
                         : kind == "folder" ? ::mkdir(there.constData(), 0700)
                                            : ::mkfifo(there.constData(), 0600);
        QCOMPARE(made, 0);
    }

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(contentOf("a"), QByteArray("new"));
    QVERIFY(names().contains(name));
    for (const QString& other : others)
        QCOMPARE(contentOf(other), QByteArray("of a person"));
    QCOMPARE(names().size(), others.size() + 2 + int(kind == "second-name"));
    ::close(lock);
}

void tst_zoNewFile::fileThatCannotBeLinkedHasANameBefore_data()
{
    QTest::addColumn<int>("error");

    // As security modules and odd file systems refuse it.
    for (const int error : {EPERM, EACCES, EOPNOTSUPP, ENOENT})
        QTest::newRow(::strerror(error)) << error;
}

void tst_zoNewFile::fileThatCannotBeLinkedHasANameBefore()
{
    QFETCH(int, error);
    s_linkError = error;
    int asked = 0;
    const auto bytes = [&asked] {
        ++asked;
        return "bytes " + QByteArray::number(asked);
    };
    s_calls.clear();

    QCOMPARE(zoFileWriter::write(path("a"), bytes), Result::Written);
    QCOMPARE(contentOf("a"), QByteArray("bytes 1"));
    QCOMPARE(zoFileWriter::write(path("a"), bytes), Result::Written);

    QCOMPARE(contentOf("a"), QByteArray("bytes 2"));
    QCOMPARE(std::count(s_calls.begin(), s_calls.end(), "rename"), 2); // not written over the old bytes
    QCOMPARE(names(), QStringList("a"));
}

void tst_zoNewFile::fileSystemWithoutLocksIsWrittenTo_data()
{
    addKinds();
}

// Nothing tells there that the writer does not live.
void tst_zoNewFile::fileSystemWithoutLocksIsWrittenTo()
{
    QFETCH(bool, isUnnamed);
    s_hasUnnamedFiles = isUnnamed;
    s_lockError = ENOLCK;
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    const QStringList remains = leaveRemains("a");
    QCOMPARE(remains.size(), 1);

    QCOMPARE(zoFileWriter::write(path("a"), "new"), Result::Written);

    QCOMPARE(contentOf("a"), QByteArray("new"));
    QCOMPARE(names(), QStringList("a") + remains);
}

void tst_zoNewFile::newFileIsAsAnyOtherWouldBe_data()
{
    QTest::addColumn<bool>("isUnnamed");
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("hasAccessList");

    for (const bool isUnnamed : {true, false}) {
        const char* kind = isUnnamed ? "unnamed" : "named";
        for (const int mask : {0022, 0002, 0077, 0})
            QTest::addRow("%s-%03o", kind, unsigned(mask)) << isUnnamed << mask << false;
        QTest::addRow("%s-access-list", kind) << isUnnamed << 0022 << true;
    }
}

// Mask, group and access list of the folder hold for it.
void tst_zoNewFile::newFileIsAsAnyOtherWouldBe()
{
    QFETCH(bool, isUnnamed);
    QFETCH(int, mask);
    QFETCH(bool, hasAccessList);
    s_hasUnnamedFiles = isUnnamed;
    const QByteArray folder = QFile::encodeName(m_folder->path());
    if (::getuid() == 0)
        QCOMPARE(::chown(folder.constData(), uid_t(-1), 5678), 0);
    QCOMPARE(::chmod(folder.constData(), 02775), 0);
    // The owner and user 1234 read and write, the group reads.
    const QByteArray list = QByteArray::fromHex("02000000"
                                                "01000600ffffffff"
                                                "02000600d2040000"
                                                "04000400ffffffff"
                                                "10000600ffffffff"
                                                "20000000ffffffff");
    if (hasAccessList && ::setxattr(folder.constData(), "system.posix_acl_default", list.constData(),
                                    size_t(list.size()), 0) != 0)
        QSKIP("this file system has no access lists");
    const mode_t before = ::umask(mode_t(mask));

    const Result result = zoFileWriter::write(path("a"), "new");
    const int other = ::open(encoded("other").constData(), O_WRONLY | O_CREAT, 0666);

    ::umask(before);
    ::close(other);
    QCOMPARE(result, Result::Written);
    struct stat made
    {
    };
    struct stat expected
    {
    };
    QCOMPARE(::stat(encoded("a").constData(), &made), 0);
    QCOMPARE(::stat(encoded("other").constData(), &expected), 0);
    QCOMPARE(made.st_mode, expected.st_mode);
    QCOMPARE(made.st_uid, expected.st_uid);
    QCOMPARE(made.st_gid, expected.st_gid);
    char lists[2][256]{};
    const ssize_t size = ::getxattr(encoded("a").constData(), "system.posix_acl_access", lists[0], 256);
    QCOMPARE(size, ::getxattr(encoded("other").constData(), "system.posix_acl_access", lists[1], 256));
    QCOMPARE(size > 0, hasAccessList);
    QCOMPARE(QByteArray(lists[0], 256), QByteArray(lists[1], 256));
}

ZO_TEST_MAIN(tst_zoNewFile)
#include "tst_zoNewFile.moc"
