#include "zoServerProbe.h"

#include "zoNodeServer.h"
#include "zoSetupLibrary.h"

#include <zoAvailableMemory.h>

#include <QFile>
#include <QGuiApplication>
#include <QLibrary>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <cstdio>

namespace
{
constexpr qint64 s_mebibyte = 1024 * 1024;

void print(const char* what, const QString& value)
{
    std::printf("%s: %s\n", what, value.toUtf8().constData());
}

QString glText()
{
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface))
        return QStringLiteral("none");
    QOpenGLFunctions* gl = context.functions();
    const auto text = [gl](unsigned name) {
        return QString::fromLatin1(reinterpret_cast<const char*>(gl->glGetString(name)));
    };
    return QStringLiteral("%1, %2").arg(text(0x1F02), text(0x1F01)); // version, renderer
}

QString stereoText()
{
    QSurfaceFormat format;
    format.setStereo(true);
    QOpenGLContext context;
    context.setFormat(format);
    // Asked and looked at: without quad buffers another format comes in silence.
    return context.create() && context.format().stereo() ? QStringLiteral("quad buffer")
                                                         : QStringLiteral("none");
}

QString swapGroupText()
{
    QOpenGLContext context;
    const bool has = context.create() && context.hasExtension(QByteArrayLiteral("GLX_NV_swap_group"));
    return has ? QStringLiteral("yes") : QStringLiteral("no");
}

QString mpiText()
{
    QLibrary library(zoSetupLibrary::componentFile(QStringLiteral("zoServerMpi")));
    return library.load() ? QStringLiteral("yes") : QStringLiteral("no");
}
} // namespace

void zoServerProbe::choosePlatform()
{
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
    print("stereo", stereoText());
    print("swap group", swapGroupText());
    print("mpi", mpiText());
    print("memory",
          memory < 0 ? QStringLiteral("unknown") : QStringLiteral("%1 MiB").arg(memory / s_mebibyte));
    return 0;
}
