#pragma once

#include "zoHPCGrammar.h"

#include <QString>

// What was meant by a value that its attribute does not take.
namespace zoHPCValueGuess
{
// A value that the attribute takes; empty where nothing is near enough.
QString find(const zoHPCGrammar::Attribute& attribute, const QString& value);
} // namespace zoHPCValueGuess
