#include "zoFuzzHosts.h"
#include "zoFuzzing.h"

#include <zoHPCBracketText.h>
#include <zoHPCHostTree.h>
#include <zoHPCHostsOutline.h>
#include <zoHPCHostsSyntax.h>
#include <zoHPCHostsText.h>
#include <zoHPCTreeItem.h>
#include <zoHostNames.h>
#include <zoHostsFoldCommand.h>

#include <algorithm>
#include <set>
#include <vector>

// Brackets and names as "zohpc hosts" reads and writes them: what was folded expands to the same names, and the
// program reads hosts text as the host tree of the window does.

namespace
{
using Names = std::vector<QString>;

// More names are only slow with sanitizers.
constexpr qint64 MaximumNames = 3000;

// The program refuses these.
bool hasControlCharacters(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.category() == QChar::Other_Control && !c.isSpace(); });
}

// Counts all numbers of a bracket as if they were ranges from 0, and all brackets of a line as one word.
bool hasFewNames(const QString& text)
{
    qint64 product = 1;
    qint64 sum = 0;
    qint64 number = 0;
    bool isInBracket = false;
    for (const QChar c : text) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            number = std::min(number * 10 + (c.unicode() - '0'), MaximumNames);
            continue;
        }
        sum += isInBracket ? number + 1 : 0;
        number = 0;
        if (c == QLatin1Char('['))
            isInBracket = true;
        if (c == QLatin1Char(']')) {
            isInBracket = false;
            product *= std::max<qint64>(sum, 1);
            sum = 0;
        }
        if (product > MaximumNames || sum > MaximumNames)
            return false;
        if (c == QLatin1Char('\n') && !isInBracket)
            product = 1;
    }
    return text.count(QLatin1Char('\n')) < 30;
}

QString lines(const Names& names)
{
    QString text;
    for (const QString& name : names)
        text += name + QLatin1Char('\n');
    return text;
}

Names sortedNames(const Names& names)
{
    Names result;
    for (const int index : zoHostNames::sorted(names))
        result.push_back(names[std::size_t(index)]);
    return result;
}

// The first mistake in a text, which has its place and reason.
bool hasProblem(const QString& text, zoHPCHostsSyntax::Form form)
{
    const zoHPCHostsSyntax::Problem problem = zoHPCHostsSyntax::firstProblem(text, form);
    zoFuzzing::require(problem.offset < text.size() && (problem.offset < 0) == problem.reason.isEmpty(),
                       "a mistake has its place and reason", problem.reason);
    return problem.offset >= 0;
}

Names expandedNames(const QByteArray& brackets)
{
    zoHPCBracketText reader;
    const QString folded = QString::fromUtf8(brackets);
    const QString text = reader.expanded(folded);
    zoFuzzing::require(!reader.hasError() && !hasProblem(folded, zoHPCHostsSyntax::Form::Names),
                       "what was folded is read", folded);
    zoHPCHostsOutline tree;
    tree.readNames(text);
    return tree.hostNames();
}

// A word of hosts text, which braces, separators and brackets end.
bool isOneWord(const QString& name)
{
    return std::none_of(name.cbegin(), name.cend(),
                        [](QChar c) { return zoHPCHostsText::endsWord(c) || c == QLatin1Char(']'); });
}

void checkNames(const QString& expanded)
{
    zoHPCHostsOutline tree;
    tree.readNames(expanded);
    Names names = tree.hostNames();
    names.erase(
        std::remove_if(names.begin(), names.end(), [](const QString& name) { return !isOneWord(name); }),
        names.end());

    const Names sorted = sortedNames(names);
    const std::set<QString> once(names.begin(), names.end());
    zoFuzzing::require(sorted.size() == once.size() &&
                           std::set<QString>(sorted.begin(), sorted.end()) == once,
                       "sorting leaves each name once", lines(sorted));
    const Names reversed(names.rbegin(), names.rend());
    zoFuzzing::requireSame(lines(sortedNames(reversed)), lines(sorted), "the order is that of the names");

    for (const bool withSteps : {false, true}) {
        const QByteArray folded = zoHostNames::bracketText(names, withSteps);
        zoFuzzing::requireSame(QString::fromUtf8(zoHostNames::bracketText(reversed, withSteps)),
                               QString::fromUtf8(folded), "the brackets are those of the names");
        const Names again = expandedNames(folded);
        zoFuzzing::require(again.size() == sorted.size(), "each name is written once",
                           QString::fromUtf8(folded));
        zoFuzzing::requireSame(lines(sortedNames(again)), lines(sorted), "brackets expand to their names");
        zoFuzzing::requireSame(QString::fromUtf8(zoHostNames::bracketText(again, withSteps)),
                               QString::fromUtf8(folded), "names fold to their brackets");
    }
    zoFuzzing::requireSame(lines(expandedNames(zoHostNames::orderedBracketText(names))), lines(names),
                           "brackets in order expand to the names in order");
}

// Pre-order with the number of children, and with what a host's option block says.
QString outlineOf(const zoHPCHostsOutline& tree, bool withOptions)
{
    QString text;
    int depth = 0;
    for (int index = tree.next(zoHPCHostsOutline::Root, depth); index >= 0; index = tree.next(index, depth)) {
        const zoHPCHostsOutline::Item& item = tree.item(index);
        text += QString::number(tree.children(index).size()) + QLatin1Char(item.isNetwork ? '{' : '.') +
                item.name;
        if (withOptions && !item.isNetwork && !item.isRenderNode)
            text += QLatin1Char('!');
        text += QLatin1Char('\n');
    }
    return text;
}

QString outlineOf(zoHPCTreeItem* master)
{
    std::vector<zoHPCTreeItem*> items;
    master->getAllSubItems(items);
    QString text;
    for (const zoHPCTreeItem* item : items) {
        if (item->isMaster())
            continue;
        text += QString::number(item->childCount()) + QLatin1Char(item->isNetwork() ? '{' : '.') +
                item->hostName();
        if (item->isNode() && !item->isRenderNode())
            text += QLatin1Char('!');
        text += QLatin1Char('\n');
    }
    return text;
}

void checkTree(const QString& text)
{
    zoHPCHostsOutline tree;
    if (tree.readHostsText(text) != zoHPCHostsOutline::Outcome::Read) {
        zoFuzzing::require(tree.endOffset() >= 0 && tree.endOffset() < text.size(),
                           "what is refused has its place");
        return;
    }
    static zoHPCHostTree* const window = new zoHPCHostTree;
    window->setHostString(QString());
    window->setHostString(text);
    const QString outline = outlineOf(tree, true);
    if (!outline.isEmpty())
        zoFuzzing::requireSame(outlineOf(window->master()), outline, "program and window read the same tree");

    const int networks = int(tree.children(zoHPCHostsOutline::Root).size());
    const QString kept = QString::fromUtf8(zoHostsFoldCommand::hostsText(tree, true));
    if (zoFuzzHosts::isSaid(kept, networks)) {
        zoFuzzing::require(!hasProblem(kept, zoHPCHostsSyntax::Form::HostsText),
                           "what was folded has no mistake", kept);
        zoHPCHostsOutline again;
        again.readHostsText(kept);
        zoFuzzing::requireSame(outlineOf(again, false), outlineOf(tree, false),
                               "folded hosts text is the same tree");
    }
    const QString folded = QString::fromUtf8(zoHostsFoldCommand::hostsText(tree, false));
    if (zoFuzzHosts::isSaid(folded, networks)) {
        zoHPCHostsOutline again;
        again.readHostsText(folded);
        zoFuzzing::requireSame(lines(sortedNames(again.hostNames())), lines(sortedNames(tree.hostNames())),
                               "folded hosts text has the same names");
        zoFuzzing::requireSame(QString::fromUtf8(zoHostsFoldCommand::hostsText(again, false)), folded,
                               "folding again changes nothing");
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzing::textOf(data, size);
    if (hasControlCharacters(text) || !hasFewNames(text))
        return 0;
    hasProblem(text, zoHPCHostsSyntax::Form::HostsText);
    hasProblem(text, zoHPCHostsSyntax::Form::Names);
    zoHPCBracketText brackets;
    const QString expanded = brackets.expanded(text);
    if (brackets.hasError()) {
        zoFuzzing::require(brackets.error().offset >= 0 && brackets.error().offset < text.size() &&
                               !brackets.error().reason.isEmpty(),
                           "an error has its place and reason");
        return 0;
    }
    int previous = 0;
    for (int i = 0; i <= expanded.size(); ++i) {
        const int offset = brackets.sourceOffset(i);
        zoFuzzing::require(offset >= previous && offset <= text.size(), "places follow each other");
        previous = offset;
    }
    if (!zoFuzzHosts::isSmall(expanded))
        return 0;
    checkNames(expanded);
    checkTree(expanded);
    return 0;
}
