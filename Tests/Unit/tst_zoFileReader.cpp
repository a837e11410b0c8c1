#include "zoTestCase.h"

#include <zoClusterLimits.h>
#include <zoFileReader.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

using Pipes = zoFileReader::Pipes;
using Result = zoFileReader::Result;

Q_DECLARE_METATYPE(zoFileReader::Pipes)
Q_DECLARE_METATYPE(zoFileReader::Result)

// Files that have an end are read, and nothing else is waited for.
class tst_zoFileReader final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void cleanup();

    void wholeFileIsRead_data();
    void wholeFileIsRead();
    void whatHasNoEndIsRefused_data();
    void whatHasNoEndIsRefused();
    void whatCannotBeOpenedIsTold_data();
    void whatCannotBeOpenedIsTold();
    void sizeHasALimit_data();
    void sizeHasALimit();
    void pipeOfAShellIsReadWhereItIsAllowed();
    void endlessPipeEndsAtTheLimit();
    void standardInputIsReadToItsEnd();
    void closedStandardInputIsTold();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace
{
// Standard input is another file as long as this lives.
class StandardInput final
{
public:
    explicit StandardInput(int file) : m_before(::dup(STDIN_FILENO))
    {
        if (file >= 0)
            ::dup2(file, STDIN_FILENO);
        else
            ::close(STDIN_FILENO);
    }
    ~StandardInput()
    {
        ::dup2(m_before, STDIN_FILENO);
        ::close(m_before);
    }

    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

private:
    int m_before;
};

struct Pipe
{
    Pipe() : isMade(::pipe(ends) == 0) {}
    ~Pipe()
    {
        ::close(ends[0]);
        closeWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeWriting()
    {
        if (ends[1] >= 0)
            ::close(ends[1]);
        ends[1] = -1;
    }
    QString name() const { return QStringLiteral("/dev/fd/%1").arg(ends[0]); }

    int ends[2] = {-1, -1};
    bool isMade;
};
} // namespace

void tst_zoFileReader::cleanup()
{
    m_folder.reset();
    zoTestCase::cleanup();
}

void tst_zoFileReader::wholeFileIsRead_data()
{
    QTest::addColumn<int>("size");

    for (const int size : {0, 1, 65535, 65536, 65537, 1000000})
        QTest::addRow("%d-bytes", size) << size;
}

void tst_zoFileReader::wholeFileIsRead()
{
    QFETCH(int, size);
    QByteArray content(size, 'a');
    for (int i = 0; i < size; ++i)
        content[i] = char(i % 251);
    QFile file(path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    QByteArray bytes("before");
    QString reason("before");
    QCOMPARE(zoFileReader::read(path("a"), bytes, &reason), Result::Read);

    QVERIFY(bytes == content);
    QCOMPARE(reason, QString());
}

void tst_zoFileReader::whatHasNoEndIsRefused_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("endless") << "/dev/zero";
    QTest::newRow("noise") << "/dev/urandom";
    QTest::newRow("pipe-without-a-writer") << "fifo";
    QTest::newRow("link-to-an-endless-one") << "link";
}

void tst_zoFileReader::whatHasNoEndIsRefused()
{
    QFETCH(QString, name);
    QCOMPARE(::mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);
    QVERIFY(QFile::link("/dev/zero", path("link")));
    for (const Pipes pipes : {Pipes::Refused, Pipes::Unnamed}) {
        QByteArray bytes("before");
        QString reason;

        QCOMPARE(zoFileReader::read(QDir(m_folder->path()).absoluteFilePath(name), bytes, &reason, pipes),
                 Result::NotRead);

        QCOMPARE(bytes, QByteArray());
        QVERIFY2(reason.startsWith("it is no regular file"), qPrintable(reason));
        QVERIFY2(reason.contains("copy"), qPrintable(reason));
    }
}

void tst_zoFileReader::whatCannotBeOpenedIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing") << "none"
                             << "No such file or directory";
    QTest::newRow("folder") << "."
                            << "Is a directory";
    QTest::newRow("below-a-file") << "file/none"
                                  << "Not a directory";
    // Half of a pair: no encoding has it.
    QTest::newRow("no-name") << QString(QChar(0xd800)) << "the encoding of the locale";
}

void tst_zoFileReader::whatCannotBeOpenedIsTold()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QFile file(path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QByteArray bytes("before");
    QString told;

    QCOMPARE(zoFileReader::read(path(name), bytes, &told), Result::NotOpened);

    QCOMPARE(bytes, QByteArray());
    QVERIFY2(told.startsWith(reason), qPrintable(told));
}

void tst_zoFileReader::sizeHasALimit_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<Result>("result");

    QTest::newRow("at-the-limit") << zoClusterLimits::MaximumFileBytes << Result::Read;
    QTest::newRow("beyond-it") << zoClusterLimits::MaximumFileBytes + 1 << Result::NotRead;
    QTest::newRow("10-GiB") << (10LL << 30U) << Result::NotRead;
}

void tst_zoFileReader::sizeHasALimit()
{
    QFETCH(qint64, size);
    QFETCH(Result, result);
    QFile file(path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(size)); // takes no room on the disk
    QByteArray bytes;
    QString reason;

    QCOMPARE(zoFileReader::read(path("a"), bytes, &reason), result);

    QCOMPARE(qint64(bytes.size()), result == Result::Read ? size : 0);
    QCOMPARE(reason,
             result == Result::Read
                 ? QString()
                 : QString("it is larger than 256 MiB, the most that is read; is it the right file?"));
}

void tst_zoFileReader::pipeOfAShellIsReadWhereItIsAllowed()
{
    Pipe pipe;
    QVERIFY(pipe.isMade);
    QCOMPARE(::write(pipe.ends[1], "abc", 3), ssize_t(3));
    pipe.closeWriting();
    QByteArray bytes;
    QString reason;

    QCOMPARE(zoFileReader::read(pipe.name(), bytes, &reason), Result::NotRead);
    QVERIFY2(reason.startsWith("it is no regular file"), qPrintable(reason));
    QCOMPARE(zoFileReader::read(pipe.name(), bytes, &reason, Pipes::Unnamed), Result::Read);

    QCOMPARE(bytes, QByteArray("abc"));
}

void tst_zoFileReader::endlessPipeEndsAtTheLimit()
{
    Pipe pipe;
    QVERIFY(pipe.isMade);
    const pid_t writer = ::fork();
    if (writer == 0) {
        static char block[65536];
        while (::write(pipe.ends[1], block, sizeof block) > 0) {
        }
        ::_exit(0);
    }
    pipe.closeWriting();
    QByteArray bytes;
    QString reason;

    const Result result = zoFileReader::read(pipe.name(), bytes, &reason, Pipes::Unnamed);

    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    QCOMPARE(result, Result::NotRead);
    QCOMPARE(bytes.size(), 0);
    QVERIFY2(reason.startsWith("it is larger than 256 MiB"), qPrintable(reason));
}

void tst_zoFileReader::standardInputIsReadToItsEnd()
{
    Pipe pipe;
    QVERIFY(pipe.isMade);
    QCOMPARE(::write(pipe.ends[1], "abc", 3), ssize_t(3));
    pipe.closeWriting();
    QByteArray bytes;
    const StandardInput input(pipe.ends[0]);

    QCOMPARE(zoFileReader::readStandardInput(bytes), Result::Read);

    QCOMPARE(bytes, QByteArray("abc"));
}

void tst_zoFileReader::closedStandardInputIsTold()
{
    QByteArray bytes;
    QString reason;
    const StandardInput input(-1);

    QCOMPARE(zoFileReader::readStandardInput(bytes, &reason), Result::NotRead);

    QCOMPARE(reason, QString("standard input is closed"));
}

ZO_TEST_MAIN(tst_zoFileReader)
#include "tst_zoFileReader.moc"
