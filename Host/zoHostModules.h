#pragma once

#include <QList>

class QObject;
class QWidget;

// The registered modules, as the parts of the host's window see them: what lists the modules is above them.
class zoHostModules
{
public:
    // The windows of the registered modules in the order of registration.
    virtual QList<QWidget*> moduleWindows() const = 0;

    // The module object that offers a slot with this signature: the parent of an action on the module tool
    // bar. Null when there is none.
    virtual QObject* moduleObject(const char* slotSignature) const = 0;

protected:
    ~zoHostModules() = default;
};
