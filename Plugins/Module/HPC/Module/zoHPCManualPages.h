#pragma once

#include <QVariantMap>

// Which page of the manual tells of which part of the windows, for hosts that have a key for it: they find it as the
// property "manualPages" of the module's window. A widget that knows better has a property "manualPage" of its own.
namespace zoHPCManualPages
{
// Pages by the object names of widgets, "windows#network"; what is in a widget belongs to its page.
QVariantMap byObjectName();
} // namespace zoHPCManualPages
