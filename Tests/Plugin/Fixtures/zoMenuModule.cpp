// A module that prints the menus of the host and of the modules before it, and ends the host.

#include <zoKernelServiceFactory.h>
#include <zoMainWindowService.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include <cstdio>

namespace
{
class MenuModule final : public QObject
{
public:
    MenuModule() { QMetaObject::invokeMethod(this, &MenuModule::printMenus, Qt::QueuedConnection); }

private:
    void printMenus()
    {
        QWidget* window = zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget();
        const QList<QMenuBar*> bars = window->findChildren<QMenuBar*>();
        for (const QMenuBar* bar : bars) {
            std::printf("menu bar\n");
            const QList<QAction*> menus = bar->actions();
            for (const QAction* menu : menus) {
                QStringList texts(menu->text());
                const QList<QAction*> entries = menu->menu()->actions();
                for (const QAction* entry : entries) {
                    if (!entry->isSeparator())
                        texts << entry->text();
                }
                std::printf("%s\n", texts.join(QStringLiteral(" | ")).toUtf8().constData());
            }
        }
        std::fflush(stdout);
        QCoreApplication::quit();
    }
};
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    static MenuModule module;
}
