#pragma once

#include <QProcess>
#include <QString>

// An X server of a test's own, with screens of memory, and what runs on it.
class zoVirtualDisplay final
{
public:
    // For each screen its size, "800x600". Ends with the object.
    explicit zoVirtualDisplay(const QStringList& screens);
    // One that runs already and goes on.
    explicit zoVirtualDisplay(const QString& name) : m_name(name) {}
    ~zoVirtualDisplay();

    // False when it could not be started; then why, for a test to be skipped.
    bool isRunning() const { return !m_name.isEmpty(); }
    const QString& reason() const { return m_reason; }
    // ":7"
    const QString& name() const { return m_name; }

    // False when the program is not installed or does not come up. Ends with the object.
    bool startWindowManager();
    void stopWindowManager();

    // What `xwininfo` prints with these arguments.
    QString windowInfo(const QStringList& arguments) const;

private:
    static bool isInstalled(const QString& program, QString& reason);

    QProcess m_server;
    QProcess m_manager;
    QString m_name;
    QString m_reason;
};
