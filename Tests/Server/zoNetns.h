#pragma once

#include <QByteArray>
#include <QString>

// The cluster of namespaces that dev/netns made around a test.
namespace zoNetns
{
// Passes an order on, such as "cut n1", and returns the answer.
QByteArray order(const QString& text);
// The programs that run on a machine for the user.
QByteArray programs(const QString& machine);
} // namespace zoNetns
