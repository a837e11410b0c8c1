#include "zoDialogRobot.h"
#include "zoFakeHost.h"
#include "zoSplitterDrag.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCWindowMemory.h>

#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QVBoxLayout>

#include <cstdio>
#include <memory>
#include <unistd.h>

namespace
{
// A dialog with a splitter and tabs, as a program builds it anew at each start.
class Dialog final : public QDialog
{
public:
    Dialog()
    {
        splitter = new QSplitter;
        splitter->setObjectName(QStringLiteral("panes"));
        splitter->setChildrenCollapsible(false);
        tabs = new QTabWidget;
        tabs->setObjectName(QStringLiteral("tabs"));
        tabs->addTab(new QLabel(QStringLiteral("1")), QStringLiteral("first"));
        tabs->addTab(new QLabel(QStringLiteral("2")), QStringLiteral("second"));
        splitter->addWidget(new QLabel(QStringLiteral("left")));
        splitter->addWidget(tabs);
        splitter->setStretchFactor(1, 1);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(splitter);
        resize(400, 300);
        zoHPCWindowMemory::rememberDialog(this, QStringLiteral("test"));
    }

    QSplitter* splitter;
    QTabWidget* tabs;
};

const QString s_size = QStringLiteral("windows/test");
const QString s_panes = QStringLiteral("windows/test panes");
const QString s_tabs = QStringLiteral("windows/test tabs");

// The module's file, below the folder of this test alone.
QSettings& remembered()
{
    static QSettings settings(zoHPCWindowMemory::fileName(), QSettings::IniFormat);
    settings.sync();
    return settings;
}
} // namespace

// What windows keep from one run to the next.
class tst_zoHPCWindowMemory final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        m_host = std::make_unique<zoFakeHost>();
        remembered().clear();
        remembered().sync();
    }
    void cleanup()
    {
        // The host's preferences hold what people choose on the page, and nothing else.
        if (m_host)
            QCOMPARE(m_host->preferences.keys(), QStringList());
        m_host.reset();
        zoTestCase::cleanup();
    }

    void dialogComesBackAsItWasLeft();
    void whatNobodyTouchedIsNotKept();
    void secondShowInOneRunKeepsWhatIsThere();
    void unreadableValuesAreIgnored_data();
    void unreadableValuesAreIgnored();
    void fileThatCannotBeUsedIsLeftAlone_data();
    void fileThatCannotBeUsedIsLeftAlone();
    void sizeFitsTheScreen();
    void maximizedDialogKeepsItsSize();
    void hostIsNotAsked();
    void windowsOfTheModuleComeBack();
    void hostsDialogComesBack();

private:
    std::unique_ptr<zoFakeHost> m_host;
};

void tst_zoHPCWindowMemory::dialogComesBackAsItWasLeft()
{
    QList<int> sizes;
    {
        Dialog dialog;
        dialog.show();
        dialog.resize(640, 360);
        QCoreApplication::processEvents();
        const QList<int> before = dialog.splitter->sizes();
        zoSplitterDrag(dialog.splitter, 300); // wider than the dialog was
        QVERIFY(dialog.splitter->sizes() != before);
        dialog.tabs->setCurrentIndex(1);
        sizes = dialog.splitter->sizes();
        dialog.accept();
    }

    Dialog dialog;
    dialog.show();
    QCoreApplication::processEvents();

    QCOMPARE(dialog.size(), QSize(640, 360));
    QCOMPARE(dialog.splitter->sizes(), sizes);
    QCOMPARE(dialog.tabs->currentIndex(), 1);
}

void tst_zoHPCWindowMemory::whatNobodyTouchedIsNotKept()
{
    Dialog dialog;
    dialog.show();
    dialog.reject();
    QCOMPARE(remembered().allKeys(), QStringList());

    // Panes that are wider because the dialog is have no proportions of their own.
    dialog.show();
    dialog.resize(640, 360);
    QCoreApplication::processEvents();
    dialog.reject();
    QCOMPARE(remembered().allKeys(), QStringList{s_size});
}

void tst_zoHPCWindowMemory::secondShowInOneRunKeepsWhatIsThere()
{
    Dialog dialog;
    dialog.show();
    dialog.hide();
    remembered().setValue(s_size, QStringLiteral("500,500"));
    remembered().sync();

    dialog.show();

    QCOMPARE(dialog.size(), QSize(400, 300));
}

void tst_zoHPCWindowMemory::unreadableValuesAreIgnored_data()
{
    QTest::addColumn<QString>("value");

    for (const char* value :
         {"", ",", "wide", "1,2,3", "-5,-5", "0,0", "1e3,1e3", "99999999999,10", "40000,40000"})
        QTest::newRow(*value ? value : "empty") << QString::fromLatin1(value);
}

void tst_zoHPCWindowMemory::unreadableValuesAreIgnored()
{
    QFETCH(QString, value);
    QList<int> sizes;
    {
        Dialog plain;
        plain.show();
        QCoreApplication::processEvents();
        sizes = plain.splitter->sizes();
    }
    for (const QString& key : {s_size, s_panes, s_tabs})
        remembered().setValue(key, value);
    remembered().sync();

    Dialog dialog;
    dialog.show();
    QCoreApplication::processEvents();

    QCOMPARE(dialog.size(), QSize(400, 300));
    QCOMPARE(dialog.splitter->sizes(), sizes);
    QCOMPARE(dialog.tabs->currentIndex(), 0);
}

void tst_zoHPCWindowMemory::fileThatCannotBeUsedIsLeftAlone_data()
{
    QTest::addColumn<QString>("kind");

    for (const char* kind : {"folder", "file-for-its-folder", "link-to-nothing-that-can-be", "garbage"})
        QTest::newRow(kind) << kind;
}

// No place for it is no error of anybody, and a dialog is as large as ever.
void tst_zoHPCWindowMemory::fileThatCannotBeUsedIsLeftAlone()
{
    QFETCH(QString, kind);
    const QString name = zoHPCWindowMemory::fileName();
    const QString folder = QFileInfo(name).path();
    QVERIFY(QDir(folder).removeRecursively());
    const auto write = [](const QString& fileName) {
        constexpr char text[] = "[windows\n\0\xff=\n%%\xc3(=\\x";
        constexpr qint64 size = sizeof text - 1;
        QFile file(fileName);
        return file.open(QIODevice::WriteOnly) && file.write(text, size) == size;
    };
    if (kind == "file-for-its-folder")
        QVERIFY(write(folder));
    else if (kind == "folder")
        QVERIFY(QDir().mkpath(name));
    else
        QVERIFY(QDir().mkpath(folder));
    if (kind == "garbage")
        QVERIFY(write(name));
    else if (kind == "link-to-nothing-that-can-be")
        QVERIFY(QFile::link(QStringLiteral("/proc/no/such/file"), name));

    {
        Dialog dialog;
        dialog.show();
        QCoreApplication::processEvents();
        QCOMPARE(dialog.size(), QSize(400, 300));
        dialog.resize(500, 350);
        dialog.accept();
    }

    const QFileInfo after(name);
    if (kind == "file-for-its-folder")
        QVERIFY(QFileInfo(folder).isFile());
    else if (kind == "garbage")
        QVERIFY(after.isFile());
    else
        QVERIFY(kind == "folder" ? after.isDir() : after.isSymLink());
    if (kind == "file-for-its-folder" || kind == "link-to-nothing-that-can-be")
        QVERIFY(QFile::remove(kind == "file-for-its-folder" ? folder : name));
    QVERIFY(QDir(folder).removeRecursively());
    QVERIFY(QDir().mkpath(folder));
}

void tst_zoHPCWindowMemory::sizeFitsTheScreen()
{
    remembered().setValue(s_size, QStringLiteral("20000,10000"));
    remembered().sync();

    Dialog dialog;
    dialog.show();
    QCoreApplication::processEvents();

    QVERIFY(dialog.width() > dialog.screen()->availableSize().width() * 4 / 5);
    QVERIFY(dialog.height() > dialog.screen()->availableSize().height() * 4 / 5);
    QVERIFY(dialog.screen()->availableGeometry().contains(dialog.frameGeometry()));
}

void tst_zoHPCWindowMemory::maximizedDialogKeepsItsSize()
{
    {
        Dialog dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.showMaximized();
        QTRY_VERIFY(dialog.width() > 400);
        dialog.accept();
    }

    Dialog dialog;
    dialog.show();

    QCOMPARE(dialog.size(), QSize(400, 300));
}

void tst_zoHPCWindowMemory::hostIsNotAsked()
{
    // What an earlier version kept with the host is left there, unread.
    m_host->preferences.insert(QStringLiteral("HPC Cluster window: test"), QStringLiteral("500,500"));
    {
        Dialog dialog;
        dialog.show();
        QCOMPARE(dialog.size(), QSize(400, 300));
    }
    m_host->preferences.clear();
    m_host.reset();
    QTemporaryFile file;
    QVERIFY(file.open());
    std::fflush(stderr);
    const int saved = dup(STDERR_FILENO);
    dup2(file.handle(), STDERR_FILENO);

    {
        Dialog dialog;
        dialog.show();
        dialog.resize(640, 360);
        dialog.tabs->setCurrentIndex(1);
        dialog.accept();
    }
    Dialog dialog;
    dialog.show();

    std::fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    file.seek(0);
    QVERIFY(!file.readAll().contains("zoKernelServiceFactory"));
    QCOMPARE(dialog.size(), QSize(640, 360));
    QCOMPARE(dialog.tabs->currentIndex(), 1);
}

void tst_zoHPCWindowMemory::windowsOfTheModuleComeBack()
{
    QList<int> mainSizes;
    QList<int> dialogSizes;
    const auto partOf = [](QWidget* dialog, const char* name) {
        return dialog->findChild<QSplitter*>(QString::fromLatin1(name));
    };
    {
        zoHPCGUIW window(nullptr, QStringLiteral("Module"));
        window.show();
        QCoreApplication::processEvents();
        auto* splitter = qobject_cast<QSplitter*>(window.getTree()->parentWidget());
        const QList<int> before = splitter->sizes();
        zoSplitterDrag(splitter, -60);
        mainSizes = splitter->sizes();
        QVERIFY(mainSizes != before);
        zoHPCDisplayGUII* dialog = window.getDisplayEditor();
        window.displaySetup();
        QCoreApplication::processEvents();
        dialog->resize(dialog->width() - 30, 550);
        QCoreApplication::processEvents();
        zoSplitterDrag(partOf(dialog, "m_treeSplitter"), 25);
        dialog->findChild<QTabWidget*>(QStringLiteral("m_layoutTabs"))->setCurrentIndex(1);
        QCOMPARE(remembered().allKeys(), QStringList());
        dialogSizes = partOf(dialog, "m_treeSplitter")->sizes();
        dialogSizes << dialog->width() << dialog->height();
        dialog->reject();
        window.close();
    }

    zoHPCGUIW window(nullptr, QStringLiteral("Module"));
    window.show();
    QCoreApplication::processEvents();
    zoHPCDisplayGUII* dialog = window.getDisplayEditor();
    window.displaySetup();
    QCoreApplication::processEvents();

    QVERIFY(remembered().contains(QStringLiteral("windows/display setup m_treeSplitter")));
    QCOMPARE(qobject_cast<QSplitter*>(window.getTree()->parentWidget())->sizes(), mainSizes);
    QCOMPARE(partOf(dialog, "m_treeSplitter")->sizes() << dialog->width() << dialog->height(), dialogSizes);
    QCOMPARE(dialog->findChild<QTabWidget*>(QStringLiteral("m_layoutTabs"))->currentIndex(), 1);
}

void tst_zoHPCWindowMemory::hostsDialogComesBack()
{
    const auto open = [](const std::function<void(QDialog*)>& look) {
        zoHPCTreeGUIW tree;
        const zoDialogRobot robot([&look](QDialog* dialog) {
            look(dialog);
            dialog->reject();
        });
        tree.configAction()->trigger();
        QCOMPARE(robot.handled(), 1);
    };
    open([](QDialog* dialog) { dialog->resize(555, 444); });

    QSize size;
    open([&size](QDialog* dialog) { size = dialog->size(); });

    QCOMPARE(size, QSize(555, 444));
}

ZO_TEST_MAIN(tst_zoHPCWindowMemory)
#include "tst_zoHPCWindowMemory.moc"
