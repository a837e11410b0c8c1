#include "zoClusterNodeLocks.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// One byte of a lock file stands for one node and port. A file per node would cost a descriptor each, which a
// large cluster does not have.
qint64 markOf(const QString& nodeId, int servicePort)
{
    const QByteArray key = nodeId.toUtf8() + '\0' + QByteArray::number(servicePort);
    const QByteArray digest = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    constexpr quint64 PositiveOffsets = 0x3fffffffffffffff;
    return qint64(qFromBigEndian<quint64>(digest.constData()) & PositiveOffsets);
}

// Locks of the open file, not of the process: two sessions of one process must meet as well.
bool setLock(int file, qint64 mark, short type)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = off_t(mark);
    lock.l_len = 1;
    int result = 0;
    do {
        result = fcntl(file, F_OFD_SETLK, &lock);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// The run-time directory of the login session, else a directory of this user alone.
QByteArray userDirectory()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    struct stat info = {};
    if (!runtime.isEmpty() && stat(runtime.constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
        info.st_uid == geteuid())
        return runtime;
    return "/tmp/zo-" + QByteArray::number(uint(geteuid()));
}
} // namespace

zoClusterNodeLocks::zoClusterNodeLocks()
{
    m_files.fill(-1);
}

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

// The open file for a mark, or -1.
int zoClusterNodeLocks::openFile(qint64 mark)
{
    const int index = int(mark % FileCount);
    int& file = m_files[size_t(index)];
    if (file != -1)
        return file;
    const QByteArray directory = m_directory.isEmpty() ? userDirectory() : QFile::encodeName(m_directory);
    constexpr mode_t OwnerOnly = 0700;
    if (mkdir(directory.constData(), OwnerOnly) == -1 && errno != EEXIST) {
        m_error = QFile::decodeName(directory) + QStringLiteral(": ") + systemError();
        return -1;
    }
    // Someone else may have made the directory to lay a link here.
    struct stat info = {};
    if (lstat(directory.constData(), &info) == -1 || !S_ISDIR(info.st_mode) || info.st_uid != geteuid()) {
        m_error = QCoreApplication::translate("zoClusterNodeLocks", "%1: not a directory of this user")
                      .arg(QFile::decodeName(directory));
        return -1;
    }
    const QByteArray name = directory + "/zo-cluster-nodes-" + QByteArray::number(index) + ".lock";
    constexpr mode_t OwnerReadsAndWrites = 0600;
    file = open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, OwnerReadsAndWrites);
    if (file == -1)
        m_error = QFile::decodeName(name) + QStringLiteral(": ") + systemError();
    return file;
}

// Closing gives back the marks as well.
void zoClusterNodeLocks::closeFiles()
{
    for (int& file : m_files) {
        if (file != -1)
            close(file);
        file = -1;
    }
}

zoClusterNodeLocks::Outcome zoClusterNodeLocks::acquire(const QString& nodeId, int servicePort, bool share)
{
    const qint64 mark = markOf(nodeId, servicePort);
    const int file = openFile(mark);
    if (file == -1)
        return Outcome::NoLocking;
    // Alone for a moment to learn that nobody else is there, then shared, so that others can join on purpose.
    // Several tries: another session may be in that same moment.
    constexpr int Tries = 1000;
    for (int attempt = 0; attempt < Tries; ++attempt) {
        if (setLock(file, mark, F_WRLCK)) {
            setLock(file, mark, F_RDLCK);
            m_held.insert(mark);
            return Outcome::Free;
        }
        if (errno != EAGAIN && errno != EACCES) {
            m_error = systemError();
            return Outcome::NoLocking;
        }
        if (!share)
            return Outcome::InUse;
        if (setLock(file, mark, F_RDLCK)) {
            m_held.insert(mark);
            return Outcome::Shared;
        }
        sched_yield();
    }
    return Outcome::InUse;
}

void zoClusterNodeLocks::release(const QString& nodeId, int servicePort)
{
    const qint64 mark = markOf(nodeId, servicePort);
    if (m_held.remove(mark))
        setLock(openFile(mark), mark, F_UNLCK);
}

void zoClusterNodeLocks::releaseAll()
{
    m_held.clear();
    closeFiles();
}
