#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

// A topology.conf of ClusterShell: from which node others are reached, as a tree of single nodes.
class zoTopologyFile final
{
    Q_DECLARE_TR_FUNCTIONS(zoTopologyFile)

public:
    // False when the node is reached from another one, too, or by way of itself.
    bool add(const QString& from, const QString& to);
    // Reads a file into an empty topology; false with its reason and line.
    bool read(const QString& text);
    const QString& error() const { return m_error; }
    int errorLine() const { return m_errorLine; }
    // What was read in a way that the file does not say.
    const QStringList& notes() const { return m_notes; }

    // The file, one route a line.
    QByteArray text() const;
    // Hosts text; the nodes from which everything begins are left out.
    QString hostsText() const;

private:
    bool readRoute(const QString& line, int number);
    bool names(const QString& set, QStringList& result);
    bool fail(int line, const QString& reason);
    void write(const QString& from, int depth, QString& result) const;

    QStringList m_sources;                // in the order of the file
    QHash<QString, QStringList> m_routes; // by source
    QHash<QString, QString> m_from;       // by destination
    QStringList m_notes;
    QString m_error;
    int m_errorLine = 1;
};
