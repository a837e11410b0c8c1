#include "zoServerChild.h"

#include <zoQt.h>

#include <QPointer>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{
constexpr int s_longestLine = 4096;
constexpr int s_killMs = 1000;

// Asks the system to end the program when this one ends, even by a signal that cannot be caught.
std::function<void()> bound()
{
    return [starter = getpid()] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // The starter may have ended between the fork and the line above.
        if (getppid() != starter)
            _exit(1);
    };
}

// Empty where nothing is wrong: the toolkit speaks of folders without being asked.
QString saidIn(const QByteArray& line)
{
    const QString text = QString::fromLocal8Bit(line).trimmed();
    return text.startsWith(QLatin1String("QStandardPaths:")) ? QString() : text;
}
} // namespace

zoServerChild::zoServerChild(zoServerMessageReader::Start start, QObject* parent)
    : QObject(parent), m_process(new zoQt::ChildProcess(bound(), this)), m_reader(start)
{
    // Later, out of the process object: whoever hears a message may end all of this.
    connect(m_process, &QProcess::readyReadStandardOutput, this,
            [this] { QMetaObject::invokeMethod(this, &zoServerChild::readMessages, Qt::QueuedConnection); });
    connect(m_process, &QProcess::readyReadStandardError, this, &zoServerChild::readErrors);
    connect(m_process, &QProcess::bytesWritten, this,
            [this] { QMetaObject::invokeMethod(this, &zoServerChild::sent, Qt::QueuedConnection); });
    connect(m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this] { QMetaObject::invokeMethod(this, &zoServerChild::finish, Qt::QueuedConnection); });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_lastLine = m_process->errorString();
        // Later: whoever starts it must not hear of the end before start() returns.
        QMetaObject::invokeMethod(this, &zoServerChild::finish, Qt::QueuedConnection);
    });
}

zoServerChild::~zoServerChild()
{
    m_isOver = true;
    m_process->disconnect(this);
    if (isRunning()) {
        m_process->kill();
        m_process->waitForFinished(s_killMs);
    }
}

void zoServerChild::start(const QStringList& command)
{
    m_process->start(command.value(0), command.mid(1));
}

void zoServerChild::setEnvironment(const QMap<QString, QString>& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = variables.cbegin(); it != variables.cend(); ++it)
        environment.insert(it.key(), it.value());
    m_process->setProcessEnvironment(environment);
}

void zoServerChild::send(const zoServerMessage& message)
{
    if (isRunning())
        m_process->write(message.encoded());
}

void zoServerChild::flush()
{
    m_process->waitForBytesWritten(0);
}

void zoServerChild::closeInput()
{
    m_process->closeWriteChannel();
}

void zoServerChild::terminate()
{
    m_process->terminate();
}

void zoServerChild::kill()
{
    m_process->kill();
}

bool zoServerChild::waitForEnd(int milliseconds)
{
    m_isOver = true;
    return !isRunning() || m_process->waitForFinished(milliseconds);
}

bool zoServerChild::takeSign()
{
    const bool hasSpoken = m_hasSpoken;
    m_hasSpoken = false;
    return hasSpoken;
}

QString zoServerChild::lastLine() const
{
    if (!m_reader.errorString().isEmpty())
        return m_reader.errorString();
    return m_lastLine.isEmpty() ? m_reader.lastNoise() : m_lastLine;
}

void zoServerChild::readMessages()
{
    if (m_isOver)
        return;
    const QPointer<zoServerChild> self(this);
    m_reader.feed(m_process->readAllStandardOutput());
    m_hasSpoken = true;
    zoServerMessage message;
    while (self && !m_isOver) {
        switch (m_reader.next(message)) {
        case zoServerMessageReader::Outcome::Message:
            if (message.verb != "BEAT")
                emit received(message);
            break;
        case zoServerMessageReader::Outcome::Broken:
            m_process->kill();
            return;
        case zoServerMessageReader::Outcome::Incomplete:
            return;
        }
    }
}

void zoServerChild::readErrors()
{
    m_errorLine += m_process->readAllStandardError();
    int end = 0;
    while ((end = m_errorLine.indexOf('\n')) >= 0) {
        const QString line = saidIn(m_errorLine.left(end));
        if (!line.isEmpty()) {
            m_lastLine = line;
            emit errorLine(line);
        }
        m_errorLine.remove(0, end + 1);
    }
    if (m_errorLine.size() > s_longestLine)
        m_errorLine.clear();
}

void zoServerChild::finish()
{
    if (m_isOver)
        return;
    const QPointer<zoServerChild> self(this);
    readErrors();
    readMessages();
    if (!self || m_isOver)
        return;
    const QString rest = saidIn(m_errorLine);
    if (!rest.isEmpty())
        m_lastLine = rest;
    if (lastLine().isEmpty())
        m_lastLine = (m_process->exitStatus() == QProcess::CrashExit ? QStringLiteral("signal %1")
                                                                     : QStringLiteral("exit status %1"))
                         .arg(m_process->exitCode());
    m_isOver = true;
    emit ended();
}
