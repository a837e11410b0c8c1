#pragma once

#include <QByteArray>
#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>

#include <vector>

// What a session of ParaView's server needs of a configuration document, as plain values.
struct zoParaViewSetup
{
    // One rank of the job: a Machine of the file.
    struct Machine
    {
        QString node;    // id
        QString host;    // as the document names it
        QString display; // ":0.1"; empty follows the environment of the rank
        QString tile;    // what it shows
        QByteArray text; // of the file
    };

    // What is asked for.
    struct Request
    {
        double pixelPitch = 1.0; // mm, of walls that have no size of their own
        QStringList hostsHere;   // hosts of the document that are this machine
        QString display;         // of this machine, ":3"; empty keeps what the document says
        QSize rehearsal; // pixels: all windows stand on one desktop of this size; empty for the real wall
    };

    QByteArray pvx;                 // the file
    std::vector<Machine> machines;  // in its order
    QMap<QString, QString> network; // options of the one network that all machines are in; none for several
    QStringList notes;              // what the document has and the file cannot say, each once
    QStringList gateways;           // ids of enabled nodes behind which others lie

    // Ids of nodes whose machines are not the same in the other one.
    QStringList changedNodes(const zoParaViewSetup& other) const;
};

// Another entry of the component libzoServerSetup.so, called ZO_READ_PARAVIEW_SETUP. False, with the setup as it was
// and the reason, for a text that is no configuration.
using zoReadParaViewSetup = bool (*)(const QString& document, const zoParaViewSetup::Request& request,
                                     zoParaViewSetup& setup, QString& reason);
#define ZO_READ_PARAVIEW_SETUP "zoReadParaViewSetupEntry"
