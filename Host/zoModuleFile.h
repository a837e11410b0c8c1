#pragma once

#include <QCoreApplication>
#include <QString>

// Whether a library is whole, as far as its own headers tell: the system maps what they name and kills a process that
// touches what is not there. Reads some hundred bytes of the file and runs nothing.
class zoModuleFile final
{
    Q_DECLARE_TR_FUNCTIONS(zoModuleFile)

public:
    zoModuleFile() = delete;

    // Why the file cannot be loaded; empty when it may be tried. What is no library of this kind of machine is left to
    // the system, which refuses it with a reason of its own.
    static QString flawOf(const QString& fileName);
};
