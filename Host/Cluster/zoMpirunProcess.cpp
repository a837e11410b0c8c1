#include "zoMpirunProcess.h"

#include <zoQt.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QPointer>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{
constexpr int s_politeMs = 1000;
constexpr int s_killMs = 2000;
constexpr int s_stepMs = 5;
// Nobody waits for the end of a longer one.
constexpr int s_longestLine = 64 * 1024;

// Makes a process group, which ends with its starter by a signal that cannot be caught.
std::function<void()> grouped()
{
    return [starter = getpid()] {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // The starter may have ended between the fork and the line above.
        if (getppid() != starter)
            _exit(1);
    };
}

// What a process started on this machine, all the way down: the ranks have process groups of their own.
QList<qint64> descendantsOf(qint64 process)
{
    QList<qint64> found{process};
    for (int i = 0; i < found.size(); ++i) {
        QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(found.at(i)));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QList<QByteArray> children = file.readAll().simplified().split(' ');
        for (const QByteArray& child : children) {
            if (!child.isEmpty())
                found << child.toLongLong();
        }
    }
    found.removeFirst();
    return found;
}

// What only waits to be collected is gone.
bool isAlive(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    return !stat.mid(stat.lastIndexOf(')') + 2).startsWith('Z');
}

// Lines that are complete; `all` takes the rest as one.
QStringList takeLines(QByteArray& text, bool all)
{
    QStringList lines;
    int end = 0;
    while ((end = text.indexOf('\n')) >= 0) {
        lines << QString::fromLocal8Bit(text.left(end)).trimmed();
        text.remove(0, end + 1);
    }
    if (all && !text.isEmpty())
        lines << QString::fromLocal8Bit(text).trimmed();
    if (all || text.size() > s_longestLine)
        text.clear();
    return lines;
}
} // namespace

zoMpirunProcess::zoMpirunProcess(QObject* parent)
    : QObject(parent), m_process(new zoQt::ChildProcess(grouped(), this))
{
    m_process->setStandardInputFile(QProcess::nullDevice());
    // Later, out of the process object: whoever hears a line may end all of this.
    const auto readLater = [this] {
        QMetaObject::invokeMethod(
            this, [this] { read(false); }, Qt::QueuedConnection);
    };
    connect(m_process, &QProcess::readyReadStandardOutput, this, readLater);
    connect(m_process, &QProcess::readyReadStandardError, this, readLater);
    connect(m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                const int exitCode = status == QProcess::CrashExit ? -code : code;
                QMetaObject::invokeMethod(
                    this, [this, exitCode] { finish(exitCode); }, Qt::QueuedConnection);
            });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_errors = m_process->program().toLocal8Bit() + ": " + m_process->errorString().toLocal8Bit() + '\n';
        QMetaObject::invokeMethod(
            this, [this] { finish(127); }, Qt::QueuedConnection);
    });
}

zoMpirunProcess::~zoMpirunProcess()
{
    end();
}

void zoMpirunProcess::start(const QString& program, const QStringList& arguments,
                            const QMap<QString, QString>& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = variables.cbegin(); it != variables.cend(); ++it)
        environment.insert(it.key(), it.value());
    m_process->setProcessEnvironment(environment);
    m_process->start(program, arguments);
}

void zoMpirunProcess::end()
{
    m_isOver = true;
    m_process->disconnect(this);
    const auto group = pid_t(m_process->processId());
    if (m_process->state() == QProcess::NotRunning || group <= 0)
        return;
    const QList<qint64> ranks = descendantsOf(group);
    ::kill(-group, SIGTERM);
    if (m_process->waitForFinished(s_politeMs)) {
        // What it left behind, if it did.
        ::kill(-group, SIGKILL);
    } else {
        ::kill(-group, SIGKILL);
        m_process->waitForFinished(s_killMs);
    }
    for (const qint64 rank : ranks)
        ::kill(pid_t(rank), SIGKILL);
    const QDeadlineTimer deadline(s_killMs);
    for (const qint64 rank : ranks) {
        while (isAlive(rank) && !deadline.hasExpired())
            QThread::msleep(s_stepMs);
    }
}

void zoMpirunProcess::read(bool toTheEnd)
{
    if (m_isOver)
        return;
    const QPointer<zoMpirunProcess> self(this);
    m_output += m_process->readAllStandardOutput();
    m_errors += m_process->readAllStandardError();
    const QStringList lines = takeLines(m_errors, toTheEnd) + takeLines(m_output, toTheEnd);
    for (const QString& text : lines) {
        emit line(text);
        if (!self || m_isOver)
            return;
    }
}

void zoMpirunProcess::finish(int exitCode)
{
    if (m_isOver)
        return;
    const QPointer<zoMpirunProcess> self(this);
    read(true);
    if (!self || m_isOver)
        return;
    m_isOver = true;
    emit ended(exitCode);
}
