#include "zoHostOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace
{
constexpr int UsageError = 2;

QString text(const char* source)
{
    return QCoreApplication::translate("zoHostOptions", source);
}
} // namespace

zoHostOptions::Result zoHostOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(text("Shows and runs render cluster configurations."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  text("Prints this help and exits."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     text("Prints the version and exits."));
    const QCommandLineOption config(
        QStringLiteral("config"),
        text("Loads this configuration instead of the default file of the preferences."), text("FILE"));
    const QCommandLineOption start(QStringLiteral("start"),
                                   text("Starts the cluster once the window is shown."));
    const QCommandLineOption nonInteractive(
        QStringLiteral("non-interactive"),
        text("Asks nothing, prints each step on standard output and exits with 1 when a step fails."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        text("Writes a picture of the window, of the running cluster when --start is given."),
        text("FILE.png"));
    const QCommandLineOption exitAfterStop(
        QStringLiteral("exit-after-stop"),
        text("Exits when the session ends. With --start and --non-interactive the host measures the network, "
             "stops the session itself and exits."));
    const QCommandLineOption module(
        QStringLiteral("module"),
        text("Loads this module instead of the one that belongs to the host. May be given several times."),
        text("FILE"));
    parser.addOptions({help, version, config, start, nonInteractive, screenshot, exitAfterStop, module});

    const auto usageError = [](const QString& reason) {
        Result result;
        result.exitCode = UsageError;
        result.standardError =
            QStringLiteral("zohost: %1\n%2\n").arg(reason, text("Try 'zohost --help' for the options."));
        return result;
    };

    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(help)) {
        Result result;
        result.standardOutput = parser.helpText();
        return result;
    }
    if (parser.isSet(version)) {
        Result result;
        result.standardOutput = QStringLiteral("zohost %1\n").arg(QStringLiteral(ZO_VERSION));
        return result;
    }
    if (!parser.positionalArguments().isEmpty())
        return usageError(text("unexpected argument '%1'").arg(parser.positionalArguments().constFirst()));
    for (const QCommandLineOption& option : {config, screenshot, module}) {
        if (parser.values(option).contains(QString()))
            return usageError(text("--%1 needs a file name").arg(option.names().constFirst()));
    }
    for (const QCommandLineOption& option : {config, screenshot}) {
        if (parser.values(option).size() > 1)
            return usageError(text("--%1 is given more than once").arg(option.names().constFirst()));
    }

    Result result;
    result.run = true;
    result.options.configFile = parser.value(config);
    result.options.screenshotFile = parser.value(screenshot);
    result.options.moduleFiles = parser.values(module);
    result.options.start = parser.isSet(start);
    result.options.nonInteractive = parser.isSet(nonInteractive);
    result.options.exitAfterStop = parser.isSet(exitAfterStop);
    return result;
}
