#include "zoNodesCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHostNames.h"
#include "zoNodeList.h"

#include <QMap>
#include <QSet>

namespace
{
void addGroup(const QString& name, const QStringList& hosts, QByteArray& text)
{
    if (!hosts.isEmpty())
        text += "\n[" + name.toUtf8() + "]\n" + hosts.join(QLatin1Char('\n')).toUtf8() + '\n';
}

// All hosts first, those behind gateways with the way to them; then what they are for.
QByteArray inventory(const zoNodeList& list)
{
    QByteArray text;
    QStringList displays;
    QStringList gateways;
    QMap<int, QStringList> networks;
    QSet<QString> known;
    for (const zoNodeList::Node& node : list.nodes()) {
        if (known.contains(node.name))
            continue;
        known.insert(node.name);
        text += node.name.toUtf8();
        const QStringList way = list.gatewaysOf(node);
        if (!way.isEmpty())
            text += " ansible_ssh_common_args='-o ProxyJump=" + way.join(QLatin1Char(',')).toUtf8() + '\'';
        text += '\n';
        if (node.isDisplay)
            displays << node.name;
        if (node.isGateway)
            gateways << node.name;
        networks[node.network] << node.name;
    }
    addGroup(QStringLiteral("display"), displays, text);
    addGroup(QStringLiteral("gateways"), gateways, text);
    for (auto network = networks.cbegin(); network != networks.cend(); ++network)
        addGroup(QStringLiteral("network%1").arg(network.key()), network.value(), text);
    return text;
}
} // namespace

QString zoNodesCommand::description() const
{
    return tr("Prints the names of the nodes of a configuration, each once, in its order. Options leave out "
              "those for which\n"
              "they do not hold; exit code 1 when none is left.");
}

QStringList zoNodesCommand::examples() const
{
    return {QStringLiteral("pdsh -w \"$(zohpc nodes --display --format pdsh wall.zhpc)\" uptime\t") +
                tr("on the nodes that drive the wall"),
            QStringLiteral("zohpc nodes --enabled --format mpirun wall.zhpc > hostfile\t") +
                tr("for mpirun --hostfile hostfile"),
            QStringLiteral("zohpc nodes --format ansible wall.zhpc > inventory\t") +
                tr("groups for displays, gateways and networks, and the way through gateways")};
}

void zoNodesCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("enabled"), tr("That are enabled, with all above them.")});
    parser.addOption({QStringLiteral("display"), tr("That a window names as its node.")});
    parser.addOption({QStringLiteral("render"), tr("That render.")});
    parser.addOption({QStringLiteral("gateways"), tr("That forward to networks of their own.")});
    parser.addOption(
        {QStringLiteral("format"),
         tr("lines (default), pdsh (one word with brackets, for clush and srun, too), mpirun (a hostfile) "
            "or ansible (an inventory)."),
         QStringLiteral("lines|pdsh|mpirun|ansible"), QStringLiteral("lines")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoNodesCommand::execute(const QCommandLineParser& parser)
{
    if (parser.positionalArguments().size() != 1)
        return usageError(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                                 : tr("one file at a time"));
    const QString form = parser.value(QStringLiteral("format"));
    QByteArray text;
    if (!write(zoNodeList(zoHPCLayout()), form, text))
        return usageError(tr("--format: \"%1\" is no form: lines, pdsh, mpirun, ansible").arg(form));
    const QString file = parser.positionalArguments().constFirst();
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    zoNodeList list(zoHPCLayout(setup.displays(), setup.hosts().master()));
    list.keep([&](const zoNodeList::Node& node) {
        return (node.isEnabled || !parser.isSet(QStringLiteral("enabled"))) &&
               (node.isDisplay || !parser.isSet(QStringLiteral("display"))) &&
               (node.isRender || !parser.isSet(QStringLiteral("render"))) &&
               (node.isGateway || !parser.isSet(QStringLiteral("gateways")));
    });
    if (list.nodes().empty()) {
        zoConsole::printError(tr("%1: no such node").arg(file));
        return zoConsole::ProblemsFound;
    }
    text.clear();
    write(list, form, text);
    return zoConsole::write(text) ? zoConsole::Fine : zoConsole::Unusable;
}

bool zoNodesCommand::write(const zoNodeList& list, const QString& form, QByteArray& text)
{
    const std::vector<QString> names = list.names();
    if (form == QLatin1String("ansible")) {
        text = inventory(list);
        return true;
    }
    if (form == QLatin1String("pdsh")) {
        text = zoHostNames::bracketText(names, false) + '\n';
        return true;
    }
    const bool isHostFile = form == QLatin1String("mpirun");
    for (const QString& name : names)
        text += name.toUtf8() + (isHostFile ? " slots=1\n" : "\n");
    return isHostFile || form == QLatin1String("lines");
}
