#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoModuleLoader.h>

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QFile>
#include <QLibrary>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>
#include <unistd.h>

namespace
{
const char Configuration[] = "<cluster version='1'><master><network><node name='n'/></network></master>"
                             "<projection name='W' type='wall' rows='2' columns='2'/></cluster>";
const char ChildVariable[] = "ZO_TEST_HOST_THAT_KEEPS_WINDOWS";

bool isMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libzoHPC.so");
}

// Until what the module could have started is over: its longest delay is a quarter of a second.
void runEvents()
{
    QEventLoop loop;
    QTimer::singleShot(1000, &loop, &QEventLoop::quit);
    loop.exec();
}

// Leaves as much under way as a person can: changes, a shown dialog, an overlay.
void touchEverything(zoFakeHost& host)
{
    QWidget* window = host.modules.first().window;
    host.window->show();
    window->show();
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == QLatin1String("Display Setup..."))
            action->trigger();
    }
    emit host.cluster.progressChanged(QStringLiteral("half"), 50);
    QCoreApplication::processEvents();
    auto* tree = window->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    tree->setCurrentItem(tree->topLevelItem(0)->child(0)->child(0));
    for (const char* name : {"a", "b", "c"})
        window->findChild<QLineEdit*>(QStringLiteral("m_hostName"))->setText(QString::fromLatin1(name));
}

// Counts the widgets of the module that go while the one around them is still whole: it could look at them.
void watchOrder(int* wrong)
{
    const QWidgetList widgets = QApplication::allWidgets();
    const auto isOurs = [](const QWidget* widget) {
        return QByteArray(widget->metaObject()->className()).startsWith("zoHPC");
    };
    for (const QWidget* widget : widgets) {
        const QWidget* around = widget->parentWidget();
        while (around != nullptr && !isOurs(around))
            around = around->parentWidget();
        if (around == nullptr || !isOurs(widget))
            continue;
        // An object whose destructor got as far as its children is a plain widget by then.
        QObject::connect(widget, &QObject::destroyed, [wrong, around, isOurs] { *wrong += isOurs(around); });
    }
}

// A host that unloads the library while the windows stay. Returns only when nothing ran that is gone.
int keepWindows()
{
    auto* host = new zoFakeHost; // never destroyed: destructors of the windows are gone, too
    host->cluster.config = QLatin1String(Configuration);
    host->toolBarUsed = false; // laying out the host's window would look at all widgets in it
    // Not over a window, which would be told: Qt 6 does that later.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    QLibrary library(QStringLiteral(ZO_MODULE_FILE));
    if (!library.load())
        return 2;
    library.resolve("initPlugin")();
    touchEverything(*host);
    host->modules.clear(); // holds an icon
    if (!library.unload() || isMapped())
        return 3;
    emit host->cluster.started();
    emit host->cluster.progressChanged(QStringLiteral("later"), 60);
    emit host->cluster.configChanged(QStringLiteral("<cluster/>"));
    runEvents();
    std::puts("nothing ran");
    std::fflush(stdout);
    return 0;
}
} // namespace

// The module's library, unloaded while its windows are alive.
class tst_libzoHPCUnload final : public zoTestCase
{
    Q_OBJECT

private slots:
    void loaderTakesTheWindowsAlong();
    void nothingRunsInWindowsThatAHostKeeps();
};

void tst_libzoHPCUnload::loaderTakesTheWindowsAlong()
{
    zoFakeHost host;
    host.cluster.config = QLatin1String(Configuration);
    zoModuleLoader loader;
    QVERIFY(loader.load(QStringLiteral(ZO_MODULE_FILE)));
    QWidget* window = host.modules.first().window;
    window->setParent(host.window.get(), Qt::Widget); // a page of the host's window
    host.window->setCentralWidget(window);
    touchEverything(host);
    host.modules.clear();
    host.pages.clear();
    int wrong = 0;
    watchOrder(&wrong);

    loader.unloadAll();

    QCOMPARE(wrong, 0);
    QVERIFY(!isMapped());
    QVERIFY(host.window->isVisible());
    emit host.cluster.started();
    emit host.cluster.progressChanged(QStringLiteral("later"), 60);
    emit host.cluster.configChanged(QStringLiteral("<cluster/>"));
    runEvents();
    QVERIFY(host.toolBar->actions().isEmpty());
}

// In a process of its own, which a call into the unloaded library would end.
void tst_libzoHPCUnload::nothingRunsInWindowsThatAHostKeeps()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(ChildVariable), QStringLiteral("1"));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished());

    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0,
             child.readAllStandardError().constData());
    QCOMPARE(child.readAllStandardOutput().trimmed(), QByteArray("nothing ran"));
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("tst_libzoHPCUnload"));
    tst_libzoHPCUnload test;
    if (qEnvironmentVariableIsSet(ChildVariable))
        _exit(keepWindows()); // the application would look at all windows when it ends
    return QTest::qExec(&test, argc, argv);
}

#include "tst_libzoHPCUnload.moc"
