#include "zoParaViewProbe.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

namespace
{
constexpr int s_notFound = 127; // of a shell, for a program
constexpr int s_noProgram = -1;
constexpr int s_noAnswer = -2;
constexpr qint64 s_mebibyte = 1024 * 1024;

QString lastLineOf(const QByteArray& text)
{
    const QList<QByteArray> lines = text.trimmed().split('\n');
    for (int i = lines.size() - 1; i >= 0; --i) {
        const QString line = QString::fromLocal8Bit(lines.at(i)).trimmed();
        if (!line.isEmpty() && !line.startsWith(QLatin1String("QStandardPaths:")))
            return line;
    }
    return {};
}
} // namespace

zoParaViewProbe::zoParaViewProbe(const zoLauncher& launcher, const Programs& programs, QObject* parent)
    : QObject(parent), m_launcher(launcher), m_programs(programs)
{
}

zoParaViewProbe::~zoParaViewProbe()
{
    const QList<QProcess*> processes = findChildren<QProcess*>();
    for (QProcess* process : processes) {
        process->disconnect(this);
        process->kill();
    }
    for (QProcess* process : processes)
        process->waitForFinished();
}

void zoParaViewProbe::start(const std::vector<Machine>& machines, const QString& file)
{
    m_file = file;
    m_pending = int(machines.size());
    for (const Machine& machine : machines)
        lookAtVersion(machine);
}

void zoParaViewProbe::run(const QString& host, const QStringList& program, const QByteArray& input,
                          const Then& then)
{
    QString reason;
    const QStringList command =
        m_launcher.command(host.isEmpty() ? QStringList() : QStringList(host), program, reason);
    auto* process = new QProcess(this);
    // Later, out of the process object: what is found may end all of this.
    const auto tell = [this, process, then](const Result& result) {
        process->disconnect(this);
        if (process->state() == QProcess::NotRunning) {
            process->deleteLater();
        } else {
            connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process,
                    &QObject::deleteLater);
            process->kill();
        }
        QMetaObject::invokeMethod(
            this, [then, result] { then(result); }, Qt::QueuedConnection);
    };
    if (command.isEmpty()) {
        tell({s_noProgram, {}, reason});
        return;
    }
    connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [process, tell](int code, QProcess::ExitStatus status) {
                const QByteArray errors = process->readAllStandardError();
                tell({status == QProcess::NormalExit ? code : s_noAnswer, process->readAllStandardOutput(),
                      lastLineOf(errors)});
            });
    connect(process, &QProcess::errorOccurred, this, [process, tell](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            tell({s_notFound, {}, process->program() + QStringLiteral(": ") + process->errorString()});
    });
    QTimer::singleShot(m_programs.limitMs, process, [tell] {
        tell({s_noAnswer, {}, tr("it does not answer")});
    });
    process->start(command.constFirst(), command.mid(1));
    if (process->state() == QProcess::NotRunning)
        return;
    process->write(input);
    process->closeWriteChannel();
}

void zoParaViewProbe::lookAtVersion(const Machine& machine)
{
    run(machine.host, {m_programs.server, QStringLiteral("--version")}, {}, [this, machine](const Result& r) {
        static const QRegularExpression s_version(QStringLiteral(R"(\bversion (\d+\.\d+[\w.-]*))"));
        const QRegularExpressionMatch match = s_version.match(QString::fromLocal8Bit(r.output));
        if (!match.hasMatch()) {
            fail(machine.host, r.lastError.isEmpty()
                                   ? tr("%1 does not tell its version").arg(m_programs.server)
                                   : r.lastError);
            return;
        }
        m_findings[machine.host].version = match.captured(1);
        lookAtDisplay(machine, 0, true);
    });
}

// By the program of the node servers, or by a client of X where that is not installed.
void zoParaViewProbe::lookAtDisplay(const Machine& machine, int index, bool hasServer)
{
    if (index >= machine.displays.size()) {
        lookAtFolder(machine.host);
        return;
    }
    const QString display = machine.displays.at(index);
    QStringList program{QStringLiteral("env"), QStringLiteral("DISPLAY=") + display};
    const QString server = machine.host.isEmpty() ? m_programs.nodeServerHere : m_programs.nodeServer;
    if (hasServer && !server.isEmpty())
        program << QStringLiteral("QT_QPA_PLATFORM=xcb") << server << QStringLiteral("--probe");
    else
        program << QStringLiteral("xwininfo") << QStringLiteral("-root");
    const bool isByServer = hasServer && !server.isEmpty();
    run(machine.host, program, {}, [this, machine, index, display, isByServer](const Result& r) {
        if (r.code == 0) {
            if (isByServer)
                takeServerOutput(machine.host, r.output);
            lookAtDisplay(machine, index + 1, isByServer);
        } else if (r.code == s_notFound && isByServer) {
            lookAtDisplay(machine, index, false);
        } else if (r.code == s_notFound) {
            m_findings[machine.host].notes
                << tr("whether display %1 can be opened is not known: neither %2 nor xwininfo is there")
                       .arg(display, m_programs.nodeServer);
            lookAtDisplay(machine, index + 1, false);
        } else {
            fail(machine.host, r.lastError.isEmpty()
                                   ? tr("its display %1 cannot be opened").arg(display)
                                   : tr("its display %1 cannot be opened: %2").arg(display, r.lastError));
        }
    });
}

void zoParaViewProbe::takeServerOutput(const QString& host, const QByteArray& output)
{
    const QString text = QString::fromUtf8(output);
    static const QRegularExpression s_memory(QStringLiteral("^memory: (\\d+) MiB$"),
                                             QRegularExpression::MultilineOption);
    static const QRegularExpression s_screens(QStringLiteral("^screens: (.+)$"),
                                              QRegularExpression::MultilineOption);
    Finding& finding = m_findings[host];
    const QRegularExpressionMatch memory = s_memory.match(text);
    if (memory.hasMatch())
        finding.freeMemory = memory.captured(1).toLongLong() * s_mebibyte;
    const QRegularExpressionMatch screens = s_screens.match(text);
    if (screens.hasMatch())
        finding.screens += screens.captured(1).split(QStringLiteral(", "));
}

void zoParaViewProbe::lookAtFolder(const QString& host)
{
    if (host.isEmpty()) {
        finish(host);
        return;
    }
    run(host, {QStringLiteral("test"), QStringLiteral("-f"), m_file}, {}, [this, host](const Result& r) {
        if (r.code == 0) {
            finish(host);
            return;
        }
        emit bringsFolder(host);
        run(host,
            {QStringLiteral("mkdir"), QStringLiteral("-m"), QStringLiteral("700"), QFileInfo(m_file).path()},
            {}, [this, host](const Result& made) {
                if (made.code == 0)
                    bringFile(host);
                else
                    fail(
                        host,
                        tr("its folder %1 cannot be made: %2").arg(QFileInfo(m_file).path(), made.lastError));
            });
    });
}

void zoParaViewProbe::bringFile(const QString& host)
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(host, file.errorString());
        return;
    }
    run(host,
        {QStringLiteral("install"), QStringLiteral("-m"), QStringLiteral("600"), QStringLiteral("/dev/stdin"),
         m_file},
        file.readAll(), [this, host](const Result& r) {
            if (r.code == 0)
                finish(host);
            else
                fail(host, tr("%1 cannot be brought there: %2").arg(m_file, r.lastError));
        });
}

void zoParaViewProbe::fail(const QString& host, const QString& reason)
{
    m_findings[host].failure = reason;
    finish(host);
}

void zoParaViewProbe::finish(const QString& host)
{
    --m_pending;
    emit answered(host);
}
