#pragma once

#include "zoServerMessageReader.h"

#include <QMap>
#include <QObject>
#include <QProcess>
#include <QStringList>

// A program of a session that this one started and talks to through its standard input and output. It ends
// with the program that started it, however that one ends.
class zoServerChild final : public QObject
{
    Q_OBJECT

public:
    explicit zoServerChild(zoServerMessageReader::Start start = zoServerMessageReader::Start::AtOnce,
                           QObject* parent = nullptr);
    ~zoServerChild() override; // ends the program at once, without a signal

    // Program and arguments. Answers with ended() when there is no such program.
    void start(const QStringList& command);
    // Beside that of this program; before it is started.
    void setEnvironment(const QMap<QString, QString>& variables);
    bool isRunning() const { return m_process->state() != QProcess::NotRunning; }
    qint64 processId() const { return m_process->processId(); }

    void send(const zoServerMessage& message);
    // Gives what was sent to the system now, as far as it takes it, and not with the next turn of the event loop.
    void flush();
    qint64 bytesToSend() const { return m_process->bytesToWrite(); }
    // The end of the file: what programs of a session take for the end of the session.
    void closeInput();
    void terminate();
    void kill();
    // Waits without handling events; from then on there is no signal any more.
    bool waitForEnd(int milliseconds);

    // Whether it said anything since this was asked last.
    bool takeSign();
    // What it said last on standard error, or instead of a message; for whoever asks why it ended.
    QString lastLine() const;

signals:
    void received(const zoServerMessage& message); // those that only say that it lives are left out
    void sent();                                   // some of what was to be sent is on its way
    void ended();                                  // once
    void errorLine(const QString& line);           // of standard error

private:
    void readMessages();
    void readErrors();
    void finish();

    QProcess* m_process;
    zoServerMessageReader m_reader;
    QString m_lastLine;
    QByteArray m_errorLine; // not yet ended
    bool m_hasSpoken = false;
    bool m_isOver = false;
};
