#pragma once

#include "zoHostSessionService.h"
#include "zoNodeReports.h"
#include "zoSessionWait.h"

#include <QJsonObject>
#include <QMap>
#include <QRect>
#include <QTimer>

#include <functional>

class zoControllerProcess;
struct zoServerMessage;

// The cluster service whose nodes are programs of their own, on the machines of the configuration or, in a
// rehearsal, on this one. A controller beside the host starts and watches them; the session is what it says.
//
// start(), speedTest() and takePictures() handle events while they wait, in pump() and nowhere else. abort(),
// stop(), the end of the controller, of this object and of the application end them at once.
class zoNodeClusterService final : public zoHostSessionService
{
    Q_OBJECT

public:
    // Where the nodes of a network are one job of MPI; elsewhere each is at the other end of two pipes.
    enum class Mpi {
        Never,
        BetweenMachines,
        Always // in a rehearsal, too
    };

    // How programs of nodes are started.
    struct Launch
    {
        QString program;       // of the controller, and of all in a rehearsal
        QString remoteProgram; // on other machines
        QStringList pattern;   // as zoLauncher::fromText() gives it
        Mpi mpi = Mpi::BetweenMachines;
    };

    // Pictures of what the windows show, PNG.
    struct Pictures
    {
        QByteArray wall;                   // empty when there are no windows
        QMap<QString, QByteArray> windows; // by "NODE-WINDOW"
    };

    static Launch defaultLaunch();

    explicit zoNodeClusterService(const Launch& launch, QObject* parent = nullptr);
    ~zoNodeClusterService() override; // ends a session without a signal

    QStringList runningNodes() override;
    QStringList speedTest() override;
    Capabilities capabilities() override;
    QVector<zoClusterNodeReport> nodeReport() override;

    // Of the next session.
    void setLaunch(const Launch& launch);
    // Keeps the next session on this machine. One whose hosts are all this machine does so anyway.
    void setRehearsal(bool on);
    // Asked when no node can be reached: true rehearses instead. None by default.
    void setRehearsalQuestion(std::function<bool()> question);
    // The host's window on the desktop, in pixels of the screen, when a session starts: windows of a rehearsal stand
    // beside it where there is room. An empty one is nowhere.
    void setOwnPlace(std::function<QRect()> place);
    // A session ends with the first node that is lost; else it goes on with the others.
    void setEndsWithLostNode(bool on);

    // False, with a reason, when no session runs or it ends meanwhile.
    bool takePictures(Pictures& pictures, QString& reason);

    // Trouble on purpose, in a rehearsal alone. In one with more nodes than programs, others share its lot.
    void loseNode(const QString& id) { inject(id, QStringLiteral("lose"), 0); }
    void hangNode(const QString& id) { inject(id, QStringLiteral("hang"), 0); }
    void delayNode(const QString& id, int milliseconds)
    {
        inject(id, QStringLiteral("slow"), milliseconds);
    } // each frame

    void setAvailableMemory(qint64 bytes);           // for tests: what each machine has
    void setLockDirectory(const QString& directory); // for tests: where sessions meet
    qint64 controllerProcess() const;                // for tests
    qint64 nodeProcess(const QString& id) const;     // for tests

protected:
    bool connectSession(const Nodes& nodes, const Accepted& accepted) override;
    // What else changes than the document comes later, by runningNodesChanged().
    void changeSession(const Nodes& nodes) override;
    void releaseSession() override;
    void wakeSession() override { m_wait.wake(); }
    void showContent() override;

private:
    enum class Attempt { Succeeded, Unreachable, Failed, Destroyed };

    Attempt attempt(const Nodes& nodes);
    Attempt connectNodes(const Nodes& nodes);
    Attempt openWindows();
    void logFailures() const;
    zoSessionWait::Outcome pump(int limit, const std::function<bool()>& done);
    bool isOver() const;

    void receive(const zoServerMessage& message);
    void receiveNode(const QJsonObject& object);
    void showProgress(const QString& id);
    void receiveChange(const QJsonObject& object);
    void receiveNote(const QJsonObject& object) const;
    void loseController(const QString& lastLine);
    void watchController();
    void tellLosses();

    void endController();
    QString contentWord() const;
    void inject(const QString& id, const QString& what, int milliseconds);

    Launch m_launch;
    bool m_isRehearsal = false; // this session
    bool m_wantsRehearsal = false;
    bool m_endsWithLostNode = false;
    bool m_shares = false; // nodes with other sessions, in this one
    qint64 m_availableMemory = -1;
    QString m_lockDirectory;
    std::function<bool()> m_rehearsalQuestion;
    std::function<QRect()> m_ownPlace;

    zoControllerProcess* m_controller = nullptr;
    QTimer m_watch; // of the controller
    int m_silence = 0;
    zoNodeReports m_reports;
    QStringList m_running;
    QTimer m_losses;

    zoSessionWait m_wait;
    QString m_broken;     // why the controller cannot go on
    int m_answered = 0;   // nodes
    QJsonObject m_answer; // to the start; empty before
    QJsonObject m_opened;
    QJsonObject m_measured;
    bool m_isMeasured = false;
    bool m_isWaiting = false; // for figures or pictures
    Pictures m_pictures;
    bool m_hasPictures = false;
};
