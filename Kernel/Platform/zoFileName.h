#pragma once

#include <zoKernelExport.h>

#include <QString>

// File names between the toolkit, for which they are text, and the system, for which they are bytes.
class ZO_KERNEL_EXPORT zoFileName final
{
public:
    zoFileName() = delete;

    // Why the name leads to another file than the one that is meant, with the remedy: the encoding of the
    // locale has no bytes for it. Empty for a name that is sound.
    static QString flawOf(const QString& fileName);
    // The same for a file that is about to be made: listed, unreadable bytes became replacement characters.
    static QString flawOfNew(const QString& fileName);
};
