#include "zoHostEarlierConfigurations.h"

#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>
#include <zoLog.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

namespace
{
constexpr int s_lockTimeoutMs = 2000;
constexpr char s_stampFormat[] = "yyyyMMdd'T'HHmmss'Z'";
constexpr char s_unfinishedMark[] = "_unsaved";

const QRegularExpression& namePattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{6,15})_(\\d{8}T\\d{6}Z)(_unsaved(?:-([0-9a-f]{8}))?)?\\.zhpc$"));
    return pattern;
}

// Files that a writer was killed over.
const QRegularExpression& remainsPattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\d{6,15}_\\d{8}T\\d{6}Z(_unsaved(-[0-9a-f]{8})?)?"
                       "\\.(zhpc|origin)\\.([0-9a-f]{8}){1,2}$"));
    return pattern;
}

// What orders the files: clocks are set back at times. Zero for a file of another kind.
qint64 numberOf(const QString& name)
{
    return namePattern().match(name).captured(1).toLongLong();
}

// Without the mark, so that one rename takes the mark off.
QString finishedNameOf(QString fileName)
{
    static const QRegularExpression s_mark(QStringLiteral("_unsaved(-[0-9a-f]{8})?\\.zhpc$"));
    return fileName.replace(s_mark, QStringLiteral(".zhpc"));
}

QString originNameOf(const QString& fileName)
{
    const QString name = finishedNameOf(fileName);
    return name.left(name.lastIndexOf(QLatin1Char('.'))) + QStringLiteral(".origin");
}

bool writeFile(const QString& fileName, const QByteArray& bytes, QString& reason)
{
    return zoFileWriter::write(fileName, bytes, &reason) == zoFileWriter::Result::Written;
}
} // namespace

zoHostEarlierConfigurations::zoHostEarlierConfigurations(const QString& folder, QObject* parent)
    : QObject(parent)
    , m_folder(folder)
    , m_owner(QStringLiteral("%1").arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0')))
{
}

zoHostEarlierConfigurations::~zoHostEarlierConfigurations()
{
    if (!m_waiting.isEmpty())
        writeWaiting();
}

QString zoHostEarlierConfigurations::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/earlier");
}

void zoHostEarlierConfigurations::setNewDocument(const QString& text)
{
    m_newDocument = text;
}

void zoHostEarlierConfigurations::keep(const QString& text, const QString& originFile)
{
    add(text, originFile, false, {});
}

bool zoHostEarlierConfigurations::keepUnfinished(const QString& text, const QString& originFile,
                                                 const QByteArray& originSum)
{
    return add(text, originFile, true, originSum);
}

bool zoHostEarlierConfigurations::adoptUnfinished(const QString& text, const QString& originFile,
                                                  const QDateTime& kept)
{
    const QVector<Entry> there = entries();
    for (const Entry& entry : there) {
        if (entry.replaced == kept && entry.originFile == originFile && textOf(entry) == text)
            return !entry.fileName.isEmpty();
    }
    Entry entry;
    entry.isUnfinished = true;
    entry.replaced = kept;
    entry.originFile = originFile;
    entry.text = text;
    entry.bytes = text.toUtf8();
    append(entry);
    return m_waiting.isEmpty();
}

void zoHostEarlierConfigurations::keepBytes(const QByteArray& bytes, const QString& originFile)
{
    Entry entry;
    entry.replaced = QDateTime::currentDateTimeUtc();
    entry.originFile = originFile;
    entry.text = zoFileText(bytes).text();
    entry.bytes = bytes;
    append(entry);
}

bool zoHostEarlierConfigurations::add(const QString& text, const QString& originFile, bool isUnfinished,
                                      const QByteArray& originSum)
{
    if (text.isEmpty() || text == m_newDocument)
        return true;
    QVector<Entry> before = entries();
    // What goes on is forgotten once it is saved.
    before.erase(
        std::remove_if(before.begin(), before.end(), [](const Entry& e) { return !e.owner.isEmpty(); }),
        before.end());
    // Not when the mark is missing: what is there twice is no loss.
    if (!before.isEmpty() && before.constFirst().isUnfinished >= isUnfinished &&
        textOf(before.constFirst()) == text)
        return !before.constFirst().fileName.isEmpty();

    Entry entry;
    entry.isUnfinished = isUnfinished;
    entry.replaced = QDateTime::currentDateTimeUtc();
    // Texts of their own: the given ones may lie in a module that is unloaded earlier.
    entry.originFile = QString(originFile.constData(), originFile.size());
    entry.originSum = originSum;
    entry.text = QString(text.constData(), text.size());
    entry.bytes = text.toUtf8();
    append(entry);
    return m_waiting.isEmpty();
}

void zoHostEarlierConfigurations::append(Entry entry)
{
    // As names of files tell it, so that an entry is the same before and after it is written.
    entry.replaced = entry.replaced.addMSecs(-entry.replaced.time().msec());
    m_waiting.append(entry);
    writeWaiting();
    while (m_waiting.size() > Limit)
        m_waiting.removeFirst();
    emit changed();
}

bool zoHostEarlierConfigurations::keepRunning(int place, const QString& text, const QString& originFile,
                                              QString& reason, const QByteArray& originSum)
{
    if (text.isEmpty() || text == m_newDocument) {
        forgetRunning(place);
        return true;
    }
    const Running before = m_running.value(place);
    if (before.text == text && QFile::exists(before.fileName))
        return true;
    Entry entry;
    entry.isUnfinished = true;
    entry.replaced = QDateTime::currentDateTimeUtc();
    entry.originFile = originFile;
    entry.originSum = originSum;
    entry.bytes = text.toUtf8();
    entry.owner = m_owner;
    Running now;
    now.text = QString(text.constData(), text.size());
    {
        if (!QDir().mkpath(m_folder)) {
            reason = tr("The folder cannot be made");
            return false;
        }
        QLockFile lock(QDir(m_folder).filePath(QStringLiteral(".lock")));
        if (!lock.tryLock(s_lockTimeoutMs) && lock.error() == QLockFile::LockFailedError) {
            reason = tr("The folder cannot be written");
            return false;
        }
        // Before the file: without it another host would take it for what a crash left.
        if (!m_alive) {
            m_alive = std::make_unique<QLockFile>(aliveFile(m_owner));
            m_alive->setStaleLockTime(0);
        }
        if (!m_alive->isLocked())
            m_alive->tryLock(0);
        if (!write(entry, reason, now.fileName))
            return false;
        removeFiles(before.fileName);
        m_running.insert(place, now);
        removeOldest();
    }
    emit changed();
    return true;
}

void zoHostEarlierConfigurations::forgetRunning(int place)
{
    if (!m_running.contains(place))
        return;
    removeFiles(m_running.take(place).fileName);
    emit changed();
}

QVector<zoHostEarlierConfigurations::Entry> zoHostEarlierConfigurations::unfinished() const
{
    QVector<Entry> found = entries();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [this](const Entry& e) { return !e.isUnfinished || isAlive(e.owner); }),
                found.end());
    return found;
}

// Who died left its lock; who works holds it.
bool zoHostEarlierConfigurations::isAlive(const QString& owner) const
{
    if (owner.isEmpty() || owner == m_owner)
        return !owner.isEmpty();
    QLockFile lock(aliveFile(owner));
    lock.setStaleLockTime(0);
    return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
}

QString zoHostEarlierConfigurations::aliveFile(const QString& owner) const
{
    return QDir(m_folder).filePath(QStringLiteral(".%1.lock").arg(owner));
}

void zoHostEarlierConfigurations::removeFiles(const QString& fileName)
{
    if (fileName.isEmpty())
        return;
    QFile::remove(fileName);
    QFile::remove(originNameOf(fileName));
}

void zoHostEarlierConfigurations::finish(const Entry& entry)
{
    if (!entry.fileName.isEmpty())
        QFile::rename(entry.fileName, finishedNameOf(entry.fileName));
    for (Entry& waiting : m_waiting) {
        if (waiting.replaced == entry.replaced && waiting.text == entry.text)
            waiting.isUnfinished = false;
    }
    emit changed();
}

void zoHostEarlierConfigurations::setAside(const Entry& entry)
{
    const QString name = setAsideName(entry);
    if (name.isEmpty() || !QFile::rename(entry.fileName, name))
        return;
    QFile::remove(originNameOf(entry.fileName));
    emit changed();
}

QString zoHostEarlierConfigurations::setAsideName(const Entry& entry)
{
    return entry.fileName.isEmpty() ? QString() : finishedNameOf(entry.fileName) + QStringLiteral(".damaged");
}

QVector<zoHostEarlierConfigurations::Entry> zoHostEarlierConfigurations::entries() const
{
    QVector<Entry> all = written() + m_waiting;
    std::reverse(all.begin(), all.end());
    return all.mid(0, Limit);
}

QString zoHostEarlierConfigurations::textOf(const Entry& entry) const
{
    if (entry.fileName.isEmpty())
        return entry.text;
    QByteArray bytes;
    QString reason;
    if (zoFileReader::read(entry.fileName, bytes, &reason) != zoFileReader::Result::Read) {
        zoLog::error(tr("Unable to read earlier configuration %1: %2").arg(entry.fileName, reason));
        return {};
    }
    return zoFileText(bytes).text();
}

QVector<zoHostEarlierConfigurations::Entry> zoHostEarlierConfigurations::written() const
{
    const QDir folder(m_folder);
    QStringList names = folder.entryList(QDir::Files);
    names.erase(
        std::remove_if(names.begin(), names.end(), [](const QString& name) { return numberOf(name) == 0; }),
        names.end());
    std::sort(names.begin(), names.end(),
              [](const QString& left, const QString& right) { return numberOf(left) < numberOf(right); });

    QVector<Entry> found;
    for (const QString& name : qAsConst(names)) {
        Entry entry;
        entry.fileName = folder.filePath(name);
        entry.replaced =
            QDateTime::fromString(namePattern().match(name).captured(2), QLatin1String(s_stampFormat));
        entry.replaced.setTimeSpec(Qt::UTC);
        entry.isUnfinished = !namePattern().match(name).captured(3).isEmpty();
        entry.owner = namePattern().match(name).captured(4);
        readOrigin(entry);
        found.append(entry);
    }
    return found;
}

// The name of the file and, after a NUL, which no name has, the sum.
void zoHostEarlierConfigurations::readOrigin(Entry& entry)
{
    QByteArray origin;
    zoFileReader::read(originNameOf(entry.fileName), origin);
    const int end = origin.indexOf('\0');
    entry.originFile = QString::fromUtf8(end < 0 ? origin : origin.left(end));
    if (end >= 0)
        entry.originSum = origin.mid(end + 1);
}

void zoHostEarlierConfigurations::writeWaiting()
{
    QString reason;
    if (!QDir().mkpath(m_folder)) {
        reason = tr("The folder cannot be made");
    } else {
        // Hosts that run side by side number their files in one row.
        QLockFile lock(QDir(m_folder).filePath(QStringLiteral(".lock")));
        // A disk without room for the lock has none for the file: writing that tells why.
        if (!lock.tryLock(s_lockTimeoutMs) && lock.error() == QLockFile::LockFailedError)
            reason = tr("The folder cannot be written");
        QString fileName;
        while (reason.isEmpty() && !m_waiting.isEmpty() && write(m_waiting.constFirst(), reason, fileName))
            m_waiting.removeFirst();
        if (reason.isEmpty()) {
            removeOldest();
            removeRemains();
        }
    }
    if (!reason.isEmpty())
        zoLog::error(tr("Unable to keep the replaced configuration in %1: %2. It stays under File > Earlier "
                        "configurations until the host ends.")
                         .arg(QDir::toNativeSeparators(m_folder), reason));
}

bool zoHostEarlierConfigurations::write(const Entry& entry, QString& reason, QString& fileName) const
{
    const QVector<Entry> before = written();
    qint64 number = before.isEmpty() ? 0 : numberOf(QFileInfo(before.constLast().fileName).fileName());
    QString mark = QLatin1String(entry.isUnfinished ? s_unfinishedMark : "");
    if (!entry.owner.isEmpty())
        mark += QLatin1Char('-') + entry.owner;
    // A file may be there unseen: a folder can be writable and yet not be readable.
    do {
        const QString name = QStringLiteral("%1_%2%3.zhpc")
                                 .arg(++number, 6, 10, QLatin1Char('0'))
                                 .arg(entry.replaced.toString(QLatin1String(s_stampFormat)), mark);
        fileName = QDir(m_folder).filePath(name);
    } while (QFile::exists(fileName) || QFile::exists(finishedNameOf(fileName)));
    // The configuration last: it is never there without its origin.
    const QString originName = originNameOf(fileName);
    QByteArray origin = entry.originFile.toUtf8();
    if (!entry.originSum.isEmpty())
        origin += '\0' + entry.originSum;
    if (writeFile(originName, origin, reason) && writeFile(fileName, entry.bytes, reason))
        return true;
    QFile::remove(originName);
    return false;
}

void zoHostEarlierConfigurations::removeOldest() const
{
    const QVector<Entry> all = written();
    int tooMany = all.size() - Limit;
    // What nobody has answered for goes last.
    for (const bool isUnfinished : {false, true}) {
        for (const Entry& entry : all) {
            if (tooMany <= 0)
                return;
            // What somebody works on is nobody's past.
            if (entry.isUnfinished != isUnfinished || isAlive(entry.owner))
                continue;
            removeFiles(entry.fileName);
            --tooMany;
        }
    }
}

// Under the lock nobody else is between two writes: what is half there stays so.
void zoHostEarlierConfigurations::removeRemains() const
{
    QSet<QString> origins;
    const QVector<Entry> all = written();
    for (const Entry& entry : all)
        origins.insert(QFileInfo(originNameOf(entry.fileName)).fileName());
    const QDir folder(m_folder);
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString& name : names) {
        const QString configuration = QFileInfo(name).completeBaseName() + QStringLiteral(".zhpc");
        const bool isLonely = name.endsWith(QLatin1String(".origin")) && numberOf(configuration) != 0 &&
                              !origins.contains(name);
        if (isLonely || remainsPattern().match(name).hasMatch())
            QFile::remove(folder.filePath(name));
    }
}
