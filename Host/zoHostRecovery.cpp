#include "zoHostRecovery.h"

#include "zoClusterDocument.h"
#include "zoConfigurationDifference.h"
#include "zoHostDocument.h"
#include "zoHostEarlierDialog.h"
#include "zoHostFileGuard.h"
#include "zoHostMainWindow.h"
#include "zoHostRefuge.h"
#include "zoHostTime.h"

#include <zoLog.h>
#include <zoQt.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace
{
constexpr int s_mostLines = 5; // of works in one question
} // namespace

zoHostRecovery::zoHostRecovery(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier)
    : m_window(window), m_earlier(earlier)
{
    // A logout does not wait for answers: without this, windows would be closed and ask.
    zoQt::closeNothingAtLogout();
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
        const QString file = moduleWindow->windowFilePath();
        if (m_earlier->keepUnfinished(own, file, m_window->guard()->sumOf(file)))
            m_earlier->forgetRunning(place); // it is the same, or older
        else if (!m_files.contains(own))
            takeRefuge(own, file);
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

zoHostRecovery::Work zoHostRecovery::read(const Entry& entry) const
{
    Work work{entry, m_earlier->textOf(entry), {}};
    if (work.text.isEmpty())
        work.flaw = tr("nothing of them can be read");
    else
        zoClusterDocument().parse(work.text, work.flaw);
    return work;
}

// What nobody has answered for stays what it is, for the next start, should this host break off as well.
QVector<zoHostRecovery::Work> zoHostRecovery::findUnasked()
{
    QVector<Work> works;
    const QVector<Entry> found = m_earlier->unfinished();
    for (const Entry& entry : found) {
        const QString id = entry.fileName.isEmpty() ? entry.text : entry.fileName;
        if (m_asked.contains(id))
            continue;
        const Work work = read(entry);
        if (m_kept.contains(work.text))
            continue;
        m_asked << id;
        if (work.flaw.isEmpty() && zoConfigurationDifference(work.text, entry.originFile).isNone())
            m_earlier->finish(entry);
        else
            works << work;
    }
    return works;
}

void zoHostRecovery::ask()
{
    QVector<Work> works = findUnasked();
    const auto firstDamaged = std::stable_partition(works.begin(), works.end(),
                                                    [](const Work& work) { return work.flaw.isEmpty(); });
    QVector<Work> damaged;
    std::copy(firstDamaged, works.end(), std::back_inserter(damaged));
    works.erase(firstDamaged, works.end());
    if (damaged.isEmpty())
        offerWorks(works);
    else
        tellDamaged(damaged, works);
}

void zoHostRecovery::offerWorks(const QVector<Work>& works)
{
    if (works.size() == 1)
        offerOne(works.constFirst());
    else if (!works.isEmpty())
        offerList(works);
}

QString zoHostRecovery::nameOf(const Work& work)
{
    const QString time = zoHostTime::text(work.entry.replaced);
    return work.entry.originFile.isEmpty()
               ? tr("A configuration that was never saved, of %1").arg(time)
               : tr("%1, of %2").arg(QDir::toNativeSeparators(work.entry.originFile), time);
}

QString zoHostRecovery::describe(const Work& work) const
{
    const zoConfigurationDifference difference(work.text, work.entry.originFile);
    return nameOf(work) + QLatin1Char('\n') + difference.sentence();
}

QMessageBox* zoHostRecovery::createBox(const QString& title, const QString& text, const QStringList& more)
{
    auto* box = new QMessageBox(QMessageBox::Question, title, text, QMessageBox::NoButton, m_window);
    box->setObjectName(QStringLiteral("RecoveryBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(more.join(QLatin1Char('\n')));
    return box;
}

void zoHostRecovery::offerOne(const Work& work)
{
    const QString file = QFileInfo(work.entry.originFile).fileName();
    const bool isCrash = !work.entry.owner.isEmpty();
    QMessageBox* box =
        createBox(tr("Unsaved changes"),
                  file.isEmpty() ? tr("Bring back the configuration that was never saved?")
                                 : tr("Bring back the changes of %1 that were not saved?").arg(file),
                  {isCrash ? tr("The host broke off before they were saved.")
                           : tr("The host was told to end before they were saved."),
                   describe(work), tr("Otherwise they stay under File > Earlier configurations.")});
    QPushButton* bringing = box->addButton(tr("&Bring back"), QMessageBox::AcceptRole);
    box->addButton(tr("&Do not bring back"), QMessageBox::RejectRole);
    box->setDefaultButton(bringing);
    connect(box, &QMessageBox::finished, this, [this, box, bringing, work] {
        if (box->clickedButton() != bringing || m_window->bringBackWork(work.entry, work.text))
            m_earlier->finish(work.entry);
    });
    box->open();
}

void zoHostRecovery::offerList(const QVector<Work>& works)
{
    QStringList lines;
    const QVector<Work> listed = works.mid(0, s_mostLines);
    for (const Work& work : listed)
        lines << describe(work);
    if (works.size() > s_mostLines)
        lines << tr("and %1 more").arg(works.size() - s_mostLines);
    lines << tr("They stay under File > Earlier configurations.");
    QMessageBox* box = createBox(
        tr("Unsaved changes"),
        tr("Look at %1 configurations whose changes were not saved, to bring one back?").arg(works.size()),
        lines);
    QPushButton* showing = box->addButton(tr("&Show them"), QMessageBox::AcceptRole);
    box->addButton(tr("&Do not bring back"), QMessageBox::RejectRole);
    box->setDefaultButton(showing);
    connect(box, &QMessageBox::finished, this, [this, box, showing, works] {
        if (box->clickedButton() != showing)
            return finishAll(works);
        // Answered once a person has seen them.
        connect(m_window->showEarlierConfigurations(), &QDialog::finished, this,
                [this, works] { finishAll(works); });
    });
    box->open();
}

void zoHostRecovery::finishAll(const QVector<Work>& works)
{
    for (const Work& work : works)
        m_earlier->finish(work.entry);
}

// Brought back, they would be an empty configuration.
void zoHostRecovery::tellDamaged(const QVector<Work>& damaged, const QVector<Work>& works)
{
    QStringList lines;
    const QVector<Work> listed = damaged.mid(0, s_mostLines);
    for (const Work& work : listed) {
        lines << nameOf(work) << tr("Damage: %1").arg(work.flaw);
        const QString kept = zoHostEarlierConfigurations::setAsideName(work.entry);
        if (!kept.isEmpty())
            lines << tr("What is left is kept in %1").arg(QDir::toNativeSeparators(kept));
    }
    // No list has it any more once the box is gone.
    for (const Work& work : damaged) {
        const QString kept = zoHostEarlierConfigurations::setAsideName(work.entry);
        if (!kept.isEmpty())
            zoLog::error(tr("Changes that were not saved are damaged, what is left is kept in %1: %2")
                             .arg(QDir::toNativeSeparators(kept), work.flaw));
    }
    if (damaged.size() > s_mostLines)
        lines << tr("and %1 more").arg(damaged.size() - s_mostLines);
    QMessageBox* box =
        createBox(tr("Unsaved changes"),
                  tr("Changes that were not saved are damaged and cannot be brought back."), lines);
    box->setIcon(QMessageBox::Warning);
    box->addButton(QMessageBox::Ok);
    connect(box, &QMessageBox::finished, this, [this, damaged, works] {
        for (const Work& work : damaged)
            m_earlier->setAside(work.entry);
        offerWorks(works);
    });
    box->open();
}
