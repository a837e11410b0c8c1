#pragma once

#include "Point3.h"

#include <QString>
#include <QStringList>

#include <vector>

// What was measured in a room: walls, which are rectangles, places on them, and numbers that a tape measure, a spirit
// level or a total station gave. Lengths are millimetres, angles degrees. A plain value; zoHPCSurveyReader makes one of
// a text, zoHPCSurveySolver finds the planes.
struct zoHPCSurvey final
{
    static constexpr int MaximumWalls = 2000;
    static constexpr int MaximumPoints = 20000;
    static constexpr int MaximumLists = 100; // of points
    static constexpr int MaximumMeasurements = 20000;
    // Longer than any hall, shorter than any screen.
    static constexpr double LargestLength = 1e6; // mm
    static constexpr double SmallestSize = 1.0;  // mm

    enum class Kind {
        Width,          // of a wall
        Height,         // of a wall
        Distance,       // between two places, in a straight line
        Floor,          // of a place above the floor
        Angle,          // between the pictures of two walls: 90 is a corner of a cave, 180 goes straight on
        Join,           // two places are the same
        Upright,        // the wall's left and right edges are plumb
        Level,          // the wall's lower edge is level
        Flat,           // the wall lies as a floor or a ceiling does
        Coordinates,    // of a place, in the axes of an instrument that stands level
        ViewerDistance, // in front of the first wall, at a right angle
        ViewerAside,    // to the right of the first wall's centre
        ViewerHeight,   // above the floor
        ViewerLevel     // as high as the first wall's centre
    };

    // A rectangle that the viewer looks at, the picture's lower left corner being its own.
    struct Wall
    {
        QString name;
        double width = 0.0; // as it was measured; 0 when it was not
        double height = 0.0;
        int columns = 1; // of equal tiles
        int rows = 1;
        double gapX = 0.0; // between neighbouring tiles
        double gapY = 0.0;
        int line = 0; // of the text, from 1

        // Whether neighbours share a whole tile or more, where it is so large, in mm.
        bool overlapsBeyond(double wholeWidth, double wholeHeight) const
        {
            return (columns > 1 && -gapX >= wholeWidth) || (rows > 1 && -gapY >= wholeHeight);
        }
    };

    struct Point
    {
        QString name;
    };

    // A point list: its axes are those of the room, turned about the vertical and moved.
    struct Instrument
    {
        QString file; // empty for points that stand in the text itself
        int line = 0; // of the text, from 1, which names the file; else 0
    };

    // On a wall, in fractions of it from its centre to the right and up (-0.5 to 0.5), or else a point.
    struct Place
    {
        int wall = -1;
        int point = -1;
        double s = 0.0;
        double t = 0.0;
    };

    struct Measurement
    {
        Kind kind = Kind::Distance;
        Place from; // the wall or the place; of Coordinates the place
        Place to;   // of Distance, Join and Angle
        double value = 0.0;
        // Of Coordinates: east, up and towards the south, in the axes of the instrument.
        Point3 coordinates;
        int instrument = -1;
        // One standard deviation, in the unit of the value; in degrees for Upright, Level and Flat.
        double tolerance = 1.0;
        QString file; // empty for the text itself
        int line = 0; // of the file, from 1
        // As it is called in tables: "distance Front.lr Left.ll".
        QString text;
    };

    // What was read in one of two ways.
    struct Remark
    {
        QString file; // empty for the text itself
        int line = 0; // from 1
        QString text;
    };

    // Of the point that is always there: the origin of the tracking, between the viewer's eyes.
    static constexpr int Viewer = 0;

    std::vector<Wall> walls;
    std::vector<Point> points;
    std::vector<Instrument> instruments;
    std::vector<Measurement> measurements;
    int front = 0; // the wall straight ahead
    // Of point lists, what no line names.
    QStringList unusedPoints;
    std::vector<Remark> remarks;

    // Whether its value is an angle in degrees; others are millimetres.
    static bool isAngle(Kind kind);
    // How many numbers one measurement gives.
    static int equationCount(Kind kind);

    // Those that measured nothing: where they stood could not be found out, nor does anybody need it.
    void removeUnusedInstruments();
};
