#include "zoHPCDocumentProblems.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCLayout.h"
#include "zoHPCOption.h"
#include "zoHPCProblems.h"
#include "zoHPCReferences.h"
#include "zoHPCTextCheck.h"
#include "zoHPCTextItems.h"
#include "zoHPCViewportItem.h"

#include <zoClusterTags.h>

#include <QFileInfo>

#include <algorithm>

namespace
{
using Kind = zoHPCProblem::Kind;
using Problem = zoHPCDocumentProblems::Problem;

// Where the problem is: the value of the attribute that it is about, or the element.
int offsetOf(const zoHPCProblem& problem, const zoHPCTextItems& items, const zoHPCTextParts& parts)
{
    const int part = items.part(problem.item);
    if (part < 0)
        return 0;
    const zoHPCTextParts::Part& element = parts.parts().at(part);
    // A generated tile has no attributes in the text.
    const bool isOwn = !problem.item->parent() || items.part(problem.item->parent()) != part;
    const QString name = zoHPCProblem::attributeOf(problem.kind);
    const zoHPCTextParts::Attribute* const attribute =
        isOwn && !name.isEmpty() ? element.attribute(name) : nullptr;
    return attribute ? attribute->valueOffset : element.offset;
}

std::vector<Problem> placed(zoHPCTextCheck& check)
{
    check.sort();
    std::vector<Problem> problems;
    problems.reserve(check.findings().size());
    for (const zoHPCTextCheck::Finding& finding : check.findings())
        problems.push_back(
            {finding.kind, check.parts().place(finding.offset), finding.message, finding.fixText});
    return problems;
}
} // namespace

std::vector<Problem> zoHPCDocumentProblems::find(zoHPCTextCheck& check, zoHPCDisplaySetup& displays,
                                                 zoHPCTreeItem* master, bool* hasGuessed)
{
    const zoHPCTextItems items(
        check.parts(), [&check](int part) { return check.tag(part); }, displays, master);
    const auto guesses = zoHPCReferences(displays).check(check, items, displays);
    for (auto guess = guesses.begin(); guess != guesses.end(); ++guess)
        guess.key()->setProjection(guess.value());
    if (!guesses.isEmpty())
        displays.correctProjectionViewportsAssignments();
    if (hasGuessed)
        *hasGuessed = !guesses.isEmpty();
    checkHostsFile(check);
    addOfItems(check, items, displays, master);
    return placed(check);
}

std::vector<Problem> zoHPCDocumentProblems::findInText(const QString& text, const zoHPCDisplaySetup& displays,
                                                       zoHPCTreeItem* master)
{
    zoHPCTextCheck check(text);
    zoHPCReferences(displays).check(check, zoHPCTextItems(check.parts(), displays, master), displays);
    checkHostsFile(check);
    std::vector<Problem> problems = placed(check);
    // The items keep such a value until somebody looks at it, and their own check tells of it.
    problems.erase(
        std::remove_if(problems.begin(), problems.end(),
                       [](const Problem& problem) { return problem.kind == Kind::UnknownOptionValue; }),
        problems.end());
    return problems;
}

void zoHPCDocumentProblems::checkHostsFile(zoHPCTextCheck& check)
{
    const QVector<zoHPCTextParts::Part>& parts = check.parts().parts();
    for (int i = 0; i < parts.size(); ++i) {
        if (parts.at(i).kind != zoHPCTextParts::Kind::Element || check.tag(i) != zoClusterTags::Master)
            continue;
        const zoHPCTextParts::Attribute* const file = parts.at(i).attribute(zoHPCOption::NodesFile);
        if (!file || file->value.isEmpty())
            continue;
        // The reader, too, takes a relative name from the folder in which the program was started.
        const QFileInfo info(file->value);
        if (!info.isFile() || !info.isReadable())
            check.add(Kind::MissingHostsFile, file->valueOffset,
                      info.exists() ? tr("The hosts file \"%1\" cannot be read.").arg(file->value)
                                    : tr("There is no hosts file \"%1\" here.").arg(file->value));
    }
}

void zoHPCDocumentProblems::addOfItems(zoHPCTextCheck& check, const zoHPCTextItems& items,
                                       const zoHPCDisplaySetup& displays, zoHPCTreeItem* master)
{
    const auto isDoubtful = [&](const QTreeWidgetItem* item) {
        const int part = item ? items.part(item) : -1;
        return part >= 0 && check.isDoubtful(part);
    };
    const zoHPCProblems::List problems = zoHPCProblems::find(zoHPCLayout(displays, master));
    bool isUnchecked = false;
    for (const zoHPCProblem& problem : problems) {
        // The text tells it already, or what it follows from.
        if (problem.kind == Kind::UnknownOptionValue || isDoubtful(problem.item) || isDoubtful(problem.other))
            continue;
        if (check.isStructureDoubtful())
            isUnchecked = true;
        else
            check.add(problem.kind, offsetOf(problem, items, check.parts()), problem.message,
                      problem.fixText);
    }
    if (!isUnchecked)
        return;
    const auto cause = std::find_if(
        check.findings().begin(), check.findings().end(), [](const zoHPCTextCheck::Finding& finding) {
            return finding.kind == Kind::UnknownElement || finding.kind == Kind::MisplacedElement;
        });
    check.add(Kind::UncheckedRest, cause->offset,
              tr("What nodes, windows and tiles show is checked once every element is where it belongs."));
}
