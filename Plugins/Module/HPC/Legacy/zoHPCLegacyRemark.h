#pragma once

#include <QString>

// Something in a legacy configuration that a reader should look at after its conversion.
struct zoHPCLegacyRemark
{
    enum class Kind {
        NoParameters,       // the text holds no parameter at all
        UnreadNumber,       // an invalid number was read as 0
        UnknownCompression, // a compression level without counterpart was dropped
        NumberedHosts,      // equal host names: all windows got numbered names
        DroppedForwards,    // hosts after a second list of forwarded hosts were dropped
        ShiftedHosts,       // forwarding hosts move the hosts and positions of later windows
        DroppedPipes,       // pipes after a gap in their numbers were dropped
        CopiedOverlap,      // the horizontal overlap became the vertical one, too
        DroppedOffset,      // the offset of a wall, which no reader of the present format knows
        HalfStereo,         // a stereo wall whose viewports cover the left half only
        MissingHosts,       // windows without a host
        UnusedHosts,        // hosts without a window
        EmptyWindow,        // viewports in a window without an area have no rectangle
        CutWall             // windows of a senselessly large wall were dropped
    };

    Kind kind;
    QString text;      // one sentence for a person
    QString parameter; // the legacy parameter that it is about; empty for none in particular
    // Where that parameter stands in the legacy text, from 1; the beginning when it does not.
    int line = 1;
    int column = 1;

    bool operator==(const zoHPCLegacyRemark& other) const
    {
        return kind == other.kind && text == other.text && parameter == other.parameter &&
               line == other.line && column == other.column;
    }
    // Stable word for the kind, the same in all languages, such as "unread-number".
    static QString kindName(Kind kind);
};
