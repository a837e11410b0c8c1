#pragma once

#include "zoHPCWallPlan.h"

#include <QCoreApplication>

#include <vector>

// How the windows of a plan go to nodes and screens.
class zoHPCWallWindows final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCWallWindows)

public:
    struct Window
    {
        int tile;   // from 0, in the order of tiles
        int eye;    // from 0, of the stereo mode's
        int node;   // from 0, of those that drive screens
        int screen; // from 0
    };

    // Of so many tiles over so many nodes; there are windows or a mistake.
    zoHPCWallWindows(const zoHPCWallPlan& plan, int tiles, int nodes);

    // In the order in which the document has them.
    const std::vector<Window>& windows() const { return m_windows; }
    const std::vector<zoHPCWallPlan::Mistake>& mistakes() const { return m_mistakes; }

    // Where nodes do not get equally many: which get one more. Empty otherwise.
    const QString& note() const { return m_note; }

private:
    bool fill(const zoHPCWallPlan& plan, int nodes, int each);
    bool spread(const zoHPCWallPlan& plan, int nodes);
    void place(const zoHPCWallPlan& plan);
    bool refuse(zoHPCWallPlan::Field field, const QString& text);
    QString noteOf(const zoHPCWallPlan& plan, int first) const;
    static QString tooMany(int each);
    static int nodesOfEye(const zoHPCWallPlan& plan, int nodes);

    int m_tiles;
    std::vector<int> m_each; // most windows of each node; where nodes have one eye, of those for each
    std::vector<Window> m_windows;
    std::vector<zoHPCWallPlan::Mistake> m_mistakes;
    QString m_note;
};
