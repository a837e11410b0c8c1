#include "zoTestCase.h"

#include <zoHPCSurveyEquations.h>

#include <QApplication>

#include <map>
#include <random>
#include <utility>

using Kind = zoHPCSurvey::Kind;
Q_DECLARE_METATYPE(Kind)

// What the equations say of the unknowns, against small steps of these. A wrong one is not seen in what is found: an
// adjustment takes longer to the same place, or does not arrive.
class tst_zoHPCSurveyEquations final : public zoTestCase
{
    Q_OBJECT

private slots:
    void partialsAreTheDerivatives_data();
    void partialsAreTheDerivatives();
    void axesFollowTheFrontWall_data();
    void axesFollowTheFrontWall();

private:
    static zoHPCSurvey survey(Kind kind, double value);
    static zoHPCSurveyState state(const zoHPCSurvey& survey, unsigned seed);
    template <class Fill>
    static void compare(const zoHPCSurvey& survey, unsigned seed, const Fill& fill);
};

namespace
{
constexpr unsigned s_seeds = 20;
} // namespace

// Two walls, the viewer and another point, an instrument, and one measurement.
zoHPCSurvey tst_zoHPCSurveyEquations::survey(Kind kind, double value)
{
    zoHPCSurvey survey;
    survey.walls.resize(2);
    survey.points.resize(2);
    survey.instruments.resize(1);
    zoHPCSurvey::Measurement measurement;
    measurement.kind = kind;
    measurement.value = value;
    measurement.tolerance = 2.0;
    measurement.from = {0, -1, 0.5, -0.25};
    measurement.to = {1, -1, -0.5, 0.3};
    if (kind == Kind::ViewerDistance || kind == Kind::ViewerAside || kind == Kind::ViewerHeight ||
        kind == Kind::ViewerLevel)
        measurement.from = {-1, zoHPCSurvey::Viewer, 0.0, 0.0};
    else if (kind == Kind::Distance)
        measurement.to = {-1, 1, 0.0, 0.0};
    else if (kind == Kind::Coordinates)
        measurement.instrument = 0;
    measurement.coordinates = Point3{300.0, 1200.0, -800.0};
    survey.measurements.push_back(measurement);
    return survey;
}

// Everything somewhere, turned anyhow.
zoHPCSurveyState tst_zoHPCSurveyEquations::state(const zoHPCSurvey& survey, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> step(-1000.0, 1000.0);
    zoHPCSurveyState state(survey);
    for (zoHPCSurveyState::Item& item : state.items) {
        double steps[zoHPCSurveyState::MostUnknowns];
        for (double& one : steps)
            one = step(random);
        item.move(steps);
    }
    return state;
}

template <class Fill>
void tst_zoHPCSurveyEquations::compare(const zoHPCSurvey& survey, unsigned seed, const Fill& fill)
{
    constexpr double Step = 1e-3; // mm
    const zoHPCSurveyState before = state(survey, seed);
    zoHPCSurveyEquations equations(survey);
    fill(equations, before);
    const std::size_t rows = equations.misclosures().size();
    std::map<std::pair<int, int>, std::vector<double>> partials;
    for (const zoHPCSurveyEquations::Partial& partial : equations.partials()) {
        std::vector<double>& column = partials[{partial.item, partial.component}];
        column.resize(rows);
        column[std::size_t(partial.row)] += partial.value;
    }
    QVERIFY(rows > 0 && !partials.empty());

    for (std::size_t item = 0; item < before.items.size(); ++item) {
        for (int component = 0; component < before.items[item].unknowns(); ++component) {
            const auto moved = [&](double way) {
                double steps[zoHPCSurveyState::MostUnknowns] = {};
                steps[component] = way;
                zoHPCSurveyState after = before;
                after.items[item].move(steps);
                zoHPCSurveyEquations other(survey);
                fill(other, after);
                return other.misclosures();
            };
            const std::vector<double> forth = moved(Step);
            const std::vector<double> back = moved(-Step);
            std::vector<double>& column = partials[{int(item), component}];
            column.resize(rows);
            for (std::size_t row = 0; row < rows; ++row) {
                // A misclosure is what was measured less what the state says.
                const double difference = (back[row] - forth[row]) / (2.0 * Step);
                QVERIFY2(std::abs(difference - column[row]) < 1e-6,
                         qPrintable(QStringLiteral("seed %1, row %2, unknown %3 of item %4: %5, should be %6")
                                        .arg(seed)
                                        .arg(row)
                                        .arg(component)
                                        .arg(item)
                                        .arg(column[row])
                                        .arg(difference)));
            }
            partials.erase({int(item), component});
        }
    }
    QVERIFY(partials.empty()); // of unknowns that there are none of
}

void tst_zoHPCSurveyEquations::partialsAreTheDerivatives_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<double>("value");

    QTest::newRow("width") << Kind::Width << 3000.0;
    QTest::newRow("height") << Kind::Height << 2000.0;
    QTest::newRow("distance") << Kind::Distance << 2500.0;
    QTest::newRow("floor") << Kind::Floor << 500.0;
    QTest::newRow("angle-of-a-corner") << Kind::Angle << 90.0;
    QTest::newRow("angle-straight-on") << Kind::Angle << 180.0;
    QTest::newRow("join") << Kind::Join << 0.0;
    QTest::newRow("upright") << Kind::Upright << 0.0;
    QTest::newRow("level") << Kind::Level << 0.0;
    QTest::newRow("flat") << Kind::Flat << 0.0;
    QTest::newRow("coordinates") << Kind::Coordinates << 0.0;
    QTest::newRow("viewer-distance") << Kind::ViewerDistance << 1500.0;
    QTest::newRow("viewer-aside") << Kind::ViewerAside << 100.0;
    QTest::newRow("viewer-height") << Kind::ViewerHeight << 1700.0;
    QTest::newRow("viewer-level") << Kind::ViewerLevel << 0.0;
}

void tst_zoHPCSurveyEquations::partialsAreTheDerivatives()
{
    QFETCH(Kind, kind);
    QFETCH(double, value);
    const zoHPCSurvey measured = survey(kind, value);
    for (unsigned seed = 0; seed < s_seeds && !QTest::currentTestFailed(); ++seed) {
        compare(measured, seed, [](zoHPCSurveyEquations& equations, const zoHPCSurveyState& state) {
            equations.add(0, state);
        });
    }
}

void tst_zoHPCSurveyEquations::axesFollowTheFrontWall_data()
{
    QTest::addColumn<Kind>("kind");

    QTest::newRow("heights-are-told") << Kind::Floor;
    QTest::newRow("no-heights") << Kind::Width;
}

void tst_zoHPCSurveyEquations::axesFollowTheFrontWall()
{
    QFETCH(Kind, kind);
    const zoHPCSurvey measured = survey(kind, 500.0);
    for (unsigned seed = 0; seed < s_seeds && !QTest::currentTestFailed(); ++seed) {
        compare(measured, seed, [](zoHPCSurveyEquations& equations, const zoHPCSurveyState& state) {
            equations.addAxes(state);
        });
    }
}

ZO_TEST_MAIN(tst_zoHPCSurveyEquations)
#include "tst_zoHPCSurveyEquations.moc"
