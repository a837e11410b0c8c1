#pragma once

#include <QString>

// Why a node is not running, in words for people.
namespace zoNodeReasonText
{
// From a word of zoNodeReason and its detail.
QString of(const QString& reason, const QString& detail);
} // namespace zoNodeReasonText
