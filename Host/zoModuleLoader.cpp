#include "zoModuleLoader.h"

#include "zoModuleFile.h"
#include "zoModuleMetadata.h"

#include <zoLog.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <typeinfo>

namespace
{
using Entry = void (*)();

// The file of the library that an address lies in, or an empty text.
QString libraryOf(const void* address)
{
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath();
}

bool hasAncestorIn(const QWidget* widget, const QSet<QWidget*>& widgets)
{
    for (QWidget* ancestor = widget->parentWidget(); ancestor != nullptr;
         ancestor = ancestor->parentWidget()) {
        if (widgets.contains(ancestor))
            return true;
    }
    return false;
}

// Widgets that nobody destroyed although their class lives in the library. Static objects of the library are
// left to it: it destroys them itself. Only the outermost ones are destroyed here: each takes along what it
// holds, in its own order, and never meets children that went before it.
void destroyForgottenWidgets(const QString& canonicalFile)
{
    QSet<QWidget*> forgotten;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        if (libraryOf(&typeid(*widget)) == canonicalFile && libraryOf(widget) != canonicalFile)
            forgotten.insert(widget);
    }
    QList<QPointer<QWidget>> outermost;
    for (QWidget* widget : qAsConst(forgotten)) {
        if (!hasAncestorIn(widget, forgotten))
            outermost << widget;
    }
    for (const QPointer<QWidget>& widget : qAsConst(outermost))
        delete widget;
}

// Takes actions of objects of the library out of all widgets. A tool bar destroys the button of an action
// later, and the button's text may lie in the library.
void withdrawActions(const QString& canonicalFile)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        const QList<QAction*> actions = widget->actions();
        for (QAction* action : actions) {
            const QObject* owner = action->parent();
            if (owner != nullptr && libraryOf(&typeid(*owner)) == canonicalFile)
                widget->removeAction(action);
        }
    }
}

// Modules that work beside the cluster module, and without which nothing is missing.
constexpr const char* s_additions[] = {"libzoAssistant.so"};

// Where a module that belongs to this program may be.
QStringList placesOf(const char* name)
{
    const QDir program(QCoreApplication::applicationDirPath());
    QStringList files;
    for (const char* folder : {"../lib/zo", ZO_INSTALLED_MODULE_DIR}) {
        files << QDir::cleanPath(program.absoluteFilePath(
            QStringLiteral("%1/%2").arg(QLatin1String(folder), QLatin1String(name))));
    }
    return files;
}

// The first file that exists, or an empty text.
QString existing(const QStringList& files)
{
    const auto it =
        std::find_if(files.begin(), files.end(), [](const QString& file) { return QFileInfo::exists(file); });
    return it == files.end() ? QString() : *it;
}

void logFailure(const QString& fileName, const QString& reason)
{
    zoLog::error(zoModuleLoader::tr("Unable to load module %1: %2").arg(fileName, reason));
}
} // namespace

zoModuleLoader::zoModuleLoader(QObject* parent) : QObject(parent) {}

zoModuleLoader::~zoModuleLoader()
{
    unloadAll();
}

bool zoModuleLoader::load(const QString& fileName)
{
    const QFileInfo info(fileName);
    const QString file = info.absoluteFilePath();
    if (!info.exists()) {
        logFailure(file, tr("There is no such file"));
        return false;
    }
    for (const auto& loaded : m_libraries) {
        if (QFileInfo(loaded->fileName()).canonicalFilePath() == info.canonicalFilePath()) {
            logFailure(file, tr("The module is loaded already"));
            return false;
        }
    }

    // Before the library is opened: static objects of it run their code then.
    const QString flaw = zoModuleFile::flawOf(file);
    const QString refusal = flaw.isEmpty() ? zoModuleMetadata::read(file).refusal() : flaw;
    if (!refusal.isEmpty()) {
        logFailure(file, refusal);
        return false;
    }

    auto library = std::make_unique<QLibrary>(file);
    // A missing symbol shows here, with its name, and not as a crash in the middle of a session.
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library->load()) {
        logFailure(file, library->errorString());
        return false;
    }
    const auto initPlugin = reinterpret_cast<Entry>(library->resolve("initPlugin"));
    if (initPlugin == nullptr) {
        logFailure(file, tr("It has no entry initPlugin"));
        library->unload();
        return false;
    }
    const auto initPreferencesPlugin = reinterpret_cast<Entry>(library->resolve("initPreferencesPlugin"));
    QString failure;
    try {
        initPlugin();
        if (initPreferencesPlugin != nullptr)
            initPreferencesPlugin();
    } catch (const std::exception& exception) {
        // The text is copied: what() may lie in the library.
        failure = QString::fromLocal8Bit(exception.what());
        if (failure.isEmpty())
            failure = tr("Its entry failed");
    } catch (...) {
        failure = tr("Its entry failed");
    }
    if (!failure.isEmpty()) {
        logFailure(file, failure);
        unload(*library);
        return false;
    }
    m_libraries.push_back(std::move(library));
    zoLog::info(tr("Module %1 loaded").arg(file));
    return true;
}

QStringList zoModuleLoader::loadedFiles() const
{
    QStringList files;
    for (const auto& library : m_libraries)
        files << library->fileName();
    return files;
}

void zoModuleLoader::unloadAll()
{
    while (!m_libraries.empty()) {
        unload(*m_libraries.back());
        m_libraries.pop_back();
    }
}

QStringList zoModuleLoader::defaultModuleFiles()
{
    const QStringList clusterFiles = placesOf("libzoHPC.so");
    const QString cluster = existing(clusterFiles);
    QStringList files(cluster.isEmpty() ? clusterFiles.constFirst() : cluster);
    for (const char* addition : s_additions) {
        const QString file = existing(placesOf(addition));
        if (!file.isEmpty())
            files << file;
    }
    return files;
}

void zoModuleLoader::unload(QLibrary& library)
{
    const QString canonicalFile = QFileInfo(library.fileName()).canonicalFilePath();
    destroyForgottenWidgets(canonicalFile);
    withdrawActions(canonicalFile);
    // Objects that are due for deletion need their destructors, which go with the library.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QString file = library.fileName();
    if (!library.unload())
        zoLog::error(tr("Unable to unload module %1: %2").arg(file, library.errorString()));
}
