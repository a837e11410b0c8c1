#pragma once

#include <QMap>
#include <QObject>
#include <QProcess>
#include <QStringList>

// A job of mpirun beside the host, in a process group of its own. It ends with the program that started it.
class zoMpirunProcess final : public QObject
{
    Q_OBJECT

public:
    explicit zoMpirunProcess(QObject* parent = nullptr);
    ~zoMpirunProcess() override; // as end()

    // Environment beside that of this program. Answers with ended() when there is no such program.
    void start(const QString& program, const QStringList& arguments,
               const QMap<QString, QString>& environment);
    // SIGTERM to all of it, a second, SIGKILL. Waits for it, handles no event and emits no signal.
    void end();
    qint64 processId() const { return m_process->processId(); }

signals:
    void line(const QString& text); // of either stream
    // Once, unless end() was called. The exit code of mpirun, negative for the signal that killed it.
    void ended(int exitCode);

private:
    void read(bool toTheEnd);
    void finish(int exitCode);

    QProcess* m_process;
    QByteArray m_output;
    QByteArray m_errors;
    bool m_isOver = false;
};
