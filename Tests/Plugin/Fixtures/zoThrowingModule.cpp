// A module that registers a window and then gives up.

#include <zoKernelServiceFactory.h>
#include <zoMainWindowService.h>

#include <QIcon>
#include <QMainWindow>

#include <stdexcept>

namespace
{
class HalfWindow final : public QMainWindow
{
    Q_OBJECT

public:
    using QMainWindow::QMainWindow;
};
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    auto* host = zoKernelServiceFactory::getService<zoMainWindowService>();
    host->registerModule(QStringLiteral("Half"), QStringLiteral("Rendering"),
                         new HalfWindow(host->mainWindowWidget()), QString(), QIcon(), QStringLiteral("Half"),
                         0);
    throw std::runtime_error("the licence ran out");
}

#include "zoThrowingModule.moc"
