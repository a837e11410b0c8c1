#include "zoClusterServiceContract.h"

#include <zoNodeClusterService.h>

#include <QApplication>
#include <QTemporaryDir>

#include <csignal>

namespace
{
QString lockDirectory()
{
    static const QTemporaryDir directory;
    return directory.path();
}

std::unique_ptr<zoNodeClusterService> createRehearsal()
{
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setRehearsal(true);
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(0);
    return service;
}

zoClusterServiceContract::Factory rehearsals()
{
    zoClusterServiceContract::Factory factory;
    factory.create = createRehearsal;
    factory.createShortOfMemory = [] {
        auto service = createRehearsal();
        service->setMemoryPerNode(1024);
        service->setAvailableMemory(1000);
        return service;
    };
    factory.createEndingWithLostNode = [] {
        auto service = createRehearsal();
        service->setEndsWithLostNode(true);
        return service;
    };
    factory.lose = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGKILL);
    };
    return factory;
}
} // namespace

// Sessions whose nodes are programs of their own on this machine keep the contract.
class tst_zoNodeClusterServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoNodeClusterServiceContract() : zoClusterServiceContract(rehearsals()) {}
};

ZO_TEST_MAIN(tst_zoNodeClusterServiceContract)
#include "tst_zoNodeClusterServiceContract.moc"
