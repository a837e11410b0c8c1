#pragma once

#include <QString>
#include <QStringList>

// What the command line of the host asks for.
class zoHostOptions final
{
public:
    // The outcome of reading a command line: either options to run with, or a text to print and an exit code.
    struct Result;

    // Reads the arguments, program name first. Needs no application object and no display.
    static Result parse(const QStringList& arguments);

    QString configFile;      // empty: the default file of the preferences
    QString screenshotFile;  // empty: none
    QStringList moduleFiles; // empty: the module that belongs to this host
    bool start = false;
    bool nonInteractive = false;
    bool exitAfterStop = false;
};

struct zoHostOptions::Result
{
    zoHostOptions options;
    bool run = false; // otherwise: print and exit
    int exitCode = 0;
    QString standardOutput;
    QString standardError;
};
