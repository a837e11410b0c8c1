#pragma once

#include <QCoreApplication>
#include <QString>

#include <vector>

// What the host tree makes of hosts text, for whoever is typing it: how many nodes, networks and gateways, and what reads
// otherwise than it looks, with its place and, where there is one, the text that it should be.
class zoHPCHostsSummary final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCHostsSummary)

public:
    struct Note
    {
        int offset; // in the text, of what is meant
        int length; // of it; 0 where a place alone is known
        QString reason;
        QString replacement; // for it; empty when there is none
    };

    explicit zoHPCHostsSummary(const QString& text);

    int nodes() const { return m_nodes; }
    int networks() const { return m_networks; }
    // Nodes with networks below them.
    int gateways() const { return m_gateways; }
    // "24 nodes in 2 networks, 1 gateway".
    QString counts() const;
    // In the order of the text.
    const std::vector<Note>& notes() const { return m_notes; }

    // Both count from 1.
    static int line(const QString& text, int offset);
    static int column(const QString& text, int offset);

private:
    void count(const QString& text);
    void noteBrackets(const QString& text);

    std::vector<Note> m_notes;
    int m_nodes = 0;
    int m_networks = 0;
    int m_gateways = 0;
};
