#include "zoHPCSurveyAdjustment.h"

#include <Eigen/SparseCholesky>

#include <numeric>
#include <utility>

namespace
{
// Steps in directions that nothing determines stay short; what is determined is reached all the same.
constexpr double s_floor = 1e-9; // 1 / mm^2
// Below this many unknowns full matrices are faster.
constexpr int s_dense = 48;

std::vector<int> allOf(std::size_t count)
{
    std::vector<int> list(count);
    std::iota(list.begin(), list.end(), 0);
    return list;
}
} // namespace

zoHPCSurveyAdjustment::zoHPCSurveyAdjustment(const zoHPCSurvey& survey, std::vector<int> measurements,
                                             std::vector<int> items, int itemCount, bool hasAxes)
    : m_measurements(std::move(measurements))
    , m_items(std::move(items))
    , m_hasAxes(hasAxes)
    , m_columns(std::size_t(itemCount), -1)
    , m_equations(survey)
{
}

zoHPCSurveyAdjustment::zoHPCSurveyAdjustment(const zoHPCSurvey& survey, const zoHPCSurveyState& state)
    : zoHPCSurveyAdjustment(survey, allOf(survey.measurements.size()), allOf(state.items.size()),
                            int(state.items.size()), true)
{
}

void zoHPCSurveyAdjustment::evaluate(const zoHPCSurveyState& state)
{
    if (m_columnCount == 0) {
        for (const int item : m_items) {
            m_columns[std::size_t(item)] = m_columnCount;
            m_unknowns.push_back(state.items[std::size_t(item)].unknowns());
            m_columnCount += m_unknowns.back();
        }
    }
    m_equations.clear();
    for (const int measurement : m_measurements)
        m_equations.add(measurement, state);
    if (m_hasAxes)
        m_equations.addAxes(state);
}

double zoHPCSurveyAdjustment::cost(const zoHPCSurveyState& state)
{
    evaluate(state);
    return m_equations.cost();
}

zoHPCSurveyAdjustment::Matrix zoHPCSurveyAdjustment::partials() const
{
    std::vector<Eigen::Triplet<double>> triplets;
    triplets.reserve(m_equations.partials().size());
    for (const zoHPCSurveyEquations::Partial& partial : m_equations.partials()) {
        if (column(partial.item) >= 0)
            triplets.emplace_back(partial.row, column(partial.item) + partial.component, partial.value);
    }
    Matrix matrix(Eigen::Index(m_equations.misclosures().size()), m_columnCount);
    matrix.setFromTriplets(triplets.begin(), triplets.end());
    return matrix;
}

zoHPCSurveyAdjustment::Matrix zoHPCSurveyAdjustment::normals() const
{
    std::vector<Eigen::Triplet<double>> triplets;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const int begin = column(m_items[i]);
        for (int row = 0; row < m_unknowns[i]; ++row) {
            for (int other = 0; other < m_unknowns[i]; ++other)
                triplets.emplace_back(begin + row, begin + other, 0.0);
        }
    }
    Matrix blocks(m_columnCount, m_columnCount);
    blocks.setFromTriplets(triplets.begin(), triplets.end());
    const Matrix j = partials();
    const Matrix product = Matrix(j.transpose()) * j;
    return blocks + product;
}

zoHPCSurveyAdjustment::Vector zoHPCSurveyAdjustment::gradient() const
{
    Vector result = Vector::Zero(m_columnCount);
    for (const zoHPCSurveyEquations::Partial& partial : m_equations.partials()) {
        if (column(partial.item) >= 0)
            result[column(partial.item) + partial.component] +=
                partial.value * m_equations.misclosures()[std::size_t(partial.row)];
    }
    return result;
}

bool zoHPCSurveyAdjustment::solve(double damping, const Matrix& normals, const Vector& gradient,
                                  Vector& step) const
{
    if (m_columnCount <= s_dense) {
        Eigen::MatrixXd damped(normals);
        damped.diagonal() += (damping * damped.diagonal().array() + s_floor).matrix();
        step = damped.ldlt().solve(gradient);
        return step.allFinite();
    }
    Matrix damped = normals;
    for (int i = 0; i < m_columnCount; ++i)
        damped.coeffRef(i, i) += damping * damped.coeff(i, i) + s_floor;
    const Eigen::SimplicialLDLT<Matrix> factors(damped);
    if (factors.info() != Eigen::Success)
        return false;
    step = factors.solve(gradient);
    return step.allFinite();
}

void zoHPCSurveyAdjustment::move(zoHPCSurveyState& state, const Vector& step) const
{
    for (const int item : m_items)
        state.items[std::size_t(item)].move(step.data() + column(item));
}

bool zoHPCSurveyAdjustment::improve(zoHPCSurveyState& state, int steps, double part)
{
    constexpr double First = 1e-3;
    constexpr double Least = 1e-12;
    constexpr double Most = 1e12;
    constexpr double ShortStep = 1e-10; // mm
    double damping = First;
    double before = cost(state);
    std::vector<zoHPCSurveyState::Item> kept(m_items.size());
    for (int i = 0; i < steps; ++i) {
        const Matrix matrix = normals();
        const Vector right = gradient();
        bool isBetter = false;
        double after = before;
        double length = 0.0;
        while (!isBetter && damping < Most) {
            Vector step;
            for (std::size_t k = 0; k < m_items.size(); ++k)
                kept[k] = state.items[std::size_t(m_items[k])];
            if (solve(damping, matrix, right, step)) {
                length = step.lpNorm<Eigen::Infinity>();
                move(state, step);
                after = cost(state);
                isBetter = after < before;
            }
            if (isBetter)
                break;
            for (std::size_t k = 0; k < m_items.size(); ++k)
                state.items[std::size_t(m_items[k])] = kept[k];
            // As good as it can be told.
            if (length < ShortStep)
                break;
            damping *= 10.0;
        }
        if (!isBetter) {
            evaluate(state);
            return true;
        }
        damping = std::max(damping / 10.0, Least);
        if (before - after <= part * before || length < ShortStep)
            return true;
        before = after;
    }
    return false;
}
