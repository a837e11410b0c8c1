#pragma once

#include <zoWallSetup.h>

// A node with two windows that show the same plane, of 200 x 100 and of 120 x 60 pixels.
inline zoWallSetup zoTwoWindows()
{
    zoWallViewport viewport;
    viewport.plane = {QStringLiteral("P"), {-1000, -500, -1500}, {1000, -500, -1500}, {1000, 500, -1500}};
    zoWallWindow first;
    first.geometry = {0, 0, 200, 100};
    first.viewports = {viewport};
    zoWallWindow second = first;
    second.number = 2;
    second.geometry = {10, 20, 120, 60};
    zoWallSetup setup;
    setup.nodes = {{QStringLiteral("n1"), QStringLiteral("n1"), QStringLiteral("n1"), 0, {first, second}}};
    setup.walls = {viewport.plane};
    return setup;
}
