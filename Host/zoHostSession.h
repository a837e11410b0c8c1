#pragma once

#include "zoHostOptions.h"
#include "zoNodeClusterService.h"

#include <QObject>

class zoClusterService;
class zoHostMainWindow;

// The session that the command line asks for: loads the configuration, starts the cluster, follows it, takes
// the picture and ends the program. Goes on by signals and queued calls, one step after the other. A
// non-interactive session prints its steps on standard output and exits with 1 at the first step that fails;
// where they cannot be printed it goes on, and exits with 1.
// Steps are English in every language, so that scripts know them, but for what the service says of a
// progress.
class zoHostSession final : public QObject
{
    Q_OBJECT

public:
    // Window and service outlive the session.
    zoHostSession(const zoHostOptions& options, zoHostMainWindow* window, zoClusterService* cluster,
                  QObject* parent = nullptr);
    ~zoHostSession() override;

    // An empty name keeps the configuration that the modules began with.
    void begin(const QString& configurationFile);

private:
    bool loadConfiguration(const QString& fileName);
    void start();
    void follow();
    void measure();
    void showPicture();
    void takePictures();
    void writePictures(const zoNodeClusterService::Pictures& pictures);
    bool writePicture(const QString& fileName, const QByteArray& png);
    void takeScreenshot();
    void finish();

    void print(const QString& line);
    void printNode(const QString& id);
    void fail(const QString& reason);
    void then(void (zoHostSession::*step)());

    zoHostOptions m_options;
    zoHostMainWindow* m_window;
    zoClusterService* m_cluster;
    QString m_whyForeign; // the file that was loaded last can be read, and is no configuration
    bool m_ended = false;
    bool m_isOutputLost = false;
    bool m_wasRunning = false;
};
