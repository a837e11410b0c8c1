// A host that a test kills while it keeps what is not saved: changes its configuration and keeps it, over and over.
// Before and after it prints a line, "keeping" or "kept" with a sum of the text.
// zoKeepingHost MODULE

#include <zoHostApplication.h>

#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QCryptographicHash>
#include <QTimer>

#include <cstdio>

namespace
{
constexpr int s_mostNetworks = 8;

void say(const char* what, const QString& text)
{
    std::printf("%s %s\n", what,
                QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().constData());
    std::fflush(stdout);
}

// One network more, or all of them taken back.
void change(QWidget* module, int turn)
{
    if (turn % s_mostNetworks == 0) {
        for (int step = 2; step < s_mostNetworks; ++step)
            QMetaObject::invokeMethod(module, "undo");
        return;
    }
    const QList<QAction*> actions = module->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == QLatin1String("Add network"))
            action->trigger();
    }
    QCoreApplication::processEvents();
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("zo"));
    QCoreApplication::setApplicationName(QStringLiteral("zohost"));
    const QApplication application(argc, argv);
    zoHostOptions options;
    options.engine = QStringLiteral("local");
    options.moduleFiles = QCoreApplication::arguments().mid(1, 1);
    zoHostApplication host(options);
    auto* window = qobject_cast<zoHostMainWindow*>(
        zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget());
    zoHostAutosave autosave(window, host.earlier(), 0);

    int turn = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* const module = window->moduleWindows().constFirst();
        change(module, ++turn);
        const QString text = module->property("configuration").toString();
        say("keeping", text);
        autosave.keep();
        say("kept", text);
    });
    timer.start(0);
    return host.run();
}
