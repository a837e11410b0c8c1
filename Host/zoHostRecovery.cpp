#include "zoHostRecovery.h"

#include "zoConfigurationDifference.h"
#include "zoHostDocument.h"
#include "zoHostMainWindow.h"
#include "zoHostRefuge.h"

#include <zoLog.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

zoHostRecovery::zoHostRecovery(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier)
    : m_window(window), m_earlier(earlier)
{
    // A logout does not wait for answers: without this, windows would be closed and ask.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &zoHostRecovery::keepUnfinished);
    connect(window, &zoHostMainWindow::closing, this, &zoHostRecovery::finish);
    connect(window->document(), &zoHostDocument::fileOpened, this, &zoHostRecovery::offerBeside,
            Qt::QueuedConnection);
}

zoHostRecovery::~zoHostRecovery() = default;

void zoHostRecovery::keepUnfinished()
{
    const zoHostDocument* document = m_window->document();
    const QList<QWidget*> windows = m_window->moduleWindows();
    for (int place = 0; place < windows.size(); ++place) {
        const QWidget* const moduleWindow = windows.at(place);
        if (!document->differs(moduleWindow))
            continue;
        const QString text = document->text(moduleWindow);
        const QString own(text.constData(), text.size());
        if (m_earlier->keepUnfinished(own, moduleWindow->windowFilePath()))
            m_earlier->forgetRunning(place); // it is the same, or older
        else if (!m_files.contains(own))
            takeRefuge(own, moduleWindow->windowFilePath());
        m_kept << own;
    }
}

void zoHostRecovery::takeRefuge(const QString& text, const QString& originFile)
{
    QString reasons;
    const QString fileName = zoHostRefuge::keep(text, originFile, zoHostRefuge::folders(), reasons);
    if (fileName.isEmpty()) {
        zoLog::error(tr("The changes that are not saved could not be kept anywhere: %1").arg(reasons));
        return;
    }
    m_files.insert(text, fileName);
    zoLog::error(tr("The changes that are not saved are kept in %1. The next start offers them.")
                     .arg(QDir::toNativeSeparators(fileName)));
}

// A logout may be called off: what was kept for it is saved or discarded by now.
void zoHostRecovery::finish()
{
    const QVector<Entry> entries = m_earlier->unfinished();
    for (const Entry& entry : entries) {
        if (m_kept.contains(m_earlier->textOf(entry)))
            m_earlier->finish(entry);
    }
    for (const QString& fileName : qAsConst(m_files))
        QFile::remove(fileName);
    m_files.clear();
}

void zoHostRecovery::adopt(const QStringList& folders)
{
    const QVector<zoHostRefuge::Work> works = zoHostRefuge::find(folders);
    const QStringList own = m_files.values();
    for (const zoHostRefuge::Work& work : works) {
        // What cannot be taken over stays where it is, for the start after the next one.
        if (!own.contains(work.fileName) && m_earlier->adoptUnfinished(work.text, work.originFile, work.kept))
            QFile::remove(work.fileName);
    }
}

void zoHostRecovery::offer(const QString& firstFile)
{
    QStringList folders = zoHostRefuge::folders();
    if (!firstFile.isEmpty())
        folders << QFileInfo(firstFile).absolutePath();
    folders.removeDuplicates();
    adopt(folders);
    m_hasOffered = true;
    ask();
}

// Only now: to look into the folders of all files that were open once would wait for shares that are away.
void zoHostRecovery::offerBeside(const QString& fileName)
{
    if (!m_hasOffered || zoHostRefuge::find({QFileInfo(fileName).absolutePath()}).isEmpty())
        return;
    adopt({QFileInfo(fileName).absolutePath()});
    ask();
}

void zoHostRecovery::ask()
{
    const QVector<Entry> found = m_earlier->unfinished();
    // Asked once: what is not brought back now stays in the list.
    QVector<Entry> entries;
    for (const Entry& entry : found) {
        if (!zoConfigurationDifference(m_earlier->textOf(entry), entry.originFile).isNone())
            entries << entry;
        m_earlier->finish(entry);
    }
    if (entries.isEmpty())
        return;
    // The files have other names now.
    const QVector<Entry> listed = m_earlier->entries();
    if (entries.size() > 1) {
        offerList(entries);
        return;
    }
    for (const Entry& entry : listed) {
        if (entry.replaced == entries.constFirst().replaced &&
            entry.originFile == entries.constFirst().originFile) {
            offerOne(entry, !entries.constFirst().owner.isEmpty());
            return;
        }
    }
}

QString zoHostRecovery::describe(const Entry& entry) const
{
    const QString time = QLocale().toString(entry.replaced.toLocalTime(), QLocale::ShortFormat);
    const QString name = entry.originFile.isEmpty()
                             ? tr("A configuration that was never saved, of %1").arg(time)
                             : tr("%1, of %2").arg(QDir::toNativeSeparators(entry.originFile), time);
    const zoConfigurationDifference difference(m_earlier->textOf(entry), entry.originFile);
    return name + QLatin1Char('\n') + difference.sentence();
}

void zoHostRecovery::offerOne(const Entry& entry, bool isCrash)
{
    auto* box = new QMessageBox(
        QMessageBox::Question, QStringLiteral("zohost"),
        isCrash ? tr("The host broke off while there were changes that were not saved.")
                : tr("The host was told to end while there were changes that were not saved."),
        QMessageBox::NoButton, m_window);
    box->setObjectName(QStringLiteral("RecoveryBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(describe(entry) + QLatin1Char('\n') +
                            tr("They stay under File > Earlier configurations."));
    QPushButton* bringBack = box->addButton(tr("&Bring back"), QMessageBox::AcceptRole);
    box->addButton(tr("&Not now"), QMessageBox::RejectRole);
    box->setDefaultButton(bringBack);
    connect(box, &QMessageBox::finished, this, [this, box, bringBack, entry] {
        if (box->clickedButton() == bringBack)
            m_window->bringBack(m_earlier->textOf(entry), entry.originFile);
    });
    box->open();
}

void zoHostRecovery::offerList(const QVector<Entry>& entries)
{
    QStringList lines;
    // The files have other names by now.
    const QVector<Entry> listed = m_earlier->entries();
    for (const Entry& entry : listed) {
        const bool isOne = std::any_of(entries.cbegin(), entries.cend(), [&entry](const Entry& one) {
            return one.replaced == entry.replaced && one.originFile == entry.originFile;
        });
        if (isOne)
            lines << describe(entry);
    }
    auto* box = new QMessageBox(QMessageBox::Question, QStringLiteral("zohost"),
                                tr("Hosts ended while there were changes that were not saved."),
                                QMessageBox::NoButton, m_window);
    box->setObjectName(QStringLiteral("RecoveryBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(lines.join(QLatin1Char('\n')) + QLatin1Char('\n') +
                            tr("They stay under File > Earlier configurations."));
    QPushButton* show = box->addButton(tr("&Show them"), QMessageBox::AcceptRole);
    box->addButton(tr("&Not now"), QMessageBox::RejectRole);
    box->setDefaultButton(show);
    connect(box, &QMessageBox::finished, this, [this, box, show] {
        if (box->clickedButton() == show)
            m_window->showEarlierConfigurations();
    });
    box->open();
}
