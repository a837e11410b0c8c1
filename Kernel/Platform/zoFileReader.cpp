#include "zoFileReader.h"

#include "zoFileName.h"

#include <zoClusterLimits.h>

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>

namespace
{
using Result = zoFileReader::Result;
using Status = struct stat;

constexpr int s_blockSize = 1 << 16;
constexpr long s_pipes = 0x50495045; // the file system of pipes that have no name

QString sizeReason()
{
    return zoFileReader::tr("it is larger than %1 MiB, the most that is read; is it the right file?")
        .arg(zoClusterLimits::MaximumFileBytes >> 20U);
}

bool isUnnamedPipe(const QByteArray& name)
{
    struct statfs system = {};
    return ::statfs(name.constData(), &system) == 0 && system.f_type == s_pipes;
}

// What may be opened without harm.
bool mayOpen(const QByteArray& name, const Status& status, zoFileReader::Pipes pipes)
{
    if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))
        return true;
    if (S_ISCHR(status.st_mode))
        return status.st_rdev == makedev(1, 3);
    return S_ISFIFO(status.st_mode) && pipes == zoFileReader::Pipes::Unnamed && isUnnamedPipe(name);
}

// False with errno. A descriptor that others made may be one that does not wait.
bool readBlock(int file, QByteArray& bytes)
{
    std::array<char, s_blockSize> block;
    for (;;) {
        const ssize_t got = ::read(file, block.data(), block.size());
        if (got > 0) {
            bytes.append(block.data(), int(got));
            return true;
        }
        if (got == 0) {
            errno = 0;
            return false;
        }
        pollfd ready{file, POLLIN, 0};
        if (errno == EAGAIN)
            ::poll(&ready, 1, -1);
        else if (errno != EINTR)
            return false;
    }
}

// To the end.
Result readAll(int file, QByteArray& bytes, QString& reason)
{
    bytes.clear();
    try {
        Status status{};
        if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
            if (status.st_size > zoClusterLimits::MaximumFileBytes) {
                reason = sizeReason();
                return Result::NotRead;
            }
            bytes.reserve(int(status.st_size));
        }
        while (readBlock(file, bytes)) {
            if (bytes.size() > zoClusterLimits::MaximumFileBytes) {
                bytes.clear();
                reason = sizeReason();
                return Result::NotRead;
            }
        }
        if (errno == 0)
            return Result::Read;
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
    }
    // No file that was opened here is closed.
    reason = errno == EBADF ? zoFileReader::tr("standard input is closed") : qt_error_string(errno);
    bytes.clear();
    return Result::NotRead;
}

Result openAndRead(const QString& fileName, QByteArray& bytes, zoFileReader::Pipes pipes, QString& reason)
{
    const QByteArray name = QFile::encodeName(fileName);
    reason = zoFileName::flawOf(fileName);
    if (!reason.isEmpty())
        return Result::NotOpened;
    Status status{};
    if (::stat(name.constData(), &status) != 0) {
        reason = qt_error_string(errno);
        return Result::NotOpened;
    }
    if (!mayOpen(name, status, pipes)) {
        reason = zoFileReader::tr(
            "it is no regular file but a device, a pipe or the like; copy what it gives into a file");
        return Result::NotRead;
    }
    const bool isPipe = S_ISFIFO(status.st_mode);
    // What took the place of the file meanwhile shall not be waited for either.
    const int file = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | (isPipe ? 0 : O_NONBLOCK));
    if (file < 0 || S_ISDIR(status.st_mode)) {
        reason = qt_error_string(file < 0 ? errno : EISDIR);
        if (file >= 0)
            ::close(file);
        return Result::NotOpened;
    }
    const Result result = readAll(file, bytes, reason);
    ::close(file);
    return result;
}
} // namespace

zoFileReader::Result zoFileReader::read(const QString& fileName, QByteArray& bytes, QString* reason,
                                        Pipes pipes)
{
    bytes.clear();
    QString why;
    const Result result = openAndRead(fileName, bytes, pipes, why);
    if (reason != nullptr)
        *reason = why;
    return result;
}

zoFileReader::Result zoFileReader::readStandardInput(QByteArray& bytes, QString* reason)
{
    QString why;
    const Result result = readAll(STDIN_FILENO, bytes, why);
    if (reason != nullptr)
        *reason = why;
    return result;
}
