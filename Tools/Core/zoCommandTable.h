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
    {"check", QT_TRANSLATE_NOOP("zohpc", "what of configurations would not light up as meant"), true},
    {"convert", QT_TRANSLATE_NOOP("zohpc", "a legacy configuration as a configuration document"), true},
    {"diff", QT_TRANSLATE_NOOP("zohpc", "what differs between two configurations, in words"), true},
    {"draw", QT_TRANSLATE_NOOP("zohpc", "the room or the screens as a picture"), true},
    {"export", QT_TRANSLATE_NOOP("zohpc", "the same wall for other engines that render distributed"), true},
    {"format", QT_TRANSLATE_NOOP("zohpc", "a configuration in the canonical text"), true},
    {"hosts expand", QT_TRANSLATE_NOOP("zohpc", "the names that hosts text stands for"), false},
    {"hosts fold", QT_TRANSLATE_NOOP("zohpc", "names as hosts text, in as few words as possible"), false},
    {"hosts tree", QT_TRANSLATE_NOOP("zohpc", "the networks of hosts text, with their gateways"), false},
    {"new", QT_TRANSLATE_NOOP("zohpc", "a whole configuration of a wall or a cave from one line"), true},
};
