#include "zoHostHelp.h"

#include "zoHostManualWindow.h"
#include "zoHostModules.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVariantMap>
#include <QWidget>

namespace
{
constexpr char s_pageProperty[] = "manualPage";
constexpr char s_pagesProperty[] = "manualPages";

// What the host itself shows.
constexpr struct
{
    const char* objectName;
    const char* page;
} s_pages[] = {
    {"LogPanel", "messages"},
    {"NodesDock", "starting#what-a-node-says"},
    {"ConnectCommand", "paraview-sessions"},
    {"ImportDialog", "file-format#old-configurations"},
    {"EarlierDialog", "undo#unsaved-work"},
    {"RecoveryBox", "undo#unsaved-work"},
    {"ForeignBox", "messages#configurations"},
    {"ForeignQuestion", "messages#configurations"},
    {"UnreadableBox", "messages#configurations"},
    {"UnreadableQuestion", "messages#configurations"},
    {"ChangedFileBox", "undo#files-that-others-change"},
    {"SaveFailedBox", "messages#files-that-are-written"},
    {"VersionBox", "messages#configurations"},
    {"PreferencesDialog", "windows#preferences"},
    {"AboutDialog", "windows#the-host"},
    {"CameraDock", "windows#the-host"},
    {"ModuleDock", "windows#the-host"},
    {"ModuleToolBar", "windows#hpc-cluster"},
    {"StartPage", "index"},
};
} // namespace

zoHostHelp::zoHostHelp(const zoHostModules* modules, QWidget* window)
    : QObject(window), m_modules(modules), m_window(window)
{
    // A shortcut of the window would not work in modal dialogs.
    qApp->installEventFilter(this);
}

zoHostHelp::~zoHostHelp() = default;

QString zoHostHelp::pageOf(const QWidget* widget) const
{
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QString page = ownPageOf(widget);
        if (!page.isEmpty())
            return page;
    }
    return QStringLiteral("index");
}

QString zoHostHelp::ownPageOf(const QWidget* widget) const
{
    const QString page = widget->property(s_pageProperty).toString();
    const QString name = widget->objectName();
    if (!page.isEmpty() || name.isEmpty())
        return page;
    for (const auto& own : s_pages) {
        if (name == QLatin1String(own.objectName))
            return QLatin1String(own.page);
    }
    const QList<QWidget*> windows = m_modules->moduleWindows();
    for (const QWidget* window : windows) {
        const QString listed = window->property(s_pagesProperty).toMap().value(name).toString();
        if (!listed.isEmpty())
            return listed;
    }
    return {};
}

void zoHostHelp::show()
{
    const QWidget* widget = QApplication::focusWidget();
    if (widget == nullptr)
        widget = QApplication::activeWindow();
    showPage(pageOf(widget));
}

void zoHostHelp::showPage(const QString& page)
{
    // A modal dialog lets only windows of its own be used.
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr) {
        if (!m_manual)
            m_manual = new zoHostManualWindow(m_window);
        m_manual->open(page);
        return;
    }
    auto* manual = modal->findChild<zoHostManualWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (manual == nullptr)
        manual = new zoHostManualWindow(modal);
    manual->open(page);
}

bool zoHostHelp::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        const auto* press = static_cast<QKeyEvent*>(event);
        const auto* window = static_cast<QWidget*>(watched)->window();
        if (press->key() == Qt::Key_F1 && press->modifiers() == Qt::NoModifier &&
            qobject_cast<const zoHostManualWindow*>(window) == nullptr) {
            showPage(pageOf(static_cast<QWidget*>(watched)));
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
