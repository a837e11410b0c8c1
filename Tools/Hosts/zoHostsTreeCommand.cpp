#include "zoHostsTreeCommand.h"

#include "zoConsole.h"
#include "zoHPCNumberedName.h"
#include "zoJson.h"

#include <algorithm>

QString zoHostsTreeCommand::description() const
{
    return tr("Shows the networks that hosts text makes, their hosts, and the networks behind gateways. "
              "Networks are\n"
              "numbered from 1 in the order of the tree.");
}

QStringList zoHostsTreeCommand::examples() const
{
    return {QStringLiteral("zohpc hosts tree '{ gpu01 - gpu16 gw[rt=0] { wall1 - wall6 } }'\t") +
                tr("a gateway that does not render, with six hosts behind it"),
            QStringLiteral("zohpc hosts tree --json -f hosts.txt\t") +
                tr("the same of a file, for a script")};
}

bool zoHostsTreeCommand::writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser)
{
    return zoConsole::write(parser.isSet(QStringLiteral("json")) ? json(tree) : text(tree));
}

namespace
{
// Lines of deeper braces would be little but blanks.
constexpr int s_deepestIndent = 64;

// The last host that one line, "n01 - n16", can say together with this one; the host itself when they are
// less than three.
int lastOfRange(const zoHPCHostsOutline& tree, int index)
{
    const zoHPCHostsOutline::Item& item = tree.item(index);
    const zoHPCNumberedName first(item.name);
    if (item.firstChild >= 0 || !first.isCountable())
        return index;
    int last = index;
    int count = 1;
    for (int i = item.nextSibling; i >= 0; i = tree.item(i).nextSibling) {
        const zoHPCHostsOutline::Item& sibling = tree.item(i);
        if (sibling.firstChild >= 0 || sibling.isRenderNode != item.isRenderNode ||
            sibling.name != first.name(count))
            break;
        last = i;
        ++count;
    }
    return count < 3 ? index : last;
}
} // namespace

QByteArray zoHostsTreeCommand::text(const zoHPCHostsOutline& tree)
{
    QByteArray result;
    int networks = 0;
    int depth = 0;
    for (int index = tree.next(zoHPCHostsOutline::Root, depth); index >= 0;) {
        const zoHPCHostsOutline::Item& item = tree.item(index);
        result.append(std::min(2 * (depth - 1), s_deepestIndent), ' ');
        if (item.isNetwork) {
            const std::size_t hosts = tree.children(index).size();
            const QString number = QString::number(++networks);
            result += hosts == 1 ? tr("network %1: 1 host").arg(number).toUtf8()
                                 : tr("network %1: %2 hosts").arg(number, QString::number(hosts)).toUtf8();
            result += '\n';
            index = tree.next(index, depth);
            continue;
        }
        const int last = lastOfRange(tree, index);
        const bool isRange = last != index;
        result += item.name.toUtf8();
        if (isRange)
            result += " - " + tree.item(last).name.toUtf8();
        if (item.firstChild >= 0)
            result += tr(", gateway").toUtf8();
        if (!item.isRenderNode)
            result += tr(", does not render").toUtf8();
        result += '\n';
        index = tree.next(isRange ? last : index, depth);
    }
    return result;
}

// Written by hand and in one pass: braces may be too deep for recursions, and the library's writer recurses.
QByteArray zoHostsTreeCommand::json(const zoHPCHostsOutline& tree)
{
    QByteArray result("{\"networks\": [");
    int networks = 0;
    int depth = 0;
    int level = 0;
    for (int index = tree.next(zoHPCHostsOutline::Root, depth), isFirst = 1; index >= 0; isFirst = 0) {
        for (; level >= depth; --level)
            result += "]}";
        if (!isFirst && result.endsWith('}'))
            result += ',';
        level = depth;
        const zoHPCHostsOutline::Item& item = tree.item(index);
        result += '\n' + QByteArray(std::min(depth, s_deepestIndent), ' ');
        if (item.isNetwork)
            result += "{\"index\": " + QByteArray::number(++networks) + ", \"hosts\": [";
        else
            result += "{\"name\": " + zoJson::quoted(item.name) +
                      ", \"render\": " + (item.isRenderNode ? "true" : "false") + ", \"networks\": [";
        index = tree.next(index, depth);
    }
    for (; level > 0; --level)
        result += "]}";
    return result + "]}\n";
}
