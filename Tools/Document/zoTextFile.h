#pragma once

#include <QString>

// Reads and writes texts as the document commands do: "-" is standard input or output, and failures are
// told on standard error.
namespace zoTextFile
{
// The whole file as UTF-8, to its first NUL byte.
bool read(const QString& fileName, QString& text);
// Replaces the file when all of it is written; a full disk leaves the old one whole.
bool write(const QString& fileName, const QString& text);
} // namespace zoTextFile
