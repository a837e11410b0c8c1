#include "zoCommandRun.h"

#include <QProcess>

namespace
{
// Where sanitizers look at each step, or each is counted, the largest inputs take minutes.
constexpr int s_longestMs = 240000;
} // namespace

QByteArray zoCommandRun::whole() const
{
    return output + "--- errors\n" + errors + "--- exit code " + QByteArray::number(exitCode) + '\n';
}

zoCommandRun zoCommandRun::zohpc(const QStringList& arguments, const QByteArray& input)
{
    QStringList environment = QProcess::systemEnvironment();
    environment << QStringLiteral("LC_ALL=C.UTF-8");
    return program(QStringLiteral(ZO_ZOHPC), arguments, input, environment);
}

zoCommandRun zoCommandRun::zohpcIn(const QStringList& environment, const QStringList& arguments,
                                   const QByteArray& input)
{
    // What the sanitizers let pass in libraries is set by variables, too.
    QStringList all = environment;
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (qEnvironmentVariableIsSet(name))
            all << QLatin1String(name) + QLatin1Char('=') + qEnvironmentVariable(name);
    }
    return program(QStringLiteral(ZO_ZOHPC), arguments, input, all);
}

zoCommandRun zoCommandRun::program(const QString& program, const QStringList& arguments,
                                   const QByteArray& input, const QStringList& environment)
{
    QProcess process;
    process.setEnvironment(environment);
    process.start(program, arguments);
    zoCommandRun run;
    if (!process.waitForStarted())
        return run;
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(s_longestMs);
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    if (process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit)
        run.exitCode = process.exitCode();
    return run;
}
