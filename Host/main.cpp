#include "zoHostApplication.h"
#include "zoHostOptions.h"
#include "zoHostTranslations.h"

#include <zoCommandLine.h>
#include <zoQt.h>
#include <zoUserFolder.h>

#include <QApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{
constexpr int s_notPrinted = 1;

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

// Of a help that nobody got a script must not think that it has it.
bool isPrinted()
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return true;
    std::fprintf(stderr, "zohost: standard output: %s\n", std::strerror(errno));
    return false;
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
        return isPrinted() ? commandLine.exitCode : s_notPrinted;
    zoUserFolder::provide();
    if (commandLine.options.nonInteractive)
        chooseOffscreenWithoutDisplay();

    zoQt::scaleToScreens();
    const QApplication application(argc, argv);
    zoHostApplication host(commandLine.options);
    return host.run();
}
