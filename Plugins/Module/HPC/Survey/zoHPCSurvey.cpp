#include "zoHPCSurvey.h"

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
