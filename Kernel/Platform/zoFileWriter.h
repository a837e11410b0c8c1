#pragma once

#include <zoKernelExport.h>

#include <QByteArray>
#include <QString>

#include <functional>

// Writes whole files.
class ZO_KERNEL_EXPORT zoFileWriter final
{
public:
    enum class Result {
        Written,
        NotOpened,  // nothing was changed; also when the guard refuses, then without a reason
        NotWritten, // as on a full disk; a regular file holds what it held before
        Damaged     // nor does it hold that any more
    };

    // A regular file is replaced when all bytes are on the disk and is never seen half written. The new file
    // has the owner, group, permissions, access list and extended attributes of the old one. Where it cannot
    // have them, where the old file has several names, and in a folder that takes no new files, the bytes are
    // written over the old ones; when that fails, these are put back. Devices and pipes are written to and
    // stay what they are, links stay links. `reason`, if given, becomes the system's text for what went
    // wrong.
    static Result write(const QString& fileName, const QByteArray& bytes, QString* reason = nullptr);
    // Asks for the bytes once the file is open.
    static Result write(const QString& fileName, const std::function<QByteArray()>& bytes,
                        QString* reason = nullptr);

    // Whether write() could open the file. Changes nothing.
    static bool canWrite(const QString& fileName, QString* reason = nullptr); // for modules and tests

    // What a host has to say to the files that are written, by whomever.
    struct Guard
    {
        // Asked before anything of the file is touched.
        std::function<bool(const QString& fileName)> mayWrite;
        // Told when a file was written.
        std::function<void(const QString& fileName)> written;
    };
    // An empty guard is none.
    static void setGuard(const Guard& guard);
    // Whether somebody is asked before a file is written.
    static bool isGuarded();
};
