#pragma once

#include <QHash>
#include <QList>
#include <QRectF>
#include <QSet>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QTreeWidget;
class QTreeWidgetItem;
class zoHPCDisplayItem;
class zoHPCDisplaySetup;
class zoHPCProjectionItem;
class zoHPCTreeItem;
class zoHPCViewportItem;
class zoHPCWindowItem;

// A configuration read once from its items: who shows what, where. What checks and draws a setup works on
// this, with or without a window on the screen. Holds items: valid until the next change of their trees.
class zoHPCLayout final
{
public:
    enum Eye : unsigned { NoEye = 0, LeftEye = 1, RightEye = 2, BothEyes = 3 };

    // Windows of this "screen" are placed on the desktop that spans all screens of a node.
    static constexpr int ExtendedDesktop = -2;
    static constexpr int PrimaryScreen = -1;
    // In place of an index.
    static constexpr int None = -1;

    struct Node
    {
        zoHPCTreeItem* item = nullptr;
        QString name;        // unique, the one that windows refer to; empty for a node without a name
        bool enabled = true; // with all above it
    };

    struct Network
    {
        zoHPCTreeItem* item = nullptr;
        bool enabled = true; // with all above it
        std::vector<zoHPCTreeItem*> nodes;
        int enabledNodes = 0;
    };

    struct Projection
    {
        zoHPCProjectionItem* item = nullptr;
        int parent = None;
        int top = None;       // the row of the tree that it belongs to; itself at top level
        bool isTile = true;   // nothing below it
        bool isShown = false; // by a viewport of its own or of a projection above it, overviews aside

        QString name() const;
    };

    struct Window
    {
        zoHPCWindowItem* item = nullptr;
        int display = 0; // numbers as a person counts them, from 1
        int number = 0;
        QString user;
        QString node;
        int nodeIndex = None;
        QString machine; // equal for windows of one machine, however many nodes name it; empty without a node
        int screen = 0;
        bool hasScreen = true; // false for a word that is no screen
        bool isFullScreen = false;
        QRectF geometry; // pixels, y down; means nothing while full screen
    };

    struct Viewport
    {
        zoHPCViewportItem* item = nullptr;
        int window = None;
        int number = 0; // in its window, from 1
        int projection = None;
        unsigned eyes = BothEyes;
        bool isStereo = false; // a mode that has the two eyes see different pictures
        // Shows the whole of a projection whose tiles have viewports of their own: a copy beside the wall.
        bool isOverview = false;
        QRectF area; // fractions of the window, y down
    };

    zoHPCLayout() = default;
    // Lists in depth-first order as zoHPCDisplaySetup gives them; no master means no nodes.
    zoHPCLayout(const QList<zoHPCProjectionItem*>& projections, const QList<zoHPCWindowItem*>& windows,
                zoHPCTreeItem* master);
    // The same from a whole setup.
    zoHPCLayout(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master);
    // The same from whole trees, each of which may be null.
    zoHPCLayout(const QTreeWidget* projections, const QTreeWidget* displays, zoHPCTreeItem* master);

    zoHPCTreeItem* master() const { return m_master; } // null without a host tree
    const std::vector<Node>& nodes() const { return m_nodes; }
    const std::vector<Network>& networks() const { return m_networks; }
    const std::vector<Projection>& projections() const { return m_projections; }
    const std::vector<Window>& windows() const { return m_windows; }
    const std::vector<Viewport>& viewports() const { return m_viewports; }
    // Those without windows are known to a layout of whole trees alone.
    const std::vector<zoHPCDisplayItem*>& displays() const { return m_displays; }

    // Index of the projection's row, None for a row that is no projection of this layout.
    int indexOf(const QTreeWidgetItem* projection) const;
    // Projections that rows of the trees stand for, each once: a projection for itself, a viewport for what it shows,
    // a window and a display for what all viewports below them show.
    std::vector<int> chosenBy(const QSet<const QTreeWidgetItem*>& rows) const;
    // The tiles for which the claim holds, by their indices; where it holds for all tiles of a row of the tree,
    // that row instead.
    std::vector<const Projection*> tilesOrTheirProjections(const std::function<bool(size_t)>& claim) const;
    // Size of the tiles of a projection that has pixels: that of the first viewport that shows one of them. New
    // windows have the fallback.
    QSizeF tilePixels(int projection) const;
    // Names of the nodes whose windows show a projection itself, for each projection, in the order of the windows.
    std::vector<QStringList> nodesOfProjections() const;
    // By its unique name; None when there is no such node.
    int nodeNamed(const QString& name) const;

    // The eyes that a viewport serves. One without stereo shows both eyes the same picture.
    static unsigned eyesOf(const QString& eye);
    // Whether the word is a number of a screen, or one of those that stand for several.
    static bool isScreen(const QString& word);

private:
    Window windowOf(zoHPCWindowItem* item) const;
    void readProjections(const QList<zoHPCProjectionItem*>& items);
    void readWindows(const QList<zoHPCWindowItem*>& items);
    void readDisplays(const QTreeWidgetItem* root);
    void linkViewports();
    void markOverviews();
    void markShown();
    void readNodes(zoHPCTreeItem* master);
    void addNode(zoHPCTreeItem* item, int network, bool enabled);
    void nameNodes();
    // Holds a node of the name, or is free.
    std::size_t nodeSlot(const QString& name) const;

    zoHPCTreeItem* m_master = nullptr;
    std::vector<Node> m_nodes;
    std::vector<Network> m_networks;
    std::vector<Projection> m_projections;
    std::vector<Window> m_windows;
    std::vector<Viewport> m_viewports;
    std::vector<zoHPCDisplayItem*> m_displays;
    // A flat table of nodes by name, 0 for a free slot or the index of the first node that is called so, plus 1: of a
    // million nodes small allocations would cost more than all else.
    std::vector<int> m_nodeSlots;
};
