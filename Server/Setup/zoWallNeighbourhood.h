#pragma once

#include <zoHPCRenderSetup.h>

// Which pictures adjoin each other on the wall: neighbours in the grid of tiles and, where that ends, walls of a room
// that share an edge.
class zoWallNeighbourhood final
{
public:
    // Indices of pictures; -1 for none.
    struct Sides
    {
        int left = -1;
        int right = -1;
        int above = -1;
        int below = -1;
    };

    // The setup outlives it.
    explicit zoWallNeighbourhood(const zoHPCRenderSetup& setup) : m_pictures(setup.pictures()) {}

    // Of several pictures of one tile, as for the two eyes, the one that serves the same eye.
    Sides of(int picture) const;

private:
    int inGrid(const zoHPCRenderSetup::Picture& picture, int rowStep, int columnStep) const;
    int alongEdge(const zoHPCRenderSetup::Picture& picture, const Point3& from, const Point3& to) const;
    template <class Claim>
    int best(const zoHPCRenderSetup::Picture& picture, Claim claim) const;

    const std::vector<zoHPCRenderSetup::Picture>& m_pictures;
};
