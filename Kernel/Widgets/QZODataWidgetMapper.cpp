#include "QZODataWidgetMapper.h"

QZODataWidgetMapper::QZODataWidgetMapper(QObject* parent) : QDataWidgetMapper(parent) {}

QZODataWidgetMapper::~QZODataWidgetMapper() = default;
