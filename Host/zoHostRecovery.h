#pragma once

#include "zoHostEarlierConfigurations.h"

#include <QHash>
#include <QObject>
#include <QStringList>

class zoHostMainWindow;

// Keeps unsaved work when the host is told to end, and offers at the next start what was kept so or a crash left.
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

    QString describe(const Entry& entry) const;
    void offerOne(const Entry& entry, bool isCrash);
    void offerList(const QVector<Entry>& entries);
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
    bool m_hasOffered = false;
};
