#pragma once

#include "zoHostEarlierConfigurations.h"

#include <QObject>

class zoHostMainWindow;

// Keeps unsaved work when the host is told to end, and offers it at the next start.
class zoHostRecovery final : public QObject
{
    Q_OBJECT

public:
    // Both outlive it.
    zoHostRecovery(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier);
    ~zoHostRecovery() override;

    // Keeps what differs from its file, or has none, among the earlier configurations. May be called again.
    void keepUnfinished();

    // Asks a person what to do with what was kept so. Not while a session runs.
    void offer();

private:
    using Entry = zoHostEarlierConfigurations::Entry;

    static QString describe(const Entry& entry);
    void offerOne(const Entry& entry);
    void offerList(const QVector<Entry>& entries);
    void finish();

    zoHostMainWindow* m_window;
    zoHostEarlierConfigurations* m_earlier;
    QStringList m_kept; // texts of this host, for when it goes on
};
