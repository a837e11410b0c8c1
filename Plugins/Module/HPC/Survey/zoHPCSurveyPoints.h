#pragma once

#include "Point3.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

// A point list as a total station gives it: a line for each point, its name and three coordinates, separated by
// semicolons, commas, tabs or blanks. The first line may name the columns (name, x/east, y/north, z/height, in any
// order and among others); without it they are name, east, north and height. Further columns are not read. With
// semicolons or tabs a comma is a decimal mark.
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

private:
    bool readHeader(const QStringList& cells);
    bool readRow(const QStringList& cells, int line, double unit, bool isUpY);
    bool refuse(int line, const QString& mistake);

    std::vector<Row> m_rows;
    int m_columns[4] = {0, 1, 2, 3}; // name, x, y, z
    QString m_mistake;
    int m_mistakeLine = 0;
};
