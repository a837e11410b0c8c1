#pragma once

#include "zoHPCRenderSetup.h"

#include <QByteArray>

// The texts of configuration files for other engines: metres, and numbers without exponents.
namespace zoEngineFiles
{
// For pvserver: one machine for each MPI rank, in the order of the pictures.
QByteArray paraView(const zoHPCRenderSetup& setup);
// Nodes with their pipes, windows and channels, and a canvas for each wall with a segment for each channel.
QByteArray equalizer(const zoHPCRenderSetup& setup);
} // namespace zoEngineFiles
