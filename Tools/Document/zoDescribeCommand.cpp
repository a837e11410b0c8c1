#include "zoDescribeCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCOption.h"
#include "zoHPCProblems.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHostNames.h"
#include "zoJson.h"
#include "zoNodeList.h"
#include "zoProjectionFacts.h"

#include <QSet>

#include <algorithm>

namespace
{
// Of networks, projections and displays: what follows is counted only.
constexpr int s_lines = 3;

QString tr(const char* text)
{
    return QCoreApplication::translate("zoDescribeCommand", text);
}

QString counted(std::size_t count, const char* one, const char* many)
{
    return count == 1 ? tr(one) : tr(many).arg(count);
}

QString folded(const std::vector<QString>& names)
{
    return QString::fromUtf8(zoHostNames::bracketText(names, false));
}

QJsonArray jsonNames(const std::vector<QString>& names)
{
    QJsonArray result;
    for (const QString& name : names)
        result << name;
    return result;
}

// Of a configuration, in the order in which it is told; the JSON has the same facts.
class Description
{
public:
    Description(const zoHPCLayout& layout, const QString& file) : m_layout(layout)
    {
        json.insert(QStringLiteral("file"), file);
        addNodes(file);
        addNetworks();
        addProjections();
        addDisplays();
        addProblems();
    }

    QStringList lines;
    QJsonObject json;

private:
    void addNodes(const QString& file);
    void addNetworks();
    void addProjections();
    void addDisplays();
    void addProblems();
    void addRest(std::size_t count, const char* many);

    const zoHPCLayout& m_layout;
};

void Description::addRest(std::size_t count, const char* many)
{
    if (count > s_lines)
        lines << QLatin1String("  ") + tr(many).arg(count - s_lines);
}

void Description::addNodes(const QString& file)
{
    const zoNodeList all(m_layout);
    const auto those = [&all](bool zoNodeList::Node::*what, bool is) {
        zoNodeList list = all;
        list.keep([&](const zoNodeList::Node& node) { return node.*what == is; });
        return list.names();
    };
    const std::vector<QString> displays = those(&zoNodeList::Node::isDisplay, true);
    const std::vector<QString> gateways = those(&zoNodeList::Node::isGateway, true);
    const std::vector<QString> disabled = those(&zoNodeList::Node::isEnabled, false);
    const std::vector<QString> notRendering = those(&zoNodeList::Node::isRender, false);
    lines << tr("%1: %2 in %3")
                 .arg(file, counted(all.nodes().size(), "1 node", "%1 nodes"),
                      counted(m_layout.networks().size(), "1 network", "%1 networks"));
    lines << tr("Display nodes: %1").arg(displays.empty() ? tr("none") : folded(displays));
    if (!gateways.empty())
        lines << tr("Gateways: %1").arg(folded(gateways));
    if (!disabled.empty())
        lines << tr("Disabled: %1").arg(folded(disabled));
    if (!notRendering.empty())
        lines << tr("Not rendering: %1").arg(folded(notRendering));
    json.insert(QStringLiteral("nodes"), int(all.nodes().size()));
    json.insert(QStringLiteral("display_nodes"), jsonNames(displays));
    json.insert(QStringLiteral("gateways"), jsonNames(gateways));
    json.insert(QStringLiteral("disabled_nodes"), jsonNames(disabled));
    json.insert(QStringLiteral("non_rendering_nodes"), jsonNames(notRendering));
}

void Description::addNetworks()
{
    QJsonArray list;
    for (const zoHPCLayout::Network& network : m_layout.networks()) {
        std::vector<QString> names;
        for (const zoHPCTreeItem* node : network.nodes)
            names.push_back(node->hostName());
        QStringList words;
        QJsonObject entry{{QStringLiteral("number"), list.size() + 1},
                          {QStringLiteral("nodes"), jsonNames(names)}};
        for (const QString& option :
             {zoHPCOption::Description, zoHPCOption::NetworkType, zoHPCOption::LinkSpeed}) {
            const QString value = network.item->getOption(option);
            if (!value.isEmpty())
                words << value;
            entry.insert(option, value);
        }
        const zoHPCTreeItem* const gateway = network.item->getParent();
        if (gateway != nullptr && gateway->isNode()) {
            words << tr("behind %1").arg(gateway->hostName());
            entry.insert(QStringLiteral("gateway"), gateway->hostName());
        }
        if (network.item->isEncrypted())
            words << tr("encrypted");
        if (!network.enabled)
            words << tr("disabled");
        list << entry;
        if (list.size() <= s_lines)
            lines << tr("Network %1%2: %3")
                         .arg(QString::number(list.size()),
                              words.isEmpty() ? QString() : tr(" (%1)").arg(words.join(QLatin1String(", "))),
                              names.empty() ? tr("no nodes") : folded(names));
    }
    addRest(std::size_t(list.size()), QT_TRANSLATE_NOOP("zoDescribeCommand", "and %1 more networks"));
    json.insert(QStringLiteral("networks"), list);
}

void Description::addProjections()
{
    QJsonArray list;
    // Programs get each projection, people a wall of planes as one.
    for (const zoProjectionFacts::Projection& projection : zoProjectionFacts::read(m_layout))
        list << projection.json();
    std::size_t count = 0;
    for (const zoProjectionFacts::Projection& wall : zoProjectionFacts::readWalls(m_layout)) {
        if (++count <= s_lines)
            lines << tr("Projection %1").arg(wall.text());
    }
    addRest(count, QT_TRANSLATE_NOOP("zoDescribeCommand", "and %1 more projections"));
    json.insert(QStringLiteral("projections"), list);
}

void Description::addDisplays()
{
    QJsonArray list;
    std::size_t window = 0;
    std::size_t viewport = 0;
    while (window < m_layout.windows().size()) {
        const int number = m_layout.windows()[window].display;
        const auto* display =
            dynamic_cast<const zoHPCDisplayItem*>(m_layout.windows()[window].item->parent());
        QSet<QString> screens;
        QStringList modes;
        int windows = 0;
        for (; window < m_layout.windows().size() && m_layout.windows()[window].display == number; ++window) {
            const zoHPCLayout::Window& shown = m_layout.windows()[window];
            screens.insert(shown.node + QLatin1Char('\n') + QString::number(shown.screen));
            ++windows;
            for (; viewport < m_layout.viewports().size() &&
                   m_layout.viewports()[viewport].window == int(window);
                 ++viewport)
                modes << m_layout.viewports()[viewport].item->getString(zoHPCViewportItem::Eye);
        }
        modes.removeDuplicates();
        const double separation =
            display == nullptr ? 0.0 : display->getDouble(zoHPCDisplayItem::EyeSeparation);
        list << QJsonObject{{QStringLiteral("number"), number},
                            {QStringLiteral("windows"), windows},
                            {QStringLiteral("screens"), screens.size()},
                            {QStringLiteral("eyes"), QJsonArray::fromStringList(modes)},
                            {QStringLiteral("eye_separation_mm"), separation}};
        if (list.size() <= s_lines)
            lines << tr("Display %1: %2 on %3, eyes %4, %5 mm apart")
                         .arg(QString::number(number),
                              counted(std::size_t(windows), "1 window", "%1 windows"),
                              counted(std::size_t(screens.size()), "1 screen", "%1 screens"),
                              modes.isEmpty() ? tr("none") : modes.join(QLatin1String(", ")),
                              QString::number(separation));
    }
    addRest(std::size_t(list.size()), QT_TRANSLATE_NOOP("zoDescribeCommand", "and %1 more displays"));
    json.insert(QStringLiteral("displays"), list);
}

void Description::addProblems()
{
    const zoHPCProblems::List problems = zoHPCProblems::find(m_layout);
    QJsonObject counts;
    for (const zoHPCProblem& problem : problems) {
        const QString kind = zoHPCProblem::kindName(problem.kind);
        counts.insert(kind, counts.value(kind).toInt() + 1);
    }
    json.insert(QStringLiteral("problems"), counts);
    QStringList words;
    for (auto kind = counts.constBegin(); kind != counts.constEnd(); ++kind)
        words << (kind.value().toInt() == 1
                      ? kind.key()
                      : QStringLiteral("%1 (%2)").arg(kind.key()).arg(kind.value().toInt()));
    lines << (words.isEmpty() ? tr("Problems: none")
                              : tr("Problems: %1").arg(words.join(QLatin1String(", "))));
}
} // namespace

QString zoDescribeCommand::description() const
{
    return tr("Tells what a person has to know about a configuration, in about a dozen lines: its nodes and "
              "networks, how\n"
              "large the projections are, what the displays show, and the kinds of problems that zohpc check "
              "finds.");
}

QStringList zoDescribeCommand::examples() const
{
    return {QStringLiteral("zohpc describe wall.zhpc\t") + tr("before somebody starts it"),
            QStringLiteral("zohpc describe --json wall.zhpc\t") + tr("the same for a script")};
}

void zoDescribeCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("json"), tr("Write JSON: one object.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoDescribeCommand::execute(const QCommandLineParser& parser)
{
    if (parser.positionalArguments().size() != 1)
        return usageError(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                                 : tr("one file at a time"));
    const QString file = parser.positionalArguments().constFirst();
    zoClusterSetup setup;
    if (!setup.readFile(file))
        return zoConsole::Unusable;
    const zoHPCLayout layout(setup.displays(), setup.hosts().master());
    const Description description(layout, file);
    const QByteArray text = parser.isSet(QStringLiteral("json"))
                                ? zoJson::text(description.json)
                                : description.lines.join(QLatin1Char('\n')).toUtf8() + '\n';
    return zoConsole::write(text) ? zoConsole::Fine : zoConsole::Unusable;
}
