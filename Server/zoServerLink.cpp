#include "zoServerLink.h"

zoServerLink::zoServerLink(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<zoServerMessage>();
}

zoServerLink::~zoServerLink() = default;

void zoServerLink::together(const std::function<void()>& act)
{
    act();
}
