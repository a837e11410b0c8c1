#pragma once

#include "zoHPCRenderSetup.h"
#include "zoParaViewRelease.h"

#include <QByteArray>
#include <QRect>
#include <QString>

#include <vector>

// The texts of configuration files for other engines: metres, and numbers without exponents.
namespace zoEngineFiles
{
// Where a window of ParaView opens, when that is not where the configuration says.
struct Place
{
    QString display; // ":3.1"; empty follows the environment
    QRect geometry;  // pixels
};

// For pvserver: one machine for each MPI rank, in the order of the pictures. Either no places or one for each.
QByteArray paraView(const zoHPCRenderSetup& setup, const zoParaViewRelease& release,
                    const std::vector<Place>& places = {});
// The places that the configuration itself says.
std::vector<Place> paraViewPlaces(const zoHPCRenderSetup& setup);
// Nodes with their pipes, windows and channels, an observer for each display, and a canvas for each wall of a display
// with a segment for each channel.
QByteArray equalizer(const zoHPCRenderSetup& setup);

// The word of ParaView for the eye of a viewport; null for one that it does not know. Empty for mono.
const char* paraViewStereo(const QString& eye);
// Whether Equalizer can show the eye; of colours for both eyes there is one pair in a file, that of `setup`.
bool hasEqualizerEye(const zoHPCRenderSetup& setup, const QString& eye);
// Whether the display of the picture wants its windows swapped in hardware.
bool hasHardwareSync(const zoHPCRenderSetup& setup, const zoHPCRenderSetup::Picture& picture);
// The text as far as strings of Equalizer can hold it.
QString equalizerName(const QString& text);
} // namespace zoEngineFiles
