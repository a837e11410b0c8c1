#include "zoChannelLibrary.h"

#include "zoSetupLibrary.h"

#include <zoServerChannel.h>

#include <QFileInfo>
#include <QLibrary>

namespace
{
QString fileName()
{
    return zoSetupLibrary::componentFile(QStringLiteral("zoServerMpi"));
}
} // namespace

std::unique_ptr<zoServerChannel> zoChannelLibrary::create(QString& reason)
{
    static QLibrary library(fileName());
    // Symbols of MPI must be seen by the components that MPI itself loads.
    library.setLoadHints(QLibrary::ExportExternalSymbolsHint);
    const auto make = reinterpret_cast<zoServerChannelFactory>(library.resolve("zoServerChannelCreate"));
    if (make == nullptr) {
        reason = library.errorString();
        return nullptr;
    }
    return std::unique_ptr<zoServerChannel>(make());
}

bool zoChannelLibrary::isInstalled()
{
    return QFileInfo::exists(fileName());
}
