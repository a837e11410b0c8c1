#include "zoHPCSurvey.h"

#include <utility>

bool zoHPCSurvey::isAngle(Kind kind)
{
    return kind == Kind::Angle || kind == Kind::Upright || kind == Kind::Level || kind == Kind::Flat;
}

int zoHPCSurvey::equationCount(Kind kind)
{
    switch (kind) {
    case Kind::Join:
    case Kind::Coordinates:
        return 3;
    case Kind::Upright:
    case Kind::Flat:
        return 2;
    default:
        return 1;
    }
}

void zoHPCSurvey::removeUnusedInstruments()
{
    const std::vector<Instrument> all = std::exchange(instruments, {});
    std::vector<int> indices(all.size(), -1);
    for (Measurement& measurement : measurements) {
        if (measurement.instrument < 0)
            continue;
        int& index = indices[std::size_t(measurement.instrument)];
        if (index < 0) {
            index = int(instruments.size());
            instruments.push_back(all[std::size_t(measurement.instrument)]);
        }
        measurement.instrument = index;
    }
}
