#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLibrary>
#include <QProcess>
#include <QRegularExpression>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace
{
bool isMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libzoHPC.so");
}

// What a program prints about the module's file, by line.
QStringList outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments + QStringList{QStringLiteral(ZO_MODULE_FILE)});
    if (!process.waitForFinished())
        return {process.errorString()};
    return QString::fromLocal8Bit(process.readAllStandardOutput()).split(QLatin1Char('\n'));
}

using Entry = void (*)();
} // namespace

// The module's file, loaded the way that hosts load it.
class tst_libzoHPC final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void exportsItsTwoEntriesOnly();
    void needsFourLibrariesOfTheToolkit();
    void logsInThePrintfWayAlone();
    void secondInitMakesNoSecondModule();
    void preferencesEntryRegistersItsPageOnce();
    void slotsCanBeInvokedByName();
    void selectingWhileRunningSendsNothing();
    void libraryIsGoneAfterUnloading();
    void canBeLoadedAgain();

private:
    Entry entry(const char* name) { return m_library->resolve(name); }

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<QLibrary> m_library;
};

void tst_libzoHPC::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_library = std::make_unique<QLibrary>(QStringLiteral(ZO_MODULE_FILE));
    QVERIFY2(m_library->load(), qPrintable(m_library->errorString()));
}

void tst_libzoHPC::cleanup()
{
    // Windows first, then the library, then the services and the application.
    m_host->window.reset();
    m_library->unload();
    m_library.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_libzoHPC::exportsItsTwoEntriesOnly()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral(ZO_MODULE_FILE)});
    QVERIFY2(nm.waitForFinished(), qPrintable(nm.errorString()));

    QStringList names;
    const QList<QByteArray> lines = nm.readAllStandardOutput().trimmed().split('\n');
    for (const QByteArray& line : lines)
        names << QString::fromLatin1(line).section(QLatin1Char(' '), -1);
    names.sort();

    QCOMPARE(names, (QStringList{QStringLiteral("initPlugin"), QStringLiteral("initPreferencesPlugin")}));
}

void tst_libzoHPC::needsFourLibrariesOfTheToolkit()
{
    QStringList needed;
    const QStringList lines = outputOf(QStringLiteral("readelf"), {QStringLiteral("-dW")});
    for (const QString& line : lines) {
        const QRegularExpressionMatch match =
            QRegularExpression(QStringLiteral("\\(NEEDED\\).*\\[libQt[56](\\w+)\\.so")).match(line);
        if (match.hasMatch())
            needed << match.captured(1);
    }
    needed.sort();

    QCOMPARE(needed, (QStringList{QStringLiteral("Core"), QStringLiteral("Gui"), QStringLiteral("Widgets"),
                                  QStringLiteral("Xml")}));
}

// Hosts have zoLog::info() and zoLog::error() with a format; other ways to log are our host's own.
void tst_libzoHPC::logsInThePrintfWayAlone()
{
    QStringList calls;
    const QStringList lines =
        outputOf(QStringLiteral("nm"), {QStringLiteral("-DC"), QStringLiteral("--undefined-only")});
    for (const QString& line : lines) {
        if (line.contains(QLatin1String("zoLog::")))
            calls << line.section(QStringLiteral(" U "), 1)
                         .section(QLatin1Char('@'), 0, 0); // without its version
    }
    calls.sort();

    QCOMPARE(calls, (QStringList{QStringLiteral("zoLog::error(char const*, ...)"),
                                 QStringLiteral("zoLog::info(char const*, ...)")}));
}

void tst_libzoHPC::secondInitMakesNoSecondModule()
{
    const Entry initPlugin = entry("initPlugin");
    QVERIFY(initPlugin != nullptr);

    initPlugin();
    initPlugin();

    QCOMPARE(m_host->modules.size(), 1);
    QCOMPARE(m_host->toolBar->actions().size(), 1);
}

void tst_libzoHPC::preferencesEntryRegistersItsPageOnce()
{
    const Entry initPreferencesPlugin = entry("initPreferencesPlugin");
    QVERIFY(initPreferencesPlugin != nullptr);

    initPreferencesPlugin();
    initPreferencesPlugin();

    QCOMPARE(m_host->pages.size(), 1);
    QCOMPARE(m_host->pages.first().title, QStringLiteral("Cluster"));
    m_host->pages.clear();
}

void tst_libzoHPC::slotsCanBeInvokedByName()
{
    m_host->nonInteractive = true;
    entry("initPlugin")();
    QObject* module = m_host->toolBar->actions().first()->parent();

    QVERIFY(QMetaObject::invokeMethod(module, "startCluster"));
    QVERIFY(QMetaObject::invokeMethod(module, "setConfig", Q_ARG(QString, QStringLiteral("<cluster/>"))));
    QVERIFY(QMetaObject::invokeMethod(module, "setAdvanced", Q_ARG(bool, true)));

    QVERIFY(m_host->cluster.calls.contains(QStringLiteral("start")));
}

void tst_libzoHPC::selectingWhileRunningSendsNothing()
{
    QFile sample(QStringLiteral(ZO_DATA_DIR "/cluster/tiledwall-3x5-gateway.zhpc"));
    QVERIFY(sample.open(QIODevice::ReadOnly));
    m_host->cluster.config = QString::fromUtf8(sample.readAll());
    m_host->cluster.onStart = [this] { return m_host->cluster.running = true; };
    entry("initPlugin")();
    QObject* module = m_host->toolBar->actions().first()->parent();
    QVERIFY(QMetaObject::invokeMethod(module, "startCluster"));
    emit m_host->cluster.started();
    QCOMPARE(m_host->cluster.documents.size(), 1);
    QWidget* window = m_host->modules.first().window;
    auto* tree = window->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    int rows = 0;

    for (int round = 0; round < 2; ++round) {
        for (QTreeWidgetItemIterator row(tree); *row; ++row, ++rows)
            tree->setCurrentItem(*row);
    }
    QVERIFY(rows > 30);
    QCOMPARE(m_host->cluster.documents.size(), 1);

    // What a person changes is sent, once.
    window->findChild<QComboBox*>(QStringLiteral("m_parallelFrames"))->setCurrentIndex(3);
    QCOMPARE(m_host->cluster.documents.size(), 2);
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        tree->setCurrentItem(*row);
    tree->setCurrentItem(tree->topLevelItem(0));
    QCOMPARE(m_host->cluster.documents.size(), 2);
}

void tst_libzoHPC::libraryIsGoneAfterUnloading()
{
    entry("initPlugin")();
    entry("initPreferencesPlugin")();
    QVERIFY(isMapped());
    m_host->window->show();
    m_host->modules.first().window->show();
    QCoreApplication::processEvents();

    m_host->modules.clear();
    m_host->pages.clear();
    m_host->window.reset();
    m_library->unload();

    QVERIFY(!isMapped());
    // Nothing of the module is connected any more.
    emit m_host->cluster.started();
    emit m_host->cluster.configChanged(QStringLiteral("<cluster/>"));
    QCoreApplication::processEvents();
}

void tst_libzoHPC::canBeLoadedAgain()
{
    entry("initPlugin")();
    m_host->modules.clear();
    m_host->window.reset();
    m_library->unload();
    m_host.reset();
    m_host = std::make_unique<zoFakeHost>();

    m_library = std::make_unique<QLibrary>(QStringLiteral(ZO_MODULE_FILE));
    QVERIFY2(m_library->load(), qPrintable(m_library->errorString()));
    entry("initPlugin")();

    QCOMPARE(m_host->modules.size(), 1);
}

ZO_TEST_MAIN(tst_libzoHPC)
#include "tst_libzoHPC.moc"
