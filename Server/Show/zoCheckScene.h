#pragma once

#include "zoShowContent.h"

#include <zoWallSetup.h>

#include <QByteArray>

// What node servers show, as JSON for engines that draw it themselves: the test image as flat figures and balls in
// the room, the tiles as a picture for each of them. Lengths in millimetres.
//
//   content     "test-image" or "tiles"
//   head        [x, y, z], between the eyes
//   background  "#rrggbb"
//   figures     convex ones: {"colour", "corners": [[x, y, z], ...]}
//   balls       {"middle", "radius", "colour"}
//   digits      for 0 to 9 convex pieces of the digit, 1 high: [[[x, y], ...], ...]
//   marks       digits in the room: {"digit", "middle", "right", "up", "colour"}, the last two as long as it is high
//   tiles       {"number", "node", "plane": [lower left, lower right, upper left], "pixels": [w, h], "label"},
//               for the tiles also "picture", a PNG in Base64; the number is zoWallViewport's
//
// In the test image nothing lies in the plane of something else: what is painted later is a little nearer to the head,
// which is not seen from there.
class zoCheckScene final
{
public:
    // Pixels of all pictures together; those of larger walls are made smaller.
    static constexpr qint64 MostPixels = 1 << 26;

    // Nothing is tiles with black pictures. Of the content it needs an application that can draw texts.
    static QByteArray of(const zoWallSetup& setup, zoShowContent content);
};
