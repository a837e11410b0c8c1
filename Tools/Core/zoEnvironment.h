#pragma once

// Makes a command-line program independent of what is set for displays, toolkits and languages: the same input gives
// the same output, messages and exit code everywhere.
namespace zoEnvironment
{
// Before the application object is made. Texts are UTF-8, messages are those of C; warnings of the toolkit are not
// shown, and what the module logs of a document goes to standard error, a line each.
void settle();
} // namespace zoEnvironment
