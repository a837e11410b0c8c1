#pragma once

#include <QString>

// Documents that the fuzzer can change without breaking their XML: an outline of elements, a line each, "tag
// name=value name=value", a blank in front per level, "~" for a blank in a value.
namespace zoFuzzOutline
{
// The document of an outline. A text that begins with "<" is the document itself.
QString documentOf(const QString& text);
} // namespace zoFuzzOutline
