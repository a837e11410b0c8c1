#pragma once

#include <zoServerMessage.h>

#include <QObject>

class zoServerChild;

// The controller of one session: a program beside the host, which starts and watches those of the nodes.
class zoControllerProcess final : public QObject
{
    Q_OBJECT

public:
    // The program that belongs to this host; empty when there is none.
    static QString defaultProgram();

    explicit zoControllerProcess(QObject* parent = nullptr);
    ~zoControllerProcess() override; // ends it at once, and with it all nodes

    void start(const QString& program);
    void send(const QByteArray& verb, const QJsonObject& object = {});
    // Lets it end, and waits until it did; by force in the end. Handles no event and emits no signal.
    void end();
    // Whether it said anything since this was asked last.
    bool takeSign();

    qint64 processId() const; // for tests

signals:
    void received(const zoServerMessage& message);
    void ended(const QString& lastLine); // once, unless end() was called

private:
    zoServerChild* m_child;
};
