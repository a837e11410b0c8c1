#include "zoClusterServiceContract.h"

#include <zoLocalClusterService.h>

#include <QApplication>
#include <QTemporaryDir>

namespace
{
QString lockDirectory()
{
    static const QTemporaryDir directory;
    return directory.path();
}

std::unique_ptr<zoClusterService> createService()
{
    auto service = std::make_unique<zoLocalClusterService>();
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(0);
    return service;
}

std::unique_ptr<zoClusterService> createServiceShortOfMemory()
{
    auto service = std::make_unique<zoLocalClusterService>();
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(1024);
    service->setAvailableMemory([] { return qint64(1000); });
    return service;
}

zoClusterServiceContract::Factory services()
{
    zoClusterServiceContract::Factory factory;
    factory.create = createService;
    factory.createShortOfMemory = createServiceShortOfMemory;
    return factory;
}
} // namespace

// The embedded cluster service keeps the contract.
class tst_zoLocalClusterServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoLocalClusterServiceContract() : zoClusterServiceContract(services()) {}
};

ZO_TEST_MAIN(tst_zoLocalClusterServiceContract)
#include "tst_zoLocalClusterServiceContract.moc"
