#pragma once

#include <zoKernelExport.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

// Reads whole files, if they have an end: neither devices nor pipes, and none beyond
// zoClusterLimits::MaximumFileBytes.
class ZO_KERNEL_EXPORT zoFileReader final
{
    Q_DECLARE_TR_FUNCTIONS(zoFileReader)

public:
    enum class Result {
        Read,
        NotOpened, // also a folder
        NotRead    // too large, no regular file, or half of it could not be read; the bytes are empty
    };

    // What a shell gives in the place of a file, "<(command)", is a pipe without a name; programs that read
    // each name once may take it.
    enum class Pipes { Refused, Unnamed };

    // Waits for nobody but the writer of such a pipe, and opens nothing that it refuses: devices do things
    // when they are opened. "/dev/null" is an empty file. `reason`, if given, becomes why not.
    static Result read(const QString& fileName, QByteArray& bytes, QString* reason = nullptr,
                       Pipes pipes = Pipes::Refused);

    // To its end, whatever it comes from.
    static Result readStandardInput(QByteArray& bytes, QString* reason = nullptr);
};
