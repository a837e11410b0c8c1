#pragma once

#include <QIcon>

// The pictures of the host tree's rows.
namespace zoHPCHostIcon
{
enum Kind { Network = 0, Node = 1, DisplayNode = 2 };

// Composed once per combination and shared. An unknown kind gives an empty picture.
QIcon icon(int kind, bool enabled, bool running, bool encrypted, bool noRender);
// `base` with `overlay` painted onto it, right and below of the middle.
QIcon overlaid(QPixmap base, const QPixmap& overlay);
} // namespace zoHPCHostIcon
