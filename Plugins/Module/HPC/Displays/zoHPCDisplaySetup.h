#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QDomDocument;
class QDomElement;
class QTreeWidgetItem;
class zoHPCProjectionItem;
class zoHPCViewportItem;
class zoHPCWindowItem;

// The projections and displays of a configuration: two trees of items, with or without views that show them.
class zoHPCDisplaySetup final
{
public:
    // With roots of its own.
    zoHPCDisplaySetup();
    // Below the caller's roots, as those of two tree widgets. Not owned, they outlive the setup.
    zoHPCDisplaySetup(QTreeWidgetItem* projectionRoot, QTreeWidgetItem* displayRoot);
    ~zoHPCDisplaySetup();

    zoHPCDisplaySetup(const zoHPCDisplaySetup&) = delete;
    zoHPCDisplaySetup& operator=(const zoHPCDisplaySetup&) = delete;

    QTreeWidgetItem* projectionRoot() const { return m_projectionRoot; }
    QTreeWidgetItem* displayRoot() const { return m_displayRoot; }

    // In depth-first order, generated children included.
    QList<zoHPCProjectionItem*> getProjectionItems() const;
    QList<zoHPCViewportItem*> getViewportItems() const;
    // Every window and, because a viewport is a window, every viewport; callers filter by kind.
    QList<zoHPCWindowItem*> getWindowItems() const;

    // Which projections get their tiles and planes: all, or those alone of whose parts a viewport names one.
    enum class Tiles { All, Shown };

    // Appends the display section to the document element; nothing without one.
    void saveToXML(QDomDocument& document) const;
    // Replaces everything; a document without a root leaves nothing. Items come below the roots once they are
    // whole: upgraded from earlier versions and linked.
    void loadFromXML(const QDomDocument& document, Tiles tiles = Tiles::All);
    // No projections and one display.
    void setDefaultConfig();
    void clear();

    // These return whether an item changed.
    // Links viewports and projections: by identifier, else by name; what finds neither loses its projection.
    bool correctProjectionViewportsAssignments();
    // Documents of version 0 counted the rows of tiled walls from the other end.
    bool correctWrongRows();
    // Windows and viewports of unknown nodes lose their node.
    bool clearUnknownNodes(const std::function<bool(const QString&)>& isKnown);

    // Reads which identifier belongs to which name; of equal names the last counts.
    void collectProjections();
    // By identifier, as of the last collectProjections(); null when there is none.
    zoHPCProjectionItem* projectionOf(const zoHPCViewportItem& viewport) const;

    // Whether a viewport shows the projection itself, rather than one of its tiles.
    bool isShown(const zoHPCProjectionItem& projection) const;

    // "Projection1", "Projection2", ...: the first name that no projection has.
    QString getUniqueProjectionName() const;

    // Attribute names of an element of the display section in the order in which they are written; empty for
    // other elements.
    static QStringList attributeOrder(const QString& tagName);

private:
    void read(const QDomDocument& document, Tiles tiles);
    void readDisplays(const QDomElement& root);
    QStringList shownNames() const;
    bool linkViewports();
    // Without reading the names of tiles that nobody has touched.
    bool isAsCollected() const;

    // Of a projection or tile, as it was collected last.
    struct Collected
    {
        QString name;
        QString identifier;
        unsigned ownTiles;
        int children;
    };

    std::unique_ptr<QTreeWidgetItem> m_ownProjections; // null with roots of a caller
    std::unique_ptr<QTreeWidgetItem> m_ownDisplays;
    QTreeWidgetItem* m_projectionRoot; // not owned
    QTreeWidgetItem* m_displayRoot;    // not owned
    std::vector<Collected> m_collected;
    QHash<QString, QString> m_names;       // by identifier
    QHash<QString, QString> m_identifiers; // by name
};
