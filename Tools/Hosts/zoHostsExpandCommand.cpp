#include "zoHostsExpandCommand.h"

#include "zoConsole.h"
#include "zoHostNames.h"
#include "zoJson.h"

QString zoHostsExpandCommand::description() const
{
    return tr("Writes the names that hosts text or brackets stand for, in their order, hosts behind gateways "
              "after\n"
              "their gateway.");
}

QStringList zoHostsExpandCommand::examples() const
{
    return {QStringLiteral("zohpc hosts expand 'gpu01 - gpu16, viz1 { ib1 ib2 }'\t") +
                tr("hosts text to names"),
            QStringLiteral("sinfo -h -o %N | zohpc hosts expand\t") +
                tr("what the batch system calls gpu[01-16,20]"),
            QStringLiteral("zohpc hosts expand -s, 'rack[1-2]node[01-04]'\t") +
                tr("the names with commas between them")};
}

void zoHostsExpandCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({{QStringLiteral("s"), QStringLiteral("separator")},
                      tr("Write <text> between the names instead of a line end."),
                      tr("text")});
    parser.addOption({QStringLiteral("sort"), tr("Write each name once, in natural order.")});
    zoHostsCommand::addArguments(parser);
}

bool zoHostsExpandCommand::writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser)
{
    std::vector<QString> names = tree.hostNames();
    if (parser.isSet(QStringLiteral("sort"))) {
        std::vector<QString> sorted;
        for (const int index : zoHostNames::sorted(names))
            sorted.push_back(names[std::size_t(index)]);
        names = std::move(sorted);
    }

    if (parser.isSet(QStringLiteral("json"))) {
        QJsonArray list;
        for (const QString& host : names)
            list << host;
        return zoConsole::write(zoJson::text(list));
    }
    const QByteArray separator = parser.isSet(QStringLiteral("separator"))
                                     ? parser.value(QStringLiteral("separator")).toUtf8()
                                     : QByteArrayLiteral("\n");
    QByteArray text;
    text.reserve(int(names.size()) * 12);
    for (const QString& host : names) {
        if (&host != &names.front())
            text += separator;
        text += host.toUtf8();
    }
    if (!text.isEmpty())
        text += '\n';
    return zoConsole::write(text);
}
