#include "zoHostFileGuard.h"

#include "zoHostDocument.h"
#include "zoHostEarlierConfigurations.h"
#include "zoHostModules.h"

#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>
#include <zoLog.h>

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>

#include <sys/stat.h>

namespace
{
constexpr int s_settleMs = 200;
constexpr int s_messageMs = 20000;
constexpr qint64 s_nsPerSecond = 1000000000;

QString absoluteName(const QString& fileName)
{
    return QFileInfo(fileName).absoluteFilePath();
}

QString shortName(const QString& fileName)
{
    return QFileInfo(fileName).fileName();
}
} // namespace

zoHostFileGuard::zoHostFileGuard(QMainWindow* window, const zoHostModules* modules, zoHostDocument* document,
                                 zoControllerService* controller, zoClusterService* cluster,
                                 zoHostEarlierConfigurations* earlier)
    : QObject(window)
    , m_window(window)
    , m_modules(modules)
    , m_document(document)
    , m_controller(controller)
    , m_cluster(cluster)
    , m_earlier(earlier)
{
    zoFileWriter::setGuard({[this](const QString& fileName) { return mayWrite(fileName); },
                            [this](const QString& fileName) {
                                m_unreadable.remove(absoluteName(fileName));
                                m_foreign.remove(absoluteName(fileName));
                                if (m_known.contains(absoluteName(fileName)))
                                    takeNote(fileName);
                            }});
    connect(document, &zoHostDocument::fileRead, this, &zoHostFileGuard::takeNoteOfRead);
    connect(document, &zoHostDocument::fileNotUnderstood, this, &zoHostFileGuard::takeNoteOfForeign);
    connect(document, &zoHostDocument::fileOpened, this, [this](const QString& fileName) {
        m_reading.clear();
        if (!m_known.contains(fileName))
            takeNote(fileName);
        forgetOthers();
    });
    connect(document, &zoHostDocument::changed, this, &zoHostFileGuard::forgetOthers);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { m_settled.start(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { m_settled.start(); });
    connect(cluster, &zoClusterService::stopped, this, [this] { m_settled.start(); });
    connect(&m_settled, &QTimer::timeout, this, &zoHostFileGuard::checkFiles);
    m_settled.setObjectName(QStringLiteral("FileGuardTimer")); // for tests that wait for a look
    m_settled.setSingleShot(true);
    m_settled.setInterval(s_settleMs);
    // Not every file system tells of changes: whoever comes back from another program may have made some.
    window->installEventFilter(this);
}

zoHostFileGuard::~zoHostFileGuard()
{
    zoFileWriter::setGuard({});
}

QByteArray zoHostFileGuard::sumOf(const QString& fileName) const
{
    return m_known.value(absoluteName(fileName)).sum.toHex();
}

void zoHostFileGuard::expect(const QString& fileName, const QByteArray& sum)
{
    State& known = m_known[absoluteName(fileName)];
    known = State();
    known.exists = true;
    known.sum = QByteArray::fromHex(sum);
    watch();
    m_settled.start();
}

bool zoHostFileGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && !m_known.isEmpty())
        m_settled.start();
    return QObject::eventFilter(watched, event);
}

bool zoHostFileGuard::State::isUntouched(const State& other) const
{
    return exists == other.exists && device == other.device && number == other.number && size == other.size &&
           changedNs == other.changedNs;
}

zoHostFileGuard::State zoHostFileGuard::stateOf(const QString& fileName)
{
    State state;
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(fileName).constData(), &status) != 0)
        return state;
    state.exists = true;
    state.device = quint64(status.st_dev);
    state.number = quint64(status.st_ino);
    state.size = status.st_size;
    state.changedNs = status.st_mtim.tv_sec * s_nsPerSecond + status.st_mtim.tv_nsec;
    // What cannot be read is no longer what was read.
    QByteArray bytes;
    if (zoFileReader::read(fileName, bytes) == zoFileReader::Result::Read)
        state.sum = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return state;
}

bool zoHostFileGuard::isChanged(const QString& fileName)
{
    const State now = stateOf(fileName);
    State& known = m_known[fileName];
    // What is gone can be written again.
    if (!now.exists || known.isUntouched(now))
        return false;
    if (known.sum != now.sum)
        return true;
    known = now;
    return false;
}

void zoHostFileGuard::takeNote(const QString& fileName)
{
    const QString name = absoluteName(fileName);
    m_known.insert(name, stateOf(name));
    m_told.remove(name);
    watch();
}

void zoHostFileGuard::takeNoteOfRead(const QString& fileName)
{
    m_reading = absoluteName(fileName);
    takeNote(fileName);
    m_foreign.remove(m_reading);
    lookForUnreadable(m_reading);
}

void zoHostFileGuard::lookForUnreadable(const QString& fileName)
{
    m_unreadable.remove(fileName);
    QByteArray bytes;
    if (zoFileReader::read(fileName, bytes) != zoFileReader::Result::Read)
        return;
    const zoFileText content(bytes);
    if (content.isValid())
        return;
    const zoFileText::Place place = content.invalidPlace();
    m_unreadable.insert(
        fileName, tr("line %1, column %2").arg(QString::number(place.line), QString::number(place.column)));
    // The module has logged it; and what takes its place at once need not be told.
    if (m_controller->isNonInteractive() || m_document->isBringingBack())
        return;
    tell("UnreadableBox", tr("%1 holds bytes that are no text.").arg(shortName(fileName)),
         tr("The first ones are in %1. The window shows %2 for them. The file stays as it "
            "is until it is saved, and that is asked first.")
             .arg(m_unreadable.value(fileName), QChar(QChar::ReplacementCharacter)));
}

void zoHostFileGuard::takeNoteOfForeign(const QString& fileName, const QString& reason)
{
    const QString name = absoluteName(fileName);
    m_foreign.insert(name, reason);
    // Whoever loads it for a script says so.
    if (m_controller->isNonInteractive() || m_document->isBringingBack())
        return;
    zoLog::error(tr("Configuration %1 cannot be used: %2").arg(QDir::toNativeSeparators(name), reason));
    tell("ForeignBox", tr("%1 holds no cluster configuration.").arg(shortName(name)),
         reason + QLatin1Char('\n') +
             tr("The window shows an empty one instead. The file stays as it is until it is saved, and that "
                "is asked first."));
}

// One at a time: of one file, the last word is the one that counts.
void zoHostFileGuard::tell(const char* boxName, const QString& what, const QString& more)
{
    delete m_telling;
    m_telling =
        new QMessageBox(QMessageBox::Warning, QStringLiteral("zohost"), what, QMessageBox::Ok, m_window);
    m_telling->setObjectName(QLatin1String(boxName));
    m_telling->setAttribute(Qt::WA_DeleteOnClose);
    m_telling->setInformativeText(more);
    m_telling->open();
}

void zoHostFileGuard::forgetOthers()
{
    const QStringList names = m_known.keys();
    for (const QString& name : names) {
        if (name == m_reading || windowOf(name) != nullptr)
            continue;
        m_known.remove(name);
        m_told.remove(name);
    }
    if (names.size() != m_known.size())
        watch();
}

// The folders, too: a file that another one takes the place of is watched no more.
void zoHostFileGuard::watch()
{
    if (m_controller->isNonInteractive())
        return;
    QStringList wanted;
    for (auto it = m_known.cbegin(); it != m_known.cend(); ++it) {
        if (QFileInfo::exists(it.key()))
            wanted << it.key();
        wanted << QFileInfo(it.key()).absolutePath();
    }
    wanted.removeDuplicates();
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString& name : watched) {
        if (!wanted.contains(name))
            m_watcher.removePath(name);
    }
    for (const QString& name : qAsConst(wanted)) {
        if (!watched.contains(name) && QFileInfo::exists(name))
            m_watcher.addPath(name);
    }
}

bool zoHostFileGuard::mayWrite(const QString& fileName)
{
    const QString name = absoluteName(fileName);
    if (!m_known.contains(name) || !isChanged(name)) {
        if (m_foreign.contains(name))
            return mayReplaceForeign(name);
        return !m_unreadable.contains(name) || mayReplaceUnreadable(name);
    }
    if (!m_controller->isNonInteractive())
        return ask(name);
    zoLog::error(tr("%1 was changed by another program since it was loaded and is not overwritten")
                     .arg(QDir::toNativeSeparators(name)));
    return false;
}

bool zoHostFileGuard::ask(const QString& fileName)
{
    const QPointer<QWidget> moduleWindow = windowOf(fileName);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("zohost"),
                    tr("%1 was changed by another program since it was loaded.").arg(shortName(fileName)),
                    QMessageBox::NoButton, m_window);
    box.setObjectName(QStringLiteral("ChangedFileBox"));
    box.setInformativeText(
        tr("Overwrite it with what the window shows, or read it again? Reading it again keeps what the "
           "window shows under File > Earlier configurations."));
    QPushButton* reload = box.addButton(tr("&Reload"), QMessageBox::DestructiveRole);
    const QPushButton* overwrite = box.addButton(tr("&Overwrite"), QMessageBox::AcceptRole);
    const QPushButton* saveAs = box.addButton(tr("Save &As..."), QMessageBox::ActionRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    reload->setEnabled(!m_cluster->isRunning());
    box.exec();
    if (box.clickedButton() == overwrite)
        return true;
    if (box.clickedButton() == reload)
        m_document->load(fileName);
    else if (box.clickedButton() == saveAs && moduleWindow)
        QMetaObject::invokeMethod(moduleWindow, "saveAsConfig", Qt::DirectConnection);
    return false;
}

bool zoHostFileGuard::mayReplaceUnreadable(const QString& fileName)
{
    if (m_controller->isNonInteractive()) {
        zoLog::error(tr("%1 holds bytes that are no text and is not overwritten")
                         .arg(QDir::toNativeSeparators(fileName)));
        return false;
    }
    return mayReplace(fileName, tr("%1 holds bytes that are no text.").arg(shortName(fileName)),
                      tr("The first ones are in %1. Saving writes %2 in their place. What the file holds "
                         "now is then kept under File > Earlier configurations.")
                          .arg(m_unreadable.value(fileName), QChar(QChar::ReplacementCharacter)));
}

bool zoHostFileGuard::mayReplaceForeign(const QString& fileName)
{
    const QString reason = m_foreign.value(fileName);
    if (m_controller->isNonInteractive()) {
        zoLog::error(tr("%1 holds no cluster configuration and is not overwritten: %2")
                         .arg(QDir::toNativeSeparators(fileName), reason));
        return false;
    }
    return mayReplace(
        fileName, tr("%1 holds no cluster configuration.").arg(shortName(fileName)),
        reason + QLatin1Char('\n') +
            tr("Saving replaces all that it holds by what the window shows. What the file holds "
               "now is then kept under File > Earlier configurations."));
}

bool zoHostFileGuard::mayReplace(const QString& fileName, const QString& what, const QString& then)
{
    const QPointer<QWidget> moduleWindow = windowOf(fileName);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("zohost"), what, QMessageBox::NoButton, m_window);
    box.setObjectName(m_foreign.contains(fileName) ? QStringLiteral("ForeignQuestion")
                                                   : QStringLiteral("UnreadableQuestion"));
    box.setInformativeText(then);
    const QPushButton* overwrite = box.addButton(tr("&Overwrite"), QMessageBox::AcceptRole);
    const QPushButton* saveAs = box.addButton(tr("Save &As..."), QMessageBox::ActionRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    if (box.clickedButton() == overwrite) {
        QByteArray bytes;
        if (zoFileReader::read(fileName, bytes) == zoFileReader::Result::Read)
            m_earlier->keepBytes(bytes, fileName);
        return true;
    }
    if (box.clickedButton() == saveAs && moduleWindow)
        QMetaObject::invokeMethod(moduleWindow, "saveAsConfig", Qt::DirectConnection);
    return false;
}

void zoHostFileGuard::checkFiles()
{
    watch();
    // A dialog is open, or a session runs: this is called again after them.
    if (m_controller->isNonInteractive() || QApplication::activeModalWidget() != nullptr ||
        m_cluster->isRunning())
        return;
    const QStringList names = m_known.keys();
    for (const QString& name : names) {
        QWidget* moduleWindow = windowOf(name);
        if (moduleWindow == nullptr || !isChanged(name))
            continue;
        const QByteArray sum = stateOf(name).sum;
        if (m_told.value(name) == sum)
            continue;
        m_told.insert(name, sum);
        if (!m_document->differs(moduleWindow)) {
            offerReload(name);
            return;
        }
        m_window->statusBar()->showMessage(
            tr("%1 was changed by another program. Save asks before it overwrites it.").arg(shortName(name)),
            s_messageMs);
    }
}

void zoHostFileGuard::offerReload(const QString& fileName)
{
    m_offer = new QMessageBox(QMessageBox::Question, QStringLiteral("zohost"),
                              tr("%1 was changed by another program.").arg(shortName(fileName)),
                              QMessageBox::NoButton, m_window);
    m_offer->setObjectName(QStringLiteral("ChangedFileBox"));
    m_offer->setAttribute(Qt::WA_DeleteOnClose);
    m_offer->setInformativeText(tr("Read it again?"));
    QPushButton* reload = m_offer->addButton(tr("&Reload"), QMessageBox::AcceptRole);
    m_offer->addButton(tr("&Keep"), QMessageBox::RejectRole);
    m_offer->setDefaultButton(reload);
    connect(m_offer, &QMessageBox::finished, this, [this, fileName, reload] {
        if (m_offer->clickedButton() == reload && !m_cluster->isRunning())
            m_document->load(fileName);
    });
    m_offer->open();
}

QWidget* zoHostFileGuard::windowOf(const QString& fileName) const
{
    const QList<QWidget*> windows = m_modules->moduleWindows();
    for (QWidget* moduleWindow : windows) {
        if (moduleWindow->windowFilePath() == fileName)
            return moduleWindow;
    }
    return nullptr;
}
