#pragma once

#include "zoHPCPlane.h"
#include "zoHPCProjectionColumns.h"
#include "zoHPCProjectionType.h"
#include "zoHPCTreeWidgetItem.h"

#include <memory>
#include <vector>

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

    // Without, update() generates no tiles or planes, for readers that look at the projection alone.
    void setIsLaidOut(bool isLaidOut) { m_isLaidOut = isLaidOut; }
    // As many as update() generates of one that is laid out.
    int tileCount() const;

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
    // The same where children keep their number and names, and nobody has touched them since: each gets its new values
    // and stays. False, and nothing has happened, elsewhere. The model announces each value, unless its signals are
    // blocked.
    bool updateValues();
    // A number for the children while they are those that update() made, in its order, and no property of them was set
    // since: the same number means the same names. 0 for any others and for none.
    unsigned ownTiles() const;
    void setData(int column, int role, const QVariant& value) override;
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
    // What the children are called and how many there are.
    struct Layout
    {
        zoHPCProjectionType::Kind kind = zoHPCProjectionType::Kind::Other;
        QString name;
        QString identifier;
        int rows = 0;
        int columns = 0;
        int walls = 0; // of a cave, a bit each
        int tiles = 0;

        bool operator==(const Layout& other) const;
    };
    // How the tiles of a plane lie on it.
    struct Grid;
    struct CaveWall;

    // A tile or plane made of its prototype, which shares the values that all of them have.
    zoHPCProjectionItem(const zoHPCProjectionItem& prototype) = default;

    void setDefaults();
    Layout layout() const;
    zoHPCPlane powerWallPlane() const;
    Grid gridOf(const zoHPCPlane& plane) const;
    // Values of a child that follow from those of its projection.
    void giveTileValues(zoHPCProjectionItem& tile) const;
    void givePlaneValues(zoHPCProjectionItem& plane) const;
    void placeTile(zoHPCProjectionItem& plane, const Grid& grid, int row, int column) const;
    void placeTiles(const zoHPCPlane& plane, int firstChild);
    // As setData(), of a child that stays one of its projection's own.
    void put(int column, const QVariant& value);
    // Whether this projection has made the child with this index, and nobody has changed it or added to it since.
    bool isOwnChild(int index) const;
    // The next one below the items that are to be added.
    void addOwn(std::unique_ptr<zoHPCProjectionItem> child, QList<QTreeWidgetItem*>& items) const;
    void addWallTiles();
    // Which its tiles are on: one, the walls of a cave, none.
    int planeCount() const;
    std::vector<CaveWall> caveWalls() const;
    bool hasTooManyTiles(int planes) const;

    int m_tileLimit = MaximumTiles;
    qint64 m_nameLimit = MaximumNameCharacters;
    bool m_isLaidOut = true;
    Layout m_layout;           // as of the last update()
    unsigned m_generation = 0; // of the children, a number of its own for each time that some were made
    unsigned m_madeIn =
        0;            // the generation that this one belongs to; 0 for one that was not made so, or changed
    int m_madeAs = 0; // its index then
};
