#include "zoHostsFoldCommand.h"

#include "zoConsole.h"
#include "zoHostNames.h"
#include "zoJson.h"

#include <QHash>

#include <algorithm>

namespace
{
// Hosts text of a tree: a line per host, range or brace; a single network needs no braces.
class HostsTextWriter
{
public:
    HostsTextWriter(const zoHPCHostsOutline& tree, bool keepOrder) : m_tree(tree), m_keepOrder(keepOrder) {}

    QByteArray write()
    {
        const std::vector<int> networks = m_tree.children(zoHPCHostsOutline::Root);
        if (networks.size() == 1)
            m_stack.push_back(siblings(networks.front(), 0, false));
        else
            m_stack.push_back({networks, {}, 0, 0, false});
        // No recursion: braces may be deep.
        while (!m_stack.empty()) {
            Level& level = m_stack.back();
            if (level.next == level.items.size()) {
                if (level.isBraced)
                    line(level.depth - 2, "}");
                m_stack.pop_back();
                continue;
            }
            const int item = level.items[level.next];
            if (m_tree.item(item).isNetwork) {
                ++level.next;
                line(level.depth, "{");
                m_stack.push_back(siblings(item, level.depth + 2, true));
                continue;
            }
            writeHosts(level);
        }
        return m_text;
    }

private:
    struct Level
    {
        std::vector<int> items;
        std::vector<QString> names; // of the items; empty for those that join no range
        std::size_t next;
        int depth;
        bool isBraced;
    };

    Level siblings(int network, int depth, bool isBraced) const
    {
        std::vector<int> items = m_tree.children(network);
        if (!m_keepOrder)
            items = sorted(items);
        std::vector<QString> names;
        names.reserve(items.size());
        for (const int item : items)
            names.push_back(m_tree.item(item).firstChild < 0 ? m_tree.item(item).name : QString());
        return {std::move(items), std::move(names), 0, depth, isBraced};
    }

    // In natural order, each name once; gateways all stay.
    std::vector<int> sorted(const std::vector<int>& items) const
    {
        std::vector<QString> names;
        names.reserve(items.size());
        for (const int item : items)
            names.push_back(m_tree.item(item).name);
        const std::vector<int> order = zoHostNames::sorted(names);
        QHash<QString, std::vector<int>> gateways;
        for (const int item : items) {
            if (m_tree.item(item).firstChild >= 0)
                gateways[m_tree.item(item).name].push_back(item);
        }
        std::vector<int> result;
        result.reserve(items.size());
        for (const int index : order) {
            const auto found =
                gateways.isEmpty() ? gateways.constEnd() : gateways.constFind(names[std::size_t(index)]);
            if (found == gateways.constEnd())
                result.push_back(items[std::size_t(index)]);
            else
                result.insert(result.end(), found->begin(), found->end());
        }
        return result;
    }

    void writeHosts(Level& level)
    {
        const int item = level.items[level.next];
        const std::size_t length = zoHostNames::rangeLength(level.names, level.next);
        const QByteArray name = m_tree.item(item).name.toLatin1();
        // Two neighbours are as short on two lines.
        if (length > 2) {
            line(level.depth, name + " - " + level.names[level.next + length - 1].toLatin1());
            level.next += length;
            return;
        }
        line(level.depth, name);
        ++level.next;
        if (m_tree.item(item).firstChild >= 0) {
            const int depth = level.depth;
            m_stack.push_back({m_tree.children(item), {}, 0, depth, false});
        }
    }

    void line(int depth, const QByteArray& text)
    {
        // Deep braces would be little but blanks.
        m_text.append(std::min(depth, 64), ' ');
        m_text += text;
        m_text += '\n';
    }

    const zoHPCHostsOutline& m_tree;
    const bool m_keepOrder;
    std::vector<Level> m_stack;
    QByteArray m_text;
};
} // namespace

QString zoHostsFoldCommand::description() const
{
    return tr("Writes names in as few words as possible: as hosts text (\"n01 - n16\") or in the bracket "
              "form of cluster\n"
              "tools (\"n[01-16]\"). Each name once and in natural order, network by network. Options of "
              "hosts are not\n"
              "written, and the bracket form has no networks.");
}

QStringList zoHostsFoldCommand::examples() const
{
    return {QStringLiteral("scontrol show hostnames | zohpc hosts fold\t") + tr("names to hosts text"),
            QStringLiteral("zohpc hosts fold -b 'gpu01 - gpu16' gpu20\t") + tr("hosts text to gpu[01-16,20]"),
            QStringLiteral("zohpc hosts fold -b --steps n1 n3 n5 n7\t") + tr("n[1-7/2]")};
}

void zoHostsFoldCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({{QStringLiteral("b"), QStringLiteral("brackets")},
                      tr("Write the bracket form, \"gpu[01-16,20]\".")});
    parser.addOption(
        {QStringLiteral("steps"), tr("With brackets: write three or more numbers at an equal distance as "
                                     "\"[1-9/2]\".")});
    parser.addOption({QStringLiteral("keep-order"), tr("Keep the order and the number of the names.")});
    zoHostsCommand::addArguments(parser);
}

QByteArray zoHostsFoldCommand::hostsText(const zoHPCHostsOutline& tree, bool keepOrder)
{
    return HostsTextWriter(tree, keepOrder).write();
}

bool zoHostsFoldCommand::writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser)
{
    const bool keepOrder = parser.isSet(QStringLiteral("keep-order"));
    QByteArray text;
    if (parser.isSet(QStringLiteral("brackets"))) {
        const std::vector<QString> names = tree.hostNames();
        text = keepOrder ? zoHostNames::orderedBracketText(names)
                         : zoHostNames::bracketText(names, parser.isSet(QStringLiteral("steps")));
        if (!text.isEmpty())
            text += '\n';
    } else {
        text = hostsText(tree, keepOrder);
    }
    if (parser.isSet(QStringLiteral("json"))) {
        text = zoJson::text(QJsonObject{{QStringLiteral("hosts"), int(tree.hostNames().size())},
                                        {QStringLiteral("text"), QString::fromUtf8(text).trimmed()}});
    }
    return zoConsole::write(text);
}
