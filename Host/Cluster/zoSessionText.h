#pragma once

#include <QString>

class zoClusterService;

// What the running session of a service is, so that nobody takes a rehearsal for a wall.
namespace zoSessionText
{
// For people: "rehearsal of 4 nodes on this machine", or "4 nodes". Empty when none runs.
QString of(zoClusterService* cluster);
// The same for scripts, in English.
QString forScripts(zoClusterService* cluster);
} // namespace zoSessionText
