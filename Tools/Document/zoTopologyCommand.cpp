#include "zoTopologyCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCBracketText.h"
#include "zoHPCTreeItem.h"
#include "zoHostNames.h"
#include "zoNodeList.h"
#include "zoTopologyFile.h"

#include <QSysInfo>

QString zoTopologyCommand::description() const
{
    return tr("Writes the gateways of a configuration as the topology.conf of ClusterShell, so that clush "
              "reaches the nodes\n"
              "behind them; or, with --read, makes hosts text of a topology.conf, for \"new --hosts -\". "
              "Nodes that several\n"
              "gateways reach are spread evenly over them then, and standard error says so.");
}

QStringList zoTopologyCommand::examples() const
{
    return {QStringLiteral("zohpc topology wall.zhpc -o /etc/clustershell/topology.conf\t") +
                tr("for clush on this machine"),
            QStringLiteral(
                "zohpc topology --read topology.conf | zohpc new --wall 4x2 --hosts - -o wall.zhpc\t") +
                tr("a wall behind the gateways that clush knows")};
}

void zoTopologyCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("read"), tr("FILE is a topology.conf: write hosts text.")});
    parser.addOption(
        {QStringLiteral("admin"), tr("Where clush runs (default: the name of this machine)."), tr("host")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>. Standard output otherwise."),
                      tr("file")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoTopologyCommand::execute(const QCommandLineParser& parser)
{
    if (parser.positionalArguments().size() != 1)
        return usageError(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                                 : tr("one file at a time"));
    const bool isReading = parser.isSet(QStringLiteral("read"));
    if (isReading && parser.isSet(QStringLiteral("admin")))
        return usageError(tr("--read and --admin exclude each other"));
    const QString file = parser.positionalArguments().constFirst();
    const QString output =
        parser.isSet(QStringLiteral("output")) ? parser.value(QStringLiteral("output")) : QStringLiteral("-");
    if (!zoTextFile::mayWrite({output}, file))
        return zoConsole::Unusable;
    if (isReading)
        return readTopology(file, output);
    const QString admin = parser.isSet(QStringLiteral("admin")) ? parser.value(QStringLiteral("admin"))
                                                                : QSysInfo::machineHostName();
    if (admin.trimmed().isEmpty())
        return usageError(tr("--admin: no name"));
    return writeTopology(file, admin, output);
}

int zoTopologyCommand::writeTopology(const QString& file, const QString& admin, const QString& output) const
{
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    const zoNodeList list(zoHPCLayout(setup.displays(), setup.hosts().master()));
    zoTopologyFile topology;
    for (const zoNodeList::Node& node : list.nodes()) {
        const QString from = node.gateway == zoNodeList::None ? admin : list.gatewayOf(node);
        if (node.name == admin && node.gateway == zoNodeList::None)
            continue;
        if (!topology.add(from, node.name)) {
            zoConsole::printError(tr("%1: \"%2\" is reached in more than one way, which ClusterShell refuses")
                                      .arg(file, node.name));
            return zoConsole::Unusable;
        }
    }
    return zoTextFile::write(output, QString::fromUtf8(topology.text())) ? zoConsole::Fine
                                                                         : zoConsole::Unusable;
}

int zoTopologyCommand::readTopology(const QString& file, const QString& output)
{
    QString text;
    if (!zoTextFile::read(file, text))
        return zoConsole::Unusable;
    zoTopologyFile topology;
    if (!topology.read(text)) {
        zoConsole::printError(file, topology.errorLine(), 1, topology.error());
        return zoConsole::Unusable;
    }
    for (const QString& note : topology.notes())
        zoConsole::printError(QStringLiteral("%1: %2").arg(file, note));
    return zoTextFile::write(output, topology.hostsText()) ? zoConsole::Fine : zoConsole::Unusable;
}
