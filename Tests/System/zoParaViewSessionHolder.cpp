// A second host for tests: runs a session whose programs are scripts until its standard input ends, and says where the
// session's folder is.
// zoParaViewSessionHolder LOCK_DIRECTORY MPIRUN PVSERVER COMPONENT_FOLDER DOCUMENT

#include <zoParaViewService.h>
#include <zoSetupLibrary.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    zoParaViewService::Launch launch = zoParaViewPlan::defaultLaunch();
    launch.mpirun = arguments.value(2);
    launch.program = launch.nodeServer = launch.nodeServerHere = arguments.value(3);
    zoSetupLibrary::setFolder(arguments.value(4));
    zoParaViewService service(launch);
    service.setLockDirectory(arguments.value(1));
    service.setMemoryPerNode(0);
    service.applyConfig(arguments.value(5));
    if (!service.start())
        return 1;
    std::puts(qPrintable(service.sessionFolder()));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
