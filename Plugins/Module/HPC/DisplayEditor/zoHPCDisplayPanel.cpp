#include "zoHPCDisplayPanel.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCPanelFields.h"

#include <QZODataWidgetMapper.h>
#include <zoCameraService.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <QSignalBlocker>
#include <QStringList>

zoHPCDisplayPanel::zoHPCDisplayPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper)
    : m_ui(form)
{
    // It would turn "cam1" into the "Cam1" that the scene has: cameras may come later, and their names are the user's.
    form.m_camera->setCompleter(nullptr);
    zoHPCPanelFields::setUnit({form.m_eyeSeparation}, zoHPCNumberExpression::Unit::Millimetre);
    using D = zoHPCDisplayItem;
    zoHPCPanelFields::map(mapper, {{form.m_eyeSeparation, D::EyeSeparation},
                                   {form.m_camera, D::Camera},
                                   {form.m_user, D::User},
                                   {form.m_hardwareSync, D::HardwareSync}});
}

void zoHPCDisplayPanel::updateCameraList()
{
    auto* cameras = zoKernelServiceFactory::getService<zoCameraService>();
    const QStringList names = cameras ? cameras->cameraNames() : QStringList();
    QComboBox* const camera = m_ui.m_camera;
    const QString current = camera->currentText();
    // The choice changes, not the display's camera, which may come and go with the scene.
    const QSignalBlocker blocker(camera);
    camera->clear();
    camera->addItems(names);
    camera->setCurrentIndex(camera->findText(current, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    camera->setEditText(current);
}

void zoHPCDisplayPanel::followCameras(const QObject& dialog)
{
    // By name, as with every service of the host: an older host may lack one of the signals.
    if (auto* cameras = zoKernelServiceFactory::getService<zoCameraService>())
        QObject::connect(cameras, SIGNAL(camerasChanged()), &dialog, SLOT(updateCameraList()));
    if (auto* nodes = zoKernelServiceFactory::getService<zoNodeService>())
        QObject::connect(nodes, SIGNAL(cameraNameChanged(uint,QString)), &dialog, SLOT(updateCameraList()));
}
