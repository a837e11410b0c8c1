#include "zoSessionFolder.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <csignal>

#include <unistd.h>

namespace
{
constexpr int s_usageError = 2;
constexpr int s_endMs = 300;
// Programs of a session that lost the others end within this time, and may write until then.
constexpr int s_tries = 15;
constexpr unsigned int s_betweenTriesUs = 100000;
constexpr char s_prefix[] = "zo-mpi-";
} // namespace

zoSessionFolder::zoSessionFolder(const QString& program)
    : m_folder(QDir::tempPath() + QLatin1Char('/') + QLatin1String(s_prefix) + QStringLiteral("XXXXXX"))
{
    m_sweeper.setStandardOutputFile(QProcess::nullDevice());
    m_sweeper.setStandardErrorFile(QProcess::nullDevice());
    if (m_folder.isValid())
        m_sweeper.start(program, {QStringLiteral("sweep"), m_folder.path()});
}

zoSessionFolder::~zoSessionFolder()
{
    m_folder.remove();
    m_sweeper.closeWriteChannel();
    if (m_sweeper.state() != QProcess::NotRunning)
        m_sweeper.waitForFinished(s_endMs);
}

int zoSessionFolder::sweep(const QString& folder)
{
    if (!QFileInfo(folder).fileName().startsWith(QLatin1String(s_prefix)))
        return s_usageError;
    // What ends the others at a terminal or with a session is no reason to leave something behind.
    setsid();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, SIG_IGN);
    char byte = 0;
    ssize_t count = 0;
    while ((count = ::read(STDIN_FILENO, &byte, 1)) > 0 || (count == -1 && errno == EINTR)) {
    }
    if (!QFileInfo::exists(folder))
        return 0;
    for (int i = 0; i < s_tries; ++i) {
        QDir(folder).removeRecursively();
        usleep(s_betweenTriesUs);
    }
    return QFileInfo::exists(folder) ? 1 : 0;
}
