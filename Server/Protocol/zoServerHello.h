#pragma once

#include "zoServerMessage.h"

#include <QString>
#include <QStringList>

// The first message of each program of a session: who it is and what its machine has.
struct zoServerHello final
{
    // Programs of different numbers do not understand each other.
    static constexpr int Protocol = 1;

    int protocol = 0;
    QString version;        // of the program
    QString host;           // name of the machine as it calls itself
    qint64 freeMemory = -1; // bytes that new programs may have; negative for unknown
    QString display;        // what windows appear on; empty for nowhere
    QStringList screens;    // "1920x1080+0+0", in the order of the display
    qint64 processId = 0;

    // Of this program on this machine; display and screens are left to the caller.
    static zoServerHello own();

    static zoServerHello fromMessage(const zoServerMessage& message);
    zoServerMessage message() const;

    // Empty when the program can be talked to, else what both sides are.
    QString mismatch() const;
};
