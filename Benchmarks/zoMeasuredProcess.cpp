#include "zoMeasuredProcess.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <vector>

#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
double secondsOf(const timeval& time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}
} // namespace

zoMeasuredProcess zoMeasuredProcess::run(const QStringList& command, const QString& standardInput,
                                         const Limits& limits)
{
    std::vector<QByteArray> words;
    for (const QString& word : command)
        words.push_back(word.toLocal8Bit());
    std::vector<char*> arguments;
    for (QByteArray& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const QByteArray file = QFile::encodeName(standardInput);
    zoMeasuredProcess result;
    std::fflush(stdout); // or the child writes it, too
    QElapsedTimer timer;
    timer.start();
    const pid_t child = fork();
    if (child < 0)
        return result;
    if (child == 0) {
        const rlimit memory{limits.memory, limits.memory};
        setrlimit(RLIMIT_AS, &memory);
        const rlimit end{limits.time, limits.time};
        setrlimit(RLIMIT_CPU, &end);
        if (freopen(file.constData(), "rb", stdin) == nullptr ||
            freopen("/dev/null", "wb", stdout) == nullptr || freopen("/dev/null", "wb", stderr) == nullptr)
            _exit(127);
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    result.elapsed = double(timer.nsecsElapsed()) / 1e9;
    result.time = secondsOf(used.ru_utime) + secondsOf(used.ru_stime);
    result.memory = double(used.ru_maxrss) / 1024.0;
    if (WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    return result;
}
