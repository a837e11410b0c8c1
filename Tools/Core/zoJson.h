#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

// JSON as the commands write it: UTF-8 that ends with a line end, a line for each entry of a list, so that line
// tools find their way in it too.
namespace zoJson
{
QByteArray text(const QJsonArray& list);
QByteArray text(const QJsonObject& object);

// A string with its quotes, for JSON that is too deep for the library, which recurses.
QByteArray quoted(const QString& text);
} // namespace zoJson
