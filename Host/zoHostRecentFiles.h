#pragma once

#include <QObject>
#include <QStringList>

class QSettings;

// The configuration files that were opened or saved last, newest first, kept in the host's settings. Hosts
// that run side by side share the list.
class zoHostRecentFiles final : public QObject
{
    Q_OBJECT

public:
    static constexpr int Limit = 10;

    explicit zoHostRecentFiles(QSettings* settings, QObject* parent = nullptr); // settings not owned
    ~zoHostRecentFiles() override;

    // Absolute names. Whether the files still exist is not looked up: a folder of the network that is away
    // for a moment would hold up everything.
    QStringList files() const;

    // Makes the file the newest; the same file under another name is listed once. An empty name does nothing.
    void add(const QString& fileName);
    void remove(const QString& fileName);
    void clear();

signals:
    void changed();

private:
    void store(const QStringList& files);

    QSettings* m_settings;
};
