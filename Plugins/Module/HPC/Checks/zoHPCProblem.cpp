#include "zoHPCProblem.h"

zoHPCProblem::zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text)
    : kind(problemKind), message(text), item(concerned)
{
}

QString zoHPCProblem::kindName(Kind kind)
{
    switch (kind) {
    case Kind::ViewportWithoutProjection:
        return QString::fromLatin1("viewport-without-projection");
    case Kind::WindowWithoutNode:
        return QString::fromLatin1("window-without-node");
    case Kind::WindowWithUnknownNode:
        return QString::fromLatin1("window-with-unknown-node");
    case Kind::WindowWithDisabledNode:
        return QString::fromLatin1("window-with-disabled-node");
    case Kind::OverlappingWindows:
        return QString::fromLatin1("overlapping-windows");
    case Kind::TileShownNowhere:
        return QString::fromLatin1("tile-shown-nowhere");
    case Kind::TileShownTwice:
        return QString::fromLatin1("tile-shown-twice");
    case Kind::TileForOneEye:
        return QString::fromLatin1("tile-for-one-eye");
    case Kind::DegeneratePlane:
        return QString::fromLatin1("degenerate-plane");
    case Kind::SkewedPlane:
        return QString::fromLatin1("skewed-plane");
    case Kind::MirroredPlane:
        return QString::fromLatin1("mirrored-plane");
    case Kind::BlendWiderThanOverlap:
        return QString::fromLatin1("blend-wider-than-overlap");
    case Kind::WallInMetres:
        return QString::fromLatin1("wall-in-metres");
    case Kind::DuplicateHostName:
        return QString::fromLatin1("duplicate-host-name");
    case Kind::NetworkWithoutEnabledNode:
        return QString::fromLatin1("network-without-enabled-node");
    }
    return QString();
}

bool zoHPCProblem::concernsHost() const
{
    return kind == Kind::DuplicateHostName || kind == Kind::NetworkWithoutEnabledNode;
}
