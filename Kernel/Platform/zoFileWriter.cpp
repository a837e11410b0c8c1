#include "zoFileWriter.h"

#include "zoFileName.h"
#include "zoNewFile.h"
#include "zoOpenFile.h"

#include <QFile>

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>

namespace
{
using Result = zoFileWriter::Result;
using Kind = zoNewFile::Kind;
using Status = struct stat;

constexpr int s_longestChain = 40;           // of links, as the system has it
constexpr off_t s_largestKept = 256L << 20U; // of an overwritten file, in memory
constexpr mode_t s_allBits = 07777;

zoFileWriter::Guard& guard()
{
    static zoFileWriter::Guard s_guard;
    return s_guard;
}

// Keeps the signal away that a file beyond the limit of the process raises and that ends a process which is in
// the middle of writing; the error says it, too.
class SizeSignalBlock final
{
public:
    SizeSignalBlock()
    {
        ::sigemptyset(&m_signals);
        ::sigaddset(&m_signals, SIGXFSZ);
        ::pthread_sigmask(SIG_BLOCK, &m_signals, &m_before);
    }
    ~SizeSignalBlock()
    {
        if (::sigismember(&m_before, SIGXFSZ) == 1)
            return;
        const timespec now{};
        while (::sigtimedwait(&m_signals, nullptr, &now) == SIGXFSZ) {
        }
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

    SizeSignalBlock(const SizeSignalBlock&) = delete;
    SizeSignalBlock& operator=(const SizeSignalBlock&) = delete;

private:
    sigset_t m_signals{};
    sigset_t m_before{};
};

bool isSame(const Status& a, const Status& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool isFull(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

// The name that a chain of links ends with, whether there is a file or not.
QByteArray followLinks(QByteArray name)
{
    char link[PATH_MAX];
    for (int i = 0; i < s_longestChain; ++i) {
        const ssize_t size = ::readlink(name.constData(), link, sizeof link);
        if (size < 0)
            break;
        const QByteArray next(link, int(size));
        name = next.startsWith('/') ? next : name.left(name.lastIndexOf('/') + 1) + next;
    }
    return name;
}

bool readAll(int file, off_t size, QByteArray& bytes)
{
    if (size > s_largestKept)
        return false;
    bytes.resize(int(size));
    for (int done = 0; done < bytes.size();) {
        const ssize_t got = ::pread(file, bytes.data() + done, size_t(bytes.size() - done), done);
        if (got <= 0)
            return false;
        done += int(got);
    }
    return true;
}

bool readAttribute(int file, const char* name, QByteArray& value)
{
    const ssize_t size = ::fgetxattr(file, name, nullptr, 0);
    if (size < 0)
        return false;
    value.resize(int(size));
    return ::fgetxattr(file, name, value.data(), size_t(size)) == size;
}

bool readAttributeNames(int file, QList<QByteArray>& names)
{
    const ssize_t size = ::flistxattr(file, nullptr, 0);
    if (size <= 0)
        return size == 0 || errno == ENOTSUP;
    QByteArray list(int(size), '\0');
    if (::flistxattr(file, list.data(), size_t(size)) != size)
        return false;
    names = list.split('\0');
    names.removeAll(QByteArray());
    // Sums over the content, which the system makes itself.
    names.removeAll("security.ima");
    names.removeAll("security.evm");
    return true;
}

// Access lists among them. False when the new file cannot have the ones of the old file and no others.
bool takeAttributes(int from, int to)
{
    QList<QByteArray> names;
    QList<QByteArray> inherited; // from the folder
    if (!readAttributeNames(from, names) || !readAttributeNames(to, inherited))
        return false;
    for (const QByteArray& name : qAsConst(inherited)) {
        if (!names.contains(name) && ::fremovexattr(to, name.constData()) != 0)
            return false;
    }
    for (const QByteArray& name : qAsConst(names)) {
        QByteArray value;
        QByteArray already;
        if (!readAttribute(from, name.constData(), value))
            return false;
        if (readAttribute(to, name.constData(), already) && already == value)
            continue;
        if (::fsetxattr(to, name.constData(), value.constData(), size_t(value.size()), 0) != 0)
            return false;
    }
    return true;
}

// False when the new file cannot be the old one's equal to everybody.
bool takeRights(int from, const Status& old, int to)
{
    Status made{};
    if (::fstat(to, &made) != 0)
        return false;
    // A member of the group cannot give a file to its owner; the member's own would lock the others out.
    if ((made.st_uid != old.st_uid || made.st_gid != old.st_gid) && ::fchown(to, old.st_uid, old.st_gid) != 0)
        return false;
    return ::fchmod(to, old.st_mode & s_allBits) == 0 && takeAttributes(from, to) &&
           ::fstat(to, &made) == 0 && (made.st_mode & s_allBits) == (old.st_mode & s_allBits);
}

// Over the old bytes, not into an emptied file: there is no moment at which a kill leaves nothing.
Result overwrite(zoOpenFile& file, const Status& old, const QByteArray& bytes, int& error)
{
    QByteArray before;
    const bool isKept = readAll(file.number(), old.st_size, before);
    const off_t more = bytes.size() - old.st_size;
    if (more > 0 && ::fallocate(file.number(), FALLOC_FL_KEEP_SIZE, old.st_size, more) != 0 &&
        isFull(errno)) {
        error = errno;
        return Result::NotWritten;
    }
    error = file.write(bytes);
    if (error == 0 && ::ftruncate(file.number(), bytes.size()) != 0)
        error = errno;
    if (error == 0)
        error = file.flush();
    if (error == 0)
        return Result::Written;
    const bool isRestored = isKept && ::lseek(file.number(), 0, SEEK_SET) == 0 && file.write(before) == 0 &&
                            ::ftruncate(file.number(), old.st_size) == 0 && file.flush() == 0;
    return isRestored ? Result::NotWritten : Result::Damaged;
}

Result writeDevice(zoOpenFile& file, const QByteArray& bytes, int& error)
{
    error = file.write(bytes);
    if (error == 0)
        error = file.close();
    return error == 0 ? Result::Written : Result::Damaged;
}

// Where there was no file. The bytes are asked for once.
Result make(const QByteArray& path, const std::function<QByteArray()>& bytes, int& error)
{
    QByteArray content;
    bool isAsked = false;
    for (const Kind kind : {Kind::Unnamed, Kind::Named}) {
        zoNewFile made(path, kind);
        error = made.open(0666, ::geteuid());
        if (error != 0)
            return isFull(error) || isAsked ? Result::NotWritten : Result::NotOpened;
        if (!isAsked)
            content = bytes();
        isAsked = true;
        error = made.write(content);
        if (error == 0)
            error = made.takeName();
        if (!made.isNamelessForEver())
            break;
    }
    return error == 0 ? Result::Written : Result::NotWritten;
}

// For a file that others name as well, or that is named by a link, or another one by now.
bool isOnlyName(const QByteArray& path, const Status& old)
{
    Status there{};
    return old.st_nlink == 1 && ::lstat(path.constData(), &there) == 0 && isSame(there, old);
}

Result replace(const QByteArray& path, zoOpenFile& file, const Status& old,
               const std::function<QByteArray()>& bytes, int& error)
{
    if (!isOnlyName(path, old))
        return overwrite(file, old, bytes(), error);
    QByteArray content;
    bool isAsked = false;
    const auto contentAskedOnce = [&] {
        if (!isAsked)
            content = bytes();
        isAsked = true;
        return content;
    };
    for (const Kind kind : {Kind::Unnamed, Kind::Named}) {
        zoNewFile made(path, kind);
        error = made.open(0600, old.st_uid);
        if (isFull(error))
            return Result::NotWritten;
        if (error != 0 || !takeRights(file.number(), old, made.number()))
            return overwrite(file, old, contentAskedOnce(), error);
        error = made.write(contentAskedOnce(), old.st_mode & s_allBits);
        if (error != 0)
            return Result::NotWritten;
        error = made.takeName();
        if (!made.isNamelessForEver())
            break;
    }
    // A file can be mounted, and /tmp lets nobody replace what is another's.
    if (error == EBUSY || error == EXDEV || error == EPERM || error == EACCES)
        return overwrite(file, old, content, error);
    return error == 0 ? Result::Written : Result::NotWritten;
}

// Readable, too, if it may be: what is overwritten can be put back then.
int openThere(const QByteArray& name)
{
    const int file = ::open(name.constData(), O_RDWR | O_CLOEXEC | O_NOCTTY);
    return file < 0 && errno == EACCES ? ::open(name.constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY) : file;
}

Result writeFile(const QByteArray& name, const std::function<QByteArray()>& bytes, int& error)
{
    Status old{};
    if (::stat(name.constData(), &old) != 0) {
        error = errno;
        return error == ENOENT ? make(followLinks(name), bytes, error) : Result::NotOpened;
    }
    const bool isFile = S_ISREG(old.st_mode);
    zoOpenFile file(isFile ? openThere(name) : ::open(name.constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.isOpen() || ::fstat(file.number(), &old) != 0) {
        error = errno;
        return Result::NotOpened;
    }
    return isFile ? replace(followLinks(name), file, old, bytes, error) : writeDevice(file, bytes(), error);
}

// Why a file of this name is not written; empty for no reason. Two that are told apart: one that is there may
// have the character for unreadable bytes in its name.
QString nameFlaw(const QString& fileName)
{
    Status status{};
    return ::lstat(QFile::encodeName(fileName).constData(), &status) == 0 ? zoFileName::flawOf(fileName)
                                                                          : zoFileName::flawOfNew(fileName);
}
} // namespace

zoFileWriter::Result zoFileWriter::write(const QString& fileName, const QByteArray& bytes, QString* reason)
{
    return write(
        fileName, [&bytes] { return bytes; }, reason);
}

zoFileWriter::Result zoFileWriter::write(const QString& fileName, const std::function<QByteArray()>& bytes,
                                         QString* reason)
{
    const QString flaw = nameFlaw(fileName);
    if (reason != nullptr)
        *reason = flaw;
    if (!flaw.isEmpty())
        return Result::NotOpened;
    if (guard().mayWrite && !guard().mayWrite(fileName))
        return Result::NotOpened;
    int error = 0;
    const SizeSignalBlock block;
    const Result result = writeFile(QFile::encodeName(fileName), bytes, error);
    if (reason != nullptr && error != 0)
        *reason = qt_error_string(error);
    if (result == Result::Written && guard().written)
        guard().written(fileName);
    return result;
}

bool zoFileWriter::canWrite(const QString& fileName, QString* reason)
{
    const QString flaw = nameFlaw(fileName);
    if (reason != nullptr)
        *reason = flaw;
    if (!flaw.isEmpty())
        return false;
    const QByteArray name = QFile::encodeName(fileName);
    Status old{};
    int error = 0;
    if (::stat(name.constData(), &old) == 0) {
        if (S_ISDIR(old.st_mode))
            error = EISDIR;
        else if (::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0)
            error = errno;
    } else if (errno == ENOENT) {
        error = zoNewFile::mayOpen(followLinks(name));
    } else {
        error = errno;
    }
    if (reason != nullptr)
        *reason = error == 0 ? QString() : qt_error_string(error);
    return error == 0;
}

void zoFileWriter::setGuard(const Guard& newGuard)
{
    guard() = newGuard;
}

bool zoFileWriter::isGuarded()
{
    return bool(guard().mayWrite);
}
