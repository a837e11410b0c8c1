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

std::unique_ptr<zoNodeClusterService> createJob()
{
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.mpi = zoNodeClusterService::Mpi::Always;
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setRehearsal(true);
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(0);
    return service;
}

zoClusterServiceContract::Factory jobs()
{
    zoClusterServiceContract::Factory factory;
    factory.create = createJob;
    factory.namesAllLosses = false; // mpirun names the first one
    factory.createShortOfMemory = [] {
        auto service = createJob();
        service->setMemoryPerNode(1024);
        service->setAvailableMemory(1000);
        return service;
    };
    factory.createEndingWithLostNode = [] {
        auto service = createJob();
        service->setEndsWithLostNode(true);
        return service;
    };
    factory.lose = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGKILL);
    };
    return factory;
}
} // namespace

// Sessions whose nodes are ranks of a job of MPI on this machine keep the contract.
class tst_zoMpiClusterServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoMpiClusterServiceContract() : zoClusterServiceContract(jobs()) {}
};

ZO_TEST_MAIN(tst_zoMpiClusterServiceContract)
#include "tst_zoMpiClusterServiceContract.moc"
