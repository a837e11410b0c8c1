#include "zoHPCSurveyEquations.h"

#include <algorithm>
#include <cmath>

namespace
{
using Kind = zoHPCSurvey::Kind;
using State = zoHPCSurveyState;

constexpr double s_degree = 3.14159265358979323846 / 180.0;
// The axes are chosen, so that any weight will do.
constexpr double s_axisTolerance = 1.0; // mm

bool tellsHeights(const zoHPCSurvey& survey)
{
    const auto tells = [](const zoHPCSurvey::Measurement& measurement) {
        return measurement.kind == Kind::Floor || measurement.kind == Kind::ViewerHeight;
    };
    return std::any_of(survey.measurements.begin(), survey.measurements.end(), tells);
}
} // namespace

void zoHPCSurveyEquations::clear()
{
    m_measurements.clear();
    m_misclosures.clear();
    m_partials.clear();
}

double zoHPCSurveyEquations::cost() const
{
    double sum = 0.0;
    for (const double misclosure : m_misclosures)
        sum += misclosure * misclosure;
    return sum;
}

void zoHPCSurveyEquations::begin(double misclosure, double tolerance)
{
    m_weight = 1.0 / tolerance;
    m_measurements.push_back(m_measurement);
    m_misclosures.push_back(misclosure * m_weight);
}

void zoHPCSurveyEquations::partial(int item, int component, double value)
{
    m_partials.push_back({int(m_misclosures.size()) - 1, item, component, value * m_weight});
}

void zoHPCSurveyEquations::partials(const Reach& reach, const Vector& direction)
{
    for (int component = 0; component < reach.count; ++component)
        partial(reach.item, component, direction.dot(reach.partials[component]));
}

void zoHPCSurveyEquations::rotation(int item, const Vector& value)
{
    for (int axis = 0; axis < 3; ++axis)
        partial(item, State::RotationX + axis, value[axis] / State::Lever);
}

void zoHPCSurveyEquations::add(int index, const zoHPCSurveyState& state)
{
    const Measurement& measurement = m_survey.measurements[std::size_t(index)];
    m_measurement = index;
    switch (measurement.kind) {
    case Kind::Width:
    case Kind::Height:
        addSize(measurement, state);
        break;
    case Kind::Distance:
        addDistance(measurement, state);
        break;
    case Kind::Floor: {
        const Reach place = state.reach(measurement.from);
        begin(measurement.value - place.at.y(), measurement.tolerance);
        partials(place, Vector::UnitY());
        break;
    }
    case Kind::Join:
        addDifference(state.reach(measurement.from), state.reach(measurement.to), measurement.tolerance);
        break;
    case Kind::Coordinates:
        addDifference(state.reach(measurement.from),
                      state.reach(measurement.instrument, measurement.coordinates), measurement.tolerance);
        break;
    case Kind::Angle:
        addAngle(measurement, state);
        break;
    case Kind::Upright:
    case Kind::Level:
    case Kind::Flat:
        addLevel(measurement, state);
        break;
    case Kind::ViewerDistance:
    case Kind::ViewerAside:
    case Kind::ViewerHeight:
    case Kind::ViewerLevel:
        addViewer(measurement, state);
        break;
    }
}

void zoHPCSurveyEquations::addAxes(const zoHPCSurveyState& state)
{
    m_measurement = -1;
    const State::Item& front = state.items[std::size_t(m_survey.front)];
    for (const int axis : {State::PositionX, State::PositionZ}) {
        begin(-front.position[axis], s_axisTolerance);
        partial(m_survey.front, axis, 1.0);
    }
    const Vector right = front.axes.col(0);
    begin(-right.z() * State::Lever, s_axisTolerance);
    rotation(m_survey.front, right.cross(Vector::UnitZ()) * State::Lever);
    if (tellsHeights(m_survey))
        return;
    begin(-front.position.y(), s_axisTolerance);
    partial(m_survey.front, State::PositionY, 1.0);
}

void zoHPCSurveyEquations::addSize(const Measurement& measurement, const zoHPCSurveyState& state)
{
    const State::Item& wall = state.items[std::size_t(measurement.from.wall)];
    const bool isWidth = measurement.kind == Kind::Width;
    begin(measurement.value - (isWidth ? wall.width : wall.height), measurement.tolerance);
    partial(measurement.from.wall, isWidth ? State::WidthOf : State::HeightOf, 1.0);
}

void zoHPCSurveyEquations::addDistance(const Measurement& measurement, const zoHPCSurveyState& state)
{
    const Reach from = state.reach(measurement.from);
    const Reach to = state.reach(measurement.to);
    const double distance = (from.at - to.at).norm();
    // Where both are one place any direction leads apart.
    constexpr double Nothing = 1e-9;
    const Vector direction = distance > Nothing ? Vector((from.at - to.at) / distance) : Vector::UnitZ();
    begin(measurement.value - distance, measurement.tolerance);
    partials(from, direction);
    partials(to, -direction);
}

void zoHPCSurveyEquations::addDifference(const Reach& from, const Reach& to, double tolerance)
{
    for (int axis = 0; axis < 3; ++axis) {
        begin(to.at[axis] - from.at[axis], tolerance);
        partials(from, Vector::Unit(axis));
        partials(to, -Vector::Unit(axis));
    }
}

// A rotation w of a wall moves its axis a by w x a; b (w x a) = w (a x b).
void zoHPCSurveyEquations::addAngle(const Measurement& measurement, const zoHPCSurveyState& state)
{
    const State::Item& one = state.items[std::size_t(measurement.from.wall)];
    const State::Item& other = state.items[std::size_t(measurement.to.wall)];
    const Vector normal = one.axes.col(2);
    const Vector otherNormal = other.axes.col(2);
    const Vector way = other.position - one.position;
    const int axis = std::abs(way.dot(one.axes.col(0))) >= std::abs(way.dot(one.axes.col(1))) ? 0 : 1;
    const Vector d =
        way.dot(one.axes.col(axis)) < 0.0 ? Vector(-one.axes.col(axis)) : Vector(one.axes.col(axis));

    const double measured = (180.0 - measurement.value) * s_degree;
    const double p = -otherNormal.dot(d);
    const double q = otherNormal.dot(normal);
    const Vector across = normal.cross(otherNormal);
    const double sine = across.norm();
    constexpr double NearlyStraight = 10.0 * s_degree;
    constexpr double Nothing = 1e-6;
    if (std::abs(measured) < NearlyStraight || sine < Nothing) {
        const double square = std::max(p * p + q * q, Nothing);
        begin(measured - std::atan2(p, q), measurement.tolerance * s_degree);
        rotation(measurement.from.wall, (q * otherNormal.cross(d) - p * normal.cross(otherNormal)) / square);
        rotation(measurement.to.wall, (-q * otherNormal.cross(d) - p * otherNormal.cross(normal)) / square);
        return;
    }
    const double sign = p < 0.0 ? -1.0 : 1.0;
    double bend = sign * std::atan2(sine, q);
    // More than half a turn is the same as less to the other side.
    constexpr double HalfTurn = 180.0 * s_degree;
    if (measured - bend > HalfTurn)
        bend += 2.0 * HalfTurn;
    else if (bend - measured > HalfTurn)
        bend -= 2.0 * HalfTurn;
    begin(measured - bend, measurement.tolerance * s_degree);
    rotation(measurement.from.wall, -sign * across / sine);
    rotation(measurement.to.wall, sign * across / sine);
}

void zoHPCSurveyEquations::addLevel(const Measurement& measurement, const zoHPCSurveyState& state)
{
    const int wall = measurement.from.wall;
    const State::Item& item = state.items[std::size_t(wall)];
    const int axis = measurement.kind == Kind::Level ? 0 : measurement.kind == Kind::Upright ? 1 : 2;
    const Vector direction = item.axes.col(axis);
    const auto addZero = [&](const Vector& of) {
        begin(-direction.dot(of), measurement.tolerance * s_degree);
        rotation(wall, direction.cross(of));
    };
    if (measurement.kind == Kind::Level) {
        addZero(Vector::UnitY());
        return;
    }
    addZero(Vector::UnitX());
    addZero(Vector::UnitZ());
}

void zoHPCSurveyEquations::addViewer(const Measurement& measurement, const zoHPCSurveyState& state)
{
    const Reach viewer = state.reach(measurement.from);
    zoHPCSurvey::Place middle;
    middle.wall = m_survey.front;
    const Reach front = state.reach(middle);
    const State::Item& wall = state.items[std::size_t(m_survey.front)];
    if (measurement.kind == Kind::ViewerHeight || measurement.kind == Kind::ViewerLevel) {
        const bool isLevel = measurement.kind == Kind::ViewerLevel;
        begin(measurement.value - viewer.at.y() + (isLevel ? front.at.y() : 0.0), measurement.tolerance);
        partials(viewer, Vector::UnitY());
        if (isLevel)
            partials(front, -Vector::UnitY());
        return;
    }
    const Vector direction = wall.axes.col(measurement.kind == Kind::ViewerDistance ? 2 : 0);
    const Vector way = viewer.at - front.at;
    begin(measurement.value - direction.dot(way), measurement.tolerance);
    partials(viewer, direction);
    for (int axis = 0; axis < 3; ++axis)
        partial(m_survey.front, axis, -direction[axis]);
    rotation(m_survey.front, direction.cross(way));
}

void zoHPCSurveyEquations::itemsOf(const zoHPCSurvey& survey, const zoHPCSurvey::Measurement& measurement,
                                   const zoHPCSurveyState& state, int items[2])
{
    items[0] = state.itemOf(measurement.from);
    items[1] = -1;
    switch (measurement.kind) {
    case Kind::Distance:
    case Kind::Join:
    case Kind::Angle:
        items[1] = state.itemOf(measurement.to);
        break;
    case Kind::Coordinates:
        items[1] = state.itemOfInstrument(measurement.instrument);
        break;
    case Kind::ViewerDistance:
    case Kind::ViewerAside:
    case Kind::ViewerLevel:
        items[1] = survey.front;
        break;
    default:
        break;
    }
    if (items[1] == items[0])
        items[1] = -1;
}
