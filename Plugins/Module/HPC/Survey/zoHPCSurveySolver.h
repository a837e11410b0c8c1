#pragma once

#include "zoHPCPlane.h"
#include "zoHPCSurvey.h"

#include <QStringList>

#include <vector>

// The planes of a measured room, and how well they fit what was measured.
//
// Least squares of the observation equations (zoHPCSurveyEquations), weighted by the tolerances, solved by
// Levenberg-Marquardt (zoHPCSurveyAdjustment) from likely poses (zoHPCSurveyStart). With J the partials, N = J'J and m
// the misclosures, each divided by its tolerance s, what fits worst is found by data snooping (W. Baarda, "A Testing
// Procedure for Use in Geodetic Networks", Delft 1968):
//
//     redundancy of a number      r = 1 - (J inv(N) J')ii        sum over all = numbers - unknowns
//     standardised residual       m / sqrt(r)                    normally distributed, if the tolerances are right
//     the mistake that explains it (measured - fitted) / r
//
// One mistake among good measurements has the largest standardised residual. A number with r near 0 is checked by no
// other, and no mistake in it would be seen.
class zoHPCSurveySolution final
{
public:
    struct Residual
    {
        double measured = 0.0; // mm or degrees; of measurements with several numbers 0
        double fitted = 0.0;   // of these the distance or the angle that remains
        double residual = 0.0; // measured - fitted; of these the same as fitted
        // The same in mm: of angles what it makes at the far end of the wall.
        double millimetres = 0.0;
        double standardized = 0.0; // without sign; the largest of its numbers
        double redundancy = 0.0;   // 0 to 1; the mean of its numbers
        double mistake = 0.0;      // mm or degrees; what it would have to be shorter by, if it is the mistake
    };

    // A deviation beyond this is of no use to anybody.
    static constexpr double Weak = 50.0; // mm

    // As the measurements.
    std::vector<Residual> residuals;
    // As the walls. The origin is the viewer, who looks along -z towards the front wall.
    std::vector<zoHPCPlane> planes;
    // By how much a corner of each may be wrong, one standard deviation by the tolerances, mm.
    std::vector<double> deviations;
    std::vector<Point3> points; // as the points
    double floor = 0.0;         // height of the floor, mm; below 0
    // What the measurements leave open, a sentence each; the planes are of no use unless it is empty.
    QStringList undetermined;
    // How many numbers there are beyond what is needed.
    int redundancy = 0;
    // Of the residuals, in tolerances: about 1 when these are right.
    double fit = 0.0;
    // The measurement with the largest standardised residual; -1 when none is checked by others.
    int worst = -1;
    // Those whose mistake would look the same.
    std::vector<int> rivals;
    bool hasConverged = false;

    bool isDetermined() const { return undetermined.isEmpty(); }
    // Whether that is more than chance makes of some dozen measurements.
    bool hasMistake() const;
};

class zoHPCSurveySolver final
{
public:
    // Standardised residuals beyond this happen once in a thousand times.
    static constexpr double Suspicious = 3.29;

    // The survey has one wall at least.
    static zoHPCSurveySolution solve(const zoHPCSurvey& survey);
};
