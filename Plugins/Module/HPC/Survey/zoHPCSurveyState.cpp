#include "zoHPCSurveyState.h"

#include <algorithm>

namespace
{
// Of walls that nobody measured yet.
constexpr double s_width = 2000.0;
constexpr double s_height = 1500.0;
} // namespace

int zoHPCSurveyState::Item::unknowns() const
{
    constexpr int OfPoint = 3;
    constexpr int OfInstrument = 4;
    return kind == Kind::Wall ? MostUnknowns : kind == Kind::Point ? OfPoint : OfInstrument;
}

void zoHPCSurveyState::Item::move(const double* step)
{
    position += Vector(step[0], step[1], step[2]);
    if (kind == Kind::Point)
        return;
    const Vector turn = kind == Kind::Wall ? Vector(step[RotationX], step[RotationY], step[RotationZ])
                                           : Vector(0.0, step[RotationX], 0.0);
    const double angle = turn.norm() / Lever;
    if (angle > 0.0) {
        // Through a quaternion, so that many steps leave it a rotation.
        const Eigen::Quaterniond rotation(Eigen::AngleAxisd(angle, turn.normalized()));
        axes = (rotation * Eigen::Quaterniond(axes)).normalized().toRotationMatrix();
    }
    if (kind == Kind::Wall) {
        width = std::max(width + step[WidthOf], zoHPCSurvey::SmallestSize);
        height = std::max(height + step[HeightOf], zoHPCSurvey::SmallestSize);
    }
}

zoHPCSurveyState::zoHPCSurveyState(const zoHPCSurvey& survey)
    : m_walls(int(survey.walls.size())), m_points(int(survey.points.size()))
{
    for (const zoHPCSurvey::Wall& wall : survey.walls) {
        Item item;
        item.kind = Kind::Wall;
        item.width = wall.width > 0.0 ? wall.width : s_width;
        item.height = wall.height > 0.0 ? wall.height : s_height;
        items.push_back(item);
    }
    items.resize(items.size() + survey.points.size());
    Item instrument;
    instrument.kind = Kind::Instrument;
    items.resize(items.size() + survey.instruments.size(), instrument);

    m_middles.assign(survey.instruments.size(), Vector::Zero());
    std::vector<int> counts(survey.instruments.size(), 0);
    for (const zoHPCSurvey::Measurement& measurement : survey.measurements) {
        if (measurement.kind != zoHPCSurvey::Kind::Coordinates)
            continue;
        const Point3& place = measurement.coordinates;
        m_middles[std::size_t(measurement.instrument)] += Vector(place.x, place.y, place.z);
        ++counts[std::size_t(measurement.instrument)];
    }
    for (std::size_t i = 0; i < m_middles.size(); ++i)
        m_middles[i] /= std::max(counts[i], 1);
}

int zoHPCSurveyState::itemOf(const zoHPCSurvey::Place& place) const
{
    return place.wall >= 0 ? place.wall : itemOfPoint(place.point);
}

zoHPCSurveyState::Vector zoHPCSurveyState::at(const zoHPCSurvey::Place& place) const
{
    const Item& item = items[std::size_t(itemOf(place))];
    return place.wall < 0
               ? item.position
               : item.position + item.axes * Vector(place.s * item.width, place.t * item.height, 0.0);
}

zoHPCSurveyState::Reach zoHPCSurveyState::reach(const zoHPCSurvey::Place& place) const
{
    Reach reach;
    reach.item = itemOf(place);
    reach.at = at(place);
    const Item& item = items[std::size_t(reach.item)];
    reach.count = item.unknowns();
    for (int axis = 0; axis < 3; ++axis)
        reach.partials[axis] = Vector::Unit(axis);
    if (place.wall < 0)
        return reach;
    for (int axis = 0; axis < 3; ++axis)
        reach.partials[RotationX + axis] = Vector::Unit(axis).cross(reach.at - item.position) / Lever;
    reach.partials[WidthOf] = place.s * item.axes.col(0);
    reach.partials[HeightOf] = place.t * item.axes.col(1);
    return reach;
}

zoHPCSurveyState::Reach zoHPCSurveyState::reach(int instrument, const Point3& coordinates) const
{
    Reach reach;
    reach.item = itemOfInstrument(instrument);
    const Item& item = items[std::size_t(reach.item)];
    const Vector& middle = m_middles[std::size_t(instrument)];
    const Vector turned = item.axes * (Vector(coordinates.x, coordinates.y, coordinates.z) - middle);
    reach.at = item.position + turned;
    reach.count = item.unknowns();
    for (int axis = 0; axis < 3; ++axis)
        reach.partials[axis] = Vector::Unit(axis);
    reach.partials[RotationX] = Vector::UnitY().cross(turned) / Lever;
    return reach;
}
