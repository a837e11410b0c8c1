#pragma once

#include "zoHostEarlierConfigurations.h"

#include <QHash>
#include <QObject>
#include <QStringList>

class QMessageBox;
class zoHostMainWindow;

// Keeps unsaved work when the host is told to end, and offers what was kept so or a crash left, at each start until
// somebody answers.
class zoHostRecovery final : public QObject
{
    Q_OBJECT

public:
    // Both outlive it.
    zoHostRecovery(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier);
    ~zoHostRecovery() override;

    // Keeps what differs from its file, or has none, among the earlier configurations. May be called again.
    void keepUnfinished();

    // Asks a person what to do with what was kept so, also in the folder of the file that the host begins
    // with. Not while a session runs.
    void offer(const QString& firstFile);

private:
    using Entry = zoHostEarlierConfigurations::Entry;

    // What was kept, as it was read when it was found.
    struct Work
    {
        Entry entry;
        QString text;
        QString flaw; // why it cannot be brought back; empty: it can
    };

    Work read(const Entry& entry) const;
    QVector<Work> findUnasked();
    QString describe(const Work& work) const;
    static QString nameOf(const Work& work);
    QMessageBox* createBox(const QString& title, const QString& text, const QStringList& more);
    void offerWorks(const QVector<Work>& works);
    void offerOne(const Work& work);
    void offerList(const QVector<Work>& works);
    void finishAll(const QVector<Work>& works);
    void tellDamaged(const QVector<Work>& damaged, const QVector<Work>& works);
    void finish();
    void takeRefuge(const QString& text, const QString& originFile);
    // Takes what lies in these folders among the earlier configurations.
    void adopt(const QStringList& folders);
    void offerBeside(const QString& fileName);
    void ask();

    zoHostMainWindow* m_window;
    zoHostEarlierConfigurations* m_earlier;
    QStringList m_kept;              // texts of this host, for when it goes on
    QHash<QString, QString> m_files; // of these texts, those that found no room among the others
    QStringList m_asked;             // files that a question of this host is about, or was
    bool m_hasOffered = false;
};
