#pragma once

// How programs of a session know that the others live: each says something in each interval. Silence is counted
// in own intervals and not by the clock, so that a program that was stopped itself accuses nobody.
namespace zoServerBeat
{
constexpr int Interval = 200; // ms
// More silent intervals than this and a program is lost to those that started it.
constexpr int TicksUntilLost = 4;
// More than this and a program that is not told anything any more ends itself.
constexpr int TicksUntilAlone = 6;
} // namespace zoServerBeat
