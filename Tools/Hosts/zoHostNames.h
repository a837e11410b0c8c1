#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

// Order and folding of host names. A name is seen as texts with numbers between them, "rack2node07" as
// "rack", 2, "node", 07; names of the same texts are folded together. Padded and unpadded numbers stay apart.
// Names hold no control characters.
namespace zoHostNames
{
// Indices of the names in natural order (by text, then number by number; shorter numbers first), equal ones
// once.
std::vector<int> sorted(const std::vector<QString>& names);

// The bracket form, each name once, in natural order: "gpu[01-16,20],rack[1-2]node[1-4]". With steps, three
// numbers or more at an equal distance become "[1-9/2]".
QByteArray bracketText(const std::vector<QString>& names, bool withSteps);

// The bracket form in the order and number of the names: neighbours that differ in their last number alone
// share a bracket.
QByteArray orderedBracketText(const std::vector<QString>& names);

// How many of the names from `begin` on hosts text can write as one range, "n01 - n16"; 1 for none.
std::size_t rangeLength(const std::vector<QString>& names, std::size_t begin);
} // namespace zoHostNames
