#pragma once

#include "zoHPCSurveyAdjustment.h"

#include <Eigen/SparseCholesky>

#include <vector>

// The inverse of the normal equations N, where N or its factor has numbers: enough for the covariance of what is measured
// between items, at the price of the factor itself. With N = P' L D L' P (Takahashi, Fagan and Chin 1973; A. M. Erisman
// and W. F. Tinney, "On Computing Certain Elements of the Inverse of a Sparse Matrix", Comm. ACM 18, 1975), from the last
// column to the first:
//
//     Z(i, j) = [i = j] / D(j) - sum over k > j of Z(i, k) L(k, j)
class zoHPCSurveyCovariance final
{
public:
    using Matrix = Eigen::SparseMatrix<double>;

    // What nothing determines is taken as known to some tens of metres.
    explicit zoHPCSurveyCovariance(const Matrix& normals);

    // Between two unknowns; 0 where the factor has no number.
    double at(int row, int column) const;
    // Of a linear function of the unknowns, a row of J: J Z J'.
    double variance(const std::vector<int>& columns, const std::vector<double>& values) const;

    // Solves N x = b.
    Eigen::VectorXd solve(const Eigen::VectorXd& right) const { return m_factors.solve(right); }

private:
    void invert();
    double permuted(int row, int column) const;

    Eigen::SimplicialLDLT<Matrix> m_factors;
    Eigen::VectorXi m_place; // of an unknown in the factor
    Matrix m_factor;         // L without its diagonal
    Matrix m_inverse;        // Z below its diagonal, with L's numbers
    Eigen::VectorXd m_diagonal;
};
