#include "zoHostEarlierConfigurations.h"

#include <zoFileWriter.h>
#include <zoLog.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace
{
constexpr int LockTimeoutMs = 2000;
const char StampFormat[] = "yyyyMMdd'T'HHmmss'Z'";

const QRegularExpression& namePattern()
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{6,15})_(\\d{8}T\\d{6}Z)\\.zhpc$"));
    return pattern;
}

// What orders the files: clocks are set back at times. Zero for a file of another kind.
qint64 numberOf(const QString& name)
{
    return namePattern().match(name).captured(1).toLongLong();
}

QString originNameOf(const QString& fileName)
{
    return fileName.left(fileName.lastIndexOf(QLatin1Char('.'))) + QStringLiteral(".origin");
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
    if (text.isEmpty() || text == m_newDocument)
        return;
    const QVector<Entry> before = entries();
    if (!before.isEmpty() && textOf(before.constFirst()) == text)
        return;

    Entry entry;
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
            QDateTime::fromString(namePattern().match(name).captured(2), QLatin1String(StampFormat));
        entry.replaced.setTimeSpec(Qt::UTC);
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
        if (!lock.tryLock(LockTimeoutMs))
            reason = tr("The folder cannot be written");
        while (reason.isEmpty() && !m_waiting.isEmpty() && write(m_waiting.constFirst(), reason))
            m_waiting.removeFirst();
        if (reason.isEmpty())
            removeOldest();
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
        const QString name = QStringLiteral("%1_%2.zhpc")
                                 .arg(++number, 6, 10, QLatin1Char('0'))
                                 .arg(entry.replaced.toString(QLatin1String(StampFormat)));
        fileName = QDir(m_folder).filePath(name);
    } while (QFile::exists(fileName));
    // The configuration last: it is never there without its origin.
    return writeFile(originNameOf(fileName), entry.originFile, reason) &&
           writeFile(fileName, entry.text, reason);
}

void zoHostEarlierConfigurations::removeOldest() const
{
    const QVector<Entry> all = written();
    for (int i = 0; i < all.size() - Limit; ++i) {
        QFile::remove(all.at(i).fileName);
        QFile::remove(originNameOf(all.at(i).fileName));
    }
}
