#pragma once

// The table of problems, in the order in which they are listed. A row has: the kind; its stable word, the same in
// all languages; where the item concerned is (Displays or Hosts); where the fix, if there is one, changes values;
// the check that finds it. Expanded where each column is needed: a new check is one row here and one function.
#define ZO_HPC_PROBLEM_KINDS(ROW)                                                                            \
    ROW(ViewportWithoutProjection, "viewport-without-projection", Displays, Displays,                        \
        zoHPCWindowChecks::viewportsWithoutProjection)                                                       \
    ROW(WindowWithoutNode, "window-without-node", Displays, Displays, zoHPCWindowChecks::windowsWithoutNode) \
    ROW(WindowWithUnknownNode, "window-with-unknown-node", Displays, Displays,                               \
        zoHPCWindowChecks::windowsWithUnknownNode)                                                           \
    ROW(WindowWithDisabledNode, "window-with-disabled-node", Displays, Hosts,                                \
        zoHPCWindowChecks::windowsWithDisabledNode)                                                          \
    ROW(OverlappingWindows, "overlapping-windows", Displays, Displays,                                       \
        zoHPCWindowChecks::overlappingWindows)                                                               \
    ROW(TileShownNowhere, "tile-shown-nowhere", Displays, Displays, zoHPCTileChecks::tilesShownNowhere)      \
    ROW(TileShownTwice, "tile-shown-twice", Displays, Displays, zoHPCTileChecks::tilesShownTwice)            \
    ROW(TileForOneEye, "tile-for-one-eye", Displays, Displays, zoHPCTileChecks::tilesForOneEye)              \
    ROW(DegeneratePlane, "degenerate-plane", Displays, Displays, zoHPCPlaneChecks::degeneratePlanes)         \
    ROW(SkewedPlane, "skewed-plane", Displays, Displays, zoHPCPlaneChecks::skewedPlanes)                     \
    ROW(MirroredPlane, "mirrored-plane", Displays, Displays, zoHPCPlaneChecks::mirroredPlanes)               \
    ROW(BlendWiderThanOverlap, "blend-wider-than-overlap", Displays, Displays,                               \
        zoHPCPlaneChecks::blendsWiderThanOverlap)                                                            \
    ROW(WallInMetres, "wall-in-metres", Displays, Displays, zoHPCPlaneChecks::wallsInMetres)                 \
    ROW(DuplicateHostName, "duplicate-host-name", Hosts, Hosts, zoHPCHostChecks::duplicateHostNames)         \
    ROW(NetworkWithoutEnabledNode, "network-without-enabled-node", Hosts, Hosts,                             \
        zoHPCHostChecks::networksWithoutEnabledNode)                                                         \
    ROW(UnknownOptionValue, "unknown-option-value", Hosts, Hosts, zoHPCHostChecks::unknownOptionValues)

// One enumerator for each row.
enum class zoHPCProblemKind {
#define ZO_KIND(kind, word, item, fix, check) kind,
    ZO_HPC_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
};
