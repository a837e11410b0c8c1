#pragma once

#include <QtGlobal>

// The commands of zohpc with the words that the overview says of them. Commands that need the module's
// classes, and with them the libraries of windows, live in a program of their own: the others start in a few
// milliseconds.
struct zoCommandEntry
{
    const char* name;
    const char* summary;
    bool isDocumentCommand;
};

inline constexpr zoCommandEntry zoCommandTable[] = {
    {"hosts expand", QT_TRANSLATE_NOOP("zohpc", "the names that hosts text stands for"), false},
    {"hosts fold", QT_TRANSLATE_NOOP("zohpc", "names as hosts text, in as few words as possible"), false},
    {"hosts tree", QT_TRANSLATE_NOOP("zohpc", "the networks of hosts text, with their gateways"), false},
};
