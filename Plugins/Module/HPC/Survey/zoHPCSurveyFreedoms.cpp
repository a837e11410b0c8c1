#include "zoHPCSurveyFreedoms.h"

#include "zoText.h"

#include <Eigen/Eigenvalues>
#include <Eigen/QR>
#include <Eigen/SVD>

#include <algorithm>
#include <random>

namespace
{
using State = zoHPCSurveyState;

// Of the inverse of a variance: what is known to a metre.
constexpr double s_known = 1e-6; // 1 / mm^2
// Of a motion that moves something by 1.
constexpr double s_still = 1e-3;

int rankOf(const Eigen::MatrixXd& matrix)
{
    const Eigen::JacobiSVD<Eigen::MatrixXd> values(matrix);
    return int((values.singularValues().array() > s_still).count());
}
} // namespace

zoHPCSurveyFreedoms::zoHPCSurveyFreedoms(const zoHPCSurvey& survey, const zoHPCSurveyState& state,
                                         const zoHPCSurveyAdjustment& adjustment,
                                         const zoHPCSurveyCovariance& covariance)
    : m_survey(survey), m_state(state), m_adjustment(adjustment)
{
    findMotions(adjustment, covariance);
    if (m_motions.cols() == 0)
        return;
    tellRoom();
    for (std::size_t i = 0; i < survey.walls.size() && m_lines.size() < MaximumLines; ++i)
        tellWall(int(i));
    for (std::size_t i = 0; i < survey.points.size() && m_lines.size() < MaximumLines; ++i)
        tellPoint(int(i));
    if (m_lines.isEmpty())
        add(tr("The measurements do not determine the room: %1 more are needed").arg(m_motions.cols()));
}

void zoHPCSurveyFreedoms::findMotions(const zoHPCSurveyAdjustment& adjustment,
                                      const zoHPCSurveyCovariance& covariance)
{
    const int size = adjustment.columnCount();
    const Eigen::SparseMatrix<double> normals = adjustment.normals();
    std::mt19937 random(1); // the same answer each time
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    constexpr int First = 16;
    constexpr int Most = 96;
    constexpr int Rounds = 6;
    for (int count = std::min(First, size);; count = std::min(2 * count, size)) {
        Matrix block = Matrix::NullaryExpr(size, count, [&] { return number(random); });
        for (int round = 0; round < Rounds; ++round) {
            for (int i = 0; i < count; ++i)
                block.col(i) = covariance.solve(block.col(i));
            const Eigen::HouseholderQR<Matrix> factors(block);
            block = factors.householderQ() * Matrix::Identity(size, count);
        }
        const Matrix small = block.transpose() * (normals * block);
        const Eigen::SelfAdjointEigenSolver<Matrix> values(small);
        const Matrix motions = block * values.eigenvectors();
        m_motions.resize(size, 0);
        for (int i = 0; i < count; ++i) {
            const double largest = largestOf(motions.col(i));
            if (values.eigenvalues()[i] >= s_known * largest * largest)
                continue;
            m_motions.conservativeResize(Eigen::NoChange, m_motions.cols() + 1);
            m_motions.rightCols(1) = motions.col(i) / largest;
        }
        if (m_motions.cols() < count || count >= size || count >= Most)
            return;
    }
}

// By how much what moves most does.
double zoHPCSurveyFreedoms::largestOf(const Eigen::VectorXd& motion) const
{
    double largest = 0.0;
    for (std::size_t i = 0; i < m_state.items.size(); ++i)
        largest = std::max(largest,
                           motion.segment(m_adjustment.column(int(i)), m_state.items[i].unknowns()).norm());
    return largest;
}

zoHPCSurveyFreedoms::Matrix zoHPCSurveyFreedoms::motionsOf(int item) const
{
    return m_motions.middleRows(m_adjustment.column(item), m_state.items[std::size_t(item)].unknowns());
}

// As seen from the front wall, which takes the whole room with it.
zoHPCSurveyFreedoms::Matrix zoHPCSurveyFreedoms::relativeMotionsOf(int item) const
{
    Matrix motions = motionsOf(item);
    const Matrix front = motionsOf(m_survey.front);
    const State::Item& wall = m_state.items[std::size_t(m_survey.front)];
    const State::Item& own = m_state.items[std::size_t(item)];
    for (int i = 0; i < motions.cols(); ++i) {
        const Eigen::Vector3d turn = front.col(i).segment<3>(State::RotationX);
        motions.col(i).head<3>() -=
            front.col(i).head<3>() + turn.cross(own.position - wall.position) / State::Lever;
        if (own.kind == State::Kind::Wall)
            motions.col(i).segment<3>(State::RotationX) -= turn;
    }
    return motions;
}

zoHPCSurveyFreedoms::Matrix zoHPCSurveyFreedoms::withoutSize(int wall) const
{
    const Eigen::JacobiSVD<Matrix> values(motionsOf(wall).middleRows(State::WidthOf, 2), Eigen::ComputeFullV);
    const auto moving = (values.singularValues().array() > s_still).count();
    return values.matrixV().rightCols(m_motions.cols() - moving);
}

void zoHPCSurveyFreedoms::add(const QString& line)
{
    if (m_lines.size() < MaximumLines)
        m_lines << line;
}

void zoHPCSurveyFreedoms::tellRoom()
{
    const Matrix front = motionsOf(m_survey.front) * withoutSize(m_survey.front);
    if (front.cols() == 0)
        return;
    const QString name = m_survey.walls[std::size_t(m_survey.front)].name;
    if (front.middleRows(State::RotationX, 3).norm() > s_still)
        add(tr("How the room is tilted is not determined: add a line such as \"upright %1\"").arg(name));
    else if (front.row(State::PositionY).norm() > s_still)
        add(tr("How high the room is above the floor is not determined: add a line such as \"floor %1.bottom "
               "800\"")
                .arg(name));
}

void zoHPCSurveyFreedoms::tellWall(int wall)
{
    const Matrix own = motionsOf(wall);
    const Matrix relative = relativeMotionsOf(wall);
    const QString name = m_survey.walls[std::size_t(wall)].name;
    const QString front = m_survey.walls[std::size_t(m_survey.front)].name;
    QStringList open;
    const auto isOpen = [&](int first, int count) {
        return own.middleRows(first, count).norm() > s_still &&
               relative.middleRows(first, count).norm() > s_still;
    };
    const Matrix combinations = withoutSize(wall);
    const auto movesRigidly = [&](int first) {
        return combinations.cols() > 0 && (own * combinations).middleRows(first, 3).norm() > s_still &&
               (relative * combinations).middleRows(first, 3).norm() > s_still;
    };
    const bool hasPlace = movesRigidly(State::PositionX);
    const bool hasDirection = movesRigidly(State::RotationX);
    const bool hasSize = isOpen(State::WidthOf, 1) || isOpen(State::HeightOf, 1);
    if (hasPlace)
        open << tr("where it is");
    if (hasDirection)
        open << tr("which way it faces");
    if (isOpen(State::WidthOf, 1))
        open << tr("its width");
    if (isOpen(State::HeightOf, 1))
        open << tr("its height");
    if (open.isEmpty())
        return;
    const QString help =
        hasSize ? zoText("wall %1 size 3600 x 2000").arg(name)
                : zoText("distance %1.ur %2.ll 3200").arg(name, wall == m_survey.front ? zoText("P") : front);
    const int count = std::max(1, rankOf(relative));
    add(count == 1 ? tr("Wall \"%1\": %2 is not determined; one more measurement is needed, such as \"%3\"")
                         .arg(name, open.join(zoText(", ")), help)
                   : tr("Wall \"%1\": %2 is not determined; %3 more measurements are needed, such as \"%4\"")
                         .arg(name, open.join(zoText(", ")), QString::number(count), help));
}

void zoHPCSurveyFreedoms::tellPoint(int point)
{
    const int item = m_state.itemOfPoint(point);
    const Matrix relative = relativeMotionsOf(item);
    if (motionsOf(item).norm() <= s_still || relative.norm() <= s_still)
        return;
    const QString front = m_survey.walls[std::size_t(m_survey.front)].name;
    if (point == zoHPCSurvey::Viewer)
        add(tr("Where the viewer is is not determined: add a line such as \"viewer distance 2500 height "
               "1700\""));
    else
        add(tr("Where the point \"%1\" is is not determined: add a line such as \"distance %1 %2.ll 3200\"")
                .arg(m_survey.points[std::size_t(point)].name, front));
}
