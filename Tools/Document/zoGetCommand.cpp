#include "zoGetCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoItemPaths.h"
#include "zoItemValues.h"
#include "zoJson.h"

#include <QPair>
#include <QSet>

#include <vector>

namespace
{
// A value may hold line ends; a line of output may not.
QString oneLine(QString value)
{
    return value.replace(QLatin1Char('\n'), QLatin1String("&#10;"));
}

// Writes values as they come: those of a hundred thousand tiles altogether take more memory than all else.
class Output final
{
public:
    explicit Output(bool isJson) : m_isJson(isJson) {}

    void add(const QString& path, const QString& value)
    {
        if (m_isJson) {
            m_text += m_isFirst ? "{" : ",";
            m_text += zoJson::quoted(path) + ':' + zoJson::quoted(value);
            m_isFirst = false;
        } else {
            addLine(path + QLatin1Char('=') + value);
        }
        writeIfLarge();
    }
    // Of an attribute that somebody asks for.
    void addAsked(const QString& path, const QString& value)
    {
        if (m_isJson)
            add(path, value);
        else
            addLine(value);
        writeIfLarge();
    }
    bool isJson() const { return m_isJson; }
    // False with an error when not all could be written.
    bool finish()
    {
        if (m_isJson)
            m_text += m_isFirst ? "{}\n" : "}\n";
        return m_isGood && zoConsole::write(m_text);
    }

private:
    void addLine(const QString& line) { m_text += oneLine(line).toUtf8() + '\n'; }
    void writeIfLarge()
    {
        constexpr int Large = 1 << 20; // bytes
        if (m_text.size() < Large)
            return;
        m_isGood = m_isGood && zoConsole::write(m_text);
        m_text.clear();
    }

    const bool m_isJson;
    bool m_isFirst = true;
    bool m_isGood = true;
    QByteArray m_text;
};

// The items of a configuration with their values.
class Values final
{
public:
    Values(zoClusterSetup& setup, const zoItemPaths& paths, bool withDefaults, Output& output)
        : m_setup(setup)
        , m_paths(paths)
        , m_withDefaults(withDefaults)
        , m_output(output)
        , m_areTold(paths.items().size())
    {
    }

    // Of an item and all below it: those that the document holds, or all that it may.
    void addAll(int index)
    {
        for (int i = index; i < qMax(m_paths.item(index).end, index + 1); ++i) {
            if (isTold(i))
                continue;
            const QDomElement element = elementOf(i);
            const QStringList names = namesOf(element);
            for (const QString& name : names) {
                if (!isTold(i, name))
                    m_output.add(zoItemPaths::attribute(m_paths.item(i).path, name),
                                 zoItemValues::value(element, name));
            }
            m_areTold[std::size_t(i)] = true;
        }
    }
    void addOne(int index, const QString& attribute)
    {
        const QDomElement element = elementOf(index);
        if (isTold(index, attribute) || (isTold(index) && namesOf(element).contains(attribute)))
            return;
        m_told.insert({index, attribute});
        m_output.addAsked(zoItemPaths::attribute(m_paths.item(index).path, attribute),
                          zoItemValues::value(element, attribute));
    }

private:
    // An object has each name once: of items that are called the same, as two projections may be, the first.
    bool isTold(int index) const
    {
        return m_output.isJson() &&
               (m_areTold[std::size_t(index)] || m_paths.indexOf(m_paths.item(index).path) != index);
    }
    bool isTold(int index, const QString& attribute) const
    {
        return m_output.isJson() && m_told.contains({index, attribute});
    }
    QStringList namesOf(const QDomElement& element) const
    {
        QStringList names = zoItemValues::names(element);
        if (m_withDefaults) {
            names = zoItemPaths::attributesOf(element) + names;
            names.removeDuplicates();
        }
        return names;
    }
    // The document holds no more of tiles than their names.
    QDomElement elementOf(int index)
    {
        const zoItemPaths::Item& item = m_paths.item(index);
        return item.isComputed ? m_setup.tile(m_paths.item(item.parent).place, item.place) : item.element;
    }

    zoClusterSetup& m_setup;    // not owned
    const zoItemPaths& m_paths; // not owned
    const bool m_withDefaults;
    Output& m_output;            // not owned
    std::vector<bool> m_areTold; // items with all their values
    QSet<QPair<int, QString>> m_told;
};
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
    const QDomDocument document = setup.outlineDocument();
    zoItemPaths paths(document.documentElement());

    Output output(parser.isSet(QStringLiteral("json")));
    Values values(setup, paths, parser.isSet(QStringLiteral("defaults")), output);
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
        for (const int index : target.items) {
            if (target.attribute.isEmpty())
                values.addAll(index);
            else
                values.addOne(index, target.attribute);
        }
    }
    if (!output.finish())
        return zoConsole::Unusable;
    return isComplete ? zoConsole::Fine : zoConsole::ProblemsFound;
}
