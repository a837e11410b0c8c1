#pragma once

// What this machine has for a node of a session, on standard output.
namespace zoServerProbe
{
// Where windows appear: the display of the environment, else the first one of this machine, else nowhere. Before
// the application object is constructed.
void choosePlatform();

int run(int argc, char** argv); // exit status
} // namespace zoServerProbe
