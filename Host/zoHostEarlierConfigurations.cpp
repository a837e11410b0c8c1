#include "zoHostEarlierConfigurations.h"

#include <zoFileWriter.h>
#include <zoLog.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
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
        QStringLiteral("^(\\d{6,15})_(\\d{8}T\\d{6}Z)(_unsaved)?\\.zhpc$"));
    return pattern;
}

// Files that a writer was killed over.
const QRegularExpression& remainsPattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\d{6,15}_\\d{8}T\\d{6}Z(_unsaved)?\\.(zhpc|origin)\\.[0-9a-f]{8}$"));
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
    return fileName.replace(QLatin1String(s_unfinishedMark) + QStringLiteral(".zhpc"),
                            QStringLiteral(".zhpc"));
}

QString originNameOf(const QString& fileName)
{
    const QString name = finishedNameOf(fileName);
    return name.left(name.lastIndexOf(QLatin1Char('.'))) + QStringLiteral(".origin");
}

bool writeFile(const QString& fileName, const QString& text, QString& reason)
{
    return zoFileWriter::write(fileName, text.toUtf8(), &reason) == zoFileWriter::Result::Written;
}
} // namespace

zoHostEarlierConfigurations::zoHostEarlierConfigurations(const QString& folder, QObject* parent)
    : QObject(parent), m_folder(folder)
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
    add(text, originFile, false);
}

void zoHostEarlierConfigurations::keepUnfinished(const QString& text, const QString& originFile)
{
    add(text, originFile, true);
}

void zoHostEarlierConfigurations::add(const QString& text, const QString& originFile, bool isUnfinished)
{
    if (text.isEmpty() || text == m_newDocument)
        return;
    const QVector<Entry> before = entries();
    // Not when the mark is missing: what is there twice is no loss.
    if (!before.isEmpty() && before.constFirst().isUnfinished >= isUnfinished &&
        textOf(before.constFirst()) == text)
        return;

    Entry entry;
    entry.isUnfinished = isUnfinished;
    entry.replaced = QDateTime::currentDateTimeUtc();
    // Texts of their own: the given ones may lie in a module that is unloaded earlier.
    entry.originFile = QString(originFile.constData(), originFile.size());
    entry.text = QString(text.constData(), text.size());
    m_waiting.append(entry);
    writeWaiting();
    while (m_waiting.size() > Limit)
        m_waiting.removeFirst();
    emit changed();
}

QVector<zoHostEarlierConfigurations::Entry> zoHostEarlierConfigurations::unfinished() const
{
    QVector<Entry> found = entries();
    found.erase(std::remove_if(found.begin(), found.end(), [](const Entry& e) { return !e.isUnfinished; }),
                found.end());
    return found;
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
    QFile file(entry.fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        zoLog::error(
            tr("Unable to read earlier configuration %1: %2").arg(entry.fileName, file.errorString()));
        return {};
    }
    return QString::fromUtf8(file.readAll());
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
        QFile origin(originNameOf(entry.fileName));
        if (origin.open(QIODevice::ReadOnly))
            entry.originFile = QString::fromUtf8(origin.readAll());
        found.append(entry);
    }
    return found;
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
        while (reason.isEmpty() && !m_waiting.isEmpty() && write(m_waiting.constFirst(), reason))
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

bool zoHostEarlierConfigurations::write(const Entry& entry, QString& reason) const
{
    const QVector<Entry> before = written();
    qint64 number = before.isEmpty() ? 0 : numberOf(QFileInfo(before.constLast().fileName).fileName());
    QString fileName;
    // A file may be there unseen: a folder can be writable and yet not be readable.
    do {
        const QString name = QStringLiteral("%1_%2%3.zhpc")
                                 .arg(++number, 6, 10, QLatin1Char('0'))
                                 .arg(entry.replaced.toString(QLatin1String(s_stampFormat)),
                                      QLatin1String(entry.isUnfinished ? s_unfinishedMark : ""));
        fileName = QDir(m_folder).filePath(name);
    } while (QFile::exists(fileName) || QFile::exists(finishedNameOf(fileName)));
    // The configuration last: it is never there without its origin.
    const QString originName = originNameOf(fileName);
    if (writeFile(originName, entry.originFile, reason) && writeFile(fileName, entry.text, reason))
        return true;
    QFile::remove(originName);
    return false;
}

void zoHostEarlierConfigurations::removeOldest() const
{
    const QVector<Entry> all = written();
    for (int i = 0; i < all.size() - Limit; ++i) {
        QFile::remove(all.at(i).fileName);
        QFile::remove(originNameOf(all.at(i).fileName));
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
