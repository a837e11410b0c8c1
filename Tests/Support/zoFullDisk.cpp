#include "zoFullDisk.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <csignal>

namespace
{
const char s_filler[] = ".filler";
} // namespace

zoFullDisk::zoFullDisk(const QString& folder) : m_folder(folder), m_signal(std::signal(SIGXFSZ, SIG_IGN))
{
    ::getrlimit(RLIMIT_FSIZE, &m_before);
    m_isMounted = ::unshare(CLONE_NEWNS) == 0 &&
                  ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=256k") == 0;
}

zoFullDisk::~zoFullDisk()
{
    if (m_isMounted)
        ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
    ::setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_signal);
}

void zoFullDisk::fill(int spare)
{
    if (!m_isMounted) {
        const rlimit limit{rlim_t(spare), m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return;
    }
    const QByteArray name = QFile::encodeName(QDir(m_folder).filePath(QLatin1String(s_filler)));
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT, 0600);
    const QByteArray page(4096, 'f');
    off_t size = 0;
    while (::write(file, page.constData(), size_t(page.size())) > 0)
        size += page.size();
    const off_t pages = (spare + page.size() - 1) / page.size();
    if (file < 0 || ::ftruncate(file, size - pages * page.size()) != 0)
        qFatal("cannot fill the disk");
    ::close(file);
}

QString zoFullDisk::reason() const
{
    return m_isMounted ? QStringLiteral("No space left on device") : QStringLiteral("File too large");
}

int zoFullDisk::countFiles() const
{
    QStringList names = QDir(m_folder).entryList(QDir::Files | QDir::Hidden);
    names.removeAll(QLatin1String(s_filler));
    return names.size();
}
