#include "zoServerProbe.h"

#include "zoNodeServer.h"
#include "zoSetupLibrary.h"

#include <zoAvailableMemory.h>
#include <zoGLProbe.h>

#include <QFile>
#include <QGuiApplication>
#include <QLibrary>

#include <cstdio>

#include <unistd.h>

namespace
{
constexpr qint64 s_mebibyte = 1024 * 1024;

void print(const char* what, const QString& value)
{
    std::printf("%s: %s\n", what, value.toUtf8().constData());
}

QString glText()
{
    const zoGLProbe& machine = zoGLProbe::machine();
    if (!machine.isAvailable)
        return QStringLiteral("none");
    return QStringLiteral("%1, %2%3")
        .arg(machine.version, machine.renderer,
             machine.isHardware ? QString() : QStringLiteral(" (software: windows are drawn without GL)"));
}

QString mpiText()
{
    QLibrary library(zoSetupLibrary::componentFile(QStringLiteral("zoServerMpi")));
    return library.load() ? QStringLiteral("yes") : QStringLiteral("no");
}

// Of a display that cannot be opened the toolkit tells which plug-ins it has.
void explainEnd(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg && text.contains(QLatin1String("platform plugin"))) {
        const QByteArray display = qgetenv("DISPLAY");
        std::fprintf(stderr,
                     "the display %s cannot be used: nothing answers there, or this account may not use it\n",
                     display.isEmpty() ? qgetenv("QT_QPA_PLATFORM").constData() : display.constData());
        _exit(1);
    }
    std::fprintf(stderr, "%s\n", qPrintable(text));
}
} // namespace

void zoServerProbe::choosePlatform()
{
    qInstallMessageHandler(explainEnd);
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return;
    // A login from elsewhere has no display in its environment, and the wall hangs on the first one.
    if (QFile::exists(QStringLiteral("/tmp/.X11-unix/X0")))
        qputenv("DISPLAY", ":0");
    else
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

int zoServerProbe::run(int argc, char** argv)
{
    choosePlatform();
    zoNodeShow::prepareApplication();
    const QGuiApplication application(argc, argv);
    const qint64 memory = zoAvailableMemory::bytes();
    print("version", QStringLiteral(ZO_VERSION));
    print("platform", QGuiApplication::platformName());
    print("screens", zoNodeServer::screens().join(QStringLiteral(", ")));
    print("gl", glText());
    print("stereo",
          zoGLProbe::machine().hasQuadBuffer ? QStringLiteral("quad buffer") : QStringLiteral("none"));
    print("swap group", zoGLProbe::machine().hasSwapGroup ? QStringLiteral("yes") : QStringLiteral("no"));
    print("mpi", mpiText());
    print("memory",
          memory < 0 ? QStringLiteral("unknown") : QStringLiteral("%1 MiB").arg(memory / s_mebibyte));
    return 0;
}
