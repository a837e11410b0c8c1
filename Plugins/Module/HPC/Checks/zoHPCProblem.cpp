#include "zoHPCProblem.h"

#include <iterator>
#include <utility>

namespace
{
enum class Tree { Displays, Hosts, None };
using Severity = zoHPCProblem::Severity;

struct KindRow
{
    const char* word;
    Severity severity;
    const char* attribute;
    const char* title;
    Tree item;
    Tree fix;
};

// Indexed by kind.
constexpr KindRow s_kinds[] = {
#define ZO_KIND(kind, word, severity, attribute, title, item, fix, check)                                    \
    {word, Severity::severity, attribute, title, Tree::item, Tree::fix},
    ZO_HPC_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
#define ZO_KIND(kind, word, severity, title) {word, Severity::severity, "", title, Tree::None, Tree::None},
        ZO_HPC_TEXT_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
};

const KindRow& rowOf(zoHPCProblemKind kind)
{
    return s_kinds[static_cast<size_t>(kind)];
}
} // namespace

zoHPCProblem::zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text)
    : kind(problemKind), message(text), item(concerned)
{
}

int zoHPCProblem::kindCount()
{
    return static_cast<int>(std::size(s_kinds));
}

QString zoHPCProblem::kindName(Kind kind)
{
    return QString::fromLatin1(rowOf(kind).word);
}

zoHPCProblem::Severity zoHPCProblem::severityOf(Kind kind)
{
    return rowOf(kind).severity;
}

QString zoHPCProblem::severityName(Severity severity)
{
    constexpr const char* Words[] = {"error", "warning", "note"};
    return QString::fromLatin1(Words[static_cast<size_t>(severity)]);
}

QString zoHPCProblem::attributeOf(Kind kind)
{
    return QString::fromLatin1(rowOf(kind).attribute);
}

QString zoHPCProblem::titleOf(Kind kind)
{
    return QString::fromLatin1(rowOf(kind).title);
}

void zoHPCProblem::setFix(const QString& text, std::function<void()> change)
{
    fixText = text;
    fix = std::move(change);
}

bool zoHPCProblem::concernsHost() const
{
    return rowOf(kind).item == Tree::Hosts;
}

bool zoHPCProblem::fixesHosts() const
{
    return rowOf(kind).fix == Tree::Hosts;
}
