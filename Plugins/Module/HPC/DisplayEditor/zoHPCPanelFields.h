#pragma once

#include "zoHPCNumberExpression.h"

#include <initializer_list>
#include <utility>

class QWidget;
class QZODataWidgetMapper;
class zoHPCNumberField;

// What the fields of all panels have in common.
namespace zoHPCPanelFields
{
using Mapping = std::pair<QWidget*, int>; // a field and the column that it edits

void map(QZODataWidgetMapper& mapper, std::initializer_list<Mapping> fields);

void setVisible(std::initializer_list<QWidget*> widgets, bool visible);

// What numbers count.
void setUnit(std::initializer_list<zoHPCNumberField*> fields, zoHPCNumberExpression::Unit unit);

// Number fields become wide enough for usual numbers and wider when there is room; those without a label of
// their own get a name for readers. The wheel scrolls the panels.
void prepare(QWidget* panels);
} // namespace zoHPCPanelFields
