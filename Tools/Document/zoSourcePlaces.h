#pragma once

#include <zoHPCTextItems.h>
#include <zoHPCTextParts.h>

class QTreeWidgetItem;
class zoClusterSetup;

// Where in its text each item of a configuration was read from.
class zoSourcePlaces final
{
public:
    using Place = zoHPCTextParts::Place;

    // The setup was read from its source().
    explicit zoSourcePlaces(zoClusterSetup& setup);

    // A generated tile has the place of its projection; what has no place is at the beginning.
    Place place(const QTreeWidgetItem* item) const;

private:
    zoHPCTextParts m_text;
    zoHPCTextItems m_items;
};
