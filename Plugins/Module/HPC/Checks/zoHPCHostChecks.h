#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of the host tree.
class zoHPCHostChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // No server can be started there, and no window can name it.
    static zoHPCProblem::List nodesWithoutName(const zoHPCLayout& layout);
    // Unless each of the nodes has a window. The second one is told that has none, or else the first one.
    static zoHPCProblem::List duplicateHostNames(const zoHPCLayout& layout);
    // Networks that are themselves enabled.
    static zoHPCProblem::List networksWithoutEnabledNode(const zoHPCLayout& layout);
    // Values that no row of the node editor's combo boxes has, before anything replaced them.
    static zoHPCProblem::List unknownOptionValues(const zoHPCLayout& layout);
};
