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

std::unique_ptr<zoNodeClusterService> createService()
{
    zoNodeClusterService::Launch launch;
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.remoteProgram = launch.program;
    launch.pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
    launch.mpi = zoNodeClusterService::Mpi::Never; // the launcher is none of a whole job
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(0);
    return service;
}

zoClusterServiceContract::Factory launched()
{
    constexpr int Many = 20;
    zoClusterServiceContract::Factory factory;
    factory.create = createService;
    factory.createShortOfMemory = [] {
        auto service = createService();
        service->setMemoryPerNode(1024);
        service->setAvailableMemory(1000);
        return service;
    };
    factory.createEndingWithLostNode = [] {
        auto service = createService();
        service->setEndsWithLostNode(true);
        return service;
    };
    factory.many = Many;
    factory.takesAnyName = false;
    factory.failing = QStringLiteral("failing");
    factory.silent = QStringLiteral("silent");
    factory.lose = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGKILL);
    };
    factory.hang = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGSTOP);
    };
    return factory;
}
} // namespace

// Sessions whose nodes are started one by one, by a launcher that can fail, keep the contract.
class tst_zoNodeClusterServiceLaunch final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoNodeClusterServiceLaunch() : zoClusterServiceContract(launched()) {}
};

ZO_TEST_MAIN(tst_zoNodeClusterServiceLaunch)
#include "tst_zoNodeClusterServiceLaunch.moc"
