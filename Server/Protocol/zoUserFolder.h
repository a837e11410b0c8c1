#pragma once

#include <QByteArray>

// The run-time folder of this user: where what lasts as long as the login lies, for nobody else to see.
class zoUserFolder final
{
public:
    // XDG_RUNTIME_DIR when that is a folder of this user, else one of this user alone below /tmp, which need not be
    // there.
    static QByteArray path();

    // The one below /tmp.
    static QByteArray fallback();

    // Sees to it that XDG_RUNTIME_DIR names a folder of this user alone, for libraries that look there and complain
    // otherwise: after su, in cron, in a login over ssh. Makes `folder` when it is needed; leaves everything as it is
    // when somebody else has taken that name, or when the socket of a Wayland compositor lies in the folder that is
    // named now.
    static void provide(const QByteArray& folder = fallback());
};
