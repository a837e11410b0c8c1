#include "zoClusterServiceContract.h"
#include "zoParaViewFake.h"

#include <QApplication>

namespace
{
const zoParaViewFake& fake()
{
    static const zoParaViewFake programs;
    return programs;
}

zoClusterServiceContract::Factory faked()
{
    constexpr int Many = 20;
    zoClusterServiceContract::Factory factory;
    factory.create = [] { return fake().create(); };
    factory.createShortOfMemory = [] {
        auto service = fake().create();
        service->setMemoryPerNode(1024);
        service->setAvailableMemory(1000);
        return service;
    };
    factory.complete = zoParaViewFake::withWindows;
    factory.many = Many;
    factory.takesAnyName = false;
    factory.takesGateways = false;
    factory.failing = QStringLiteral("failing");
    factory.silent = QStringLiteral("silent");
    return factory;
}
} // namespace

// Sessions of ParaView's server keep the contract, but for what they say they cannot.
class tst_zoParaViewServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoParaViewServiceContract() : zoClusterServiceContract(faked()) {}
};

ZO_TEST_MAIN(tst_zoParaViewServiceContract)
#include "tst_zoParaViewServiceContract.moc"
