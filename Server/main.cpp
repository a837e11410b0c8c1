#include "zoChannelLibrary.h"
#include "zoChannelLink.h"
#include "zoController.h"
#include "zoHead.h"
#include "zoMpiRelay.h"
#include "zoNodeServer.h"
#include "zoPipeLink.h"
#include "zoServerProbe.h"
#include "zoSessionFolder.h"
#include "zoUserFolder.h"

#include <zoServerChannel.h>

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{
constexpr int s_usageError = 2;

constexpr char s_usage[] =
    "Usage: ZOKEClusterServer ROLE\n"
    "\n"
    "What runs on the machines of a cluster session. Hosts start it; it ends with whoever started it.\n"
    "  controller  stands beside the host, one for each session\n"
    "  head        stands where a network is, and starts the servers of its nodes\n"
    "  server      opens the windows of a node; with --mpi as a part of a job of MPI\n"
    "  relay       stands between a head and such a job\n"
    "  sweep       removes the folder of such a job when its head is killed\n"
    "  --probe     prints what this machine has: version, screens, GL, memory\n"
    "  --version   prints the version\n"
    "  --help      prints this help\n";

// Several for each node.
void allowManyFiles()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

// Where the pipes of a program belong something else would be opened, and taken for them.
bool hasPipes()
{
    if (fcntl(STDERR_FILENO, F_GETFD) == -1)
        open("/dev/null", O_RDWR);
    for (const int file : {STDIN_FILENO, STDOUT_FILENO}) {
        if (fcntl(file, F_GETFD) != -1)
            continue;
        std::fprintf(stderr, "standard %s is closed\n", file == STDIN_FILENO ? "input" : "output");
        return false;
    }
    return true;
}

int runController(int argc, char** argv)
{
    allowManyFiles();
    const QCoreApplication application(argc, argv);
    zoController controller;
    controller.open();
    return QCoreApplication::exec();
}

int runHead(int argc, char** argv)
{
    allowManyFiles();
    const QCoreApplication application(argc, argv);
    zoHead head;
    head.open();
    return QCoreApplication::exec();
}

std::unique_ptr<zoServerChannel> openChannel()
{
    QString reason;
    std::unique_ptr<zoServerChannel> channel = zoChannelLibrary::create(reason);
    if (!channel)
        std::fprintf(stderr, "%s\n", qPrintable(reason));
    return channel;
}

// A part of a job goes with the program that started it, also while it is stopped.
void endWithStarter()
{
    const pid_t starter = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != starter)
        _exit(1);
}

int runRelay(int argc, char** argv)
{
    endWithStarter();
    const QCoreApplication application(argc, argv);
    std::unique_ptr<zoServerChannel> channel = openChannel();
    if (!channel)
        return 1;
    zoMpiRelay relay(std::move(channel));
    return relay.open() ? QCoreApplication::exec() : 1;
}

std::unique_ptr<zoServerLink> linkOf(bool isInJob)
{
    if (!isInJob)
        return std::make_unique<zoPipeLink>(zoPipeLink::Watch::Beats);
    std::unique_ptr<zoServerChannel> channel = openChannel();
    return channel ? std::make_unique<zoChannelLink>(std::move(channel)) : nullptr;
}

int runServer(int argc, char** argv)
{
    const bool isInJob = argc == 3 && std::strcmp(argv[2], "--mpi") == 0;
    if (argc > 2 && !isInJob) {
        std::fputs(s_usage, stderr);
        return s_usageError;
    }
    if (isInJob)
        endWithStarter();
    zoUserFolder::provide();
    zoServerProbe::choosePlatform();
    zoNodeShow::prepareApplication();
    const QGuiApplication application(argc, argv);
    // Windows come and go with what the session wants.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    std::unique_ptr<zoServerLink> link = linkOf(isInJob);
    if (!link)
        return 1;
    zoNodeServer server(std::move(link));
    server.open();
    return QCoreApplication::exec();
}

// The exit status of what only prints.
int printed(int exitCode)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return exitCode;
    std::fprintf(stderr, "standard output: %s\n", std::strerror(errno));
    return 1;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("ZOKEClusterServer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));
    const char* role = argc >= 2 ? argv[1] : "";
    if (!hasPipes())
        return 1;
    if (std::strcmp(role, "server") == 0)
        return runServer(argc, argv);
    if (argc == 3 && std::strcmp(role, "sweep") == 0)
        return zoSessionFolder::sweep(QFile::decodeName(argv[2]));
    if (argc != 2)
        role = "";
    if (std::strcmp(role, "relay") == 0)
        return runRelay(argc, argv);
    if (std::strcmp(role, "controller") == 0)
        return runController(argc, argv);
    if (std::strcmp(role, "head") == 0)
        return runHead(argc, argv);
    if (std::strcmp(role, "--probe") == 0) {
        zoUserFolder::provide();
        return printed(zoServerProbe::run(argc, argv));
    }
    if (std::strcmp(role, "--version") == 0) {
        std::printf("ZOKEClusterServer %s\n", ZO_VERSION);
        return printed(0);
    }
    const bool wantsHelp = std::strcmp(role, "--help") == 0 || std::strcmp(role, "-h") == 0;
    std::fputs(s_usage, wantsHelp ? stdout : stderr);
    return printed(wantsHelp ? 0 : s_usageError);
}
