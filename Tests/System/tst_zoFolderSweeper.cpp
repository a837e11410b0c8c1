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
    void killedHostLeavesNoFolder();
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
    const zoFolderSweeper waits(removalOf(first));
    zoFolderSweeper(removalOf(second)).sweep();
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(second), s_limitMs);
    QVERIFY(QFileInfo::exists(first));
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

void tst_zoFolderSweeper::killedHostLeavesNoFolder()
{
    const zoParaViewFake fake;
    const QTemporaryDir locks;
    QProcess host;
    host.start(QStringLiteral(ZO_SESSION_HOLDER), {locks.path(), ZO_FAKE_MPIRUN, ZO_FAKE_PVSERVER,
                                                   ZO_COMPONENT_DIR, zoParaViewFake::wallOf({"localhost"})});
    QTRY_VERIFY_WITH_TIMEOUT(host.canReadLine(), s_limitMs);
    const QString folder = QString::fromLocal8Bit(host.readLine().trimmed());
    QVERIFY2(QFileInfo::exists(folder + "/wall.pvx"), qPrintable(folder));

    ::kill(pid_t(host.processId()), SIGKILL);
    QVERIFY(host.waitForFinished(s_limitMs));

    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(folder), s_limitMs);
}

ZO_TEST_MAIN(tst_zoFolderSweeper)
#include "tst_zoFolderSweeper.moc"
