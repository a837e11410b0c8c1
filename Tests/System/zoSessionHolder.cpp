// A second host for tests: runs a session on the given nodes until its standard input ends.
// zoSessionHolder LOCK_DIRECTORY NODE...

#include <zoLocalClusterService.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString document = QStringLiteral("<cluster><master><network>");
    for (const QString& node : arguments.mid(2))
        document += QStringLiteral("<node name=\"%1\"/>").arg(node);
    document += QStringLiteral("</network></master></cluster>");

    zoLocalClusterService service;
    service.setLockDirectory(arguments.value(1));
    service.setMemoryPerNode(0);
    service.applyConfig(document);
    std::puts(service.start() ? "running" : "failed");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
