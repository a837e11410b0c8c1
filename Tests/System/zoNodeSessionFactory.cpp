#include "zoNodeSessionFactory.h"

#include <QTemporaryDir>

#include <csignal>

namespace
{
QString lockDirectory()
{
    static const QTemporaryDir directory;
    return directory.path();
}

std::unique_ptr<zoNodeClusterService> createRehearsal(zoNodeClusterService::Mpi mpi)
{
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.mpi = mpi;
    auto service = std::make_unique<zoNodeClusterService>(launch);
    service->setRehearsal(true);
    service->setLockDirectory(lockDirectory());
    service->setMemoryPerNode(0);
    return service;
}
} // namespace

zoClusterServiceContract::Factory zoNodeSessionFactory::rehearsals(zoNodeClusterService::Mpi mpi)
{
    zoClusterServiceContract::Factory factory;
    factory.create = [mpi] { return createRehearsal(mpi); };
    factory.createShortOfMemory = [mpi] {
        auto service = createRehearsal(mpi);
        service->setMemoryPerNode(1024);
        service->setAvailableMemory(1000);
        return service;
    };
    factory.createEndingWithLostNode = [mpi] {
        auto service = createRehearsal(mpi);
        service->setEndsWithLostNode(true);
        return service;
    };
    factory.lose = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGKILL);
    };
    factory.hang = [](zoClusterService* service, const QString& id) {
        kill(pid_t(static_cast<zoNodeClusterService*>(service)->nodeProcess(id)), SIGSTOP);
    };
    return factory;
}
