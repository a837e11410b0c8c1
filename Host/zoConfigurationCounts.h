#pragma once

#include <QString>

// How much a configuration document holds. A text that is not well-formed counts up to its first error.
struct zoConfigurationCounts final
{
    explicit zoConfigurationCounts(const QString& document = QString());

    int networks = 0;
    int nodes = 0;       // disabled ones included
    int projections = 0; // without the planes and tiles that they generate
    int displays = 0;
    int windows = 0;
    int viewports = 0;
};
