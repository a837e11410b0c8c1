#include "zoUserFolder.h"

#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr char s_variable[] = "XDG_RUNTIME_DIR";
constexpr mode_t OwnerOnly = 0700;
constexpr mode_t AllRights = 0777;
} // namespace

QByteArray zoUserFolder::path()
{
    const QByteArray runtime = qgetenv(s_variable);
    struct stat info = {};
    if (!runtime.isEmpty() && stat(runtime.constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
        info.st_uid == geteuid())
        return runtime;
    return fallback();
}

QByteArray zoUserFolder::fallback()
{
    return "/tmp/zo-" + QByteArray::number(uint(geteuid()));
}

void zoUserFolder::provide(const QByteArray& folder)
{
    const QByteArray runtime = qgetenv(s_variable);
    struct stat info = {};
    if (!runtime.isEmpty() && stat(runtime.constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
        info.st_uid == geteuid() && (info.st_mode & AllRights) == OwnerOnly)
        return;
    const QByteArray compositor = qgetenv("WAYLAND_DISPLAY");
    if (!runtime.isEmpty() && !compositor.isEmpty() && !compositor.startsWith('/'))
        return;

    mkdir(folder.constData(), OwnerOnly);
    // lstat: somebody else may have laid a link here.
    if (lstat(folder.constData(), &info) == -1 || !S_ISDIR(info.st_mode) || info.st_uid != geteuid())
        return;
    if ((info.st_mode & AllRights) == OwnerOnly || chmod(folder.constData(), OwnerOnly) == 0)
        qputenv(s_variable, folder);
}
