#pragma once

#include <QByteArray>
#include <QString>

// Where the command-line programs write to and what their exit codes mean.
namespace zoConsole
{
enum ExitCode {
    Fine = 0,
    ProblemsFound = 1,
    Unusable = 2 // wrong usage, unreadable input, output that cannot be written
};

// Writes to standard output; when that fails (a full disk), prints an error and returns false.
bool write(const QByteArray& text);

// Writes one message and a line end to standard error.
void printError(const QString& message);
// "file:line:column: reason", lines and columns from 1.
void printError(const QString& file, int line, int column, const QString& reason);
} // namespace zoConsole
