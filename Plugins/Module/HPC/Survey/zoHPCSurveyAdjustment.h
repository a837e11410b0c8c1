#pragma once

#include "zoHPCSurveyEquations.h"
#include "zoHPCSurveyState.h"

#include <Eigen/Sparse>

#include <vector>

// Least squares over some measurements and some items, the others standing still: the state at which the sum of
// ((measured - fitted) / tolerance)^2 is least. By the method of Levenberg and Marquardt (D. W. Marquardt, "An Algorithm
// for Least-Squares Estimation of Nonlinear Parameters", J. SIAM 11, 1963): with J the partials and m the misclosures,
//
//     (J'J + l diag(J'J)) step = J'm
//
// where l falls after a step that helped and grows after one that did not.
class zoHPCSurveyAdjustment final
{
public:
    using Vector = Eigen::VectorXd;
    using Matrix = Eigen::SparseMatrix<double>;

    // Measurements that concern no item do no harm. `hasAxes`: with the equations that choose the axes.
    zoHPCSurveyAdjustment(const zoHPCSurvey& survey, std::vector<int> measurements, std::vector<int> items,
                          int itemCount, bool hasAxes);
    // Of everything.
    zoHPCSurveyAdjustment(const zoHPCSurvey& survey, const zoHPCSurveyState& state);

    // At most so many steps; ends earlier when a step improves the sum by less than this part. False when the last step
    // still did.
    bool improve(zoHPCSurveyState& state, int steps, double part);
    double cost(const zoHPCSurveyState& state);

    // At the state of the last call.
    const zoHPCSurveyEquations& equations() const { return m_equations; }
    // First unknown of an item; -1 for those that stand still.
    int column(int item) const { return m_columns[std::size_t(item)]; }
    int columnCount() const { return m_columnCount; }
    // J'J: in units of 1 / mm^2, the inverse of the covariance. All numbers of an item are there, also zeros.
    Matrix normals() const;
    Matrix partials() const;

private:
    void evaluate(const zoHPCSurveyState& state);
    Vector gradient() const;
    bool solve(double damping, const Matrix& normals, const Vector& gradient, Vector& step) const;
    void move(zoHPCSurveyState& state, const Vector& step) const;

    std::vector<int> m_measurements;
    std::vector<int> m_items;
    std::vector<int> m_unknowns; // of each of them, from the first evaluation on
    bool m_hasAxes;
    std::vector<int> m_columns;
    int m_columnCount = 0;
    zoHPCSurveyEquations m_equations;
};
