#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVector>

// The last configurations that others took the place of. Each is a .zhpc file in a folder, named by number
// and time (UTC), beside it a file .origin with the name of the file that it was open as. What cannot be
// written stays in memory until it can.
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

    // Newest first.
    QVector<Entry> entries() const;

    // The document of an entry; null, with a message in the log, when its file cannot be read.
    QString textOf(const Entry& entry) const;

signals:
    void changed();

private:
    QVector<Entry> written() const; // oldest first
    void writeWaiting();
    bool write(const Entry& entry, QString& reason) const;
    void removeOldest() const;

    QString m_folder;
    QString m_newDocument;
    QVector<Entry> m_waiting; // oldest first, newer than all written ones
};
