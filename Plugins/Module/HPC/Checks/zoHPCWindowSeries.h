#pragma once

#include <QString>

#include <memory>
#include <vector>

class zoHPCDisplayItem;
class zoHPCLayout;
class zoHPCProjectionItem;
class zoHPCTreeItem;
class zoHPCWindowItem;

// Windows that follow from those that there are: copies on the next nodes that show the next tiles, and a window for
// each surface that nobody shows, in the order of the nodes.
class zoHPCWindowSeries final
{
public:
    using Windows = std::vector<std::unique_ptr<zoHPCWindowItem>>;

    // One for all surfaces that nobody shows: where the windows go, like which they are, and what they get.
    struct Cover
    {
        struct Slot
        {
            QString node; // empty once no node is free
            int screen = 0;
        };

        // By its names: tiles are laid out anew when their wall changes.
        struct Surface
        {
            QString identifier;
            QString name;
        };

        zoHPCDisplayItem* display = nullptr; // not owned; null when there is no display
        std::vector<const zoHPCWindowItem*>
            pattern;                // of one surface; not owned; empty for windows as new ones
        std::vector<Surface> shown; // in the order of their tree
        std::vector<Slot> places;   // for each surface one for each window of the pattern
        bool hasScreens = false;    // several windows on a node: each has a screen of its own
        int width = 0;              // pixels, of windows without a pattern
        int height = 0;

        // Whether the windows would mend more than they break: each has a place, and what it shows a name of its own.
        bool isSound = false;

        // To be added to the display, at once.
        Windows windows() const;
    };

    zoHPCWindowSeries() = delete;

    // Whether a node draws windows while others are free: neither a gateway nor one that does not render.
    static bool isDrawing(const zoHPCTreeItem& node);
    // Whether no viewport shows the tile by its index; what has no tiles cannot be shown.
    static bool isDark(const zoHPCLayout& layout, size_t projection);

    // Of a layout that may go afterwards, as its displays and windows may not.
    static Cover cover(const zoHPCLayout& layout);

    // Copies of the windows in their order. As many nodes as they have are passed by, and as many tiles as they show:
    // two windows of one node, or for two eyes, stay together. What has no successor is left empty; a viewport of a
    // whole wall goes on showing it.
    static Windows after(const zoHPCLayout& layout, const std::vector<const zoHPCWindowItem*>& windows);
    // The windows get the node and those that follow it, in their order; windows of one node stay together. Those
    // beyond the last node get none.
    static std::vector<QString> nodesFrom(const zoHPCLayout& layout, const QString& first,
                                          const std::vector<const zoHPCWindowItem*>& windows);
};
