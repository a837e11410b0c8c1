#pragma once

#include <zoHPCElementScanner.h>

#include <QHash>
#include <QString>

#include <vector>

class QTreeWidgetItem;
class zoClusterSetup;

// Where in its text each item of a configuration was read from.
class zoSourcePlaces final
{
public:
    using Place = zoHPCElementScanner::Place;

    // The setup was read from its source().
    explicit zoSourcePlaces(zoClusterSetup& setup);

    // A generated tile has the place of its projection; what has no place is at the beginning.
    Place place(const QTreeWidgetItem* item) const;

private:
    void read(const QString& text);

    Place m_master;
    std::vector<Place> m_hosts;       // networks and nodes in the order of the text
    std::vector<Place> m_projections; // of the top level
    std::vector<Place> m_outputs;     // windows and viewports in the order of the text
    QHash<const QTreeWidgetItem*, Place> m_places;
};
