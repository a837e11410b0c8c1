#pragma once

#include "zoHPCHostRange.h"

#include <QString>
#include <QStringView>

#include <vector>

// Networks and hosts in memory, in the order of the text, without anything of a window: what the host tree
// becomes when it reads the same hosts text. Items are referred to by their index; item 0 is the root.
class zoHPCHostsOutline final
{
public:
    struct Item
    {
        QString name; // hosts only
        int parent = -1;
        int firstChild = -1;
        int lastChild = -1;
        int nextSibling = -1;
        bool isNetwork = false;
        bool isRenderNode = true;
    };

    // A "-" that fills nothing by the reader's rules, although no neighbours stand around it.
    struct EmptyRange
    {
        enum class Reason { OtherPrefix, Backwards, TooLong, NoNumber, NumberTooLong, NoHost };

        QString from; // both empty when it does not stand between two hosts
        QString to;
        Reason reason;
        int offset; // of the second host in the text, or of the "-"
    };

    enum class Outcome {
        Read,
        TooDeep, // braces, or too many hosts deep in braces
        TooMany, // hosts
        TooLong  // the names of all hosts together
    };

    static constexpr int Root = 0;

    zoHPCHostsOutline();

    // Reads hosts text into an empty tree. What is beyond the limits of a cluster is not read; endOffset() is
    // the place of the token where that began.
    Outcome readHostsText(const QString& text);
    int endOffset() const { return m_endOffset; }
    // Reads names as they stand, separated by blanks and commas, into one network.
    void readNames(const QString& text);

    const Item& item(int index) const { return m_items[std::size_t(index)]; }
    std::vector<int> children(int index) const;
    // The item that follows in pre-order; -1 after the last. `depth` is kept up.
    int next(int index, int& depth) const;

    // In the order of the text.
    const std::vector<EmptyRange>& emptyRanges() const { return m_emptyRanges; }

    // All hosts in pre-order.
    std::vector<QString> hostNames() const;

private:
    int appendNetwork(int parent);
    int append(int parent, Item item);
    void noteRange(const QString& from, const QString& to, int offset);
    // `range` is the place of the "-" before the host; -1 for none.
    Outcome appendHost(int network, const QString& name, int offset, int range, bool isRenderNode);

    std::vector<Item> m_items;
    std::vector<EmptyRange> m_emptyRanges;
    int m_endOffset = 0;
    qint64 m_hosts = 0;
    qint64 m_characters = 0; // of their names
    qint64 m_levels = 0;     // of the hosts that stand in the text
};
