#pragma once

// Included ahead of every source of the module. A QStringLiteral points into the library's read-only data;
// hosts, Qt's settings and the icon manager keep texts that they were given, and would hold such a text after
// the library was unloaded. Here it makes a text of its own.
#include <QString>

#undef QStringLiteral
#define QStringLiteral(text) QString::fromUtf8("" text)
