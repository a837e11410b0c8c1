#pragma once

#include <QString>

#include <cstddef>
#include <vector>

// What nodes are called where each must have a name of its own: by their host name, and of several nodes with
// one host name each by it and a number, "n 1", "n 2".
class zoHPCUniqueNames final
{
public:
    // Host names, which outlive this. Nodes are numbered from 0 in their order.
    explicit zoHPCUniqueNames(std::vector<const QString*> hostNames);

    std::size_t count() const { return m_hostNames.size(); }
    QString name(std::size_t node) const;
    // Whether other nodes have the same host name.
    bool isNumbered(std::size_t node) const { return m_sizes[m_first[node]] > 1; }
    bool hasNumbered() const { return m_hasNumbered; }

    // The first node of a host name; count() when there is none.
    std::size_t find(const QString& hostName) const;

private:
    std::size_t slotOf(const QString& hostName) const;

    // A flat table: a key stroke in the name of one node groups ten thousand of them anew, and that many small
    // allocations would cost more than all else.
    std::vector<const QString*> m_hostNames;
    std::vector<std::size_t> m_slots; // index of the first node of a name, plus 1; 0 for a free one
    std::vector<std::size_t> m_first; // of the same name, by node
    std::vector<int> m_sizes;         // how many have the name, by first node
    std::vector<int> m_numbers;       // among the nodes of the name, by node
    bool m_hasNumbered = false;
};
