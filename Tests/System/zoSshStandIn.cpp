// Stands for ssh in tests: zoSshStandIn HOST PROGRAM...; all hosts are this machine. The program runs at the other end of
// two pipes, as it would behind a connection: bytes stop when this one is stopped, and end when it ends.

#include <csignal>
#include <cstdio>
#include <initializer_list>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
// False at the end of what comes.
bool pass(int from, int to)
{
    char bytes[65536];
    const ssize_t count = read(from, bytes, sizeof bytes);
    if (count <= 0)
        return false;
    for (ssize_t written = 0; written < count;) {
        const ssize_t some = write(to, bytes + written, std::size_t(count - written));
        if (some <= 0)
            return false;
        written += some;
    }
    return true;
}
} // namespace

int main(int argc, char** argv)
{
    int there[2];
    int back[2];
    if (argc < 3 || pipe(there) == -1 || pipe(back) == -1)
        return 255;
    std::signal(SIGPIPE, SIG_IGN);
    const pid_t program = fork();
    if (program == 0) {
        // A session of its own, as on another machine.
        setsid();
        dup2(there[0], STDIN_FILENO);
        dup2(back[1], STDOUT_FILENO);
        for (const int file : {there[0], there[1], back[0], back[1]})
            close(file);
        execvp(argv[2], argv + 2);
        std::perror(argv[2]);
        _exit(127);
    }
    close(there[0]);
    close(back[1]);
    pollfd files[2] = {{STDIN_FILENO, POLLIN, 0}, {back[0], POLLIN, 0}};
    while (files[1].fd != -1 && poll(files, 2, -1) > 0) {
        if (files[0].revents != 0 && !pass(STDIN_FILENO, there[1])) {
            close(there[1]);
            files[0].fd = -1;
        }
        if (files[1].revents != 0 && !pass(back[0], STDOUT_FILENO))
            files[1].fd = -1;
    }
    int status = 0;
    waitpid(program, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 255;
}
