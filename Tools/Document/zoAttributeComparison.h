#pragma once

#include <QString>
#include <QStringList>

class QDomElement;
class zoDifferences;

// Compares the attributes of projections, displays, windows and viewports; those that a person sees as one
// thing, such as width and height, are told together.
namespace zoAttributeComparison
{
// Both elements have the same tag, which begins the kind of the differences. The path is that of the item now. What
// is skipped is told elsewhere.
void compare(const QString& label, const QString& path, const QDomElement& before, const QDomElement& after,
             const QStringList& skipped, zoDifferences& differences);
} // namespace zoAttributeComparison
