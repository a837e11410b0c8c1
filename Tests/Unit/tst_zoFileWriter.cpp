#include "zoTestCase.h"

#include <zoFileWriter.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
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

// A disk that takes so many bytes per file.
class FullDisk final
{
public:
    explicit FullDisk(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
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
    void fullDiskDamagesAFileThatIsOverwritten();
    void fileOfSomebodyElseStays();
    void fullDiskLeavesTheOldFileWhole();
    void missingFolderHasAReason();
    void longestNameIsWritten();

private:
    using Result = zoFileWriter::Result;

    QString path(const QString& name) const { return m_folder->filePath(name); }
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
    ::chmod(QFile::encodeName(m_folder->path()).constData(), 0700);
    m_folder.reset();
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

void tst_zoFileWriter::fullDiskDamagesAFileThatIsOverwritten()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    if (::getuid() == 0)
        QCOMPARE(::chown(QFile::encodeName(path("a")).constData(), OrdinaryUser::Nobody, gid_t(-1)), 0);
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

void tst_zoFileWriter::fullDiskLeavesTheOldFileWhole()
{
    QCOMPARE(zoFileWriter::write(path("a"), "old"), Result::Written);
    Result result{};
    {
        const FullDisk disk(1024);
        result = zoFileWriter::write(path("a"), QByteArray(100000, 'x'));
    }
    QCOMPARE(result, Result::NotWritten);
    QCOMPARE(contentOf(path("a")), QByteArray("old"));
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
