#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

// Marks the nodes that a session of this machine uses, so that a second session - of this process or another
// - sees them. The marks of a process that dies count no more. Sessions of one user meet.
//
// Each session lists its marks in a file of its own and keeps that file locked; the operating system drops the
// lock with the process, and a list that nobody locks is taken away by the next session. Locks for each node
// cost the operating system a walk over all of them for each new one, which large clusters feel.
class zoClusterNodeLocks final
{
public:
    enum class Outcome {
        Free,     // nobody else uses the node; it is marked now
        InUse,    // another session uses the node; it is not marked
        Shared,   // another session uses the node; it is marked for both
        NoLocking // the lock files cannot be used
    };

    zoClusterNodeLocks();
    ~zoClusterNodeLocks(); // gives back all marks

    zoClusterNodeLocks(const zoClusterNodeLocks&) = delete;
    zoClusterNodeLocks& operator=(const zoClusterNodeLocks&) = delete;

    // Where sessions meet; empty is the run-time directory of the user. Not while a node is marked.
    void setDirectory(const QString& directory);

    // Marks a node. `share` goes on beside another session that uses it.
    Outcome acquire(const QString& nodeId, int servicePort, bool share);
    void release(const QString& nodeId, int servicePort);
    void releaseAll();

    // Why the last acquire() gave NoLocking.
    QString errorString() const { return m_error; }

private:
    // What another session lists, as far as it was read.
    struct Other
    {
        QByteArray name;
        int file = -1;
        qint64 size = 0;
        QSet<qint64> marks;
    };

    bool beginTurn();
    void endTurn();
    bool openTurns();
    int openFile(const QByteArray& name, int flags);
    void readOthers();
    static void readOn(Other& other);
    bool isUsedByOthers(qint64 mark);
    bool append(qint64 record);
    bool openList();
    bool fail(const QByteArray& name);
    void closeFiles();

    QString m_directory;
    QByteArray m_path; // of the directory in use, with its slash
    QString m_error;
    QSet<qint64> m_held;

    int m_turns = -1;                    // who locks this file may read and write lists
    std::optional<quint64> m_generation; // of the lists when they were read
    QByteArray m_listName;
    int m_list = -1; // the own one
    qint64 m_listSize = 0;
    std::vector<Other> m_others;
};
