#include "zoHPCProblem.h"

#include <utility>

namespace
{
enum class Tree { Displays, Hosts };

// Indexed by kind.
constexpr struct
{
    const char* word;
    Tree item;
    Tree fix;
} s_kinds[] = {
#define ZO_KIND(kind, word, item, fix, check) {word, Tree::item, Tree::fix},
    ZO_HPC_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND
};
} // namespace

zoHPCProblem::zoHPCProblem(Kind problemKind, QTreeWidgetItem* concerned, const QString& text)
    : kind(problemKind), message(text), item(concerned)
{
}

QString zoHPCProblem::kindName(Kind kind)
{
    return QString::fromLatin1(s_kinds[static_cast<size_t>(kind)].word);
}

void zoHPCProblem::setFix(const QString& text, std::function<void()> change)
{
    fixText = text;
    fix = std::move(change);
}

bool zoHPCProblem::concernsHost() const
{
    return s_kinds[static_cast<size_t>(kind)].item == Tree::Hosts;
}

bool zoHPCProblem::fixesHosts() const
{
    return s_kinds[static_cast<size_t>(kind)].fix == Tree::Hosts;
}
