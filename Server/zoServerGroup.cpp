#include "zoServerGroup.h"

zoServerGroup::zoServerGroup(QObject* parent) : QObject(parent) {}

zoServerGroup::~zoServerGroup() = default;
