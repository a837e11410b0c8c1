#pragma once

#include <QPolygonF>
#include <QString>

#include <vector>

// Digits drawn with strokes instead of a font: on every node of a wall they have the same outlines, whatever fonts it
// has, so that a number that lies across a seam fits together.
namespace zoStrokeDigits
{
// The outlines of a number, to be filled together by the winding rule; 1 high, centred on the origin, y up. Characters
// that are no digits are left out.
std::vector<QPolygonF> outlines(const QString& number);

// One digit, 0 to 9, cut into convex pieces that touch and do not overlap, for what fills nothing else; centred on the
// origin.
std::vector<QPolygonF> pieces(int digit);
// How far to the right of a number's middle one of its digits stands, counted from 0.
double place(int index, int digits);
} // namespace zoStrokeDigits
