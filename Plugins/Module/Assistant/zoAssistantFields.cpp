#include "zoAssistantFields.h"

zoAssistantFields::zoAssistantFields(const QString& title, QWidget* parent) : QGroupBox(title, parent) {}

zoAssistantFields::~zoAssistantFields() = default;
