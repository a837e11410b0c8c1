#include "zoGetCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoItemPaths.h"
#include "zoItemValues.h"
#include "zoJson.h"

#include <QVariantMap>

#include <utility>
#include <vector>

namespace
{
using Values = std::vector<std::pair<QString, QString>>;

// Of an item and all below it: those that the document holds, or all that it may.
void collect(const zoItemPaths& paths, int index, bool withDefaults, Values& values)
{
    for (int i = index; i < qMax(paths.item(index).end, index + 1); ++i) {
        const zoItemPaths::Item& item = paths.item(i);
        QStringList names = zoItemValues::names(item.element);
        if (withDefaults)
            names = zoItemPaths::attributesOf(item.element) + names;
        names.removeDuplicates();
        for (const QString& name : qAsConst(names))
            values.emplace_back(zoItemPaths::attribute(item.path, name),
                                zoItemValues::value(item.element, name));
    }
}

// A value may hold line ends; a line of output may not.
QString oneLine(QString value)
{
    return value.replace(QLatin1Char('\n'), QLatin1String("&#10;"));
}
} // namespace

QString zoGetCommand::description() const
{
    return tr(
        "Prints values of a configuration. The PATH of an attribute, node[gpu01]/enabled, gives its value, "
        "the\n"
        "default where the file has none; that of an item, node[gpu01], gives PATH=VALUE for each value that "
        "it and\n"
        "all below it have; no PATH gives all of them, which is a configuration as plain lines.\n"
        "\n"
        "Items are master, network[N], node[NAME], projection[NAME], display[N], display[N]/window[N] and\n"
        "display[N]/window[N]/viewport[N], counted from 1. What is clear without may be left out: "
        "gpu01/enabled,\n"
        "Wall/distance, window[2]/screen. [*] stands for all: window[*]/node. Values are those of the "
        "file: screens\n"
        "count from 0 there. Exit code 1 when there is no such item.");
}

QStringList zoGetCommand::examples() const
{
    return {QStringLiteral("zohpc get wall.zhpc Wall/distance\t") + tr("millimetres from viewer to wall"),
            QStringLiteral("zohpc get wall.zhpc 'window[*]/node'\t") + tr("who drives the windows, in order"),
            QStringLiteral("zohpc get --defaults wall.zhpc node07\t") + tr("all that a node may be told"),
            QStringLiteral("git config diff.zhpc.textconv 'zohpc get'\t") +
                tr("differences in git as lines, with '*.zhpc diff=zhpc' in .gitattributes"),
            QStringLiteral("zohpc get wall.zhpc | grep node07\t") + tr("all that has to do with node07")};
}

void zoGetCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("defaults"),
                      tr("Of items also what the file leaves to its default: all that \"set\" can change.")});
    parser.addOption({QStringLiteral("json"), tr("Write JSON: an object of paths and their values.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
    parser.addPositionalArgument(QStringLiteral("PATH"), tr("Items or attributes; none for everything."),
                                 QStringLiteral("[PATH...]"));
}

int zoGetCommand::execute(const QCommandLineParser& parser)
{
    QStringList asked = parser.positionalArguments();
    if (asked.isEmpty())
        return usageError(tr("no file given"));
    const QString file = asked.takeFirst();
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    const QDomDocument document = setup.document();
    const zoItemPaths paths(document.documentElement());

    const bool isJson = parser.isSet(QStringLiteral("json"));
    QByteArray text;
    QVariantMap object; // one of JSON moves all that it holds for each value that comes in
    bool isComplete = true;
    if (asked.isEmpty())
        asked << QString();
    for (const QString& path : qAsConst(asked)) {
        zoItemPaths::Target target{{0}, QString()};
        QString reason;
        if (!path.isEmpty() && !paths.find(path, target, reason)) {
            zoConsole::printError(QStringLiteral("%1: %2").arg(file, reason));
            isComplete = false;
            continue;
        }
        Values values;
        for (const int index : target.items) {
            if (target.attribute.isEmpty())
                collect(paths, index, parser.isSet(QStringLiteral("defaults")), values);
            else
                values.emplace_back(zoItemPaths::attribute(paths.item(index).path, target.attribute),
                                    zoItemValues::value(paths.item(index).element, target.attribute));
        }
        for (const auto& value : values) {
            if (isJson) {
                object.insert(value.first, value.second);
                continue;
            }
            text += (target.attribute.isEmpty() ? value.first + QLatin1Char('=') + oneLine(value.second)
                                                : oneLine(value.second))
                        .toUtf8() +
                    '\n';
        }
    }
    if (!zoConsole::write(isJson ? zoJson::text(QJsonObject::fromVariantMap(object)) : text))
        return zoConsole::Unusable;
    return isComplete ? zoConsole::Fine : zoConsole::ProblemsFound;
}
