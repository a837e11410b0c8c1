#pragma once

#include <zoKernelExport.h>

#include <QString>

// What the programs do before they look at what they were started with.
class ZO_KERNEL_EXPORT zoCommandLine final
{
public:
    zoCommandLine() = delete;

    // A standard stream that is closed stays so: reading and writing fail. Left alone, the next file that is
    // opened would take its number, and messages would be written into that file.
    static void holdStandardStreams();

    // What is wrong with the first argument that is no text in the encoding of the locale; empty for none.
    // Such a name would become that of another file. Needs the application object, which sets the locale.
    static QString flawOf(int argc, const char* const* argv);
};
