#include "zoOpenFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

void zoOpenFile::reset(int number)
{
    close();
    m_number = number;
}

int zoOpenFile::write(const QByteArray& bytes)
{
    for (int done = 0; done < bytes.size();) {
        const ssize_t size = ::write(m_number, bytes.constData() + done, size_t(bytes.size() - done));
        if (size < 0 && errno != EINTR)
            return errno;
        if (size == 0)
            return EIO;
        done += int(qMax<ssize_t>(size, 0));
    }
    return 0;
}

int zoOpenFile::flush()
{
    return ::fsync(m_number) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP ? 0 : errno;
}

int zoOpenFile::settle()
{
    zoOpenFile second(::fcntl(m_number, F_DUPFD_CLOEXEC, 0));
    return second.close();
}

int zoOpenFile::close()
{
    const int number = m_number;
    m_number = -1;
    return number >= 0 && ::close(number) != 0 && errno != EINTR ? errno : 0;
}
