#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// What the command line of the host asks for.
class zoHostOptions final
{
    Q_DECLARE_TR_FUNCTIONS(zoHostOptions)

public:
    // The outcome of reading a command line: either options to run with, or a text to print and an exit code.
    struct Result;

    // Reads the arguments, program name first. Needs no application object and no display. The language is
    // told with every outcome, so that what is printed can be had in it.
    static Result parse(const QStringList& arguments);
    // The outcome for a command line with a mistake.
    static Result refused(const QString& mistake);

    QString language;          // empty: the locale decides
    QString configFile;        // empty: the default file of the preferences
    QString screenshotFile;    // empty: none
    QStringList moduleFiles;   // empty: the module that belongs to this host
    QString engine;            // "nodes", "paraview" or "local"; empty: the preferences decide
    QString shownPicture;      // "tiles" or "test-image"; empty: none
    QString wallPictureFile;   // empty: none
    QString nodePictureFolder; // empty: none
    bool rehearse = false;
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
