#include "zoFolderSweeper.h"

#include <QProcess>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{
// Programs of a session that lost the others end within two seconds, and may write until then. A machine that is cut off may
// come back.
constexpr char s_script[] = "trap '' INT TERM HUP\n"
                            "read -r word || sleep 2\n"
                            "tries=0\n"
                            "until \"$@\" </dev/null; do\n"
                            "    tries=$((tries + 1))\n"
                            "    [ $tries -lt 60 ] || exit 1\n"
                            "    sleep 2\n"
                            "done\n";
} // namespace

zoFolderSweeper::zoFolderSweeper(const QStringList& command)
{
    int ends[2] = {-1, -1};
    if (command.isEmpty() || ::pipe2(ends, O_CLOEXEC) != 0)
        return;
    QProcess sweeper;
    sweeper.setProgram(QStringLiteral("/bin/sh"));
    sweeper.setArguments(
        QStringList{QStringLiteral("-c"), QLatin1String(s_script), QStringLiteral("sweeper")} + command);
    // Opened here, and in a session of its own: what ends this program at a terminal does not end that one.
    sweeper.setStandardInputFile(QStringLiteral("/proc/self/fd/%1").arg(ends[0]));
    sweeper.setStandardOutputFile(QProcess::nullDevice());
    sweeper.setStandardErrorFile(QProcess::nullDevice());
    // It must not hold the folder that this program stands in.
    sweeper.setWorkingDirectory(QStringLiteral("/"));
    const bool isThere = sweeper.startDetached();
    ::close(ends[0]);
    if (isThere)
        m_pipe = ends[1];
    else
        ::close(ends[1]);
}

zoFolderSweeper::~zoFolderSweeper()
{
    sweep();
}

void zoFolderSweeper::sweep()
{
    if (m_pipe < 0)
        return;
    // Should it be gone already, the signal of a broken pipe is not for this program.
    sigset_t pipe;
    sigset_t before;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, &before);
    if (::write(m_pipe, "now\n", 4) < 0) {
        const timespec none{};
        sigtimedwait(&pipe, nullptr, &none);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ::close(m_pipe);
    m_pipe = -1;
}
