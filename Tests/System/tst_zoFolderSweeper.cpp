#include "zoParaViewFake.h"
#include "zoTestCase.h"

#include <zoFolderSweeper.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

// Folders of sessions go whatever ends the host.
class tst_zoFolderSweeper final : public zoTestCase
{
    Q_OBJECT

private slots:
    void folderGoesWithTheWord_data();
    void folderGoesWithTheWord();
    void folderStaysUntilThen();
    void failedCommandIsRunAgain();
    void oddNamesStayOneArgument();
    void emptyCommandDoesNothing();
    void killedHostLeavesNothing();
};

namespace
{
constexpr int s_limitMs = 60000;

QString folderIn(const QTemporaryDir& parent, const QString& name = QStringLiteral("session"))
{
    QDir(parent.path()).mkpath(name + QStringLiteral("/inner"));
    QFile file(parent.filePath(name) + QStringLiteral("/inner/file"));
    file.open(QIODevice::WriteOnly);
    return parent.filePath(name);
}

QStringList removalOf(const QString& folder)
{
    return {"rm", "-r", "-f", folder};
}

// What only waits to be collected is gone.
bool isAlive(const QByteArray& process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(process)));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    const char state = stat.mid(stat.lastIndexOf(')') + 2, 1).append(' ').at(0);
    return state != 'Z' && state != 'X';
}
} // namespace

void tst_zoFolderSweeper::folderGoesWithTheWord_data()
{
    QTest::addColumn<bool>("isSaid");
    QTest::newRow("said") << true;
    QTest::newRow("destroyed") << false;
}

void tst_zoFolderSweeper::folderGoesWithTheWord()
{
    QFETCH(bool, isSaid);
    const QTemporaryDir parent;
    const QString folder = folderIn(parent);
    {
        zoFolderSweeper sweeper(removalOf(folder));
        if (isSaid) {
            sweeper.sweep();
            QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
        }
    }
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
}

void tst_zoFolderSweeper::folderStaysUntilThen()
{
    const QTemporaryDir parent;
    const QString first = folderIn(parent, QStringLiteral("first"));
    const QString second = folderIn(parent, QStringLiteral("second"));
    {
        const zoFolderSweeper waits(removalOf(first));
        zoFolderSweeper(removalOf(second)).sweep();
        QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(second), s_limitMs);
        QVERIFY(QFileInfo::exists(first));
    }
    // Not at the same time as the folder of the test.
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(first), s_limitMs);
}

// As a machine that is cut off does, and one where a program still writes.
void tst_zoFolderSweeper::failedCommandIsRunAgain()
{
    const QTemporaryDir parent;
    const QString folder = folderIn(parent);
    zoFolderSweeper(
        {"sh", "-c", "[ -e \"$1/tried\" ] || { touch \"$1/tried\"; exit 255; }; rm -r \"$1\"", "sh", folder})
        .sweep();
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
}

void tst_zoFolderSweeper::oddNamesStayOneArgument()
{
    const QTemporaryDir parent;
    const QString other = folderIn(parent, QStringLiteral("a"));
    const QString folder = folderIn(parent, QStringLiteral("a b'\"$(true);*"));
    zoFolderSweeper(removalOf(folder)).sweep();
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
    QVERIFY(QFileInfo::exists(other));
}

void tst_zoFolderSweeper::emptyCommandDoesNothing()
{
    zoFolderSweeper sweeper({});
    sweeper.sweep();
}

// Neither its folder nor its programs, mpirun among them, which nobody is left to tell.
void tst_zoFolderSweeper::killedHostLeavesNothing()
{
    const zoParaViewFake fake;
    const QTemporaryDir locks;
    QProcess host;
    host.start(QStringLiteral(ZO_SESSION_HOLDER), {locks.path(), ZO_FAKE_MPIRUN, ZO_FAKE_PVSERVER,
                                                   ZO_COMPONENT_DIR, zoParaViewFake::wallOf({"localhost"})});
    QTRY_VERIFY_WITH_TIMEOUT(host.canReadLine(), s_limitMs);
    const QString folder = QString::fromLocal8Bit(host.readLine().trimmed());
    QVERIFY2(QFileInfo::exists(folder + "/wall.pvx"), qPrintable(folder));
    QFile list(QStringLiteral("/proc/%1/task/%1/children").arg(host.processId()));
    QVERIFY(list.open(QIODevice::ReadOnly));
    const QList<QByteArray> children = list.readAll().simplified().split(' ');
    QVERIFY(!children.constFirst().isEmpty());

    ::kill(pid_t(host.processId()), SIGKILL);
    QVERIFY(host.waitForFinished(s_limitMs));

    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
    for (const QByteArray& child : children)
        QTRY_VERIFY2_WITH_TIMEOUT(!isAlive(child), child.constData(), s_limitMs);
}

ZO_TEST_MAIN(tst_zoFolderSweeper)
#include "tst_zoFolderSweeper.moc"
