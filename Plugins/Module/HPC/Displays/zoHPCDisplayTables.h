#pragma once

#include <QLatin1String>
#include <QString>
#include <QtGlobal>

// What viewports and windows may hold, as the combo boxes of the display-setup dialog offer it. Texts are translated in the context of zoHPCDisplayGUII.
namespace zoHPCDisplayTables
{
struct ComboRow
{
    const char* text;
    const char* value; // what the item holds
};

// Where a viewport lies in its window, in fractions from the lower left corner.
struct Position
{
    const char* text;
    const char* value;
    bool isPreset; // without one the viewport keeps its own rectangle
    double x1, y1, x2, y2;
};

// A way in which a viewport serves the two eyes.
struct StereoMode
{
    enum class Eyes { Mono, Left, Right, Both };

    const char* text;
    const char* value;
    Eyes eyes;
};

inline constexpr Position Positions[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Whole window"), "fill", true, 0.0, 0.0, 1.0, 1.0},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left"), "left", true, 0.0, 0.0, 0.5, 1.0},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Right"), "right", true, 0.5, 0.0, 1.0, 1.0},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Top"), "top", true, 0.0, 0.5, 1.0, 1.0},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Bottom"), "bottom", true, 0.0, 0.0, 1.0, 0.5},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Custom"), "custom", false, 0.0, 0.0, 1.0, 1.0},
};

inline constexpr StereoMode Eyes[] = {
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Disabled"), "mono", StereoMode::Eyes::Mono},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left"), "left", StereoMode::Eyes::Left},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Right"), "right", StereoMode::Eyes::Right},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Double Buffered"), "stereo", StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Horizontal Interlaced"), "horizontalinterlaced",
     StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Vertical Interlaced"), "verticalinterlaced",
     StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Left/Right Split"), "splitleftright", StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Top/Bottom Split"), "splitbottomtop", StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Red/Cyan"), "redcyan", StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Blue/Yellow"), "blueyellow", StereoMode::Eyes::Both},
    {QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Green/Magenta"), "greenmagenta", StereoMode::Eyes::Both},
};

// The position that leaves the rectangle to the user. An unknown one leaves it to nobody.
inline bool isCustom(const QString& position)
{
    for (const Position& row : Positions) {
        if (position == QLatin1String(row.value))
            return !row.isPreset;
    }
    return false;
}

// Null for a value that is none of the modes.
inline const StereoMode* stereoMode(const QString& value)
{
    for (const StereoMode& mode : Eyes) {
        if (value == QLatin1String(mode.value))
            return &mode;
    }
    return nullptr;
}

inline bool isForOneEye(const QString& value)
{
    const StereoMode* const mode = stereoMode(value);
    return mode && (mode->eyes == StereoMode::Eyes::Left || mode->eyes == StereoMode::Eyes::Right);
}

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
