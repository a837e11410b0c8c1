#include "zoHostOptions.h"

#include <QCommandLineParser>

namespace
{
constexpr int UsageError = 2;
} // namespace

zoHostOptions::Result zoHostOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Shows and runs render cluster configurations."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  tr("Prints this help and exits."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     tr("Prints the version and exits."));
    const QCommandLineOption config(
        QStringLiteral("config"),
        tr("Loads this configuration instead of the default file of the preferences."), tr("FILE"));
    const QCommandLineOption start(QStringLiteral("start"),
                                   tr("Starts the cluster once the window is shown."));
    const QCommandLineOption nonInteractive(
        QStringLiteral("non-interactive"),
        tr("Asks nothing, prints each step on standard output and exits with 1 when a step fails."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        tr("Writes a picture of the window, of the running cluster when --start is given."), tr("FILE.png"));
    const QCommandLineOption exitAfterStop(
        QStringLiteral("exit-after-stop"),
        tr("Exits when the session ends. With --start and --non-interactive the host measures the network, "
           "stops the session itself and exits."));
    const QCommandLineOption module(
        QStringLiteral("module"),
        tr("Loads this module instead of the one that belongs to the host. May be given several times."),
        tr("FILE"));
    const QCommandLineOption language(
        QStringLiteral("language"),
        tr("Speaks this language, for instance de, instead of the one of the locale."), tr("LANGUAGE"));
    parser.addOptions(
        {help, version, config, start, nonInteractive, screenshot, exitAfterStop, module, language});

    const auto usageError = [&parser, &language](const QString& reason) {
        Result result;
        result.options.language = parser.value(language);
        result.exitCode = UsageError;
        result.standardError =
            QStringLiteral("zohost: %1\n%2\n").arg(reason, tr("Try 'zohost --help' for the options."));
        return result;
    };

    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(help)) {
        Result result;
        result.options.language = parser.value(language);
        result.standardOutput = parser.helpText();
        return result;
    }
    if (parser.isSet(version)) {
        Result result;
        result.standardOutput = QStringLiteral("zohost %1\n").arg(QStringLiteral(ZO_VERSION));
        return result;
    }
    if (!parser.positionalArguments().isEmpty())
        return usageError(tr("unexpected argument '%1'").arg(parser.positionalArguments().constFirst()));
    for (const QCommandLineOption& option : {config, screenshot, module}) {
        if (parser.values(option).contains(QString()))
            return usageError(tr("--%1 needs a file name").arg(option.names().constFirst()));
    }
    if (parser.values(language).contains(QString()))
        return usageError(tr("--language needs a language"));
    for (const QCommandLineOption& option : {config, screenshot, language}) {
        if (parser.values(option).size() > 1)
            return usageError(tr("--%1 is given more than once").arg(option.names().constFirst()));
    }

    Result result;
    result.run = true;
    result.options.language = parser.value(language);
    result.options.configFile = parser.value(config);
    result.options.screenshotFile = parser.value(screenshot);
    result.options.moduleFiles = parser.values(module);
    result.options.start = parser.isSet(start);
    result.options.nonInteractive = parser.isSet(nonInteractive);
    result.options.exitAfterStop = parser.isSet(exitAfterStop);
    return result;
}
