#include "zoHPCSurveyStart.h"

#include "zoHPCSurveyAdjustment.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
using State = zoHPCSurveyState;
using Vector = State::Vector;
using Matrix = State::Matrix;
using Kind = zoHPCSurvey::Kind;

constexpr double s_degree = 3.14159265358979323846 / 180.0;

// Of a wall: where its middle is in halves of the wall, its direction counter-clockwise, and the way into the wall.
struct Edge
{
    double s, t;
    Vector along;
    Vector inward;
};

const std::vector<Edge>& edges()
{
    static const std::vector<Edge> list{
        {0.5, 0.0, Vector::UnitY(), -Vector::UnitX()},
        {-0.5, 0.0, -Vector::UnitY(), Vector::UnitX()},
        {0.0, -0.5, Vector::UnitX(), Vector::UnitY()},
        {0.0, 0.5, -Vector::UnitX(), -Vector::UnitY()},
    };
    return list;
}

Vector middleOf(const State::Item& wall, const Edge& edge)
{
    return Vector(edge.s * wall.width, edge.t * wall.height, 0.0);
}

// The wall laid edge to edge to a neighbour, so that it bends by this angle towards the viewer.
State::Item glued(State::Item wall, const Edge& edge, const State::Item& neighbour, const Edge& other,
                  double bend)
{
    const Vector outward = neighbour.axes * -other.inward;
    const Vector along = neighbour.axes * -other.along;
    const Vector inward = std::cos(bend) * outward + std::sin(bend) * neighbour.axes.col(2);
    Matrix room;
    room << along, inward, along.cross(inward);
    Matrix own;
    own << edge.along, edge.inward, edge.along.cross(edge.inward);
    wall.axes = room * own.transpose();
    wall.position =
        neighbour.position + neighbour.axes * middleOf(neighbour, other) - wall.axes * middleOf(wall, edge);
    return wall;
}

Matrix turned(double about, const Vector& axis)
{
    return Eigen::AngleAxisd(about * s_degree, axis).toRotationMatrix();
}
} // namespace

zoHPCSurveyStart::zoHPCSurveyStart(const zoHPCSurvey& survey, zoHPCSurveyState& state)
    : m_survey(survey)
    , m_state(state)
    , m_ofItem(state.items.size())
    , m_isPlaced(state.items.size(), false)
    , m_held(state.items.size(), -1)
{
    for (std::size_t i = 0; i < survey.measurements.size(); ++i) {
        int items[2];
        zoHPCSurveyEquations::itemsOf(survey, survey.measurements[i], state, items);
        for (const int item : items) {
            if (item >= 0)
                m_ofItem[std::size_t(item)].push_back(int(i));
        }
    }
}

void zoHPCSurveyStart::placeAll()
{
    // Size, height and direction to the floor first: it may hang upright, stand, or lie.
    place(m_survey.front);
    for (std::size_t i = 1; i < m_state.items.size(); ++i) {
        const int item = next();
        place(item);
    }
}

void zoHPCSurveyStart::placed(int item)
{
    m_isPlaced[std::size_t(item)] = true;
    for (const int index : m_ofItem[std::size_t(item)]) {
        int items[2];
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        zoHPCSurveyEquations::itemsOf(m_survey, measurement, m_state, items);
        const int other = items[0] == item ? items[1] : items[0];
        if (other < 0 || m_isPlaced[std::size_t(other)])
            continue;
        int& held = m_held[std::size_t(other)];
        held = std::max(held, 0) + zoHPCSurvey::equationCount(measurement.kind);
    }
}

// What is held best, by the part of its unknowns; what nothing holds comes last.
int zoHPCSurveyStart::next() const
{
    int best = -1;
    double bestPart = -1.0;
    for (std::size_t i = 0; i < m_state.items.size(); ++i) {
        if (m_isPlaced[i])
            continue;
        const double part =
            m_held[i] <= 0 ? -0.5 : std::min(1.0, double(m_held[i]) / m_state.items[i].unknowns());
        if (part > bestPart) {
            best = int(i);
            bestPart = part;
        }
    }
    return best;
}

std::vector<int> zoHPCSurveyStart::measurementsTo(int item) const
{
    std::vector<int> list;
    for (const int index : m_ofItem[std::size_t(item)]) {
        int items[2];
        zoHPCSurveyEquations::itemsOf(m_survey, m_survey.measurements[std::size_t(index)], m_state, items);
        const int other = items[0] == item ? items[1] : items[0];
        if (other < 0 || m_isPlaced[std::size_t(other)])
            list.push_back(index);
    }
    return list;
}

std::vector<int> zoHPCSurveyStart::neighbours(int item) const
{
    std::vector<int> list;
    constexpr std::size_t Most = 4;
    for (const int index : m_ofItem[std::size_t(item)]) {
        int items[2];
        zoHPCSurveyEquations::itemsOf(m_survey, m_survey.measurements[std::size_t(index)], m_state, items);
        const int other = items[0] == item ? items[1] : items[0];
        if (other >= 0 && m_isPlaced[std::size_t(other)] && list.size() < Most &&
            std::find(list.begin(), list.end(), other) == list.end())
            list.push_back(other);
    }
    return list;
}

void zoHPCSurveyStart::place(int item)
{
    Item& own = m_state.items[std::size_t(item)];
    std::vector<Item> list = candidates(item);
    list.insert(list.end(), own);
    const bool isFront = item == m_survey.front;
    zoHPCSurveyAdjustment adjustment(m_survey, measurementsTo(item), {item}, int(m_state.items.size()),
                                     isFront);
    std::vector<Trial> trials;
    for (std::size_t i = 0; i < list.size(); ++i) {
        own = list[i];
        trials.push_back({i, adjustment.cost(m_state)});
    }
    const auto isCheaper = [](const Trial& left, const Trial& right) { return left.cost < right.cost; };
    std::stable_sort(trials.begin(), trials.end(), isCheaper);
    constexpr std::size_t MostTrials = 10;
    if (trials.size() > MostTrials)
        trials.resize(MostTrials);

    constexpr int Steps = 25;
    constexpr double Part = 1e-3;
    for (Trial& trial : trials) {
        own = list[trial.order];
        adjustment.improve(m_state, Steps, Part);
        trial.cost = adjustment.cost(m_state);
        list[trial.order] = own;
    }
    own = chosen(item, trials, list, adjustment);
    placed(item);
}

// Mirror images fit equally well, to a part of what rounding leaves: the one that faces its neighbours is taken.
zoHPCSurveyStart::Item zoHPCSurveyStart::chosen(int item, const std::vector<Trial>& trials,
                                                const std::vector<Item>& list,
                                                zoHPCSurveyAdjustment& adjustment)
{
    const auto isCheaper = [](const Trial& left, const Trial& right) { return left.cost < right.cost; };
    const Trial cheapest = *std::min_element(trials.begin(), trials.end(), isCheaper);
    const double enough = cheapest.cost * 1.1 + 0.1;
    struct Choice
    {
        Item item;
        std::size_t order;
    };
    std::vector<Choice> choices;
    for (const Trial& trial : trials) {
        if (trial.cost <= enough)
            choices.push_back({list[trial.order], trial.order});
    }
    Item& own = m_state.items[std::size_t(item)];
    for (const Item& mirrored : mirrorImages(item, list[cheapest.order])) {
        own = mirrored;
        constexpr int Steps = 10;
        constexpr double Part = 1e-3;
        adjustment.improve(m_state, Steps, Part);
        if (adjustment.cost(m_state) <= enough)
            choices.push_back({own, list.size() + choices.size()});
    }
    const auto isWorse = [&](const Choice& left, const Choice& right) {
        const int facing = facingCount(item, left.item);
        const int otherFacing = facingCount(item, right.item);
        return facing != otherFacing ? facing < otherFacing : left.order > right.order;
    };
    return std::max_element(choices.begin(), choices.end(), isWorse)->item;
}

// Through the planes of the neighbours: distances to their corners are the same.
std::vector<zoHPCSurveyStart::Item> zoHPCSurveyStart::mirrorImages(int item, const Item& pose) const
{
    std::vector<Item> images;
    for (const int neighbour : neighbours(item)) {
        const Item& other = m_state.items[std::size_t(neighbour)];
        if (other.kind != State::Kind::Wall || pose.kind == State::Kind::Instrument)
            continue;
        const Vector normal = other.axes.col(2);
        const auto mirrored = [&](const Vector& vector) {
            return Vector(vector - 2.0 * normal.dot(vector) * normal);
        };
        Item image = pose;
        image.position = other.position + mirrored(pose.position - other.position);
        const Vector right = mirrored(pose.axes.col(0));
        const Vector up = mirrored(pose.axes.col(1));
        image.axes << right, up, right.cross(up);
        images.push_back(image);
    }
    return images;
}

// How often it and a neighbour see each other's pictures.
int zoHPCSurveyStart::facingCount(int item, const Item& pose) const
{
    int count = 0;
    constexpr double Nearly = 1.0; // mm
    for (const int neighbour : neighbours(item)) {
        const Item& other = m_state.items[std::size_t(neighbour)];
        if (other.kind != State::Kind::Wall)
            continue;
        const Vector way = pose.position - other.position;
        if (other.axes.col(2).dot(way) > -Nearly)
            ++count;
        if (pose.kind == State::Kind::Wall && pose.axes.col(2).dot(way) < Nearly)
            ++count;
    }
    return count;
}

std::vector<zoHPCSurveyStart::Item> zoHPCSurveyStart::candidates(int item) const
{
    std::vector<Item> list;
    const Item& own = m_state.items[std::size_t(item)];
    if (item == m_survey.front) {
        for (const double tilt : {0.0, -90.0, 90.0}) {
            Item wall = own;
            wall.axes = turned(tilt, Vector::UnitX());
            list.push_back(wall);
        }
        return list;
    }
    switch (own.kind) {
    case State::Kind::Wall:
        addByCoordinates(item, list);
        for (const int neighbour : neighbours(item)) {
            const State::Kind kind = m_state.items[std::size_t(neighbour)].kind;
            if (kind == State::Kind::Wall) {
                addGlued(item, neighbour, list);
                addWalls(item, neighbour, list);
            }
        }
        break;
    case State::Kind::Point:
        addPoints(item, list);
        break;
    case State::Kind::Instrument:
        addInstruments(item, list);
        break;
    }
    return list;
}

// By how much the wall may bend towards the viewer, in degrees: as was measured, else as is likely.
std::vector<double> zoHPCSurveyStart::angles(int item, int neighbour) const
{
    for (const int index : m_ofItem[std::size_t(item)]) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        if (measurement.kind == Kind::Angle &&
            (measurement.from.wall == neighbour || measurement.to.wall == neighbour))
            return {180.0 - measurement.value};
    }
    return {90.0, 45.0, 20.0, 0.0, 120.0, -20.0, -45.0, -90.0};
}

void zoHPCSurveyStart::addGlued(int item, int neighbour, std::vector<Item>& list) const
{
    const Item& own = m_state.items[std::size_t(item)];
    const Item& other = m_state.items[std::size_t(neighbour)];
    for (const double bend : angles(item, neighbour)) {
        for (const Edge& edge : edges()) {
            for (const Edge& otherEdge : edges())
                list.push_back(glued(own, edge, other, otherEdge, bend * s_degree));
        }
    }
}

// Opposite to the neighbour, and before it, turned in any way.
void zoHPCSurveyStart::addWalls(int item, int neighbour, std::vector<Item>& list) const
{
    const Item& other = m_state.items[std::size_t(neighbour)];
    double longest = 0.0;
    for (const int index : m_ofItem[std::size_t(item)]) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        if (measurement.kind == Kind::Distance)
            longest = std::max(longest, measurement.value);
    }
    constexpr double Usual = 3000.0;
    const double depth = longest > 0.0 ? longest : Usual;
    constexpr double Parts[] = {0.6, 0.9};
    for (const double part : Parts) {
        for (const double turn : {180.0, 90.0, -90.0, 0.0}) {
            Item wall = m_state.items[std::size_t(item)];
            wall.axes = other.axes * turned(turn, Vector::UnitY());
            wall.position = other.position + part * depth * other.axes.col(2);
            list.push_back(wall);
        }
    }
}

void zoHPCSurveyStart::addByCoordinates(int item, std::vector<Item>& list) const
{
    Vector sum = Vector::Zero();
    int count = 0;
    for (const int index : measurementsTo(item)) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        if (measurement.kind == Kind::Coordinates) {
            sum += m_state.reach(measurement.instrument, measurement.coordinates).at;
            ++count;
        }
    }
    if (count == 0)
        return;
    for (const double tilt : {0.0, -90.0, 90.0}) {
        for (const double turn : {0.0, 90.0, -90.0, 180.0, 45.0, -45.0, 135.0, -135.0}) {
            Item wall = m_state.items[std::size_t(item)];
            wall.axes = turned(turn, Vector::UnitY()) * turned(tilt, Vector::UnitX());
            wall.position = sum / count;
            list.push_back(wall);
        }
    }
}

void zoHPCSurveyStart::addPoints(int item, std::vector<Item>& list) const
{
    const Item& front = m_state.items[std::size_t(m_survey.front)];
    const auto add = [&](const Vector& at) {
        Item point = m_state.items[std::size_t(item)];
        point.position = at;
        list.push_back(point);
    };
    for (const int index : measurementsTo(item)) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        if (measurement.kind == Kind::Coordinates) {
            add(m_state.reach(measurement.instrument, measurement.coordinates).at);
        } else if (measurement.kind == Kind::ViewerDistance) {
            add(front.position + measurement.value * front.axes.col(2));
        } else if (measurement.kind == Kind::Join || measurement.kind == Kind::Distance) {
            const zoHPCSurvey::Place& other =
                m_state.itemOf(measurement.from) == item ? measurement.to : measurement.from;
            const Vector at = m_state.at(other);
            const Matrix axes =
                other.wall >= 0 ? m_state.items[std::size_t(other.wall)].axes : Matrix::Identity();
            add(at + measurement.value * axes.col(2));
            constexpr double Diagonal = 0.7;
            for (const double sign : {1.0, -1.0}) {
                for (int axis = 0; axis < 2; ++axis) {
                    add(at + sign * measurement.value * axes.col(axis));
                    add(at + Diagonal * measurement.value * (sign * axes.col(axis) + axes.col(2)));
                }
            }
            add(at - measurement.value * axes.col(2));
        }
        constexpr std::size_t Enough = 60;
        if (list.size() > Enough)
            break;
    }
}

void zoHPCSurveyStart::addInstruments(int item, std::vector<Item>& list) const
{
    Vector sum = Vector::Zero();
    int count = 0;
    for (const int index : measurementsTo(item)) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
        sum +=
            m_state.at(measurement.from) - m_state.reach(measurement.instrument, measurement.coordinates).at;
        ++count;
    }
    constexpr double Part = 30.0;
    constexpr double Whole = 360.0;
    for (double heading = 0.0; heading < Whole; heading += Part) {
        Item instrument = m_state.items[std::size_t(item)];
        instrument.axes = turned(heading, Vector::UnitY());
        if (count > 0)
            instrument.position += sum / count;
        list.push_back(instrument);
    }
}
