#pragma once

#include "Point3.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeWidgetItem.h"

// A physical projection surface (power wall, tiled wall, cave, plane or tile) that keeps its planes or tiles
// as generated children.
class zoHPCProjectionItem final : public zoHPCTreeWidgetItem
{
public:
    // A damaged document may ask for any number of tiles. Beyond this many in one projection update() logs an
    // error and generates none.
    static constexpr int MaximumTiles = 100000;

    enum Column {
        Name = 0,
        Identifier = 1, // run time only
        Type = 2,
        RightOffsetX = 3,
        RightOffsetY = 4,
        Row = 5, // of a tile, from 1
        TileColumn = 6,
        Rows = 7,
        Columns = 8,
        OverlapX = 9,
        OverlapY = 10,
        CaveWidth = 11,
        CaveHeight = 12,
        CaveDepth = 13,
        CaveX = 14,
        CaveY = 15,
        CaveZ = 16,
        LeftWall = 17,
        RightWall = 18,
        TopWall = 19,
        BottomWall = 20,
        FrontWall = 21,
        BackWall = 22,
        Width = 23,
        Height = 24,
        Distance = 25,
        X1 = 26, // lower left
        Y1 = 27,
        Z1 = 28,
        X2 = 29, // lower right
        Y2 = 30,
        Z2 = 31,
        X3 = 32, // upper right
        Y3 = 33,
        Z3 = 34,
        EdgeBlending = 35,
        LeftEdge = 36, // blend widths, fractions of the tile
        RightEdge = 37,
        TopEdge = 38,
        BottomEdge = 39,
        ColumnCount = 40
    };

    // A type that zoHPCProjectionType does not know generates nothing.
    zoHPCProjectionItem(const QString& name, const QString& type);
    zoHPCProjectionItem(const QString& name, zoHPCProjectionType::Kind kind);
    ~zoHPCProjectionItem() override;

    QString projectionType() const;
    zoHPCProjectionType::Kind kind() const { return typeRow().kind; }
    const zoHPCProjectionType& typeRow() const { return zoHPCProjectionType::of(projectionType()); }

    void setName(const QString& name);
    // Does not regenerate the children; call update().
    void setProjectionType(const QString& type);

    // Replaces all children by those that follow from the parameters.
    void update() override;
    QDomElement toXML(QDomDocument& document, const QString& tagName) const override;
    // Stored children are not read: update() makes them anew.
    void fromXML(const QDomElement& element) override;
    const ColumnMap& getColumns() const override;

    // A copy with its own identifier. The source gets a new identifier, too, so what refers to it by
    // identifier has to be linked again by name.
    virtual zoHPCProjectionItem* clone();
    using QTreeWidgetItem::clone;

    // Icon of the type; power walls and unknown types keep theirs.
    void changeIcon();

    // Appends rows x columns "plane" children that tile the plane with these corners.
    void addPlane(const QString& name, const Point3& lowerLeft, const Point3& lowerRight,
                  const Point3& upperRight);

    // The columns that a projection of this type saves.
    static const ColumnMap& columns(const QString& type);

private:
    // A tile or plane made of its prototype, which shares the values that all of them have.
    zoHPCProjectionItem(const zoHPCProjectionItem& prototype) = default;

    void setDefaults();
    void addWallTiles();
    void addCaveWalls();
    bool hasTooManyTiles(int planes) const;
};
