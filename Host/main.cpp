#include "zoHostApplication.h"
#include "zoHostOptions.h"
#include "zoHostTranslations.h"

#include <zoCommandLine.h>
#include <zoQt.h>
#include <zoUserFolder.h>

#include <QApplication>

#include <cstdio>

namespace
{
// Nobody watches a non-interactive session, so it needs no display.
void chooseOffscreenWithoutDisplay()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

// Before the application object, which needs a display, so that --help works without one.
zoHostOptions::Result readCommandLine(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString flaw = zoCommandLine::flawOf(argc, argv);
    if (!flaw.isEmpty())
        return zoHostOptions::refused(flaw);
    const QStringList arguments = QCoreApplication::arguments();
    // Twice: what it prints is in the language that it asks for.
    const zoHostTranslations translations(zoHostOptions::parse(arguments).options.language);
    return zoHostOptions::parse(arguments);
}
} // namespace

int main(int argc, char** argv)
{
    zoCommandLine::holdStandardStreams();
    QCoreApplication::setOrganizationName(QStringLiteral("zo"));
    QCoreApplication::setApplicationName(QStringLiteral("zohost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));
    const zoHostOptions::Result commandLine = readCommandLine(argc, argv);
    std::fputs(commandLine.standardOutput.toLocal8Bit().constData(), stdout);
    std::fputs(commandLine.standardError.toLocal8Bit().constData(), stderr);
    if (!commandLine.run)
        return commandLine.exitCode;
    zoUserFolder::provide();
    if (commandLine.options.nonInteractive)
        chooseOffscreenWithoutDisplay();

    zoQt::scaleToScreens();
    const QApplication application(argc, argv);
    zoHostApplication host(commandLine.options);
    return host.run();
}
