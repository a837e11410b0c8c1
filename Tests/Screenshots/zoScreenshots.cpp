#include "zoScreenshots.h"

#include <zoClusterService.h>
#include <zoHostApplication.h>
#include <zoHostDocument.h>
#include <zoHostEarlierConfigurations.h>
#include <zoHostImportDialog.h>
#include <zoHostLogPanel.h>
#include <zoHostMainWindow.h>
#include <zoKernelServiceFactory.h>
#include <zoMainWindowService.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include <cstdio>

namespace
{
const QSize HostSize(1120, 720);
const QSize SetupSize(1360, 860);

QString sample(const char* name)
{
    return QStringLiteral(ZO_DATA_DIR "/cluster/") + QLatin1String(name);
}

QString textOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// 64 shades per channel: nobody sees it, and files are smaller.
QImage coarse(const QImage& image)
{
    QImage result = image.convertToFormat(QImage::Format_RGB888);
    for (int y = 0; y < result.height(); ++y) {
        uchar* const line = result.scanLine(y);
        for (int x = 0; x < 3 * result.width(); ++x)
            line[x] = uchar((line[x] * 63 + 127) / 255 * 255 / 63);
    }
    QSet<QRgb> colours;
    for (int y = 0; y < result.height() && colours.size() <= 256; ++y) {
        for (int x = 0; x < result.width(); ++x)
            colours.insert(result.pixel(x, y));
    }
    return colours.size() <= 256 ? result.convertToFormat(QImage::Format_Indexed8) : result;
}

// Several turns: views and status bars follow a moment later.
void settle()
{
    for (int turn = 0; turn < 20; ++turn) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}
} // namespace

zoScreenshots::zoScreenshots(const QString& language, const QString& folder)
    : m_language(language), m_folder(folder)
{
}

zoScreenshots::~zoScreenshots() = default;

bool zoScreenshots::takeAll()
{
    prepareEarlierConfigurations();
    zoHostOptions options;
    options.moduleFiles = QStringList{QStringLiteral(ZO_MODULE_FILE), QStringLiteral(ZO_ASSISTANT_FILE)};
    options.engine = QStringLiteral("local");
    options.language = m_language;
    m_host = std::make_unique<zoHostApplication>(options);
    if (window()->moduleWindows().isEmpty()) {
        fail(QStringLiteral("no module"));
        return false;
    }
    window()->resize(HostSize);
    window()->show();
    settle();

    takeStart();
    takeEarlierConfigurations(); // before this program replaces any
    takeHost();
    takeConnecting();
    takeNodeEditor();
    takeEditMenu();
    takeHostsDialog();
    takeDocumentDialog();
    takeDisplaySetup();
    takePreferences();
    takeHelp();
    takeImport();
    takeAssistant();
    m_host.reset();
    return !m_failed;
}

// Of fixed times, which the host would take from the clock.
void zoScreenshots::prepareEarlierConfigurations() const
{
    struct Earlier
    {
        const char* name;
        QString text;
        const char* origin;
    };
    const Earlier all[] = {
        {"000001_20261102T081512Z", textOf(sample("powerwall-2x2.zhpc")),
         "/projects/wall/powerwall-2x2.zhpc"},
        {"000002_20261105T163004Z", textOf(sample("default.zhpc")), nullptr},
        {"000003_20261119T094127Z", textOf(sample("cave-4-sided.zhpc")), "/projects/cave/cave-4-sided.zhpc"},
    };
    const QDir folder(zoHostEarlierConfigurations::defaultFolder());
    folder.mkpath(QStringLiteral("."));
    for (const Earlier& earlier : all) {
        const QString base = folder.filePath(QLatin1String(earlier.name));
        QFile text(base + QStringLiteral(".zhpc"));
        if (text.open(QIODevice::WriteOnly))
            text.write(earlier.text.toUtf8());
        QFile origin(base + QStringLiteral(".origin"));
        if (earlier.origin != nullptr && origin.open(QIODevice::WriteOnly))
            origin.write(earlier.origin);
    }
}

void zoScreenshots::takeStart()
{
    QSettings().setValue(QStringLiteral("Recent/Files"),
                         QStringList{QStringLiteral("/projects/wall/powerwall-2x2.zhpc"),
                                     QStringLiteral("/projects/cave/cave-4-sided.zhpc")});
    window()->showStartPage();
    settleLog();
    take(window(), QStringLiteral("start"));
    window()->showDocument();
    settle();
}

void zoScreenshots::takeHelp()
{
    window()->showAbout();
    auto* about = window()->findChild<QDialog*>(QStringLiteral("AboutDialog"));
    auto* libraries = about->findChild<QTabWidget*>();
    libraries->setCurrentIndex(1);
    take(about, QStringLiteral("about"));
    about->reject();
    settle();
    window()->findChild<QAction*>(QStringLiteral("Manual"))->trigger();
    auto* manual = window()->findChild<QWidget*>(QStringLiteral("ManualWindow"));
    manual->resize(manual->sizeHint());
    take(manual, QStringLiteral("manual"));
    manual->close();
    settle();
}

void zoScreenshots::takeImport()
{
    load(sample("powerwall-2x2.zhpc"));
    auto* dialog = new zoHostImportDialog(
        QStringLiteral("/projects/wall/old.xml"), QStringLiteral("/projects/wall/powerwall-2x2.zhpc"),
        {QStringLiteral("line 4, column 3: The compression level \"7\" is not known."),
         QStringLiteral("line 12, column 3: The overlap 120 was taken for both directions.")},
        window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    take(dialog, QStringLiteral("import"));
    dialog->reject();
    settle();
}

void zoScreenshots::takeHost()
{
    load(sample("powerwall-2x2.zhpc"));
    settleLog();
    take(window(), QStringLiteral("host-idle"));

    trigger("startCluster");
    settleLog();
    take(window(), QStringLiteral("host-running"));
    trigger("stopCluster");
}

// As it stands over the window while the second half of the nodes is awaited.
void zoScreenshots::takeConnecting()
{
    QImage image;
    const auto connection = connect(
        cluster(), &zoClusterService::progressChanged, this, [this, &image](const QString&, int percent) {
            if (percent != 50)
                return;
            QWidget* overlay = QApplication::activeModalWidget();
            if (overlay == nullptr)
                return;
            settleLog();
            image = window()->grab().toImage();
            QPainter(&image).drawPixmap(window()->mapFromGlobal(overlay->mapToGlobal(QPoint())),
                                        overlay->grab());
        });
    trigger("startCluster");
    disconnect(connection);
    trigger("stopCluster");
    if (image.isNull())
        fail(QStringLiteral("connecting: no overlay"));
    else
        write(image, QStringLiteral("connecting"));
}

void zoScreenshots::takeNodeEditor()
{
    load(sample("tiledwall-3x5-gateway.zhpc"));
    auto* advanced = module()->findChild<QWidget*>(QStringLiteral("m_advancedMasterOptions"));
    if (advanced != nullptr)
        advanced->setProperty("collapsed", false);
    const QSize before = window()->size();
    take(module(), QStringLiteral("editor-options"));
    choose(module(), "m_treeWidget", 0, 0);
    take(module(), QStringLiteral("editor-network"));
    choose(module(), "m_treeWidget", 0, 0, 0);
    take(module(), QStringLiteral("editor-node"));
    window()->resize(before);
}

void zoScreenshots::takeEditMenu()
{
    load(sample("powerwall-2x2.zhpc"));
    openDisplaySetup([this](QDialog* dialog) {
        choose(dialog, "m_projectionTree", 0);
        QMetaObject::invokeMethod(dialog, "deleteItem");
        settle();
        take(dialog, QStringLiteral("setup-undo"));
        dialog->accept();
    });
    settle();
    trigger("undo");
    // One step to take back and one to bring again.
    choose(module(), "m_treeWidget", 0, 0, 1);
    for (const char* name : {"gpu12", "gpu13"}) {
        module()->findChild<QLineEdit*>(QStringLiteral("m_hostName"))->setText(QLatin1String(name));
        settle();
    }
    trigger("undo");
    auto* menu = qobject_cast<QMenu*>(window()->findChild<QAction*>(QStringLiteral("Undo"))->parent());
    menu->popup(QPoint());
    settle();
    take(menu, QStringLiteral("edit-menu"));
    menu->close();
    settle();
}

void zoScreenshots::takeHostsDialog()
{
    QAction* action = nullptr;
    const QList<QAction*> actions = module()->findChildren<QAction*>();
    for (QAction* candidate : actions) {
        if (candidate->parent() ==
                module()->findChild<QWidget*>(QStringLiteral("m_treeWidget"))->parentWidget() &&
            action == nullptr)
            action = candidate; // the tree's first is "Cluster config..."
    }
    if (action != nullptr)
        atDialog([action] { action->trigger(); }, QSize(560, 420), QStringLiteral("hosts"));
}

void zoScreenshots::takeDocumentDialog()
{
    load(sample("powerwall-2x2.zhpc"));
    atDialog([this] { trigger("editConfig"); }, QSize(760, 480), QStringLiteral("configuration"));
}

void zoScreenshots::takeDisplaySetup()
{
    load(sample("powerwall-2x2.zhpc"));
    openDisplaySetup([this](QDialog* dialog) {
        choose(dialog, "m_projectionTree", 0);
        take(dialog, QStringLiteral("setup-powerwall"));
    });
    load(sample("tiledwall-3x5-gateway.zhpc"));
    openDisplaySetup([this](QDialog* dialog) {
        choose(dialog, "m_projectionTree", 0);
        take(dialog, QStringLiteral("setup-tiledwall"));
    });
    load(sample("cave-4-sided.zhpc"));
    openDisplaySetup([this](QDialog* dialog) {
        choose(dialog, "m_projectionTree", 0);
        take(dialog, QStringLiteral("setup-cave"));
    });
    load(QStringLiteral(ZO_SCREENSHOT_DIR "/unfinished.zhpc"));
    openDisplaySetup([this](QDialog* dialog) {
        choose(dialog, "m_projectionTree", 1);
        take(dialog, QStringLiteral("setup-plane-problems"));
        dialog->findChild<QTabWidget*>(QStringLiteral("m_layoutTabs"))->setCurrentIndex(1);
        choose(dialog, "m_displayTree", 0);
        take(dialog, QStringLiteral("setup-display"));
        choose(dialog, "m_displayTree", 0, 0);
        take(dialog, QStringLiteral("setup-window"));
        choose(dialog, "m_displayTree", 0, 1, 0);
        take(dialog, QStringLiteral("setup-viewport"));
        dialog->findChild<QTabWidget*>(QStringLiteral("m_layoutTabs"))->setCurrentIndex(0);
    });
}

void zoScreenshots::takePreferences()
{
    window()->showPreferences();
    auto* dialog = window()->findChild<QDialog*>(QStringLiteral("PreferencesDialog"));
    if (dialog == nullptr) {
        fail(QStringLiteral("preferences: no dialog"));
        return;
    }
    const char* const names[] = {"preferences-general", "preferences-local", "preferences-cluster"};
    int row = 0;
    for (const char* name : names) {
        dialog->findChild<QListWidget*>()->setCurrentRow(row++);
        take(dialog, QLatin1String(name));
    }
    dialog->reject();
    settle();
}

void zoScreenshots::takeAssistant()
{
    load(sample("tiledwall-3x5-gateway.zhpc"));
    QWidget* panel = window()->moduleWindows().value(1);
    panel->show();
    settle();
    settleLog();
    take(window(), QStringLiteral("assistant"));
    takeNewWall();
    load(sample("powerwall-2x2.zhpc"));
    takeMeasuredRoom();
    QMetaObject::invokeMethod(window()->moduleObject("report()"), "report");
    auto* report = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (report == nullptr) {
        fail(QStringLiteral("report: no dialog"));
        return;
    }
    report->resize(900, 720);
    take(report, QStringLiteral("report"));
    report->reject();
    settle();
}

void zoScreenshots::takeMeasuredRoom()
{
    load(sample("cave-4-sided.zhpc"));
    QMetaObject::invokeMethod(window()->moduleObject("measuredRoom()"), "measuredRoom");
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        fail(QStringLiteral("measured room: no dialog"));
        return;
    }
    bool isLoaded = false;
    QMetaObject::invokeMethod(dialog, "loadFile", Q_RETURN_ARG(bool, isLoaded),
                              Q_ARG(QString, QStringLiteral(ZO_EXAMPLE_DIR "/cave.txt")));
    if (!isLoaded)
        fail(QStringLiteral("measured room: no example"));
    settle();
    take(dialog, QStringLiteral("measured-room"));
    dialog->reject();
    settle();
    load(sample("powerwall-2x2.zhpc"));
}

void zoScreenshots::takeNewWall()
{
    QMetaObject::invokeMethod(window()->moduleObject("newWall()"), "newWall");
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        fail(QStringLiteral("new wall: no dialog"));
        return;
    }
    auto* hosts = dialog->findChild<QLineEdit*>(QStringLiteral("m_hosts"));
    struct Kind
    {
        const char* button;
        const char* hosts;
        const char* name;
    };
    const Kind kinds[] = {
        {"m_tiled", "gate { node[1-6] }", "new-wall-tiled"},
        {"m_power", "node[1-6]", "new-wall-power"},
        {"m_cave", "cave[1-4]", "new-wall-cave"},
        {"m_curved", "arc[01-24]", "new-wall-curved"},
        {"m_planes", "", "new-wall-planes"},
    };
    for (const Kind& kind : kinds) {
        dialog->findChild<QToolButton*>(QLatin1String(kind.button))->click();
        hosts->setText(QLatin1String(kind.hosts));
        settle();
        take(dialog, QLatin1String(kind.name));
    }
    dialog->reject();
    settle();
}

void zoScreenshots::takeEarlierConfigurations()
{
    window()->showEarlierConfigurations();
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        fail(QStringLiteral("earlier: no dialog"));
        return;
    }
    dialog->resize(860, 480);
    take(dialog, QStringLiteral("earlier-configurations"));
    dialog->reject();
    settle();
}

zoHostMainWindow* zoScreenshots::window() const
{
    return qobject_cast<zoHostMainWindow*>(
        zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget());
}

QWidget* zoScreenshots::module() const
{
    return window()->moduleWindows().constFirst();
}

zoClusterService* zoScreenshots::cluster() const
{
    return zoKernelServiceFactory::getService<zoClusterService>();
}

void zoScreenshots::load(const QString& fileName)
{
    if (!window()->document()->load(fileName))
        fail(fileName + QStringLiteral(": not loaded"));
    settle();
}

void zoScreenshots::trigger(const char* slot)
{
    if (!QMetaObject::invokeMethod(module(), slot))
        fail(QLatin1String(slot) + QStringLiteral(": no such slot"));
    settle();
}

void zoScreenshots::openDisplaySetup(const std::function<void(QDialog*)>& show)
{
    trigger("displaySetup");
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        fail(QStringLiteral("display setup: no dialog"));
        return;
    }
    dialog->resize(SetupSize);
    settle();
    show(dialog);
    dialog->reject();
    settle();
}

void zoScreenshots::choose(QWidget* parent, const char* tree, int row, int child, int grandchild)
{
    auto* widget = parent->findChild<QTreeWidget*>(QLatin1String(tree));
    QTreeWidgetItem* item = widget == nullptr ? nullptr : widget->topLevelItem(row);
    for (const int index : {child, grandchild}) {
        if (item != nullptr && index >= 0)
            item = item->child(index);
    }
    if (item == nullptr)
        fail(QLatin1String(tree) + QStringLiteral(": no such row"));
    else
        widget->setCurrentItem(item);
    settle();
}

// For a dialog that blocks its caller.
void zoScreenshots::atDialog(const std::function<void()>& open, const QSize& size, const QString& name)
{
    bool seen = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible() || seen)
            return;
        seen = true;
        dialog->resize(size);
        take(dialog, name);
        dialog->reject();
    });
    timer.start(1);
    open();
    if (!seen)
        fail(name + QStringLiteral(": no dialog"));
    settle();
}

void zoScreenshots::take(QWidget* widget, const QString& name)
{
    settle();
    write(widget->grab().toImage(), name);
}

void zoScreenshots::write(const QImage& image, const QString& name)
{
    const QString file = QStringLiteral("%1/%2-%3.png").arg(m_folder, name, m_language);
    if (!coarse(image).save(file, "PNG", 0))
        fail(file + QStringLiteral(": not written"));
}

// Times and folders of the one who runs this give way to others.
void zoScreenshots::settleLog()
{
    QTextDocument* log = window()->logPanel()->view()->document();
    const auto replaceAll = [log](const QString& pattern, const QString& after) {
        const QRegularExpression what(pattern);
        QTextCursor place(log);
        while (!(place = log->find(what, place)).isNull())
            place.insertText(after);
    };
    replaceAll(QStringLiteral("^\\d+:\\d\\d:\\d\\d(?=  )"), QStringLiteral("09:00:00"));
    replaceAll(QStringLiteral("^\\d+:\\d\\d:\\d\\d [AP]M"), QStringLiteral("9:00:00 AM"));
    replaceAll(QStringLiteral("/\\S+/(?=(lib)?[\\w-]+\\.(so|zhpc))"), QStringLiteral("/opt/zo/"));
    replaceAll(QStringLiteral("^\\d+[./]\\d+[./]\\d+$"),
               QLocale().toString(QDate(2026, 11, 20), QLocale::ShortFormat));
    settle();
}

void zoScreenshots::fail(const QString& reason)
{
    m_failed = true;
    std::fprintf(stderr, "zo-screenshots: %s\n", reason.toLocal8Bit().constData());
}
