#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A private folder of a session, for what other programs put there. It goes with this object; when this program is
// killed, a small one that waits for its end removes the folder.
class zoSessionFolder final
{
public:
    // `program` is the one that has the role "sweep".
    explicit zoSessionFolder(const QString& program);
    ~zoSessionFolder();

    QString path() const { return m_folder.path(); }

    // The role "sweep": waits for the end of standard input, and removes the folder if it is still there. Returns the exit
    // status.
    static int sweep(const QString& folder);

private:
    QTemporaryDir m_folder;
    QProcess m_sweeper;
};
