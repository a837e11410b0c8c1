#pragma once

#include <QBrush>
#include <QCoreApplication>
#include <QString>

#include <vector>

class zoHPCRoomCanvas;
struct zoHPCRoomWall;

// Says at the lower edge of the room's picture what its colours and patterns mean, as far as they occur, and how
// wide the grid is.
class zoHPCRoomLegend final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCRoomPicture)

public:
    // The step of the grid is in millimetres; with or without what outlines of windows are. The canvas must outlive the legend.
    zoHPCRoomLegend(zoHPCRoomCanvas& canvas, const std::vector<zoHPCRoomWall>& walls, double gridStep,
                    bool hasFrames);

    // Keeps labels off its place.
    void paint();

private:
    struct Entry
    {
        QString text;
        QBrush ground;
        QBrush brush; // none: only the text
        Qt::PenStyle frame = Qt::NoPen;
    };

    void addEntries(const std::vector<zoHPCRoomWall>& walls, double gridStep);
    void addFrames();

    zoHPCRoomCanvas& m_canvas;
    std::vector<Entry> m_entries;
};
