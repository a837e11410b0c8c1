#include "zoHostOptions.h"

#include "zoHostTranslations.h"

#include <QCommandLineParser>

namespace
{
constexpr int s_usageError = 2;

// The options as the command line knows them.
struct CommandLine
{
    const QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                                  zoHostOptions::tr("Prints this help and exits.")};
    const QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                                     zoHostOptions::tr("Prints the version and exits.")};
    const QCommandLineOption config{
        QStringLiteral("config"),
        zoHostOptions::tr("Loads this configuration instead of the default file of the preferences."),
        zoHostOptions::tr("FILE")};
    const QCommandLineOption start{QStringLiteral("start"),
                                   zoHostOptions::tr("Starts the cluster once the window is shown.")};
    const QCommandLineOption nonInteractive{
        QStringLiteral("non-interactive"),
        zoHostOptions::tr(
            "Asks nothing, prints each step on standard output and exits with 1 when a step fails. Without "
            "--start it exits once the configuration is loaded.")};
    const QCommandLineOption screenshot{
        QStringLiteral("screenshot"),
        zoHostOptions::tr("Writes a picture of the window, of the running cluster when --start is given."),
        zoHostOptions::tr("FILE.png")};
    const QCommandLineOption exitAfterStop{
        QStringLiteral("exit-after-stop"),
        zoHostOptions::tr(
            "Exits when the session ends. With --start and --non-interactive the host measures the network, "
            "stops the session itself and exits.")};
    const QCommandLineOption module{
        QStringLiteral("module"),
        zoHostOptions::tr(
            "Loads this module instead of the one that belongs to the host. May be given several times."),
        zoHostOptions::tr("FILE")};
    const QCommandLineOption language{
        QStringLiteral("language"),
        zoHostOptions::tr("Speaks this language, for instance de, instead of the one of the locale."),
        zoHostOptions::tr("LANGUAGE")};

    const QCommandLineOption engine{
        QStringLiteral("engine"),
        zoHostOptions::tr(
            "Runs sessions on the node servers (nodes), on ParaView's server (paraview) or inside this "
            "program, which then shows nothing (local), instead of what the preferences say."),
        zoHostOptions::tr("ENGINE")};
    const QCommandLineOption rehearse{
        QStringLiteral("rehearse"),
        zoHostOptions::tr(
            "Runs the servers of all nodes on this machine, with small windows on its desktop.")};
    const QCommandLineOption show{
        QStringLiteral("show"),
        zoHostOptions::tr("Turns a picture on once the session runs: tiles or test-image."),
        zoHostOptions::tr("PICTURE")};
    const QCommandLineOption wallPicture{
        QStringLiteral("wall-picture"),
        zoHostOptions::tr(
            "Writes all displays of the running session as they are lit, arranged as the wall is."),
        zoHostOptions::tr("FILE.png")};
    const QCommandLineOption nodePictures{
        QStringLiteral("node-pictures"),
        zoHostOptions::tr("Writes what each window of the running session shows as NODE-WINDOW.png."),
        zoHostOptions::tr("FOLDER")};

    void addTo(QCommandLineParser& parser) const
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), zoHostOptions::tr("The same as --config FILE."),
                                     QStringLiteral("[FILE]"));
        parser.addOptions({help, version, config, start, nonInteractive, screenshot, exitAfterStop, module,
                           language, engine, rehearse, show, wallPicture, nodePictures});
    }

    // What is wrong with values and arguments; empty for nothing.
    QString mistake(const QCommandLineParser& parser) const
    {
        const QStringList files = parser.positionalArguments();
        const bool isNamed = parser.isSet(config);
        if (files.size() > (isNamed ? 0 : 1))
            return zoHostOptions::tr("unexpected argument '%1'").arg(files.at(isNamed ? 0 : 1));
        if (files.contains(QString()))
            return zoHostOptions::tr("a configuration needs a file name");
        for (const QCommandLineOption& option : {config, screenshot, module, wallPicture, nodePictures}) {
            if (parser.values(option).contains(QString()))
                return zoHostOptions::tr("--%1 needs a file name").arg(option.names().constFirst());
        }
        if (parser.values(language).contains(QString()))
            return zoHostOptions::tr("--language needs a language");
        if (parser.isSet(language) && !zoHostTranslations::knows(parser.value(language)))
            return zoHostOptions::tr("--language: \"%1\" is none of %2")
                .arg(parser.value(language), zoHostTranslations::known().join(QStringLiteral(", ")));
        for (const QCommandLineOption& option :
             {config, screenshot, language, engine, show, wallPicture, nodePictures}) {
            if (parser.values(option).size() > 1)
                return zoHostOptions::tr("--%1 is given more than once").arg(option.names().constFirst());
        }
        return mistakeOfSession(parser);
    }

    QString mistakeOfSession(const QCommandLineParser& parser) const
    {
        const struct
        {
            const QCommandLineOption& option;
            QStringList words;
        } choices[] = {
            {engine, {QStringLiteral("nodes"), QStringLiteral("paraview"), QStringLiteral("local")}},
            {show, {QStringLiteral("tiles"), QStringLiteral("test-image")}}};
        for (const auto& choice : choices) {
            if (parser.isSet(choice.option) && !choice.words.contains(parser.value(choice.option)))
                return zoHostOptions::tr("--%1: \"%2\" is none of %3")
                    .arg(choice.option.names().constFirst(), parser.value(choice.option),
                         choice.words.join(QStringLiteral(", ")));
        }
        if (parser.value(engine) == QLatin1String("local")) {
            for (const QCommandLineOption& option : {rehearse, show, wallPicture, nodePictures}) {
                if (parser.isSet(option))
                    return zoHostOptions::tr("--%1 needs node servers, and --engine local has none")
                        .arg(option.names().constFirst());
            }
        }
        if (parser.value(engine) == QLatin1String("paraview")) {
            for (const QCommandLineOption& option : {wallPicture, nodePictures}) {
                if (parser.isSet(option))
                    return zoHostOptions::tr("--%1 needs node servers: ParaView's server draws on the "
                                             "displays alone")
                        .arg(option.names().constFirst());
            }
        }
        // They would wait for a session that nobody starts.
        for (const QCommandLineOption& option : {show, wallPicture, nodePictures}) {
            if (parser.isSet(option) && !parser.isSet(start))
                return zoHostOptions::tr("--%1 needs --start").arg(option.names().constFirst());
        }
        return {};
    }

    void read(const QCommandLineParser& parser, zoHostOptions& options) const
    {
        const QStringList files = parser.positionalArguments();
        options.configFile = files.isEmpty() ? parser.value(config) : files.constFirst();
        options.screenshotFile = parser.value(screenshot);
        options.moduleFiles = parser.values(module);
        options.start = parser.isSet(start);
        options.nonInteractive = parser.isSet(nonInteractive);
        options.exitAfterStop = parser.isSet(exitAfterStop);
        options.engine = parser.value(engine);
        options.rehearse = parser.isSet(rehearse);
        options.shownPicture = parser.value(show);
        options.wallPictureFile = parser.value(wallPicture);
        options.nodePictureFolder = parser.value(nodePictures);
    }
};
} // namespace

zoHostOptions::Result zoHostOptions::parse(const QStringList& arguments)
{
    const CommandLine line;
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Shows and runs render cluster configurations."));
    line.addTo(parser);
    const bool isParsed = parser.parse(arguments);

    Result result;
    result.options.language = parser.value(line.language);
    if (isParsed && parser.isSet(line.help)) {
        result.standardOutput = parser.helpText();
        return result;
    }
    if (isParsed && parser.isSet(line.version)) {
        result.standardOutput = QStringLiteral("zohost %1\n").arg(QStringLiteral(ZO_VERSION));
        return result;
    }
    const QString mistake = isParsed ? line.mistake(parser) : parser.errorText();
    if (!mistake.isEmpty()) {
        const QString language = result.options.language;
        result = refused(mistake);
        result.options.language = language;
        return result;
    }
    line.read(parser, result.options);
    result.run = true;
    return result;
}

zoHostOptions::Result zoHostOptions::refused(const QString& mistake)
{
    Result result;
    result.exitCode = s_usageError;
    result.standardError =
        QStringLiteral("zohost: %1\n%2\n").arg(mistake, tr("Try 'zohost --help' for the options."));
    return result;
}
