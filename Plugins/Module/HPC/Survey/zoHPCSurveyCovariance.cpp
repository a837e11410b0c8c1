#include "zoHPCSurveyCovariance.h"

#include <algorithm>

namespace
{
constexpr double s_floor = 1e-9; // 1 / mm^2
// Of a diagonal number: more than rounding leaves of it where nothing determines what tight tolerances tie together.
constexpr double s_part = 1e-12;
} // namespace

zoHPCSurveyCovariance::zoHPCSurveyCovariance(const Matrix& normals)
{
    constexpr double Wider = 1e3;
    for (double part = s_part; part < 1.0; part *= Wider) {
        Matrix held = normals;
        for (int i = 0; i < held.cols(); ++i)
            held.coeffRef(i, i) += s_floor + part * held.coeff(i, i);
        m_factors.compute(held);
        if (m_factors.info() == Eigen::Success)
            break;
    }
    invert();
}

void zoHPCSurveyCovariance::invert()
{
    const int size = int(m_factors.rows());
    m_place = m_factors.permutationP().indices();
    m_factor = m_factors.matrixL().nestedExpression();
    // The factor may hold its diagonal of ones.
    m_factor.prune([](Eigen::Index row, Eigen::Index column, double) { return row != column; });
    m_factor.makeCompressed();
    m_inverse = m_factor;
    m_diagonal = m_factors.vectorD().cwiseInverse();
    const int* const begins = m_factor.outerIndexPtr();
    const int* const rows = m_factor.innerIndexPtr();
    const double* const factor = m_factor.valuePtr();
    double* const inverse = m_inverse.valuePtr();
    for (int column = size - 1; column >= 0; --column) {
        const int begin = begins[column];
        const int end = begins[column + 1];
        for (int i = begin; i < end; ++i)
            inverse[i] = 0.0;
        for (int i = end - 1; i >= begin; --i) {
            double sum = m_diagonal[rows[i]] * factor[i];
            // Rows above and below: Z is symmetric, and what is asked for is in the factor.
            for (int k = begin; k < end; ++k) {
                if (k != i)
                    sum += permuted(std::max(rows[i], rows[k]), std::min(rows[i], rows[k])) * factor[k];
            }
            inverse[i] = -sum;
        }
        for (int i = begin; i < end; ++i)
            m_diagonal[column] -= inverse[i] * factor[i];
    }
}

// Of a row below a column, both of the factor.
double zoHPCSurveyCovariance::permuted(int row, int column) const
{
    const int* const begin = m_inverse.innerIndexPtr() + m_inverse.outerIndexPtr()[column];
    const int* const end = m_inverse.innerIndexPtr() + m_inverse.outerIndexPtr()[column + 1];
    const int* const found = std::lower_bound(begin, end, row);
    return found != end && *found == row ? m_inverse.valuePtr()[found - m_inverse.innerIndexPtr()] : 0.0;
}

double zoHPCSurveyCovariance::at(int row, int column) const
{
    const int i = m_place[row];
    const int j = m_place[column];
    return i == j ? m_diagonal[i] : permuted(std::max(i, j), std::min(i, j));
}

double zoHPCSurveyCovariance::variance(const std::vector<int>& columns,
                                       const std::vector<double>& values) const
{
    double sum = 0.0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        for (std::size_t j = 0; j < columns.size(); ++j)
            sum += values[i] * values[j] * at(columns[i], columns[j]);
    }
    return sum;
}
