#pragma once

#include "zoHPCSurveyState.h"

#include <vector>

// The observation equations of measurements at a state, each divided by its tolerance: what was measured less what the
// state says (the misclosure), and how the latter follows the unknowns.
//
// With P, Q places, R = (u v n) the axes of a wall:
//
//     width, height     w, h
//     distance          |P - Q|
//     floor             Py                               the floor is y = 0
//     join              P - Q = 0                        three numbers
//     upright           vx = vz = 0                      two
//     level             uy = 0
//     flat              nx = nz = 0                      two
//     angle             180 - b; b, the angle by which the second wall bends towards the viewer, is the angle between
//                       the normals, atan2(|nA x nB|, nA nB), with the sign of -d nB; d is that axis of the first wall
//                       that leads to the second. Near 180, where that has no derivative, atan2(-d nB, nA nB).
//     point             P - (T + Ry(heading) X) = 0      three; the instrument stands level
//     viewer distance   n (V - c), aside u (V - c), height Vy, level Vy - cy
class zoHPCSurveyEquations final
{
public:
    struct Partial
    {
        int row;
        int item;
        int component;
        double value;
    };

    explicit zoHPCSurveyEquations(const zoHPCSurvey& survey) : m_survey(survey) {}

    void clear();
    void add(int measurement, const zoHPCSurveyState& state);
    // What makes the front wall the one straight ahead: its centre is at x = z = 0, its lower edge along x. Without
    // anything that tells heights its centre is at y = 0, too. These choose axes and change no measurement.
    void addAxes(const zoHPCSurveyState& state);

    // Which measurement a row belongs to; -1 for the axes.
    const std::vector<int>& measurements() const { return m_measurements; }
    const std::vector<double>& misclosures() const { return m_misclosures; }
    const std::vector<Partial>& partials() const { return m_partials; }
    double cost() const; // sum of the squares

    // The items that it says something of, the second -1 when there is one.
    static void itemsOf(const zoHPCSurvey& survey, const zoHPCSurvey::Measurement& measurement,
                        const zoHPCSurveyState& state, int items[2]);

private:
    using Vector = zoHPCSurveyState::Vector;
    using Reach = zoHPCSurveyState::Reach;
    using Measurement = zoHPCSurvey::Measurement;

    void begin(double misclosure, double tolerance);
    void partial(int item, int component, double value);
    void partials(const Reach& reach, const Vector& direction);
    void rotation(int item, const Vector& partial);

    void addSize(const Measurement& measurement, const zoHPCSurveyState& state);
    void addDistance(const Measurement& measurement, const zoHPCSurveyState& state);
    void addDifference(const Reach& from, const Reach& to, double tolerance);
    void addAngle(const Measurement& measurement, const zoHPCSurveyState& state);
    void addLevel(const Measurement& measurement, const zoHPCSurveyState& state);
    void addViewer(const Measurement& measurement, const zoHPCSurveyState& state);

    const zoHPCSurvey& m_survey;
    int m_measurement = -1;
    double m_weight = 1.0;
    std::vector<int> m_measurements;
    std::vector<double> m_misclosures;
    std::vector<Partial> m_partials;
};
