#pragma once

#include "zoHPCRenderSetup.h"
#include "zoHPCReportWalls.h"

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

class zoHPCDisplaySetup;
class zoHPCTreeItem;

// What a report tells of a configuration: which node, screen and window each tile of each wall has, in words. Holds
// items: valid until the next change of their trees.
class zoHPCReportFacts final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCReportFacts)

public:
    // A viewport with its window, lit or not.
    struct Output
    {
        int viewport; // index into layout()
        int window;
        int projection;
        int picture;    // index into those of the render setup; zoHPCLayout::None when it is not lit
        QString whyNot; // then
    };

    // `pixelPitch` is the size of a pixel of tiled walls in millimetres, 0 when it is not known. No master means no
    // nodes.
    zoHPCReportFacts(const zoHPCDisplaySetup& displays, zoHPCTreeItem* master, double pixelPitch);

    const zoHPCRenderSetup& setup() const { return m_setup; }
    const zoHPCLayout& layout() const { return m_setup.layout(); }
    const std::vector<zoHPCReportWalls::Wall>& walls() const { return m_walls; }
    // In the order of the display setup, those without projection aside.
    const std::vector<Output>& outputs() const { return m_outputs; }
    // The same as indices into them, those of one node together in the order of its screens; nodes as the host tree
    // has them.
    std::vector<int> outputsByNode() const;

    // Outputs that show a tile of a wall, counted from 0 from the upper left, or a wall as a whole, as indices.
    std::vector<int> outputsOf(const zoHPCReportWalls::Wall& wall, int row, int column) const;
    std::vector<int> outputsOfWhole(const zoHPCReportWalls::Wall& wall) const;
    // Places of a wall in millimetres are known.
    bool isMeasured(const zoHPCRoomWall& wall) const { return !wall.isInPixels || m_pixelPitch > 0.0; }
    // Millimetres of what the wall counts in; 1 unless that is pixels of a known size.
    double scaleOf(const zoHPCRoomWall& wall) const;

    // Names as people see them: screens count from 1.
    QString nodeOf(const Output& output) const;
    QString screenOf(const Output& output) const;
    QString windowOf(const Output& output) const;
    QString tileOf(const Output& output) const;
    QString pixelsOf(const Output& output) const;
    // "left", "right" or a stereo mode; empty without stereo.
    QString eyeOf(const Output& output) const;
    // Empty for what has no place in millimetres.
    QStringList cornersOf(const Output& output) const;
    QString blendsOf(const Output& output) const;

    // In millimetres, pixels or degrees, with one decimal at most, the same in all languages.
    static QString number(double value);
    static QString size(double width, double height);

private:
    void readOutputs();
    const zoHPCRenderSetup::Picture* pictureOf(const Output& output) const;

    zoHPCRenderSetup m_setup;
    double m_pixelPitch; // mm; 0: unknown
    std::vector<zoHPCReportWalls::Wall> m_walls;
    std::vector<Output> m_outputs;
    QHash<int, std::vector<int>> m_outputsOfProjection;
    QHash<const zoHPCProjectionItem*, int> m_projections; // of the top level
};
