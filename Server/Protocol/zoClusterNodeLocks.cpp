#include "zoClusterNodeLocks.h"

#include "zoUserFolder.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QUuid>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// What stands for a node and port in a list. A mark that is given back stands there once more, with this bit.
constexpr qint64 s_givenBack = 0x4000000000000000;
constexpr char s_turnsName[] = "zo-cluster-nodes.lock";
constexpr char s_listPrefix[] = "zo-cluster-session-";

qint64 markOf(const QString& nodeId, int servicePort)
{
    const QByteArray key = nodeId.toUtf8() + '\0' + QByteArray::number(servicePort);
    const QByteArray digest = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    return qint64(qFromBigEndian<quint64>(digest.constData()) & quint64(s_givenBack - 1));
}

// Locks of the open file, not of the process: two sessions of one process must meet as well.
bool lock(int file, int operation)
{
    int result = 0;
    do {
        result = flock(file, operation | LOCK_NB);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}
} // namespace

zoClusterNodeLocks::zoClusterNodeLocks() = default;

zoClusterNodeLocks::~zoClusterNodeLocks()
{
    closeFiles();
}

void zoClusterNodeLocks::setDirectory(const QString& directory)
{
    Q_ASSERT(m_held.isEmpty());
    closeFiles();
    m_directory = directory;
}

bool zoClusterNodeLocks::fail(const QByteArray& name)
{
    m_error = QFile::decodeName(m_path + name) + QStringLiteral(": ") + systemError();
    return false;
}

// -1, with the reason in errno, for what is no file of this user.
int zoClusterNodeLocks::openFile(const QByteArray& name, int flags)
{
    constexpr mode_t OwnerReadsAndWrites = 0600;
    const int file = open((m_path + name).constData(), flags | O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                          OwnerReadsAndWrites);
    struct stat info = {};
    if (file == -1 || (fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == geteuid()))
        return file;
    close(file);
    errno = EPERM;
    return -1;
}

bool zoClusterNodeLocks::openTurns()
{
    struct stat info = {};
    if (m_turns != -1 && fstat(m_turns, &info) == 0 && info.st_nlink > 0)
        return true;
    // Never opened, or somebody tidied up: others meet at a new file.
    if (m_turns != -1)
        close(m_turns);
    m_turns = -1;
    m_generation.reset();

    const QByteArray directory =
        m_directory.isEmpty() ? zoUserFolder::path() : QFile::encodeName(m_directory);
    m_path = directory;
    constexpr mode_t OwnerOnly = 0700;
    if (mkdir(directory.constData(), OwnerOnly) == -1 && errno != EEXIST)
        return fail(QByteArray());
    // Someone else may have made the directory to lay a link here.
    if (lstat(directory.constData(), &info) == -1 || !S_ISDIR(info.st_mode) || info.st_uid != geteuid()) {
        m_error = QCoreApplication::translate("zoClusterNodeLocks", "%1: not a directory of this user")
                      .arg(QFile::decodeName(directory));
        return false;
    }
    m_path += '/';
    m_turns = openFile(s_turnsName, O_CREAT);
    return m_turns != -1 || fail(s_turnsName);
}

// One session at a time reads and writes lists, for some microseconds. One that was stopped right then, by a
// debugger or a signal, must not stop the others for ever.
bool zoClusterNodeLocks::beginTurn()
{
    if (!openTurns())
        return false;
    constexpr int Tries = 10000;
    constexpr useconds_t Pause = 100;
    for (int attempt = 0; !lock(m_turns, LOCK_EX); ++attempt) {
        if (errno != EWOULDBLOCK || attempt == Tries)
            return fail(s_turnsName);
        usleep(Pause);
    }
    quint64 generation = 0;
    if (pread(m_turns, &generation, sizeof generation, 0) == -1) {
        fail(s_turnsName);
        endTurn();
        return false;
    }
    if (m_generation != generation) {
        readOthers();
        m_generation = generation;
    }
    return true;
}

void zoClusterNodeLocks::endTurn()
{
    lock(m_turns, LOCK_UN);
}

// Reads what is new in the lists of sessions that are alive, and takes away the others.
void zoClusterNodeLocks::readOthers()
{
    std::vector<Other> before;
    before.swap(m_others);
    const QStringList names =
        QDir(QFile::decodeName(m_path))
            .entryList({QLatin1String(s_listPrefix) + QLatin1Char('*')}, QDir::Files | QDir::System);
    for (const QString& decodedName : names) {
        const QByteArray name = QFile::encodeName(decodedName);
        if (name == m_listName)
            continue;
        const auto known = std::find_if(before.begin(), before.end(),
                                        [&name](const Other& other) { return other.name == name; });
        Other other;
        if (known != before.end()) {
            other = std::move(*known);
            known->file = -1;
        } else {
            other.name = name;
            other.file = openFile(name, 0);
        }
        if (other.file == -1)
            continue;
        if (lock(other.file, LOCK_SH)) {
            unlink((m_path + name).constData());
            close(other.file);
            continue;
        }
        readOn(other);
        m_others.push_back(std::move(other));
    }
    for (const Other& other : before) {
        if (other.file != -1)
            close(other.file);
    }
}

void zoClusterNodeLocks::readOn(Other& other)
{
    std::array<qint64, 1024> records;
    for (;;) {
        const ssize_t bytes =
            pread(other.file, records.data(), records.size() * sizeof(qint64), off_t(other.size));
        const std::size_t count = bytes > 0 ? std::size_t(bytes) / sizeof(qint64) : 0;
        if (count == 0)
            return;
        for (std::size_t i = 0; i < count; ++i) {
            if ((records[i] & s_givenBack) != 0)
                other.marks.remove(records[i] & ~s_givenBack);
            else
                other.marks.insert(records[i]);
        }
        other.size += qint64(count * sizeof(qint64));
    }
}

bool zoClusterNodeLocks::isUsedByOthers(qint64 mark)
{
    return std::any_of(m_others.begin(), m_others.end(), [mark](Other& other) {
        if (!other.marks.contains(mark))
            return false;
        if (!lock(other.file, LOCK_SH))
            return true;
        // The session ended meanwhile.
        lock(other.file, LOCK_UN);
        other.marks.clear();
        return false;
    });
}

bool zoClusterNodeLocks::openList()
{
    if (m_list != -1)
        return true;
    m_listName = s_listPrefix + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    m_listSize = 0;
    m_list = openFile(m_listName, O_CREAT | O_EXCL);
    return (m_list != -1 && lock(m_list, LOCK_EX)) || fail(m_listName);
}

// Writes a record into the own list and tells the others that there is something to read.
bool zoClusterNodeLocks::append(qint64 record)
{
    if (!openList())
        return false;
    if (pwrite(m_list, &record, sizeof record, off_t(m_listSize)) != ssize_t(sizeof record))
        return fail(m_listName); // half a record is overwritten by the next one
    const quint64 generation = *m_generation + 1;
    if (pwrite(m_turns, &generation, sizeof generation, 0) != ssize_t(sizeof generation))
        return fail(s_turnsName);
    m_listSize += qint64(sizeof record);
    m_generation = generation;
    return true;
}

// Closing gives back the marks as well.
void zoClusterNodeLocks::closeFiles()
{
    if (m_list != -1) {
        unlink((m_path + m_listName).constData());
        close(m_list);
        m_list = -1;
    }
    m_listName.clear();
    for (const Other& other : m_others)
        close(other.file);
    m_others.clear();
    if (m_turns != -1)
        close(m_turns);
    m_turns = -1;
    m_generation.reset();
}

zoClusterNodeLocks::Outcome zoClusterNodeLocks::acquire(const QString& nodeId, int servicePort, bool share)
{
    const qint64 mark = markOf(nodeId, servicePort);
    if (!beginTurn())
        return Outcome::NoLocking;
    const bool isUsed = isUsedByOthers(mark);
    Outcome outcome = isUsed ? share ? Outcome::Shared : Outcome::InUse : Outcome::Free;
    if (outcome != Outcome::InUse && !m_held.contains(mark)) {
        if (append(mark))
            m_held.insert(mark);
        else
            outcome = Outcome::NoLocking;
    }
    endTurn();
    return outcome;
}

void zoClusterNodeLocks::release(const QString& nodeId, int servicePort)
{
    const qint64 mark = markOf(nodeId, servicePort);
    if (!m_held.remove(mark) || !beginTurn())
        return;
    append(mark | s_givenBack);
    endTurn();
}

void zoClusterNodeLocks::releaseAll()
{
    m_held.clear();
    closeFiles();
}
