// A host that a test may kill: opens a configuration, adds a network, and says so once the work is kept.
// zoHostHolder MODULE [FILE]

#include <zoHostApplication.h>

#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("zo"));
    QCoreApplication::setApplicationName(QStringLiteral("zohost"));
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    zoHostOptions options;
    options.moduleFiles = arguments.mid(1, 1);
    options.configFile = arguments.value(2);
    zoHostApplication host(options);

    QTimer timer;
    bool isEdited = false;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        const auto* window = qobject_cast<zoHostMainWindow*>(
            zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget());
        QWidget* const module = window->moduleWindows().constFirst();
        if (!options.configFile.isEmpty() && module->windowFilePath().isEmpty())
            return;
        if (!isEdited) {
            const QList<QAction*> actions = module->findChildren<QAction*>();
            for (QAction* action : actions) {
                if (action->text() == QLatin1String("Add network"))
                    action->trigger();
            }
            isEdited = true;
        }
        const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
        const QVector<zoHostEarlierConfigurations::Entry> entries = kept.entries();
        if (entries.isEmpty() ||
            kept.textOf(entries.constFirst()) != module->property("configuration").toString())
            return;
        std::puts("kept");
        std::fflush(stdout);
        timer.stop();
    });
    timer.start(20);
    return host.run();
}
