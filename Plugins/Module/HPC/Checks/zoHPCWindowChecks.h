#pragma once

#include "zoHPCProblem.h"

#include <QCoreApplication>

class zoHPCLayout;

// Checks of windows and viewports: whether each has a node, a projection and a place of its own.
class zoHPCWindowChecks final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCProblems)

public:
    // No projection, or the name of one that does not exist.
    static zoHPCProblem::List viewportsWithoutProjection(const zoHPCLayout& layout);
    static zoHPCProblem::List windowsWithoutNode(const zoHPCLayout& layout);
    // A node that the host tree lacks.
    static zoHPCProblem::List windowsWithUnknownNode(const zoHPCLayout& layout);
    // By its own option or by that of a network or node above it.
    static zoHPCProblem::List windowsWithDisabledNode(const zoHPCLayout& layout);
    static zoHPCProblem::List windowsWithoutViewport(const zoHPCLayout& layout);
    // Not in full screen, and a width or height that is given and 0 or less.
    static zoHPCProblem::List windowsWithoutSize(const zoHPCLayout& layout);
    // Not in full screen, on one screen, and with a corner left of it or above it.
    static zoHPCProblem::List windowsOutsideScreen(const zoHPCLayout& layout);
    // Unless there is nothing yet that windows could show.
    static zoHPCProblem::List displaysWithoutWindow(const zoHPCLayout& layout);
    // A screen that is no number, or one below those that stand for several.
    static zoHPCProblem::List windowsOnUnknownScreen(const zoHPCLayout& layout);
    // As zoHPCWindowOverlaps finds them; the later window of each pair is reported once.
    static zoHPCProblem::List overlappingWindows(const zoHPCLayout& layout);
};
