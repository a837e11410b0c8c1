#include "zoHPCSurveySolver.h"

#include "zoHPCSurveyAdjustment.h"
#include "zoHPCSurveyCovariance.h"
#include "zoHPCSurveyFreedoms.h"
#include "zoHPCSurveyStart.h"

#include <algorithm>
#include <cmath>

namespace
{
using State = zoHPCSurveyState;
using Kind = zoHPCSurvey::Kind;

constexpr double s_degree = 3.14159265358979323846 / 180.0;
// Below this nothing checks a number as well as it says something of itself.
constexpr double s_unchecked = 0.01;

Point3 toPoint(const State::Vector& vector)
{
    return {vector.x(), vector.y(), vector.z()};
}

State::Vector cornerOf(const State& state, int wall, double s, double t)
{
    zoHPCSurvey::Place place;
    place.wall = wall;
    place.s = s;
    place.t = t;
    return state.at(place);
}

// The row of the partials with this number, as columns and values.
void rowOf(const Eigen::SparseMatrix<double, Eigen::RowMajor>& partials, int row, std::vector<int>& columns,
           std::vector<double>& values)
{
    columns.clear();
    values.clear();
    for (Eigen::SparseMatrix<double, Eigen::RowMajor>::InnerIterator entry(partials, row); entry; ++entry) {
        columns.push_back(int(entry.col()));
        values.push_back(entry.value());
    }
}

// Length of what an angle moves, mm.
double leverOf(const zoHPCSurvey::Measurement& measurement, const State& state)
{
    const State::Item& one = state.items[std::size_t(measurement.from.wall)];
    if (measurement.kind == Kind::Upright)
        return one.height;
    if (measurement.kind == Kind::Level)
        return one.width;
    if (measurement.kind == Kind::Flat)
        return std::max(one.width, one.height);
    return state.items[std::size_t(measurement.to.wall)].width;
}

void readPlanes(const zoHPCSurvey& survey, const State& state, zoHPCSurveySolution& solution)
{
    const State::Vector viewer = state.items[std::size_t(state.itemOfPoint(zoHPCSurvey::Viewer))].position;
    for (std::size_t i = 0; i < survey.walls.size(); ++i) {
        const auto corner = [&](double s, double t) {
            return toPoint(cornerOf(state, int(i), s, t) - viewer);
        };
        solution.planes.emplace_back(corner(-0.5, -0.5), corner(0.5, -0.5), corner(0.5, 0.5));
    }
    for (std::size_t i = 0; i < survey.points.size(); ++i)
        solution.points.push_back(
            toPoint(state.items[std::size_t(state.itemOfPoint(int(i)))].position - viewer));
    solution.floor = -viewer.y();
}

void readResiduals(const zoHPCSurvey& survey, const State& state, const zoHPCSurveyAdjustment& adjustment,
                   const zoHPCSurveyCovariance& covariance, zoHPCSurveySolution& solution)
{
    const zoHPCSurveyEquations& equations = adjustment.equations();
    const Eigen::SparseMatrix<double, Eigen::RowMajor> partials(adjustment.partials());
    solution.residuals.assign(survey.measurements.size(), zoHPCSurveySolution::Residual());
    std::vector<int> columns;
    std::vector<double> values;
    double sum = 0.0;
    for (std::size_t row = 0; row < equations.misclosures().size(); ++row) {
        const int index = equations.measurements()[row];
        if (index < 0)
            continue;
        const zoHPCSurvey::Measurement& measurement = survey.measurements[std::size_t(index)];
        zoHPCSurveySolution::Residual& residual = solution.residuals[std::size_t(index)];
        const int count = zoHPCSurvey::equationCount(measurement.kind);
        const double misclosure = equations.misclosures()[row];
        rowOf(partials, int(row), columns, values);
        const double redundancy = std::min(1.0, std::max(0.0, 1.0 - covariance.variance(columns, values)));
        sum += misclosure * misclosure;
        residual.redundancy += redundancy / count;
        if (redundancy > s_unchecked &&
            std::abs(misclosure) / std::sqrt(redundancy) > residual.standardized) {
            residual.standardized = std::abs(misclosure) / std::sqrt(redundancy);
            residual.mistake = misclosure * measurement.tolerance / redundancy;
        }
        const double own = misclosure * measurement.tolerance;
        residual.residual = count == 1 ? own : std::hypot(residual.residual, own);
    }
    for (std::size_t i = 0; i < survey.measurements.size(); ++i) {
        const zoHPCSurvey::Measurement& measurement = survey.measurements[i];
        zoHPCSurveySolution::Residual& residual = solution.residuals[i];
        const bool isOne = zoHPCSurvey::equationCount(measurement.kind) == 1;
        residual.measured = measurement.value;
        residual.fitted = isOne ? measurement.value - residual.residual : residual.residual;
        residual.millimetres = zoHPCSurvey::isAngle(measurement.kind)
                                   ? residual.residual * s_degree * leverOf(measurement, state)
                                   : residual.residual;
    }
    const int unknowns = adjustment.columnCount();
    solution.redundancy = std::max(0, int(equations.misclosures().size()) - unknowns);
    solution.fit = solution.redundancy > 0 ? std::sqrt(sum / solution.redundancy) : 0.0;
}

// Below this a residual is rounding, and none of them is the worst.
constexpr double s_nothing = 1e-6; // tolerances

void findWorst(zoHPCSurveySolution& solution)
{
    double largest = s_nothing;
    for (const zoHPCSurveySolution::Residual& residual : solution.residuals)
        largest = std::max(largest, residual.standardized);
    // Of several that look the same, the one that is checked best.
    constexpr double Same = 1.0 - 1e-6;
    double best = 0.0;
    for (std::size_t i = 0; i < solution.residuals.size(); ++i) {
        const zoHPCSurveySolution::Residual& residual = solution.residuals[i];
        if (residual.standardized < Same * largest || residual.redundancy <= best)
            continue;
        best = residual.redundancy;
        solution.worst = int(i);
    }
}

// Two standardised residuals with the correlation c differ by 2 (1 - |c|) in variance; what differs from the worst by
// less than three of these may be the mistake instead.
void findRivals(const zoHPCSurveyAdjustment& adjustment, const zoHPCSurveyCovariance& covariance,
                zoHPCSurveySolution& solution)
{
    const zoHPCSurveyEquations& equations = adjustment.equations();
    const Eigen::SparseMatrix<double, Eigen::RowMajor> partials(adjustment.partials());
    std::vector<int> columns;
    std::vector<double> values;
    const auto redundancyOf = [&](int row) {
        rowOf(partials, row, columns, values);
        return 1.0 - covariance.variance(columns, values);
    };
    int worst = -1;
    double largest = -1.0;
    for (std::size_t row = 0; row < equations.misclosures().size(); ++row) {
        const double size = std::abs(equations.misclosures()[row]);
        const double redundancy =
            equations.measurements()[row] == solution.worst ? redundancyOf(int(row)) : 0.0;
        if (redundancy > s_unchecked && size / std::sqrt(redundancy) > largest) {
            worst = int(row);
            largest = size / std::sqrt(redundancy);
        }
    }
    if (worst < 0)
        return;
    const double own = redundancyOf(worst);
    const Eigen::VectorXd shared = partials * covariance.solve(partials.row(worst).transpose().toDense());
    for (int row = 0; row < int(equations.misclosures().size()); ++row) {
        const int index = equations.measurements()[std::size_t(row)];
        const double redundancy = index < 0 || index == solution.worst ? 0.0 : redundancyOf(row);
        if (redundancy <= s_unchecked)
            continue;
        const double correlation = std::min(1.0, std::abs(shared[row]) / std::sqrt(own * redundancy));
        const double size = std::abs(equations.misclosures()[std::size_t(row)]) / std::sqrt(redundancy);
        constexpr double Alike = 0.7;
        constexpr double Sure = 3.0;
        constexpr double Curved = 0.02; // what large mistakes bend of the equations
        const bool isRival = correlation > Alike &&
                             largest - size <= Sure * std::sqrt(2.0 * (1.0 - correlation)) + Curved * largest;
        if (isRival && (solution.rivals.empty() || solution.rivals.back() != index))
            solution.rivals.push_back(index);
    }
}

void readDeviations(const zoHPCSurvey& survey, const State& state, const zoHPCSurveyAdjustment& adjustment,
                    const zoHPCSurveyCovariance& covariance, zoHPCSurveySolution& solution)
{
    for (std::size_t i = 0; i < survey.walls.size(); ++i) {
        double largest = 0.0;
        for (const double s : {-0.5, 0.5}) {
            for (const double t : {-0.5, 0.5}) {
                zoHPCSurvey::Place place;
                place.wall = int(i);
                place.s = s;
                place.t = t;
                const State::Reach reach = state.reach(place);
                double variance = 0.0;
                for (int axis = 0; axis < 3; ++axis) {
                    std::vector<int> columns;
                    std::vector<double> values;
                    for (int component = 0; component < reach.count; ++component) {
                        columns.push_back(adjustment.column(reach.item) + component);
                        values.push_back(reach.partials[component][axis]);
                    }
                    variance += covariance.variance(columns, values);
                }
                largest = std::max(largest, variance);
            }
        }
        solution.deviations.push_back(std::sqrt(largest));
    }
}
} // namespace

bool zoHPCSurveySolution::hasMistake() const
{
    return worst >= 0 && residuals[std::size_t(worst)].standardized > zoHPCSurveySolver::Suspicious;
}

zoHPCSurveySolution zoHPCSurveySolver::solve(const zoHPCSurvey& survey)
{
    zoHPCSurveySolution solution;
    if (survey.walls.empty())
        return solution;
    State state(survey);
    zoHPCSurveyStart(survey, state).placeAll();
    zoHPCSurveyAdjustment adjustment(survey, state);
    // Short distances make narrow valleys, along which many small steps lead.
    constexpr int Steps = 1000;
    constexpr double Part = 1e-9; // of a sum of squares, far less than tolerances tell apart
    solution.hasConverged = adjustment.improve(state, Steps, Part);
    const zoHPCSurveyCovariance covariance(adjustment.normals());
    readPlanes(survey, state, solution);
    readResiduals(survey, state, adjustment, covariance, solution);
    findWorst(solution);
    if (solution.worst >= 0)
        findRivals(adjustment, covariance, solution);
    readDeviations(survey, state, adjustment, covariance, solution);
    solution.undetermined = zoHPCSurveyFreedoms(survey, state, adjustment, covariance).lines();
    return solution;
}
