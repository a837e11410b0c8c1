#include "zoHostDocument.h"

#include "zoHostModules.h"

#include <zoLog.h>

#include <QDir>
#include <QDynamicPropertyChangeEvent>
#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>
#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace
{
constexpr char s_differsProperty[] = "differs";
constexpr char s_replacedProperty[] = "replacedConfiguration";
constexpr char s_readProperty[] = "readFile";
constexpr char s_savedProperty[] = "savedFile";
constexpr char s_notUnderstoodProperty[] = "fileNotUnderstood";
constexpr char s_notSavedProperty[] = "fileNotSaved";
constexpr char s_importedProperty[] = "importedFile";
constexpr char s_textProperty[] = "configuration";
constexpr char s_revisionProperty[] = "revision";
constexpr char s_undoProperty[] = "undoStep";
constexpr char s_redoProperty[] = "redoStep";

bool isLatin1(const QString& text)
{
    return QString::fromLatin1(text.toLatin1()) == text;
}

bool hasSlot(const QObject* object, const QByteArray& signature)
{
    return object->metaObject()->indexOfSlot(signature) >= 0;
}

bool hasText(const QWidget* moduleWindow)
{
    return moduleWindow->metaObject()->indexOfProperty(s_textProperty) >= 0;
}

// Shares no data with the module's, which may be unloaded earlier.
QString ownText(const QObject* object, const char* property)
{
    const QString text = object->property(property).toString();
    return QString(text.constData(), text.size());
}

QStringList ownTexts(const QObject* object, const char* property)
{
    QStringList own;
    const QStringList texts = object->property(property).toStringList();
    for (const QString& text : texts)
        own << QString(text.constData(), text.size());
    return own;
}
} // namespace

zoHostDocument::zoHostDocument(const zoHostModules* modules, QObject* parent)
    : QObject(parent), m_modules(modules)
{
}

zoHostDocument::~zoHostDocument() = default;

void zoHostDocument::watch(QWidget* moduleWindow)
{
    moduleWindow->installEventFilter(this);
    announceFile(moduleWindow);
    emit changed();
}

void zoHostDocument::forget(QObject* moduleWindow)
{
    m_announced.remove(moduleWindow);
    m_broughtBack.remove(moduleWindow);
    moduleWindow->removeEventFilter(this);
}

bool zoHostDocument::differs(const QWidget* moduleWindow) const
{
    const QVariant now = moduleWindow->property(s_differsProperty);
    return m_broughtBack.contains(moduleWindow) ||
           (now.isValid() ? now.toBool() : moduleWindow->isWindowModified());
}

bool zoHostDocument::differs() const
{
    const QList<QWidget*> windows = m_modules->moduleWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [this](const QWidget* moduleWindow) { return differs(moduleWindow); });
}

bool zoHostDocument::isMarked(const QWidget* moduleWindow) const
{
    return m_broughtBack.contains(moduleWindow) || moduleWindow->isWindowModified();
}

// The entry of the module object reads a Latin-1 name; the module's window has one for all other names.
bool zoHostDocument::load(const QString& fileName)
{
    if (isLatin1(fileName)) {
        const QByteArray name = fileName.toLatin1();
        QObject* module = m_modules->moduleObject("loadConfig(const char*)");
        return module != nullptr && QMetaObject::invokeMethod(module, "loadConfig", Qt::DirectConnection,
                                                              Q_ARG(const char*, name.constData()));
    }
    const QList<QWidget*> windows = m_modules->moduleWindows();
    for (QWidget* moduleWindow : windows) {
        if (hasSlot(moduleWindow, "loadConfig(QString)"))
            return QMetaObject::invokeMethod(moduleWindow, "loadConfig", Qt::DirectConnection,
                                             Q_ARG(QString, fileName));
    }
    return false;
}

bool zoHostDocument::bringBack(const QString& text, const QString& originFile)
{
    QObject* module = m_modules->moduleObject("setConfig(QString)");
    if (module == nullptr)
        return false;
    // A text that comes through the module object leaves the module's file as it is.
    const QList<QWidget*> windows = m_modules->moduleWindows();
    for (QWidget* moduleWindow : windows) {
        const QString open = moduleWindow->windowFilePath();
        if (!open.isEmpty() && open != originFile && hasSlot(moduleWindow, "setDefaultConfig()"))
            QMetaObject::invokeMethod(moduleWindow, "setDefaultConfig", Qt::DirectConnection);
    }
    if (!QMetaObject::invokeMethod(module, "setConfig", Qt::DirectConnection, Q_ARG(QString, text)))
        return false;
    // Without a file there is nothing that a module could compare it with.
    for (QWidget* moduleWindow : windows) {
        if (moduleWindow->windowFilePath().isEmpty() && hasSlot(moduleWindow, "setDefaultConfig()"))
            m_broughtBack.insert(moduleWindow);
    }
    emit changed();
    return true;
}

bool zoHostDocument::bringBackWork(const QString& text, const QString& originFile)
{
    const QScopedValueRollback<bool> bringing(m_isBringingBack, true);
    const QWidget* moduleWindow = configurationWindow();
    if (moduleWindow != nullptr && !originFile.isEmpty() && moduleWindow->windowFilePath() != originFile &&
        QFileInfo::exists(originFile))
        load(originFile);
    return bringBack(text, originFile);
}

bool zoHostDocument::begin(const QString& text)
{
    QWidget* moduleWindow = configurationWindow();
    if (moduleWindow == nullptr || !hasSlot(moduleWindow, "setDefaultConfig()"))
        return false;
    QMetaObject::invokeMethod(moduleWindow, "setDefaultConfig", Qt::DirectConnection);
    if (text.isEmpty())
        return true;
    QObject* module = m_modules->moduleObject("setConfig(QString)");
    return module != nullptr &&
           QMetaObject::invokeMethod(module, "setConfig", Qt::DirectConnection, Q_ARG(QString, text));
}

QString zoHostDocument::text(const QWidget* moduleWindow) const
{
    return moduleWindow->property(s_textProperty).toString();
}

QWidget* zoHostDocument::configurationWindow() const
{
    const QList<QWidget*> windows = m_modules->moduleWindows();
    const auto it = std::find_if(windows.begin(), windows.end(), hasText);
    return it == windows.end() ? nullptr : *it;
}

bool zoHostDocument::replace(QWidget* moduleWindow, const QString& text, const QString& step)
{
    bool isReplaced = false;
    return hasSlot(moduleWindow, "replaceConfiguration(QString,QString)") &&
           QMetaObject::invokeMethod(moduleWindow, "replaceConfiguration", Qt::DirectConnection,
                                     Q_RETURN_ARG(bool, isReplaced), Q_ARG(QString, text),
                                     Q_ARG(QString, step)) &&
           isReplaced;
}

QString zoHostDocument::undoStep(const QWidget* moduleWindow)
{
    return hasSlot(moduleWindow, "undo()") ? ownText(moduleWindow, s_undoProperty) : QString();
}

QString zoHostDocument::redoStep(const QWidget* moduleWindow)
{
    return hasSlot(moduleWindow, "redo()") ? ownText(moduleWindow, s_redoProperty) : QString();
}

void zoHostDocument::undo(QWidget* moduleWindow)
{
    if (hasSlot(moduleWindow, "undo()"))
        QMetaObject::invokeMethod(moduleWindow, "undo", Qt::DirectConnection);
}

void zoHostDocument::redo(QWidget* moduleWindow)
{
    if (hasSlot(moduleWindow, "redo()"))
        QMetaObject::invokeMethod(moduleWindow, "redo", Qt::DirectConnection);
}

bool zoHostDocument::save(QWidget* moduleWindow, QString* reason)
{
    return saveBy(moduleWindow, "saveConfig", reason);
}

bool zoHostDocument::saveAs(QWidget* moduleWindow, QString* reason)
{
    return saveBy(moduleWindow, "saveAsConfig", reason);
}

bool zoHostDocument::saveBy(QWidget* moduleWindow, const char* slot, QString* reason)
{
    const QPointer<QWidget> window(moduleWindow); // a file dialog may outlive it
    QString failure;
    {
        const QScopedValueRollback<QString*> waiting(m_saveReason, &failure);
        if (hasSlot(moduleWindow, QByteArray(slot) + "()"))
            QMetaObject::invokeMethod(moduleWindow, slot, Qt::DirectConnection);
    }
    if (reason != nullptr)
        *reason = failure;
    return window && !differs(window);
}

bool zoHostDocument::open(QWidget* moduleWindow)
{
    return hasSlot(moduleWindow, "loadConfig()") &&
           QMetaObject::invokeMethod(moduleWindow, "loadConfig", Qt::DirectConnection);
}

bool zoHostDocument::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowTitleChange:
        if (!static_cast<QWidget*>(watched)->windowFilePath().isEmpty())
            m_broughtBack.remove(watched);
        announceFile(static_cast<QWidget*>(watched));
        emit changed();
        break;
    case QEvent::ModifiedChange:
        emit changed();
        break;
    case QEvent::DynamicPropertyChange:
        hearProperty(static_cast<QWidget*>(watched),
                     static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName());
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void zoHostDocument::hearProperty(QWidget* moduleWindow, const QByteArray& name)
{
    if (name == s_readProperty) {
        const QString fileName = ownText(moduleWindow, s_readProperty);
        if (!fileName.isEmpty())
            emit fileRead(fileName);
    } else if (name == s_replacedProperty) {
        const QVariant text = moduleWindow->property(s_replacedProperty);
        if (!text.isValid())
            return;
        emit replaced(text.toString(), moduleWindow->windowFilePath());
        if (m_broughtBack.remove(moduleWindow))
            emit changed();
    } else if (name == s_undoProperty || name == s_redoProperty) {
        emit stepsChanged();
    } else if (name == s_revisionProperty) {
        emit textChanged();
    } else if (moduleWindow->property(name).isValid()) {
        hearNote(moduleWindow, name);
    }
}

void zoHostDocument::hearNote(QWidget* moduleWindow, const QByteArray& name)
{
    if (name == s_savedProperty) {
        emit fileSaved(ownText(moduleWindow, s_savedProperty));
        return;
    }
    const QStringList note = ownTexts(moduleWindow, name);
    if (name == s_importedProperty && !note.isEmpty()) {
        emit imported(moduleWindow, note.constFirst(), note.mid(1));
    } else if (name == s_notUnderstoodProperty && note.size() == 2) {
        emit fileNotUnderstood(note.at(0), note.at(1));
    } else if (name == s_notSavedProperty && note.size() >= 2) {
        if (!note.mid(2).contains(QStringLiteral("logged")))
            zoLog::error(tr("Unable to save %1: %2").arg(QDir::toNativeSeparators(note.at(0)), note.at(1)));
        if (m_saveReason != nullptr)
            *m_saveReason = note.at(1);
        else
            emit saveFailed(moduleWindow, note.at(0), note.at(1));
    }
}

void zoHostDocument::announceFile(QWidget* moduleWindow)
{
    const QString file = moduleWindow->windowFilePath();
    QString& announced = m_announced[moduleWindow];
    if (file == announced)
        return;
    announced = QString(file.constData(), file.size());
    if (!file.isEmpty())
        emit fileOpened(file);
}
