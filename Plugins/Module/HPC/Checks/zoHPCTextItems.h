#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <vector>

class QTreeWidgetItem;
class zoHPCDisplaySetup;
class zoHPCTextParts;
class zoHPCTreeItem;

// From which part of its text each item of a configuration was read. Holds items: valid until the next change of their
// trees.
class zoHPCTextItems final
{
public:
    // Tells the tag of a part.
    using Tags = std::function<QString(int)>;

    // The items were read from the text.
    zoHPCTextItems(const zoHPCTextParts& text, const zoHPCDisplaySetup& displays, zoHPCTreeItem* master);
    // The items were read from a document of the text in which elements have other tags.
    zoHPCTextItems(const zoHPCTextParts& text, const Tags& tags, const zoHPCDisplaySetup& displays,
                   zoHPCTreeItem* master);

    // The number of the part; a generated tile has that of its projection. -1 for what has none.
    int part(const QTreeWidgetItem* item) const;

private:
    void read(const zoHPCTextParts& text, const Tags& tags);

    int m_master = -1;
    std::vector<int> m_hosts;       // networks and nodes in the order of the text
    std::vector<int> m_projections; // of the top level
    std::vector<int> m_displays;    // in the order of the text
    std::vector<int> m_outputs;     // windows and viewports in the order of the text
    QHash<const QTreeWidgetItem*, int> m_parts;
};
