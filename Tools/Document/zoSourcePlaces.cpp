#include "zoSourcePlaces.h"

#include "zoClusterSetup.h"

zoSourcePlaces::zoSourcePlaces(zoClusterSetup& setup)
    : m_text(setup.source()), m_items(m_text, setup.displays(), setup.hosts().master())
{
}

zoSourcePlaces::Place zoSourcePlaces::place(const QTreeWidgetItem* item) const
{
    const int part = m_items.part(item);
    return part < 0 ? Place() : m_text.place(m_text.parts().at(part).offset);
}
