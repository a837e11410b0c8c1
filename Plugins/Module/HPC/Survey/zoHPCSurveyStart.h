#pragma once

#include "zoHPCSurveyState.h"

#include <cstddef>
#include <vector>

class zoHPCSurveyAdjustment;

// Places everything so that an adjustment finds its way: first the front wall, then, one after the other, what most
// measurements hold to what is placed already. Each is tried in likely poses, beside, in front of and opposite to its
// neighbours, and stays where it fits best. Of two mirror images that fit as well, the one that turns towards the viewer
// is taken.
class zoHPCSurveyStart final
{
public:
    using Item = zoHPCSurveyState::Item;

    zoHPCSurveyStart(const zoHPCSurvey& survey, zoHPCSurveyState& state);

    void placeAll();

private:
    // One of the poses, and how well it fits.
    struct Trial
    {
        std::size_t order;
        double cost;
    };

    void placed(int item);
    int next() const;
    void place(int item);
    Item chosen(int item, const std::vector<Trial>& trials, const std::vector<Item>& list,
                zoHPCSurveyAdjustment& adjustment);
    std::vector<Item> mirrorImages(int item, const Item& pose) const;
    int facingCount(int item, const Item& pose) const;
    std::vector<int> measurementsTo(int item) const;
    std::vector<int> neighbours(int item) const;

    std::vector<Item> candidates(int item) const;
    void addWalls(int item, int neighbour, std::vector<Item>& list) const;
    void addGlued(int item, int neighbour, std::vector<Item>& list) const;
    void addByCoordinates(int item, std::vector<Item>& list) const;
    void addPoints(int item, std::vector<Item>& list) const;
    void addInstruments(int item, std::vector<Item>& list) const;
    std::vector<double> angles(int item, int neighbour) const;

    const zoHPCSurvey& m_survey;
    zoHPCSurveyState& m_state;
    std::vector<std::vector<int>> m_ofItem; // measurements
    std::vector<bool> m_isPlaced;
    std::vector<int> m_held; // numbers that hold it to what is placed; -1 where there are none
};
