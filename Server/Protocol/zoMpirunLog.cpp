#include "zoMpirunLog.h"

#include <QRegularExpression>

zoMpirunLog::zoMpirunLog(const QStringList& hosts) : m_hosts(hosts) {}

void zoMpirunLog::add(const QString& line)
{
    // "mpirun noticed that process rank 2 with PID 0 on node n1 exited on signal 9 (Killed).", "... while attempting
    // to start process rank 2."
    static const QRegularExpression s_rank(QStringLiteral(R"(\bprocess rank (\d+)\b)"));
    // "  Process name: [[27462,1],2]", of a rank that ended by itself with an error.
    static const QRegularExpression s_name(QStringLiteral(R"(\bProcess name: \[\[\d+,\d+\],(\d+)\])"));
    // "ssh: connect to host n1 port 22: Connection refused", "ssh: Could not resolve hostname n1: ...",
    // "user@n1: Permission denied (publickey).", "bash: line 1: ...: command not found" of the agent has no name.
    static const QRegularExpression s_host(
        QStringLiteral(R"(\bhost(?:name)? ([^\s:]+)(?: port \d+)?:|^[^\s@]+@([^\s:]+): Permission denied)"));

    // Two lines after it said what happened: "  Remote daemon: [[34567,0],2] on node n2".
    static const QRegularExpression s_daemon(QStringLiteral(R"(\ARemote daemon: \[\[.*\] on node (\S+)\z)"));
    const QString text = line.simplified();
    if (text.isEmpty() || text.count(QLatin1Char('-')) == text.size())
        return;
    m_lastLine = text;
    takeError(text);
    QRegularExpressionMatch match = s_rank.match(text);
    if (!match.hasMatch())
        match = s_name.match(text);
    if (match.hasMatch()) {
        m_hasCause = m_hasCause || text.contains(QLatin1String("exited on signal"));
        blame(match.captured(1).toInt(), text);
        return;
    }
    if (text.contains(QLatin1String("lost communication with a remote daemon")))
        m_lostDaemon = text;
    match = s_daemon.match(text);
    if (match.hasMatch() && !m_lostDaemon.isEmpty()) {
        blameHost(match.captured(1), m_lostDaemon);
        return;
    }
    match = s_host.match(text);
    if (match.hasMatch())
        blameHost(match.captured(1).isEmpty() ? match.captured(2) : match.captured(1), text);
}

void zoMpirunLog::takeError(const QString& text)
{
    static const QRegularExpression s_error(
        QStringLiteral(R"(\b(error|cannot|could not|failed|not found|unable)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    // "A call to mkdir was unable to create the desired directory:", then "  Directory: /tmp/x" and more of that form.
    static const QRegularExpression s_detail(QStringLiteral(R"(\A[A-Z][a-z ]*: \S)"));

    if (m_error.isEmpty()) {
        if (!text.contains(QLatin1String("Warning: ")) && s_error.match(text).hasMatch())
            m_error = text;
        m_isHeading = m_error.endsWith(QLatin1Char(':'));
        return;
    }
    m_isHeading = m_isHeading && s_detail.match(text).hasMatch();
    if (m_isHeading)
        m_error += QLatin1String(m_error.endsWith(QLatin1Char(':')) ? " " : ", ") + text;
}

void zoMpirunLog::blameHost(const QString& host, const QString& line)
{
    for (int rank = 0; rank < m_hosts.size(); ++rank) {
        if (m_hosts.at(rank).isEmpty() || m_hosts.at(rank) != host)
            continue;
        m_hasCause = true;
        blame(rank, line);
    }
}

// The first line says why, the later ones what became of it.
void zoMpirunLog::blame(int rank, const QString& line)
{
    if (!m_culprits.contains(rank))
        m_culprits.insert(rank, line);
}
