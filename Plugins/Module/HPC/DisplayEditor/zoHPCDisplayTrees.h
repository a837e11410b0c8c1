#pragma once

#include <QSignalBlocker>

#include <memory>
#include <vector>

class QTreeWidget;
class QTreeWidgetItem;
class zoHPCDisplayItem;
class zoHPCProjectionItem;
class zoHPCWindowItem;

// The two trees of the display setup: which rows are current, and changes of many rows at once.
class zoHPCDisplayTrees final
{
public:
    // Changes values of many outputs as one: while it lives the view hears nothing, then it is painted once.
    // Rows must neither come nor go.
    class BulkChange final
    {
    public:
        explicit BulkChange(const zoHPCDisplayTrees& trees);
        ~BulkChange();

        BulkChange(const BulkChange&) = delete;
        BulkChange& operator=(const BulkChange&) = delete;

    private:
        QTreeWidget* m_outputs; // not owned
        QSignalBlocker m_blocker;
    };

    // Not owned. Only their first columns are shown; the others hold the properties.
    zoHPCDisplayTrees(QTreeWidget* projections, QTreeWidget* outputs);

    QTreeWidget* projections() const { return m_projections; }
    QTreeWidget* outputs() const { return m_outputs; }

    // Each may be null.
    zoHPCProjectionItem* currentProjection() const;
    zoHPCDisplayItem* currentOutput() const;
    zoHPCDisplayItem* currentDisplay() const; // of the current row or above it
    zoHPCWindowItem* currentWindow() const;   // likewise

    // At top level, and current.
    void addProjection(std::unique_ptr<zoHPCProjectionItem> projection);
    // Becomes current where nothing is: it is what windows are to be added to.
    void addDisplay();
    // A viewport goes to the current window, a window to the current display, a display to the top level. Becomes
    // current. False, and the item is gone, without such a parent.
    bool addOutput(std::unique_ptr<zoHPCDisplayItem> item);
    // What is selected, with all below it, or the current row where nothing is; planes and tiles that a projection
    // lays out stay, unless they are current. Empty when there is nothing. The row that is current then is selected.
    static std::vector<std::unique_ptr<QTreeWidgetItem>> takeChosen(QTreeWidget* tree);
    // The children of a projection at top level take its place. Returns the first of them.
    QTreeWidgetItem* replaceByChildren(zoHPCProjectionItem* projection);

    void clear();
    void clearCurrentRows();
    // Lays out the children of a projection anew. Rows that keep their names stay, with their selection, and what
    // changed of them is announced once: true then. False when they are others: a generated row that is current goes
    // with all others; its successor takes its place.
    bool regenerate(zoHPCProjectionItem* projection);
    void setEyeSeparation(double separation); // mm, of all displays
    // Of all tiled walls, in millimetres.
    void setWallDistance(double distance);
    void expandOutputs();

    static bool isViewport(const QTreeWidgetItem* item);
    static bool isPlainWindow(const QTreeWidgetItem* item);
    static bool isPlainDisplay(const QTreeWidgetItem* item);

private:
    QTreeWidget* m_projections;
    QTreeWidget* m_outputs;
};
