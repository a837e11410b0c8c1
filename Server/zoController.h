#pragma once

#include "zoHeads.h"
#include "zoPipeLink.h"
#include "zoSessionNodes.h"

#include <zoWallSetup.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QRect>
#include <QSet>

#include <memory>

class zoWallPicture;

// One session, on behalf of a host: reads the document, starts the servers of all nodes by the heads of their
// networks, and brings them from one state to the next together. Ends with the host.
//
// From the host: SESSION {document, nodes, share, rehearse, avoid: [x, y, width, height], mpi, template, program, locks,
// memory, available}, OPEN, SHOW {content}, CONFIG {document, nodes, share}, MEASURE, PICTURES, INJECT {id, what, ms}, QUIT.
// To it: NODE {id, state, ...}, ANSWERED {inUse, short, failed}, OPENED {failed}, CHANGED {running},
// WAITS {id: microseconds}, MEASURED {sent, received, synchronised, nodes}, PICTURE {node, window, png},
// PICTURED {wall}, NOTE {text}, BROKEN {reason}.
class zoController final : public QObject
{
    Q_OBJECT

public:
    explicit zoController(QObject* parent = nullptr);
    ~zoController() override;

    // Begins; the program's event loop ends with the session.
    void open();

private:
    using Node = zoSessionNodes::Node;
    using State = zoSessionNodes::State;

    // A configuration is put into effect in steps; each one ends when all servers that it waits for answered.
    enum class Step { None, Leaving, Joining, Asking, Opening };

    void obey(const zoServerMessage& message);
    void begin(const QJsonObject& session);
    void change(const QJsonObject& config);
    bool readDocument(const QString& document);
    void beBusy();
    void report(const QByteArray& verb, const QJsonObject& object);
    void reportNode(const Node& node);

    void leave();
    void join();
    void launch(const std::vector<Node>& joining, QSet<int>& servers);
    void tellNodes(int key);
    void answer();
    void openWindows();
    void finishOpening();
    void advance();
    void serverAnswered(int key);
    void serversRestart(const QList<int>& keys);

    void hear(int key, const QByteArray& verb, const QJsonObject& body);
    void hearHeld(int key, const QJsonObject& body);
    void hearOpened(int key, const QJsonObject& body);
    void loseServer(int key, const QString& reason, const QString& detail);
    void failNode(const QString& id, const QString& reason, const QString& detail);

    void showContent();
    void drawFrame();
    void frameDrawn(const QHash<int, qint64>& waits);
    void measure();
    void synchronise();
    void finishMeasuring();
    void takePictures();
    void hearPicture(const QJsonObject& body);
    void finishPictures();
    void inject(const QJsonObject& object);

    QJsonArray placesOf(const zoWallSetup& setup) const;
    QList<int> serversWithWindows() const;

    zoPipeLink m_link;
    zoHeads m_heads;
    zoSessionNodes m_nodes;
    zoWallSetup m_setup;
    QStringList m_order; // wanted ids as the document has them
    std::vector<Node> m_wanted;
    zoLauncher m_launcher;
    QString m_remoteProgram;
    QString m_lockDirectory;
    qint64 m_memoryBase = 0;
    qint64 m_availableMemory = -1;
    bool m_rehearse = false;
    QRect m_avoided; // the host's window, on the desktop of a rehearsal; empty when it is not known
    bool m_useMpi = false;
    bool m_share = true;
    bool m_isSession = false; // the start is over
    Step m_step = Step::None;
    QSet<int> m_awaited;      // servers
    QJsonObject m_nextConfig; // came while a step was in progress
    QStringList m_failed;     // in this change
    QString m_content = QStringLiteral("none");
    bool m_frameIsWanted = false;
    QElapsedTimer m_clock;

    enum class Measuring { No, Rates, Synchronisations };
    Measuring m_measuring = Measuring::No;
    bool m_measureIsWanted = false; // after the step that is in progress
    QJsonObject m_rates;
    int m_synchronisations = 0;

    QSet<int> m_picturesAwaited;                  // servers
    std::unique_ptr<zoWallPicture> m_wallPicture; // while pictures come
    bool m_isTakingPictures = false;
};
