#pragma once

#include "zoServerLink.h"

#include <zoClusterNodeLocks.h>
#include <zoNodeShow.h>
#include <zoWallSetup.h>

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QPair>

#include <memory>

// What runs on a node: marks the node as in use, opens its windows, and shows in them what it is told, in step
// with the others. In a rehearsal one program is several nodes.
//
// From the head: NODES {nodes: [{id, port, share}], locks}, OPEN {setup, places, content}, SHOW {content},
// DRAW {frame, empty}, GO, PICTURES, DATA, DATAEND, FETCH {bytes, ms}, SLOW {ms}, QUIT. To it: HELLO, HELD
// {inUse, trouble}, OPENED {failures}, READY {frame}, CHANGED, PICTURE, PICTURED, NOTE.
class zoNodeServer final : public QObject
{
    Q_OBJECT

public:
    // `link` is the way to the head.
    explicit zoNodeServer(std::unique_ptr<zoServerLink> link, QObject* parent = nullptr);
    ~zoNodeServer() override;

    // Begins; the program's event loop ends with the session.
    void open();

    static QStringList screens();

private:
    void obey(const zoServerMessage& message);
    void hold(const QJsonObject& object);
    void openWindows(const QJsonObject& object);
    void show(const QString& content);
    void draw(const QJsonObject& object);
    void swap(bool isEmpty);
    void takePictures();
    void fetch(const QJsonObject& object);
    void tell(const QByteArray& verb, const QJsonObject& object);

    std::unique_ptr<zoServerLink> m_link;
    zoClusterNodeLocks m_locks;
    QHash<QString, int> m_held; // port by id
    std::unique_ptr<zoNodeShow> m_show;
    zoWallSetup m_setup;
    zoShowContent m_content = zoShowContent::None;
    bool m_isDrawn = false; // and not yet shown
    int m_delayMs = 0;      // trouble on purpose
};
