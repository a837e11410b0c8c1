#pragma once

#include <zoServerMessage.h>

#include <QList>

// A message for some ranks of a job, or from one of them, inside of another message: the ranks in one line, then verb
// and payload as they are on the wire.
struct zoRankMessage final
{
    QList<int> ranks;
    zoServerMessage message;

    // Empty verb and payload when the whole is longer than a message may be.
    zoServerMessage packed(const QByteArray& verb) const;
    // False for what is none.
    bool unpack(const zoServerMessage& whole);
};
