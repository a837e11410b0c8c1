#pragma once

#include <QSet>
#include <QString>

#include <array>

// Marks the nodes that a session of this machine uses, so that a second session - of this process or another
// - sees them. The operating system drops the marks of a process that dies. Sessions of one user meet.
class zoClusterNodeLocks final
{
public:
    enum class Outcome {
        Free,     // nobody else uses the node; it is marked now
        InUse,    // another session uses the node; it is not marked
        Shared,   // another session uses the node; it is marked for both
        NoLocking // the lock file cannot be used
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
    // The operating system walks all marks of a file for each new one; spread over some files, thousands are
    // quick.
    static constexpr int FileCount = 32;

    int openFile(qint64 mark);
    void closeFiles();

    QString m_directory;
    QString m_error;
    QSet<qint64> m_held;
    std::array<int, FileCount> m_files;
};
