#pragma once

#include <QHash>
#include <QSet>

// Members that wait for each other: who is there, who is still missing, and how long each one waited. Holds no
// clock and sends nothing.
class zoBarrier final
{
public:
    // A new round for these members. One that is open is over, whoever was missing.
    void begin(quint64 round, const QSet<int>& members);
    quint64 round() const { return m_round; }
    bool isOpen() const { return m_isOpen; }

    // A member is there, at this time in microseconds. True when it was the last one; false also for a member
    // that is not waited for, and for another round.
    bool arrive(int member, quint64 round, qint64 now);
    // A member is gone. True when nobody else was missing.
    bool leave(int member, qint64 now);

    // Who waited how long in the last round that was completed, microseconds.
    const QHash<int, qint64>& waits() const { return m_waits; }

private:
    bool completeIfAllAreThere(qint64 now);

    quint64 m_round = 0;
    bool m_isOpen = false;
    QSet<int> m_missing;
    QHash<int, qint64> m_arrivals;
    QHash<int, qint64> m_waits;
};
