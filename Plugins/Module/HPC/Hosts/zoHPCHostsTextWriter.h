#pragma once

#include <string>
#include <vector>

class QString;
class QTreeWidgetItem;
class zoHPCTreeItem;

// Writes networks and nodes as hosts text, runs of hosts as ranges, into a byte buffer; without recursion.
class zoHPCHostsTextWriter final
{
public:
    void writeItem(zoHPCTreeItem* item, int depth);
    // Siblings.
    void writeRange(const std::vector<zoHPCTreeItem*>& items, int depth);
    void writeRangeOfChildren(zoHPCTreeItem* parent, int depth);

    const std::string& text() const { return m_text; }

private:
    struct Place
    {
        const QTreeWidgetItem* parent; // null: the list
        int next;
        int count;
        int depth;
        bool folds;
        int closes; // depth of the brace that ends the network, -1 for none
    };

    void open(zoHPCTreeItem* item, int depth);
    void run();
    void writeLine(int depth, const QString& name);
    void appendName(const QString& name);
    zoHPCTreeItem* at(const Place& place, int index) const;
    int lastOfRun(const Place& place) const;

    std::string m_text;
    const std::vector<zoHPCTreeItem*>* m_list = nullptr;
    std::vector<Place> m_places;
};
