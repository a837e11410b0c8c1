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
        NotOpened,  // nothing was changed
        NotWritten, // as on a full disk; a regular file holds what it held before
        Damaged     // nor does it hold that any more
    };

    // A regular file is replaced when all bytes are on the disk and is never seen half written, except in a
    // folder that takes no new files and under the longest names: there it is overwritten. Devices and pipes
    // are written to and stay what they are. `reason`, if given, becomes the system's text for what went
    // wrong.
    static Result write(const QString& fileName, const QByteArray& bytes, QString* reason = nullptr);
    // Asks for the bytes once the file is open.
    static Result write(const QString& fileName, const std::function<QByteArray()>& bytes,
                        QString* reason = nullptr);
};
