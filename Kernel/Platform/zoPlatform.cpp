#include "zoPlatform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace
{
// Beside the library file that this code runs from, so that an installed tree can be moved.
QString installedDataDir()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&zoPlatform::getDataDir), &info) == 0 ||
        info.dli_fname == nullptr)
        return {};
    // lib/libzoKernel.so or lib/<multiarch>/libzoKernel.so
    QDir folder = QFileInfo(QFile::decodeName(info.dli_fname)).absoluteDir();
    for (int level = 0; level < 2; ++level) {
        const QString candidate = folder.absoluteFilePath(QStringLiteral(ZO_INSTALLED_DATA_DIR));
        if (QFileInfo::exists(candidate + QStringLiteral("/cluster")))
            return QDir::cleanPath(candidate);
        folder.cdUp();
    }
    return {};
}
} // namespace

std::string zoPlatform::getDataDir()
{
    std::string chosen = qgetenv("ZOKE_DATA").toStdString();
    // File names below it are recognised by their beginning.
    while (chosen.size() > 1 && chosen.back() == '/')
        chosen.pop_back();
    if (!chosen.empty())
        return chosen;
    static const QString installed = installedDataDir();
    if (!installed.isEmpty())
        return installed.toStdString();
    return ZO_BUILT_DATA_DIR;
}

int zoPlatform::getSmallIconSize()
{
    return 16;
}

int zoPlatform::getMediumIconSize()
{
    return 24;
}
