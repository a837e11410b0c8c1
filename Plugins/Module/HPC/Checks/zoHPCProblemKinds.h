#pragma once

// The table of problems: what "zohpc check", the problem list of the dialog and the status bar tell.
// Docs/manual/problems.md has a section for each row, under its code.

// What the items of a configuration have, in the order in which it is listed. A row has: the kind; its code, a stable
// word, the same in all languages; how bad it is; the attribute of the item that it is about, "" for several or none;
// the title of its section in the manual; where the item concerned is (Displays or Hosts); where the fix, if there is
// one, changes values; the check that finds it. Expanded where each column is needed: a new check is one row here and
// one function.
#define ZO_HPC_PROBLEM_KINDS(ROW)                                                                            \
    ROW(ViewportWithoutProjection, "viewport-without-projection", Error, "projection",                       \
        "A viewport that shows no projection", Displays, Displays,                                           \
        zoHPCWindowChecks::viewportsWithoutProjection)                                                       \
    ROW(WindowWithoutNode, "window-without-node", Error, "node", "A window on no node", Displays, Displays,  \
        zoHPCWindowChecks::windowsWithoutNode)                                                               \
    ROW(WindowWithUnknownNode, "window-with-unknown-node", Error, "node",                                    \
        "A window on a node that the cluster does not have", Displays, Displays,                             \
        zoHPCWindowChecks::windowsWithUnknownNode)                                                           \
    ROW(WindowWithDisabledNode, "window-with-disabled-node", Warning, "node",                                \
        "A window on a node that is disabled", Displays, Hosts, zoHPCWindowChecks::windowsWithDisabledNode)  \
    ROW(WindowWithoutViewport, "window-without-viewport", Warning, "", "A window without viewport",          \
        Displays, Displays, zoHPCWindowChecks::windowsWithoutViewport)                                       \
    ROW(WindowWithoutSize, "window-without-size", Error, "", "A window without width or height", Displays,   \
        Displays, zoHPCWindowChecks::windowsWithoutSize)                                                     \
    ROW(WindowOutsideScreen, "window-outside-screen", Warning, "",                                           \
        "A window that begins outside of its screen", Displays, Displays,                                    \
        zoHPCWindowChecks::windowsOutsideScreen)                                                             \
    ROW(DisplayWithoutWindow, "display-without-window", Warning, "", "A display without window", Displays,   \
        Displays, zoHPCWindowChecks::displaysWithoutWindow)                                                  \
    ROW(UnknownScreen, "unknown-screen", Error, "screen", "A window on a screen that there is not",          \
        Displays, Displays, zoHPCWindowChecks::windowsOnUnknownScreen)                                       \
    ROW(OverlappingWindows, "overlapping-windows", Warning, "", "Two windows over each other on one screen", \
        Displays, Displays, zoHPCWindowChecks::overlappingWindows)                                           \
    ROW(OverlappingViewports, "overlapping-viewports", Warning, "",                                          \
        "Two viewports over each other in one window", Displays, Displays,                                   \
        zoHPCViewportChecks::overlappingViewports)                                                           \
    ROW(ViewportWithoutArea, "viewport-without-area", Error, "", "A viewport without area", Displays,        \
        Displays, zoHPCViewportChecks::viewportsWithoutArea)                                                 \
    ROW(ViewportOutsideWindow, "viewport-outside-window", Error, "",                                         \
        "A viewport that reaches beyond its window", Displays, Displays,                                     \
        zoHPCViewportChecks::viewportsOutsideWindow)                                                         \
    ROW(ViewportCornersCrossed, "viewport-corners-crossed", Error, "",                                       \
        "A viewport whose corners changed places", Displays, Displays,                                       \
        zoHPCViewportChecks::viewportsWithCrossedCorners)                                                    \
    ROW(StretchedPicture, "stretched-picture", Warning, "", "A picture that is stretched", Displays,         \
        Displays, zoHPCViewportChecks::stretchedPictures)                                                    \
    ROW(EqualProjectionNames, "equal-projection-names", Error, "name", "Two projections of one name",        \
        Displays, Displays, zoHPCProjectionChecks::equalNames)                                               \
    ROW(UnknownProjectionType, "unknown-projection-type", Error, "type", "A projection of an unknown type",  \
        Displays, Displays, zoHPCProjectionChecks::unknownTypes)                                             \
    ROW(CaveWithoutWalls, "cave-without-walls", Error, "", "A cave without walls", Displays, Displays,       \
        zoHPCProjectionChecks::cavesWithoutWalls)                                                            \
    ROW(ProjectionWithoutTiles, "projection-without-tiles", Error, "", "A projection without tiles",         \
        Displays, Displays, zoHPCProjectionChecks::projectionsWithoutTiles)                                  \
    ROW(OverlapWiderThanTile, "overlap-wider-than-tile", Error, "", "An overlap wider than a tile",          \
        Displays, Displays, zoHPCProjectionChecks::overlapsWiderThanTiles)                                   \
    ROW(TileShownNowhere, "tile-shown-nowhere", Warning, "", "A tile that no viewport shows", Displays,      \
        Displays, zoHPCTileChecks::tilesShownNowhere)                                                        \
    ROW(TileShownTwice, "tile-shown-twice", Warning, "", "A tile that is shown twice", Displays, Displays,   \
        zoHPCTileChecks::tilesShownTwice)                                                                    \
    ROW(TileForOneEye, "tile-for-one-eye", Warning, "", "A tile for one eye only", Displays, Displays,       \
        zoHPCTileChecks::tilesForOneEye)                                                                     \
    ROW(MonoTileInStereoWall, "mono-tile-in-stereo-wall", Warning, "",                                       \
        "Tiles with and without stereo in one wall", Displays, Displays,                                     \
        zoHPCStereoChecks::monoTilesInStereoWalls)                                                           \
    ROW(EyeSeparationInMetres, "eye-separation-in-metres", Error, "eyeseparation",                           \
        "An eye separation in metres", Displays, Displays, zoHPCStereoChecks::eyeSeparationsInMetres)        \
    ROW(NoEyeSeparation, "no-eye-separation", Warning, "eyeseparation", "Stereo without eye separation",     \
        Displays, Displays, zoHPCStereoChecks::noEyeSeparations)                                             \
    ROW(UnlikeEyeSeparations, "unlike-eye-separations", Warning, "eyeseparation",                            \
        "Eye separations of unlike sign", Displays, Displays, zoHPCStereoChecks::unlikeEyeSeparations)       \
    ROW(SwappedEyes, "swapped-eyes", Note, "eyeseparation", "An eye separation below 0", Displays, Displays, \
        zoHPCStereoChecks::swappedEyes)                                                                      \
    ROW(DegeneratePlane, "degenerate-plane", Error, "", "A plane without area", Displays, Displays,          \
        zoHPCPlaneChecks::degeneratePlanes)                                                                  \
    ROW(SkewedPlane, "skewed-plane", Warning, "", "A plane whose corner is no right angle", Displays,        \
        Displays, zoHPCPlaneChecks::skewedPlanes)                                                            \
    ROW(MirroredPlane, "mirrored-plane", Warning, "", "A plane that turns its back to the viewer", Displays, \
        Displays, zoHPCPlaneChecks::mirroredPlanes)                                                          \
    ROW(BlendWiderThanOverlap, "blend-wider-than-overlap", Warning, "",                                      \
        "Edge blending wider than the overlap", Displays, Displays,                                          \
        zoHPCPlaneChecks::blendsWiderThanOverlap)                                                            \
    ROW(WallInMetres, "wall-in-metres", Warning, "", "A wall of a few millimetres", Displays, Displays,      \
        zoHPCPlaneChecks::wallsInMetres)                                                                     \
    ROW(NodeWithoutName, "node-without-name", Error, "name", "A node without name", Hosts, Hosts,            \
        zoHPCHostChecks::nodesWithoutName)                                                                   \
    ROW(DuplicateHostName, "duplicate-host-name", Warning, "name", "Two nodes of one name", Hosts, Hosts,    \
        zoHPCHostChecks::duplicateHostNames)                                                                 \
    ROW(NetworkWithoutEnabledNode, "network-without-enabled-node", Warning, "",                              \
        "A network in which no node is enabled", Hosts, Hosts, zoHPCHostChecks::networksWithoutEnabledNode)  \
    ROW(UnknownOptionValue, "unknown-option-value", Error, "", "A value that an option does not know",       \
        Hosts, Hosts, zoHPCHostChecks::unknownOptionValues)

// What the text of a document has and its items have not: they are read from it without what these tell of. A row has:
// the kind, its code, how bad it is, its title.
#define ZO_HPC_TEXT_PROBLEM_KINDS(ROW)                                                                       \
    ROW(UnknownElement, "unknown-element", Error, "An element that nobody reads")                            \
    ROW(MisplacedElement, "misplaced-element", Error, "An element at a place where nobody reads it")         \
    ROW(UnknownAttribute, "unknown-attribute", Error, "An attribute that nobody reads")                      \
    ROW(MissingAttribute, "missing-attribute", Error, "An attribute that has to be there")                   \
    ROW(RepeatedAttribute, "repeated-attribute", Error, "An attribute that is given twice")                  \
    ROW(UnknownValue, "unknown-value", Error, "A word that is none of those of its attribute")               \
    ROW(UnreadNumber, "unread-number", Error, "A number that cannot be read")                                \
    ROW(NumberOutOfRange, "number-out-of-range", Error, "A number that is too small or too large")           \
    ROW(UnknownProjection, "unknown-projection", Error, "A reference to a projection that there is not")     \
    ROW(MissingHostsFile, "missing-hosts-file", Warning, "A hosts file that cannot be read")                 \
    ROW(LaterVersion, "later-version", Warning, "A configuration of a later version")                        \
    ROW(StrayText, "stray-text", Warning, "Text that nobody reads")                                          \
    ROW(UncheckedRest, "unchecked-rest", Note, "What is not checked yet")

// One enumerator for each row of both.
enum class zoHPCProblemKind {
#define ZO_KIND(kind, ...) kind,
    ZO_HPC_PROBLEM_KINDS(ZO_KIND) ZO_HPC_TEXT_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
};
