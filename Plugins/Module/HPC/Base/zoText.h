#pragma once

#include <QString>

#include <cstddef>

// A text of the program, in memory of its own. Hosts, Qt's settings and the icon manager keep texts that they
// were given; one that points into the library's read-only data, as QStringLiteral makes it, would be gone
// when the library is unloaded.
template <std::size_t Size>
QString zoText(const char (&utf8)[Size])
{
    return QString::fromUtf8(utf8, int(Size) - 1);
}
