#pragma once

#include <zoBaseService.h>
#include <zoKernelExport.h>

#include <QHash>

#include <typeinfo>

// The host's registry of services, one per service type. Services are not owned: whoever registers a
// service also takes it back before destroying it. User-interface thread only.
class ZO_KERNEL_EXPORT zoKernelServiceFactory final
{
public:
    static zoKernelServiceFactory& the();

    zoKernelServiceFactory(const zoKernelServiceFactory&) = delete;
    zoKernelServiceFactory& operator=(const zoKernelServiceFactory&) = delete;

    // The registered service; null, with a line on standard error, when there is none or a null one;
    // null without a word when the registered object is not a T. Nothing is cached: every call looks again.
    template <class T>
    static T* getService()
    {
        return dynamic_cast<T*>(the().find(typeid(T).name()));
    }

    // Whether getService() would return one; says nothing. For what works without the service, too.
    template <class T>
    static bool hasService()
    {
        return dynamic_cast<T*>(the().m_services.value(typeid(T).name())) != nullptr;
    }

    // Replaces what was registered for T. Null is kept as a null entry.
    template <class T>
    void registerService(zoBaseService* service)
    {
        insert(typeid(T).name(), service);
    }

    template <class T>
    void unregisterService()
    {
        remove(typeid(T).name());
    }

private:
    zoKernelServiceFactory();
    ~zoKernelServiceFactory();

    // The key is the address of the type-name text, which is shared by all libraries that share the type.
    zoBaseService* find(const char* typeName) const;
    void insert(const char* typeName, zoBaseService* service);
    void remove(const char* typeName);

    QHash<const void*, zoBaseService*> m_services; // not owned
};
