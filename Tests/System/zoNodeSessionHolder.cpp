// A second host for tests: rehearses a session on the given nodes until its standard input ends.
// zoNodeSessionHolder --pipes | --mpi LOCK_DIRECTORY NODE...

#include <zoNodeClusterService.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString document = QStringLiteral("<cluster><master><network>");
    for (const QString& node : arguments.mid(3))
        document += QStringLiteral("<node name=\"%1\"/>").arg(node);
    document += QStringLiteral("</network></master></cluster>");

    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    launch.mpi = arguments.value(1) == QLatin1String("--mpi") ? zoNodeClusterService::Mpi::Always
                                                              : zoNodeClusterService::Mpi::Never;
    zoNodeClusterService service(launch);
    service.setRehearsal(true);
    service.setLockDirectory(arguments.value(2));
    service.setMemoryPerNode(0);
    service.applyConfig(document);
    if (!service.start())
        return 1;
    std::printf("%lld", service.controllerProcess());
    for (const QString& node : arguments.mid(3))
        std::printf(" %lld", service.nodeProcess(node));
    std::puts("");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
