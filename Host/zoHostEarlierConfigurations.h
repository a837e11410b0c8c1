#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class QLockFile;

// The last configurations that others took the place of. Each is a .zhpc file in a folder, named by number
// and time (UTC), beside it a file .origin with the name of the file that it was open as. The name of one that
// was open, unsaved, when its host was told to end says so until it was offered again; so does that of work that a
// host has not saved yet, with a number of that host, which holds a lock while it lives. What cannot be written
// stays in memory until it can.
class zoHostEarlierConfigurations final : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QDateTime replaced; // UTC
        QString originFile; // empty: it had no file
        QString fileName;   // in the folder; empty: only in memory
        QString text;       // in memory only; see textOf()
        QByteArray bytes;   // what is written; in memory only
        QByteArray
            originSum; // of what that file held when it was last read or written, hexadecimal; else empty
        bool isUnfinished = false;
        QString owner; // the host that works on it, or did when it crashed; else empty
    };

    static constexpr int Limit = 20;

    // The folder is made when it is needed.
    explicit zoHostEarlierConfigurations(const QString& folder, QObject* parent = nullptr);
    ~zoHostEarlierConfigurations() override; // tries again to write what is in memory

    // The folder in the host's data of this user.
    static QString defaultFolder();

    // A text that is not worth keeping since a new document is the same.
    void setNewDocument(const QString& text);

    // Keeps the text as the newest, and of more than Limit the newest. Does nothing for an empty text, a new
    // document and the text that is the newest already. Failures are logged.
    void keep(const QString& text, const QString& originFile);

    // The same for work that its host has no time to save; `originSum` is that of its file as the host knows it
    // (zoHostFileGuard::sumOf). False when it is in memory alone, which the host may not outlive.
    bool keepUnfinished(const QString& text, const QString& originFile, const QByteArray& originSum = {});
    // The same for such work that was found elsewhere, unless it is here; `kept` is when it was left, in UTC.
    bool adoptUnfinished(const QString& text, const QString& originFile, const QDateTime& kept);

    // The same for what a file holds that is no text. Brought back, it is shown as the file was.
    void keepBytes(const QByteArray& bytes, const QString& originFile);

    // Keeps the work that goes on in a module's window of this host, at this place among them, instead of what was
    // kept so before; what is the same already is not written again. False, with the reason, when it cannot be
    // written, which is not logged: what was kept before stays.
    bool keepRunning(int place, const QString& text, const QString& originFile, QString& reason,
                     const QByteArray& originSum = {});
    bool hasRunning(int place) const { return m_running.contains(place); }
    // It was saved or given up.
    void forgetRunning(int place);

    // What keepUnfinished() kept, and keepRunning() of hosts that do not live any more, and nobody has answered for
    // yet, newest first.
    QVector<Entry> unfinished() const;
    // From here on it is an earlier configuration like the others. Other hosts may have said so before.
    void finish(const Entry& entry);
    // Takes one that is damaged out of the list: its file stays, under the other name that setAsideName() tells.
    void setAside(const Entry& entry);
    static QString setAsideName(const Entry& entry); // empty for one that is in memory only

    // Newest first.
    QVector<Entry> entries() const;

    // The document of an entry; null, with a message in the log, when its file cannot be read.
    QString textOf(const Entry& entry) const;

signals:
    void changed();

private:
    struct Running
    {
        QString text;
        QString fileName;
    };

    QVector<Entry> written() const; // oldest first
    bool isAlive(const QString& owner) const;
    QString aliveFile(const QString& owner) const;
    static void removeFiles(const QString& fileName);
    bool add(const QString& text, const QString& originFile, bool isUnfinished, const QByteArray& originSum);
    static void readOrigin(Entry& entry);
    void append(Entry entry);
    void writeWaiting();
    bool write(const Entry& entry, QString& reason, QString& fileName) const;
    void removeOldest() const;
    void removeRemains() const;

    QString m_folder;
    QString m_newDocument;
    QVector<Entry> m_waiting;      // oldest first, newer than all written ones
    QHash<int, Running> m_running; // by place
    QString m_owner;               // this host
    std::unique_ptr<QLockFile> m_alive;
};
