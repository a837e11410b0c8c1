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
// Runs a text of the shell on a machine as root. What it said, in one line; "failed: ..." when it does not exit with 0.
QByteArray run(const QString& machine, const QString& text);
} // namespace zoNetns
