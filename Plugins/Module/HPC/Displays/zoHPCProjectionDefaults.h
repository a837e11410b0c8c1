#pragma once

#include <QVariant>

#include <map>

// What a new projection has, whatever its type: sizes and places in mm or pixels, rows and columns. Flags and blend
// widths stay unset.
class zoHPCProjectionDefaults final
{
public:
    zoHPCProjectionDefaults() = delete;

    // By column.
    static const std::map<int, QVariant>& values();
};
