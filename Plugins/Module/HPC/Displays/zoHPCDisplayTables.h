#pragma once

#include <QtGlobal>

// Rows of the combo boxes of the display-setup dialog and what its panels show, in the order of the dialog.
// Texts are translated in the context of zoHPCDisplayGUII.
namespace zoHPCDisplayTables
{
struct ComboRow
{
    const char* text;
    const char* value; // what the item holds
};

// The types of projections and the parameters that each has.
struct ProjectionType
{
    const char* text;
    const char* value;
    const char* icon;
    const char* overlapUnit;
    bool tilePlace;  // row and column of the tile itself
    bool tileLayout; // rows, columns, overlap
    bool area;
    bool corners;
    bool cave;
    bool distance;
    bool rightOffset;
    bool edges; // blend widths of its own
};

inline constexpr ProjectionType ProjectionTypes[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Wall (No head tracking)"), "wall",
     "Iconset/TiledWallOnNormal.svg", QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[pixel]"), false, true, false,
     false, false, true, true, false},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Power Wall"), "powerwall", "Iconset/ProjectionOnNormal.svg",
     QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]"), false, true, true, false, false, true, true, false},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Cave"), "cave", "Iconset/CaveOnNormal.svg",
     QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]"), false, true, false, false, true, false, false, false},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Plane"), "plane", "Iconset/ProjectionOnNormal.svg",
     QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]"), false, false, false, true, false, false, false, true},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Tile"), "tile", "Iconset/WallTileOnNormal.svg",
     QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "[mm]"), true, true, false, false, false, true, true, false},
};

inline constexpr ComboRow Positions[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Whole window"), "fill"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left"), "left"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Right"), "right"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Top"), "top"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Bottom"), "bottom"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Custom"), "custom"},
};

inline constexpr ComboRow Eyes[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Disabled"), "mono"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left"), "left"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Right"), "right"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Double Buffered"), "stereo"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Horizontal Interlaced"), "horizontalinterlaced"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Vertical Interlaced"), "verticalinterlaced"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left/Right Split"), "splitleftright"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Top/Bottom Split"), "splitbottomtop"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Red/Cyan"), "redcyan"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Blue/Yellow"), "blueyellow"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Green/Magenta"), "greenmagenta"},
};

// The screens of a node are counted from 1 in the dialog and from 0 in documents.
inline constexpr ComboRow Screens[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Extended desktop"), "-2"},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Primary screen"), "-1"},
    {"1", "0"},
    {"2", "1"},
    {"3", "2"},
    {"4", "3"},
    {"5", "4"},
    {"6", "5"},
    {"7", "6"},
    {"8", "7"},
    {"9", "8"},
    {"10", "9"},
    {"11", "10"},
    {"12", "11"},
    {"13", "12"},
    {"14", "13"},
    {"15", "14"},
    {"16", "15"},
};
} // namespace zoHPCDisplayTables
