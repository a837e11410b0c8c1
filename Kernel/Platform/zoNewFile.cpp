#include "zoNewFile.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace
{
using Status = struct stat;

constexpr int s_longestName = 255;
constexpr int s_sumLength = 16;
constexpr int s_ownNames = 8; // as many write one file at a time, before names are drawn
constexpr int s_tries = 100;

bool isSame(const Status& a, const Status& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool isFull(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

// By which a file without a name is found.
QByteArray pathOf(int file)
{
    return "/proc/self/fd/" + QByteArray::number(file);
}
} // namespace

// Who ends the process now waits until the file has its name or is gone: nobody else would take it away.
zoNewFile::zoNewFile(const QByteArray& path, Kind kind) : m_name(nameOf(path)), m_kind(kind)
{
    sigset_t ends;
    ::sigemptyset(&ends);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        ::sigaddset(&ends, number);
    ::pthread_sigmask(SIG_BLOCK, &ends, &m_signalsBefore);

    const QByteArray folder = folderOf(path);
    m_folder.reset(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_folder.isOpen() && errno == EACCES) // a folder that is not to be listed
        m_folder.reset(::open(folder.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

zoNewFile::~zoNewFile()
{
    if (!m_temporary.isEmpty())
        ::unlinkat(m_folder.number(), m_temporary.constData(), 0);
    m_file.close();
    ::pthread_sigmask(SIG_SETMASK, &m_signalsBefore, nullptr);
}

int zoNewFile::mayOpen(const QByteArray& path)
{
    const int error = errorOf(nameOf(path));
    if (error != 0)
        return error;
    return ::faccessat(AT_FDCWD, folderOf(path).constData(), W_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

int zoNewFile::open(mode_t mode, uid_t owner)
{
    if (!m_folder.isOpen())
        return errno;
    if (const int error = errorOf(m_name))
        return error;
    m_owner = owner;
    removeRemains();
    return m_kind == Kind::Unnamed && openUnnamed(mode) == 0 ? 0 : openNamed(mode);
}

int zoNewFile::write(const QByteArray& bytes, mode_t mode)
{
    if (const int error = m_file.write(bytes))
        return error;
    // Writing takes the bits off that lend the owner's rights.
    if (mode != 0 && ::fchmod(m_file.number(), mode) != 0)
        return errno;
    if (const int error = m_file.flush())
        return error;
    return m_file.settle();
}

int zoNewFile::takeName()
{
    int error = m_temporary.isEmpty() ? link(m_name) : 0;
    const bool isThere = error == 0 && m_temporary.isEmpty();
    for (int i = 0; error == EEXIST && i < s_tries; ++i) {
        const QByteArray name = temporaryName(i);
        error = link(name);
        if (error == 0)
            m_temporary = name;
    }
    if (error != 0) {
        m_isNamelessForEver = m_kind == Kind::Unnamed && !isFull(error);
        return error;
    }
    if (!isThere &&
        ::renameat(m_folder.number(), m_temporary.constData(), m_folder.number(), m_name.constData()) != 0)
        return errno;
    m_temporary.clear();
    // Without effect on a folder that is not to be listed. A failure is none of the file: it is there.
    ::fsync(m_folder.number());
    return 0;
}

QByteArray zoNewFile::nameOf(const QByteArray& path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

QByteArray zoNewFile::folderOf(const QByteArray& path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(slash + 1);
}

int zoNewFile::errorOf(const QByteArray& name)
{
    if (name.isEmpty())
        return EISDIR;
    return name.size() > s_longestName ? ENAMETOOLONG : 0;
}

int zoNewFile::openUnnamed(mode_t mode)
{
    m_file.reset(::openat(m_folder.number(), ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
    // Without its lock it would be taken for remains once it has a name.
    if (m_file.isOpen() && ::faccessat(AT_FDCWD, pathOf(m_file.number()).constData(), F_OK, 0) == 0 &&
        ::flock(m_file.number(), LOCK_EX | LOCK_NB) == 0)
        return 0;
    const int error = errno;
    m_file.close();
    return error;
}

int zoNewFile::openNamed(mode_t mode)
{
    m_kind = Kind::Named;
    int error = EEXIST;
    for (int i = 0; error == EEXIST && i < s_tries; ++i) {
        const QByteArray name = temporaryName(i);
        m_file.reset(::openat(m_folder.number(), name.constData(),
                              O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        error = m_file.isOpen() ? 0 : errno;
        Status made{};
        // Not every file system has locks, and these have no remains that are removed. Before it had its lock,
        // the file may have been taken for remains.
        if (error == 0 && ((::flock(m_file.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) ||
                           (::fstat(m_file.number(), &made) == 0 && made.st_nlink == 0)))
            error = EEXIST;
        if (error == 0)
            m_temporary = name;
    }
    return error;
}

int zoNewFile::link(const QByteArray& name)
{
    return ::linkat(AT_FDCWD, pathOf(m_file.number()).constData(), m_folder.number(), name.constData(),
                    AT_SYMLINK_FOLLOW) == 0
               ? 0
               : errno;
}

// The first ones are found again by whoever writes the same file next.
QByteArray zoNewFile::temporaryName(int attempt) const
{
    QByteArray ending =
        '.' + QByteArray::number(QRandomGenerator::global()->generate(), 16).rightJustified(8, '0');
    if (attempt < s_ownNames) {
        const QByteArray text = "new bytes of " + QByteArray::number(attempt) + ' ' + m_name;
        ending = '.' + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(s_sumLength);
    }
    const QByteArray name = m_name + ending;
    return name.size() > s_longestName ? ".zo" + ending : name;
}

// Under the lock of its writer nobody else removes or renames it: what is looked at stays what is removed.
void zoNewFile::removeRemains()
{
    for (int i = 0; i < s_ownNames; ++i) {
        const QByteArray name = temporaryName(i);
        zoOpenFile remains;
        if (isRemains(name, remains))
            ::unlinkat(m_folder.number(), name.constData(), 0);
    }
}

// `file` is open then, and locked.
bool zoNewFile::isRemains(const QByteArray& name, zoOpenFile& file) const
{
    const auto isOurs = [this](const Status& status) {
        return S_ISREG(status.st_mode) && status.st_nlink == 1 &&
               (status.st_uid == ::geteuid() || status.st_uid == m_owner);
    };
    Status named{};
    const auto look = [&] {
        return ::fstatat(m_folder.number(), name.constData(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
               isOurs(named);
    };
    if (!look())
        return false;
    const int flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    // On network file systems only who may write has a lock against others.
    file.reset(::openat(m_folder.number(), name.constData(), O_RDWR | flags));
    if (!file.isOpen())
        file.reset(::openat(m_folder.number(), name.constData(), O_RDONLY | flags));
    Status opened{};
    return file.isOpen() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 &&
           ::fstat(file.number(), &opened) == 0 && look() && isSame(named, opened);
}
