#pragma once

#include <QString>
#include <QStringList>

// What somebody meant who mistyped a word: "did you mean ...?"
namespace zoHPCSuggestion
{
// The known word that takes the fewest changes, letters swapped with their neighbour being one; empty when none is
// near, the first of those that are as near. Upper and lower case are the same.
QString closest(const QString& word, const QStringList& known);
} // namespace zoHPCSuggestion
