#pragma once

#include "zoHPCReportSheets.h"
#include "zoHPCReportWalls.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class zoHPCReportFacts;

// The front elevation of a wall, to scale, as one who stands before it sees it: on each tile its row and column, its
// nodes and their screens. A wall with more tiles than a page has room for is drawn in parts, on a page each.
class zoHPCReportElevation final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCReportElevation)

public:
    // All must outlive it.
    zoHPCReportElevation(zoHPCReportSheets& sheets, const zoHPCReportFacts& facts,
                         const zoHPCReportWalls::Wall& wall);
    ~zoHPCReportElevation();

    zoHPCReportElevation(const zoHPCReportElevation&) = delete;
    zoHPCReportElevation& operator=(const zoHPCReportElevation&) = delete;

    // Adds caption and drawings to the sheets.
    void add();

private:
    // Tiles from a row and column on, counted from 0 from the upper left.
    struct Part
    {
        int row;
        int column;
        int rows;
        int columns;
    };
    struct Drawing;

    QString caption() const;
    QString captionOf(const Part& part) const;
    QString nameOf(const QString& node);
    void readLabels();
    std::vector<std::size_t> hardest() const;
    void choose();
    QSizeF sizeOf(int rows, int columns) const;
    double scaleFor(int rows, int columns) const;
    bool fits(int rows, int columns, double letters, const std::vector<std::size_t>& labels) const;
    double drawingHeight() const;
    void addPart(const Part& part);
    void addCells(const Part& part, Drawing& drawing) const;
    QString lengthText(double length) const;

    zoHPCReportSheets& m_sheets;
    const zoHPCReportFacts& m_facts;
    const zoHPCReportWalls::Wall& m_wall;
    std::vector<QString> m_labels; // row by row
    QStringList m_keys;            // names that are too long for a tile
    // In millimetres or pixels.
    QSizeF m_tile;
    QSizeF m_step;
    bool m_isToScale = true;
    int m_partRows = 1;
    int m_partColumns = 1;
    double m_letters = 8.0; // points
};
