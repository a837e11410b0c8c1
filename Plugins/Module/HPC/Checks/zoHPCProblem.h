#pragma once

#include <QString>

#include <functional>

class QTreeWidgetItem;

// Something in a configuration that would not light up as meant, the item it concerns and, where one exists,
// a way to mend it. Holds items: valid until the next change of their trees.
class zoHPCProblem final
{
public:
    enum class Kind {
        ViewportWithoutProjection,
        WindowWithoutNode,
        WindowWithUnknownNode,
        WindowWithDisabledNode,
        OverlappingWindows,
        TileShownNowhere,
        TileShownTwice,
        TileForOneEye,
        DegeneratePlane,
        SkewedPlane,
        MirroredPlane,
        BlendWiderThanOverlap,
        WallInMetres,
        DuplicateHostName,
        NetworkWithoutEnabledNode
    };

    zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text);

    // Stable word for the kind, the same in all languages, such as "viewport-without-projection".
    static QString kindName(Kind kind);

    bool hasFix() const { return static_cast<bool>(fix); }
    // Whether the item is a row of the host tree; otherwise it is one of the display setup.
    bool concernsHost() const;

    Kind kind;
    QString message;
    QTreeWidgetItem* item;            // not owned
    QTreeWidgetItem* other = nullptr; // the second one of a pair; not owned
    QString fixText;                  // what the fix does, for a button
    // Changes the items' values. To be called once at most, while the item lives; announces nothing beyond
    // what the trees announce themselves.
    std::function<void()> fix;
};
