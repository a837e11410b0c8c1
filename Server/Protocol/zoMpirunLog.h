#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// What mpirun, of Open MPI 4.1, and the launcher below it say on standard error about why a job ended.
class zoMpirunLog final
{
public:
    // Of the machines of the job, by rank; empty for this one.
    explicit zoMpirunLog(const QStringList& hosts = {});

    void add(const QString& line);

    // Ranks that are to blame, each with the line that says so; empty when nothing tells.
    const QMap<int, QString>& culprits() const { return m_culprits; }
    // Whether any of those lines says why. A rank that only ended has said so elsewhere, or nowhere.
    bool hasCause() const { return m_hasCause; }
    // The first line that tells of an error, with what it heads ("Directory: /tmp/x", "Error: Permission denied"), else
    // the last one that says something; mpirun frames its texts with lines of dashes.
    QString reason() const { return m_error.isEmpty() ? m_lastLine : m_error; }

private:
    void blame(int rank, const QString& line);
    void takeError(const QString& text);
    void blameHost(const QString& host, const QString& line);

    QStringList m_hosts;
    QMap<int, QString> m_culprits;
    QString m_lastLine;
    QString m_error;
    QString m_lostDaemon;
    bool m_isHeading = false; // the error: what it heads follows
    bool m_hasCause = false;
};
