#pragma once

#include <QString>

// A release of ParaView, as far as the files that its servers read differ.
class zoParaViewRelease final
{
public:
    // That of Debian 12.
    zoParaViewRelease() = default;

    // "5.11"; what stands behind the second number, as in "5.11.2", makes no difference. False for anything else.
    bool read(const QString& text);

    // Whether machines stand in a layer for the process; later releases ask to leave it out.
    bool hasProcess() const { return !isFrom(6, 1); }
    // Whether each machine has a viewer and a kind of stereo of its own.
    bool hasViewers() const { return isFrom(6, 2); }

private:
    bool isFrom(int majorNumber, int minorNumber) const
    {
        return m_major > majorNumber || (m_major == majorNumber && m_minor >= minorNumber);
    }

    int m_major = 5;
    int m_minor = 11;
};
