#include "zoHPCLegacyRemark.h"

#include "zoText.h"

QString zoHPCLegacyRemark::kindName(Kind kind)
{
    switch (kind) {
    case Kind::NoParameters:
        return zoText("no-parameters");
    case Kind::UnreadNumber:
        return zoText("unread-number");
    case Kind::UnknownCompression:
        return zoText("unknown-compression");
    case Kind::NumberedHosts:
        return zoText("numbered-hosts");
    case Kind::DroppedForwards:
        return zoText("dropped-forwards");
    case Kind::ShiftedHosts:
        return zoText("shifted-hosts");
    case Kind::DroppedPipes:
        return zoText("dropped-pipes");
    case Kind::CopiedOverlap:
        return zoText("copied-overlap");
    case Kind::DroppedOffset:
        return zoText("dropped-offset");
    case Kind::HalfStereo:
        return zoText("half-stereo");
    case Kind::MissingHosts:
        return zoText("missing-hosts");
    case Kind::UnusedHosts:
        return zoText("unused-hosts");
    case Kind::EmptyWindow:
        return zoText("empty-window");
    case Kind::CutWall:
        return zoText("cut-wall");
    }
    return QString();
}
