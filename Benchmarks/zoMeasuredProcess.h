#pragma once

#include <QString>
#include <QStringList>

#include <sys/resource.h>

// A program that is run to its end, and what it took.
struct zoMeasuredProcess
{
    struct Limits
    {
        rlim_t memory = RLIM_INFINITY; // bytes of address space
        rlim_t time = RLIM_INFINITY;   // s of processor time
    };

    double time = 0.0;    // s of processor time, the system's share included
    double elapsed = 0.0; // s
    double memory = 0.0;  // MiB at most
    int exitCode = -1;    // -1 when it did not end by itself

    // Standard output and error go nowhere.
    static zoMeasuredProcess run(const QStringList& command, const QString& standardInput,
                                 const Limits& limits);
    static zoMeasuredProcess run(const QStringList& command)
    {
        return run(command, QStringLiteral("/dev/null"), {});
    }
};
