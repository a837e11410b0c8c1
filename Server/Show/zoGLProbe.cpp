#include "zoGLProbe.h"

#include "zoWallScreens.h"

#include <QCoreApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("zoGLProbe", text);
}

QSurfaceFormat wantedFormat(bool isStereo)
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setStereo(isStereo);
    return format;
}

zoGLProbe probe()
{
    zoGLProbe result;
    if (zoWallScreens::areImaginary()) {
        result.renderer = tr("no GL without a display");
        return result;
    }
    QOpenGLContext context;
    context.setFormat(wantedFormat(true));
    QOffscreenSurface surface;
    if (!context.create()) {
        result.renderer = tr("no GL context");
        return result;
    }
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface)) {
        result.renderer = tr("no GL context");
        return result;
    }
    const auto text = [&](GLenum name) {
        return QString::fromLatin1(reinterpret_cast<const char*>(context.functions()->glGetString(name)));
    };
    result.renderer = text(GL_RENDERER);
    result.version = text(GL_VERSION);
    result.isAvailable = context.format().version() >= qMakePair(3, 3) && !context.isOpenGLES();
    result.isHardware = zoGLProbe::isHardwareRenderer(result.renderer);
    result.hasQuadBuffer = context.format().stereo();
    result.hasSwapGroup = zoGLProbe::hasBindingExtension(context, "GLX_NV_swap_group");
    context.doneCurrent();
    return result;
}
} // namespace

const zoGLProbe& zoGLProbe::machine()
{
    static const zoGLProbe s_machine = probe();
    return s_machine;
}

bool zoGLProbe::isHardwareRenderer(const QString& renderer)
{
    for (const char* name : {"llvmpipe", "softpipe", "swrast", "swr ", "software"}) {
        if (renderer.contains(QLatin1String(name), Qt::CaseInsensitive))
            return false;
    }
    return !renderer.isEmpty();
}

bool zoGLProbe::joinSwapGroup(QOpenGLContext& context)
{
    using CurrentDisplay = void* (*)();
    using CurrentDrawable = unsigned long (*)();
    using Join = int (*)(void* display, unsigned long drawable, unsigned group);
    using Bind = int (*)(void* display, unsigned group, unsigned barrier);
    if (!hasBindingExtension(context, "GLX_NV_swap_group"))
        return false;
    const auto display = reinterpret_cast<CurrentDisplay>(context.getProcAddress("glXGetCurrentDisplay"));
    const auto drawable = reinterpret_cast<CurrentDrawable>(context.getProcAddress("glXGetCurrentDrawable"));
    const auto join = reinterpret_cast<Join>(context.getProcAddress("glXJoinSwapGroupNV"));
    const auto bind = reinterpret_cast<Bind>(context.getProcAddress("glXBindSwapBarrierNV"));
    // One group of all windows of a machine, and one barrier of all machines.
    return display != nullptr && drawable != nullptr && join != nullptr && bind != nullptr &&
           join(display(), drawable(), 1) != 0 && bind(display(), 1, 1) != 0;
}

// Functions of extensions that a driver does not have are not null all the same: only the list tells.
bool zoGLProbe::hasBindingExtension(QOpenGLContext& context, const char* name)
{
    using CurrentDisplay = void* (*)();
    using QueryString = const char* (*)(void* display, int screen);
    const auto currentDisplay =
        reinterpret_cast<CurrentDisplay>(context.getProcAddress("glXGetCurrentDisplay"));
    const auto queryString =
        reinterpret_cast<QueryString>(context.getProcAddress("glXQueryExtensionsString"));
    void* const display = currentDisplay != nullptr ? currentDisplay() : nullptr;
    if (display == nullptr || queryString == nullptr)
        return false;
    const char* const list = queryString(display, 0);
    return list != nullptr && QByteArray(list).split(' ').contains(name);
}
