#include "zoPvServerLog.h"

#include <QRegularExpression>

zoPvServerLog::zoPvServerLog(const QStringList& hosts) : m_mpirun(hosts) {}

void zoPvServerLog::add(const QString& line)
{
    // Colours of a terminal.
    static const QRegularExpression s_colour(QStringLiteral("\x1b\\[[0-9;]*m"));
    // "(   0.986s) [pvserver.0      ]          vtkSocket.cxx:202    ERR| vtkServerSocket (0x55c5723d35b0): Socket error"
    static const QRegularExpression s_error(QStringLiteral(
        R"(\A\(\s*[\d.]+s\) \[[^\]]*\]\s*\S*:\d+\s+(ERR|FATL)\| (?:\w+ \(0x[0-9a-f]+\): )?(.+))"));
    // "13      0x55cb128ce789 pvserver(+0x2789) [0x55cb128ce789]"
    static const QRegularExpression s_frame(QStringLiteral(R"(\A\d+\s+0x[0-9a-f]+ )"));

    QString text = line;
    text = text.remove(s_colour).trimmed();
    if (text.contains(s_frame))
        return;
    // Or, when it is the one that calls its client: that it does so now.
    if (text.startsWith(QLatin1String("Accepting connection(s):")) ||
        text.startsWith(QLatin1String("Connection URL: csrc://"))) {
        m_state = State::Accepting;
    } else if (text.startsWith(QLatin1String("Client connected."))) {
        m_state = State::Connected;
    } else if (text.startsWith(QLatin1String("Exiting..."))) {
        if (m_state == State::Connected)
            m_state = State::Left;
    } else if (text.contains(QLatin1String("Failed to set up server socket"))) {
        m_isPortTaken = true;
    } else if (text.contains(QLatin1String("Failed to parse XML"))) {
        m_isFileBad = true;
    } else if (text.contains(QLatin1String("Client and server connection ids do not match"))) {
        ++m_refused;
        return;
    }
    const QRegularExpressionMatch error = s_error.match(text);
    // A signal is what became of the error before it.
    if (error.hasMatch() && (m_lastError.isEmpty() || error.captured(1) != QLatin1String("FATL")))
        m_lastError = error.captured(2);
    m_mpirun.add(text);
}

zoPvServerLog::End zoPvServerLog::end(int exitCode) const
{
    if (m_isPortTaken && exitCode == 0)
        return End::PortInUse;
    if (m_isFileBad)
        return End::BadFile;
    if (m_state == State::Left)
        return End::ClientLeft;
    return exitCode == 0 ? End::NoClient : End::Lost;
}

QString zoPvServerLog::reason(int exitCode) const
{
    const int rank = culprit();
    // So mpirun ends the others once one of them is lost.
    const bool isOfTheOthers = rank >= 0 && m_lastError == QLatin1String("Signal: SIGTERM");
    if (!m_lastError.isEmpty() && !isOfTheOthers)
        return m_lastError;
    if (rank >= 0)
        return m_mpirun.culprits().value(rank);
    if (m_state == State::Starting && !m_mpirun.reason().isEmpty())
        return m_mpirun.reason();
    return exitCode < 0 ? QStringLiteral("mpirun was killed by signal %1").arg(-exitCode)
                        : QStringLiteral("exit status %1").arg(exitCode);
}

int zoPvServerLog::culprit() const
{
    return m_mpirun.culprits().isEmpty() ? -1 : m_mpirun.culprits().firstKey();
}
