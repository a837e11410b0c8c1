#pragma once

#include "zoHPCSurvey.h"

#include <Eigen/Dense>

#include <vector>

// Where everything of a measured room is, as far as is known: the unknowns of the adjustment. The floor is at y = 0.
//
// A wall has eight: its centre c, a rotation R whose columns are the wall's right, its up and the normal towards the
// viewer, width w and height h. Its place (s, t) is
//
//     P = c + R (s w, t h, 0)'
//
// A rotation changes by a small vector, R <- exp([w]x) R, so that dP = w x (P - c) and there is no direction in which
// angles fail. Its unknowns count as the way, in mm, of what is a metre away: then all unknowns have one unit. A point
// has three unknowns, an instrument four: where it stands, and its heading about the vertical.
class zoHPCSurveyState final
{
public:
    using Vector = Eigen::Vector3d;
    using Matrix = Eigen::Matrix3d;

    enum class Kind { Wall, Point, Instrument };
    static constexpr double Lever = 1000.0; // mm
    static constexpr int MostUnknowns = 8;
    // Components of walls and instruments; a point has the first three alone.
    enum Component { PositionX, PositionY, PositionZ, RotationX, RotationY, RotationZ, WidthOf, HeightOf };

    struct Item
    {
        Kind kind = Kind::Point;
        Vector position = Vector::Zero(); // mm; of an instrument where the middle of its points is
        Matrix axes = Matrix::Identity();
        double width = 0.0; // mm; of walls
        double height = 0.0;

        int unknowns() const;
        // By a step in its unknowns.
        void move(const double* step);
    };

    // A place, and how it follows the unknowns of its item.
    struct Reach
    {
        int item;
        Vector at;
        int count;
        Vector partials[MostUnknowns];
    };

    explicit zoHPCSurveyState(const zoHPCSurvey& survey);

    int itemOf(const zoHPCSurvey::Place& place) const;
    int itemOfPoint(int point) const { return m_walls + point; }
    int itemOfInstrument(int instrument) const { return m_walls + m_points + instrument; }

    Vector at(const zoHPCSurvey::Place& place) const;
    Reach reach(const zoHPCSurvey::Place& place) const;
    // Of an instrument's coordinates, without its heading's partial being anything but component 3.
    Reach reach(int instrument, const Point3& coordinates) const;

    std::vector<Item> items; // walls, points, instruments

private:
    int m_walls;
    int m_points;
    std::vector<Vector> m_middles; // of the coordinates of each instrument
};
