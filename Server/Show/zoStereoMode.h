#pragma once

#include <QString>

// The eyes, and the ways in which a viewport serves them.
namespace zoStereoMode
{
enum class Eye { Middle, Left, Right };

enum class Mode {
    Mono,
    Left,
    Right,
    QuadBuffer,
    RowInterlaced,    // even rows of the screen, counted from 0 at its top, for the left eye
    ColumnInterlaced, // even columns for the left eye
    SplitLeftRight,   // left half for the left eye
    SplitTopBottom,   // upper half for the left eye
    RedCyan,          // of the two colours the first one for the left eye
    BlueYellow,
    GreenMagenta
};

// A word of a document; an unknown one is mono.
inline Mode ofWord(const QString& word)
{
    struct Row
    {
        const char* word;
        Mode mode;
    };
    static constexpr Row rows[] = {{"left", Mode::Left},
                                   {"right", Mode::Right},
                                   {"stereo", Mode::QuadBuffer},
                                   {"horizontalinterlaced", Mode::RowInterlaced},
                                   {"verticalinterlaced", Mode::ColumnInterlaced},
                                   {"splitleftright", Mode::SplitLeftRight},
                                   {"splitbottomtop", Mode::SplitTopBottom},
                                   {"redcyan", Mode::RedCyan},
                                   {"blueyellow", Mode::BlueYellow},
                                   {"greenmagenta", Mode::GreenMagenta}};
    for (const Row& row : rows) {
        if (word == QLatin1String(row.word))
            return row.mode;
    }
    return Mode::Mono;
}

// Whether a viewport shows both eyes a picture of their own.
inline bool isForBothEyes(Mode mode)
{
    return mode != Mode::Mono && mode != Mode::Left && mode != Mode::Right;
}

// The only eye of a viewport that serves no two.
inline Eye onlyEye(Mode mode)
{
    return mode == Mode::Left ? Eye::Left : mode == Mode::Right ? Eye::Right : Eye::Middle;
}

// The channels of the left eye in an anaglyph as a mask of a pixel's 0xRRGGBB; the right eye has the others. 0 for
// other modes.
inline unsigned leftChannels(Mode mode)
{
    switch (mode) {
    case Mode::RedCyan:
        return 0xff0000U;
    case Mode::BlueYellow:
        return 0x0000ffU;
    case Mode::GreenMagenta:
        return 0x00ff00U;
    default:
        return 0U;
    }
}
} // namespace zoStereoMode
