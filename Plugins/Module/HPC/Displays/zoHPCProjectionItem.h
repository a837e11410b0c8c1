#pragma once

#include "zoHPCPlane.h"
#include "zoHPCProjectionColumns.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeWidgetItem.h"

// A physical projection surface (power wall, tiled wall, cave, plane or tile) that keeps its planes or tiles
// as generated children.
class zoHPCProjectionItem final : public zoHPCTreeWidgetItem, public zoHPCProjectionColumns
{
public:
    // A damaged document may ask for any number of tiles. Beyond this many in one projection update() logs an
    // error and generates none. Those of one document share it, see setTileLimit().
    static constexpr int MaximumTiles = 100000;
    // Each tile has the name of its projection in its own: what these have altogether is limited in the same way.
    static constexpr qint64 MaximumNameCharacters = 10 * 1000 * 1000;

    // Not that of QTreeWidgetItem.
    using zoHPCProjectionColumns::Type;

    // A type that zoHPCProjectionType does not know generates nothing.
    zoHPCProjectionItem(const QString& name, const QString& type);
    zoHPCProjectionItem(const QString& name, zoHPCProjectionType::Kind kind);
    ~zoHPCProjectionItem() override;

    QString projectionType() const;
    zoHPCProjectionType::Kind kind() const { return typeRow().kind; }
    const zoHPCProjectionType& typeRow() const { return zoHPCProjectionType::of(projectionType()); }

    // Of a projection of type "plane".
    zoHPCPlane plane() const;
    void setPlane(const zoHPCPlane& plane);

    // How many tiles update() generates at most, and how many characters of the projection's name these repeat; the
    // maxima where nobody says less.
    void setTileLimit(int tiles, qint64 nameCharacters)
    {
        m_tileLimit = tiles;
        m_nameLimit = nameCharacters;
    }

    void setName(const QString& name);
    // Does not regenerate the children; call update().
    void setProjectionType(const QString& type);
    // Parameters of its type that were never set, as those that another type does not save, get the values of a
    // new projection.
    void setMissingDefaults();
    // What tiles and planes get of an overlap: the fractional part is dropped, however the number is spelled.
    int wholeOverlap(int column) const;

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

    int m_tileLimit = MaximumTiles;
    qint64 m_nameLimit = MaximumNameCharacters;
};
