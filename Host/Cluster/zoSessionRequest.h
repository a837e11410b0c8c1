#pragma once

#include "zoClusterDocument.h"

#include <QJsonObject>
#include <QStringList>

// What a controller is told of a document, and what logs say of its nodes.
namespace zoSessionRequest
{
// The document with its nodes; `share` goes on beside other sessions on them.
QJsonObject config(const QString& document, const std::vector<zoClusterDocument::Node>& nodes, bool share);

bool isAllOnThisMachine(const std::vector<zoClusterDocument::Node>& nodes);

QStringList idsOf(const std::vector<zoClusterDocument::Node>& nodes);

// For the log: a large cluster in one readable line.
QString listOf(const QStringList& ids);
} // namespace zoSessionRequest
