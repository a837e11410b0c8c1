#pragma once

#include <QDomElement>
#include <QString>

// What an attribute of a configuration means, whichever way it is written: "65" and "65.0", "1" and "true", and an
// attribute that is missing and its default are the same. The default of a display setup is what its items read
// where nothing stands, not what a new item has: nothing is 0, off or no text.
namespace zoAttributeValue
{
// One text for all ways to write the same. What is no number where one belongs stays as it is.
QString meaning(const QDomElement& element, const QString& attribute);

bool isSame(const QDomElement& before, const QDomElement& after, const QString& attribute);

// Both with all below them, but for tiles and planes that projections generate.
bool isSame(const QDomElement& before, const QDomElement& after);
} // namespace zoAttributeValue
