#pragma once

#include <QDomElement>
#include <QString>
#include <QStringList>

// What the attributes of items of a configuration document hold, and what holds where one is missing.
namespace zoItemValues
{
// Of the attributes that the element has, in the order of documents.
QStringList names(const QDomElement& element);
// The default for one that is missing; empty where that is the default.
QString value(const QDomElement& element, const QString& attribute);
QString defaultValue(const QString& attribute);
} // namespace zoItemValues
