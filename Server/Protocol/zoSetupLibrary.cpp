#include "zoSetupLibrary.h"

#include "zoWallSetup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace
{
// mm; of walls that say how many pixels they have and not how large they are. What exports take for it unless they are
// told otherwise, so that both show the same.
constexpr double s_pixelPitch = 1.0;

QString& testFolder()
{
    static QString folder;
    return folder;
}

// Stays loaded.
QLibrary& library()
{
    static QLibrary component(zoSetupLibrary::componentFile(QStringLiteral("zoServerSetup")));
    return component;
}
} // namespace

void zoSetupLibrary::setFolder(const QString& folder)
{
    testFolder() = folder;
}

QString zoSetupLibrary::componentFile(const QString& name)
{
    if (!testFolder().isEmpty())
        return testFolder() + QStringLiteral("/lib%1.so").arg(name);
    const QDir program(QCoreApplication::applicationDirPath());
    QString first;
    for (const char* folder : {"../lib/zo", ZO_INSTALLED_COMPONENT_DIR}) {
        const QString file = QDir::cleanPath(
            program.absoluteFilePath(QLatin1String(folder) + QStringLiteral("/lib%1.so").arg(name)));
        if (QFileInfo::exists(file))
            return file;
        if (first.isEmpty())
            first = file;
    }
    return first;
}

bool zoSetupLibrary::read(const QString& document, zoWallSetup& setup, QString& reason)
{
    static const auto readWallSetup =
        reinterpret_cast<zoReadWallSetup>(library().resolve(ZO_READ_WALL_SETUP));
    if (readWallSetup == nullptr) {
        reason = library().errorString();
        return false;
    }
    return readWallSetup(document, s_pixelPitch, setup, reason);
}

bool zoSetupLibrary::read(const QString& document, zoParaViewSetup::Request request, zoParaViewSetup& setup,
                          QString& reason)
{
    static const auto readParaViewSetup =
        reinterpret_cast<zoReadParaViewSetup>(library().resolve(ZO_READ_PARAVIEW_SETUP));
    if (readParaViewSetup == nullptr) {
        reason = library().errorString();
        return false;
    }
    request.pixelPitch = s_pixelPitch;
    return readParaViewSetup(document, request, setup, reason);
}

bool zoSetupLibrary::writeScene(const QString& document, const QString& content, QByteArray& scene,
                                QString& reason)
{
    static const auto writeCheckScene =
        reinterpret_cast<zoWriteCheckScene>(library().resolve(ZO_WRITE_CHECK_SCENE));
    if (writeCheckScene == nullptr) {
        reason = library().errorString();
        return false;
    }
    return writeCheckScene(document, s_pixelPitch, content, scene, reason);
}
