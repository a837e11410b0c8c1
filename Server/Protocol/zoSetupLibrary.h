#pragma once

#include "zoParaViewSetup.h"

#include <QString>

struct zoWallSetup;

// The component that reads documents. It is loaded when it is needed, so that nodes start without what it needs.
namespace zoSetupLibrary
{
// Where a component of this name is, or would be: below the program as in the build, or as installed.
QString componentFile(const QString& name);

// Where tests have the components.
void setFolder(const QString& folder);

// False, with a reason, when the component is missing or the document cannot be read.
bool read(const QString& document, zoWallSetup& setup, QString& reason);
// The same for a session of ParaView's server; the pixel pitch of the request is not read.
bool read(const QString& document, zoParaViewSetup::Request request, zoParaViewSetup& setup, QString& reason);
// The document as a client of ParaView draws it, "tiles" or "test-image".
bool writeScene(const QString& document, const QString& content, QByteArray& scene, QString& reason);
} // namespace zoSetupLibrary
