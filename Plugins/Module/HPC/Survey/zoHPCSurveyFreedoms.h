#pragma once

#include "zoHPCSurveyCovariance.h"
#include "zoHPCSurveyState.h"

#include <QCoreApplication>
#include <QStringList>

// What measurements leave open, in words: which walls and places can move, although nothing that was measured changes.
// Such motions are the null space of the normal equations N, or nearly so: eigenvectors in which something is known to no
// better than a metre. They come out of a few rounds of inverse iteration with N.
class zoHPCSurveyFreedoms final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCSurveyFreedoms)

public:
    static constexpr int MaximumLines = 20;

    zoHPCSurveyFreedoms(const zoHPCSurvey& survey, const zoHPCSurveyState& state,
                        const zoHPCSurveyAdjustment& adjustment, const zoHPCSurveyCovariance& covariance);

    // A sentence for each thing that is not determined, with a line that may help. Empty when all is.
    const QStringList& lines() const { return m_lines; }

private:
    using Matrix = Eigen::MatrixXd;

    void findMotions(const zoHPCSurveyAdjustment& adjustment, const zoHPCSurveyCovariance& covariance);
    double largestOf(const Eigen::VectorXd& motion) const;
    Matrix motionsOf(int item) const;
    Matrix relativeMotionsOf(int item) const;
    // Combinations of the motions that leave the size of a wall as it is.
    Matrix withoutSize(int wall) const;
    void tellRoom();
    void tellWall(int wall);
    void tellPoint(int point);
    void add(const QString& line);

    const zoHPCSurvey& m_survey;
    const zoHPCSurveyState& m_state;
    const zoHPCSurveyAdjustment& m_adjustment;
    Matrix m_motions; // a column each; what moves most moves by 1
    QStringList m_lines;
};
