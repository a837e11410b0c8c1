#pragma once

#include <zoHPCRenderSetup.h>

#include <QHash>
#include <QRectF>
#include <QSize>

#include <vector>

// A wall laid flat: where each picture stands in one picture of all. Tiles lie as they do on their wall, the walls of a
// cave are unfolded around the front one, walls without a common room stand side by side from left to right as the
// viewer sees them. Pictures of the same plane go to further copies of the wall.
class zoWallArrangement final
{
public:
    // A wall as a whole, in millimetres.
    struct Wall
    {
        QString name;
        zoHPCPlane plane;
    };

    explicit zoWallArrangement(const zoHPCRenderSetup& setup);

    // Pixels, y down, of the picture with this index.
    QRectF place(int picture) const { return m_places[std::size_t(picture)]; }
    QSize size() const { return m_size; }
    const std::vector<Wall>& walls() const { return m_walls; }

private:
    using Picture = zoHPCRenderSetup::Picture;

    void noteWalls(int wall);
    void layFlat(int wall, const std::vector<int>& pictures);
    QRectF unfolded(const Picture& picture) const;
    void placeGroups(const std::vector<std::vector<int>>& groups);
    void placeCopies();
    QRectF around(const std::vector<int>& pictures) const;

    const zoHPCRenderSetup& m_setup;
    std::vector<QRectF> m_places;
    std::vector<Wall> m_walls;
    QSize m_size;
};
