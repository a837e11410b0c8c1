#pragma once

#include "zoHPCWallPlan.h"

#include <QCoreApplication>

#include <vector>

// What is wrong with a plan before anything is made of it, hosts and windows aside.
class zoHPCWallMistakes final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCWallMistakes)

public:
    using List = std::vector<zoHPCWallPlan::Mistake>;

    // Tiles in a row or a column.
    static constexpr int MostInARow = 1000;
    static constexpr int MostPixels = 100000;
    // Longer than any hall.
    static constexpr double MostMillimetres = 1e6;
    // Smaller ones are slips, not screens in metres.
    static constexpr double LeastMillimetres = 0.01;
    static constexpr double LeastDistance = 0.1;      // mm, of the viewer from a plane
    static constexpr double MostBetweenEyes = 1000.0; // mm
    static constexpr double MostDegrees = 360.0;

    static List find(const zoHPCWallPlan& plan);
    // Of a plan without mistakes: what may yet be meant.
    static List findDoubts(const zoHPCWallPlan& plan);

    // Of the character that stands there, of zoHPCDocumentWriter::findUnwritable().
    static QString unwritable(const QString& text, int at);

private:
    explicit zoHPCWallMistakes(const zoHPCWallPlan& plan) : m_plan(plan) {}

    void checkTiles();
    void checkWindows(zoHPCWallPlan::Field field);
    void checkOverlap();
    void checkTiled();
    void checkSize();
    void checkCave();
    void checkCurve();
    void checkPlanes();
    void checkViewer();
    void checkViewerOfColumns();
    void doubtViewerInCave();
    void doubtViewerOfPlanes();
    void doubtSize();
    void checkName();
    void checkStereo();
    static QString sizes();
    void add(zoHPCWallPlan::Field field, const QString& text) { m_list.push_back({field, text}); }
    bool hasMistakes() const { return !m_list.empty(); }

    const zoHPCWallPlan& m_plan;
    List m_list;
};
