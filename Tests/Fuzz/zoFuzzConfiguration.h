#pragma once

#include <QString>

// The cluster window with all its trees and editors, kept between inputs; never shown.
namespace zoFuzzConfiguration
{
// More tiles than these are slow with sanitizers, and nothing else: the product's own limit is much higher.
constexpr int MaximumTiles = 500;

// False for a text with projections of more tiles than MaximumTiles in all.
bool isSmall(const QString& text);

// Loads the text into the window, and checks that the text of that loads to itself.
void check(const QString& text);
// Looks for problems in the window and does what it would offer against each.
void checkFixes();
} // namespace zoFuzzConfiguration
