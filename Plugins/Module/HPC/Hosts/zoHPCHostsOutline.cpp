#include "zoHPCHostsOutline.h"

#include "zoHPCHostsText.h"

#include <zoClusterLimits.h>

#include <algorithm>

zoHPCHostsOutline::zoHPCHostsOutline()
{
    m_items.emplace_back();
}

namespace
{
bool isRenderNode(QStringView token)
{
    QString option;
    return !token.contains(QLatin1Char('[')) || !zoHPCHostsText::renderOption(token, option) ||
           (option != QLatin1String("0") && option.toLower() != QLatin1String("false"));
}
} // namespace

zoHPCHostsOutline::Outcome zoHPCHostsOutline::readHostsText(const QString& text)
{
    int network = -1;
    int anchor = Root; // the next "{" opens a network below it; -1 for none
    int depth = 0;
    int range = -1; // the place of a "-" that waits for its second host; -1 for none
    const auto dropRange = [&] {
        if (range >= 0)
            m_emptyRanges.push_back({{}, {}, EmptyRange::Reason::NoHost, range});
        range = -1;
    };
    zoHPCHostsText reader(text);
    while (reader.next()) {
        const QStringView token = reader.token();
        const QChar first = token.front();
        if (first == QLatin1Char('[') || first == QLatin1Char('/'))
            continue;
        if (token.size() == 1 && first == QLatin1Char('{')) {
            if (anchor < 0)
                continue;
            if (++depth > zoClusterLimits::MaximumNetworkDepth) {
                m_endOffset = reader.offset();
                return Outcome::TooDeep;
            }
            network = appendNetwork(anchor);
            anchor = -1;
            dropRange();
        } else if (token.size() == 1 && first == QLatin1Char('}')) {
            if (network < 0)
                continue;
            --depth;
            anchor = item(network).parent;
            network = item(anchor).parent; // of the root: none
            dropRange();
        } else if (token.size() == 1 && first == QLatin1Char('-')) {
            range = reader.offset();
        } else {
            const QString name = zoHPCHostsText::hostName(token);
            if (name.isEmpty())
                continue;
            if (network < 0) {
                network = appendNetwork(anchor);
                ++depth;
            }
            m_levels += 2 * qint64(depth);
            const Outcome outcome =
                m_levels > zoClusterLimits::MaximumLevels
                    ? Outcome::TooDeep
                    : appendHost(network, name, reader.offset(), range, isRenderNode(token));
            if (outcome != Outcome::Read) {
                m_endOffset = reader.offset();
                return outcome;
            }
            anchor = item(network).lastChild;
            range = -1;
        }
    }
    dropRange();
    return Outcome::Read;
}

void zoHPCHostsOutline::readNames(const QString& text)
{
    const auto isSeparator = [](QChar c) { return c.isSpace() || c == QLatin1Char(','); };
    const int parent = appendNetwork(Root);
    const QChar* p = text.constData();
    const QChar* end = p + text.size();
    while (p != end) {
        while (p != end && isSeparator(*p))
            ++p;
        const QChar* begin = p;
        while (p != end && !isSeparator(*p))
            ++p;
        if (p != begin) {
            Item host;
            host.name = QString(begin, int(p - begin));
            append(parent, host);
        }
    }
}

int zoHPCHostsOutline::appendNetwork(int parent)
{
    Item network;
    network.isNetwork = true;
    return append(parent, network);
}

int zoHPCHostsOutline::append(int parent, Item item)
{
    const int index = int(m_items.size());
    item.parent = parent;
    m_items.push_back(std::move(item));
    Item& above = m_items[std::size_t(parent)];
    if (above.lastChild < 0)
        above.firstChild = index;
    else
        m_items[std::size_t(above.lastChild)].nextSibling = index;
    above.lastChild = index;
    return index;
}

void zoHPCHostsOutline::noteRange(const QString& from, const QString& to, int offset)
{
    using Reason = EmptyRange::Reason;
    const zoHPCNumberedName first(from);
    const zoHPCNumberedName last(to);
    const auto note = [&](Reason reason) { m_emptyRanges.push_back({from, to, reason, offset}); };
    if (first.digits().isEmpty() || last.digits().isEmpty())
        return note(Reason::NoNumber);
    switch (zoHPCHostRange(first, last).kind()) {
    case zoHPCHostRange::Kind::OtherPrefix:
        return note(Reason::OtherPrefix);
    case zoHPCHostRange::Kind::Backwards:
        return note(Reason::Backwards);
    case zoHPCHostRange::Kind::TooLong:
        return note(Reason::TooLong);
    case zoHPCHostRange::Kind::Filled:
        break;
    }
    // The reader counts with 31 bits and twelve zeros: it would fill in nothing, or names of another width.
    if (!first.isCountable() || !last.isCountable())
        note(Reason::NumberTooLong);
}

// A range fills up from the sibling before, whatever stands between them in the text, where both have the
// same prefix and are not too far apart.
zoHPCHostsOutline::Outcome zoHPCHostsOutline::appendHost(int network, const QString& name, int offset,
                                                         int range, bool isRenderNode)
{
    const auto count = [this](qint64 hosts, int length) {
        m_hosts += hosts;
        m_characters += hosts * length;
        return m_hosts > zoClusterLimits::MaximumHosts                 ? Outcome::TooMany
               : m_characters > zoClusterLimits::MaximumNameCharacters ? Outcome::TooLong
                                                                       : Outcome::Read;
    };
    Item host;
    host.isRenderNode = isRenderNode;
    const int previous = item(network).lastChild;
    if (range >= 0 && previous < 0) {
        m_emptyRanges.push_back({{}, {}, EmptyRange::Reason::NoHost, range});
    } else if (range >= 0) {
        noteRange(item(previous).name, name, offset);
        const zoHPCNumberedName from(item(previous).name);
        const int between = zoHPCHostRange(from, zoHPCNumberedName(name)).namesBetween();
        const Outcome outcome = count(between, std::max(item(previous).name.size(), name.size()));
        if (outcome != Outcome::Read)
            return outcome;
        for (int i = 1; i <= between; ++i) {
            host.name = from.name(i);
            append(network, host);
        }
    }
    host.name = name;
    append(network, host);
    return count(1, name.size());
}

std::vector<int> zoHPCHostsOutline::children(int index) const
{
    std::vector<int> result;
    for (int child = item(index).firstChild; child >= 0; child = item(child).nextSibling)
        result.push_back(child);
    return result;
}

int zoHPCHostsOutline::next(int index, int& depth) const
{
    if (item(index).firstChild >= 0) {
        ++depth;
        return item(index).firstChild;
    }
    while (index >= 0 && item(index).nextSibling < 0) {
        index = item(index).parent;
        --depth;
    }
    return index < 0 ? -1 : item(index).nextSibling;
}

std::vector<QString> zoHPCHostsOutline::hostNames() const
{
    std::vector<QString> result;
    result.reserve(m_items.size());
    int depth = 0;
    for (int index = next(Root, depth); index >= 0; index = next(index, depth)) {
        if (!item(index).isNetwork)
            result.push_back(item(index).name);
    }
    return result;
}
