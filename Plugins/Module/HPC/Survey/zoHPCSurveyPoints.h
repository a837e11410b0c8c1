#pragma once

#include "Point3.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

// A point list as a total station gives it: a line for each point, its name and three coordinates, separated by
// semicolons, commas, tabs or blanks. The first line may name the columns (name, x/east, y/north, z/height, in any
// order and among others); without it they are name, east, north and height. Further columns are not read. With
// semicolons, tabs or blanks a comma is a decimal mark. Where a list may be read in two ways, it is refused with the
// remedy, or its remark says which way it was read: "2,000", whole numbers separated by too many commas.
class zoHPCSurveyPoints final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCSurveyPoints)

public:
    struct Row
    {
        QString name;
        Point3 place; // millimetres: x to the east, y up, z to the south, as the room's axes
        int line = 0; // from 1
    };

    // `unit` is the factor to millimetres. With `isUpY` the columns are x, y and z of the room: y is up, z to the viewer.
    // False after a mistake.
    bool read(const QString& text, double unit, bool isUpY);

    const std::vector<Row>& rows() const { return m_rows; }
    const QString& mistake() const { return m_mistake; }
    int mistakeLine() const { return m_mistakeLine; }
    // What of a list without a mistake may be meant otherwise; empty for nothing.
    const QString& remark() const { return m_remark; }
    int remarkLine() const { return m_remarkLine; }

private:
    // What the numbers of a list say of its decimal mark.
    struct Marks
    {
        bool provesComma = false; // a comma that can separate no groups
        bool hasPoint = false;
        QString twofold; // the first cell with a comma that may
        int line = 0;
    };

    bool readHeader(const QStringList& cells);
    bool hasTooManyCells(const QStringList& cells, int line, bool isComma);
    void noteMarks(const QString& cell, int line);
    bool decideMarks(double unit);
    bool readRow(const QStringList& cells, int line, double unit, bool isUpY);
    bool refuse(int line, const QString& mistake);

    std::vector<Row> m_rows;
    int m_columns[4] = {0, 1, 2, 3}; // name, x, y, z
    int m_titles = 0;                // of the first line; 0 without
    Marks m_marks;
    QString m_mistake;
    int m_mistakeLine = 0;
    QString m_remark;
    int m_remarkLine = 0;
};
