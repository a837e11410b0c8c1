#include "zoAssistant.h"

#include "zoAssistantPanel.h"
#include "zoAssistantReportDialog.h"
#include "zoAssistantSurveyDialog.h"
#include "zoAssistantWallDialog.h"
#include "zoText.h"

#include <zoConfigurationService.h>
#include <zoControllerService.h>
#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoMainWindowService.h>

#include <QAction>
#include <QCoreApplication>
#include <QDialog>

namespace
{
// Without a word when the host has none.
template <class Service>
Service* serviceOf()
{
    return zoKernelServiceFactory::hasService<Service>() ? zoKernelServiceFactory::getService<Service>()
                                                         : nullptr;
}
} // namespace

zoAssistant::zoAssistant() : m_configuration(serviceOf<zoConfigurationService>())
{
    createPanel();
    createAction();
}

zoAssistant::~zoAssistant()
{
    // The windows belong to the host's main window; without this object they have nothing to do.
    if (QCoreApplication::instance() == nullptr)
        return;
    delete m_dialog;
    if (m_panel)
        m_panel->retire();
}

void zoAssistant::createPanel()
{
    auto* mainWindow = serviceOf<zoMainWindowService>();
    if (mainWindow == nullptr)
        return;
    m_panel = new zoAssistantPanel(m_configuration, mainWindow->mainWindowWidget());
    m_panel->addTask(
        "m_newWall", tr("&New wall..."),
        tr("Tiled wall, power wall, cave, curved wall or free planes: sizes and names of nodes become a "
           "configuration."),
        zoText("Wall/Power"), zoAssistantPanel::Needs::Replacing, [this] { newWall(); });
    m_panel->addTask("m_measuredRoom", tr("&Measured room..."),
                     tr("What a tape measure or a total station gave becomes planes, with what remains of "
                        "each measurement."),
                     zoText("Wall/Planes"), zoAssistantPanel::Needs::Replacing, [this] { measuredRoom(); });
    m_panel->addTask(
        "m_report", tr("&Report..."),
        tr("What those who build the wall take along: walls with nodes and screens on each tile, cables, "
           "windows, networks. As PDF or on paper."),
        zoText("Report"), zoAssistantPanel::Needs::Reading, [this] { report(); });
    m_panel->addTask("m_print", tr("&Print report..."), tr("The same on a printer."), zoText("Report"),
                     zoAssistantPanel::Needs::Reading, [this] { printReport(); });
    mainWindow->registerModule(zoText("Assistant"), zoText("Rendering"), m_panel,
                               tr("Assistant: make a configuration of a new wall, and reports"),
                               zoIconManager::getIcon(zoText("Assistant"), QString()), tr("Assistant"), 0);
}

// A child of the module object: hosts find the object that takes their calls as the parent of this action.
void zoAssistant::createAction()
{
    m_action = new QAction(zoIconManager::getIcon(zoText("Wall/Power"), QString()), tr("&New wall..."), this);
    m_action->setObjectName(zoText("NewWall"));
    m_action->setIconText(tr("New wall"));
    m_action->setToolTip(tr("New wall: sizes and names of nodes become a configuration"));
    connect(m_action, &QAction::triggered, this, &zoAssistant::newWall);
    auto* controller = serviceOf<zoControllerService>();
    auto* mainWindow = serviceOf<zoMainWindowService>();
    if (controller == nullptr || mainWindow == nullptr || !controller->usesModuleToolBar())
        return;
    if (QWidget* toolBar = mainWindow->moduleToolBar())
        toolBar->addAction(m_action);
    const auto follow = [this] {
        m_action->setEnabled(m_configuration && m_configuration->obstacle().isEmpty());
    };
    if (m_configuration)
        connect(m_configuration, &zoConfigurationService::changed, m_action, follow);
    follow();
}

bool zoAssistant::mayOpen() const
{
    auto* controller = serviceOf<zoControllerService>();
    const bool isOpen = m_dialog && m_dialog->isVisible();
    return m_panel && m_configuration && !isOpen && controller != nullptr && !controller->isNonInteractive();
}

void zoAssistant::open(QDialog* dialog)
{
    m_dialog = dialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void zoAssistant::newWall()
{
    if (mayOpen())
        open(new zoAssistantWallDialog(m_configuration, m_panel->window()));
}

void zoAssistant::measuredRoom()
{
    if (mayOpen())
        open(new zoAssistantSurveyDialog(m_configuration, &m_measurements, m_panel->window()));
}

void zoAssistant::report()
{
    if (mayOpen() && !m_configuration->text().isEmpty())
        open(new zoAssistantReportDialog(*m_configuration, m_panel->window()));
}

void zoAssistant::printReport()
{
    if (!mayOpen() || m_configuration->text().isEmpty())
        return;
    auto* dialog = new zoAssistantReportDialog(*m_configuration, m_panel->window());
    open(dialog);
    dialog->print();
}

// Called once by the host after loading the library. The object goes with the library.
extern "C" Q_DECL_EXPORT void initPlugin()
{
    static zoAssistant module;
    Q_UNUSED(module)
}
