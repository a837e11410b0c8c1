#include "zoHostCameraPanel.h"

#include "zoHostCameraService.h"
#include "zoHostNodeService.h"

#include <QZOToolBar.h>

#include <QAction>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

zoHostCameraPanel::zoHostCameraPanel(zoHostCameraService* cameras, zoHostNodeService* nodes, QWidget* parent)
    : QWidget(parent), m_cameras(cameras), m_list(new QListWidget(this))
{
    auto* bar = new QZOToolBar(tr("Cameras"), this);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_add = bar->addAction(tr("Add"), this, &zoHostCameraPanel::addCamera);
    m_rename = bar->addAction(tr("Rename"), this, &zoHostCameraPanel::renameCurrent);
    m_remove = bar->addAction(tr("Remove"), this, &zoHostCameraPanel::removeCurrent);
    m_list->setObjectName(QStringLiteral("CameraList"));
    m_list->setAccessibleName(tr("Cameras"));
    m_list->setFrameShape(QFrame::NoFrame);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_list);
    layout->addWidget(bar);

    connect(m_list, &QListWidget::currentRowChanged, this, &zoHostCameraPanel::updateActions);
    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        m_cameras->renameCamera(m_list->row(item), item->text());
        // A name that was refused shows as it was.
        const QSignalBlocker blocker(m_list);
        item->setText(m_cameras->cameraNames().value(m_list->row(item)));
    });
    connect(m_cameras, &zoCameraService::camerasChanged, this, &zoHostCameraPanel::refresh);
    connect(nodes, &zoNodeService::cameraNameChanged, this, &zoHostCameraPanel::refresh);
    refresh();
}

zoHostCameraPanel::~zoHostCameraPanel() = default;

void zoHostCameraPanel::refresh()
{
    const QSignalBlocker blocker(m_list);
    const QStringList names = m_cameras->cameraNames();
    while (m_list->count() > names.size())
        delete m_list->takeItem(m_list->count() - 1);
    while (m_list->count() < names.size()) {
        auto* item = new QListWidgetItem(m_list);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    for (int row = 0; row < names.size(); ++row)
        m_list->item(row)->setText(names.at(row));
    updateActions();
}

void zoHostCameraPanel::addCamera()
{
    m_list->setCurrentRow(m_cameras->addCamera());
}

void zoHostCameraPanel::renameCurrent()
{
    if (m_list->currentItem() != nullptr)
        m_list->editItem(m_list->currentItem());
}

void zoHostCameraPanel::removeCurrent()
{
    m_cameras->removeCamera(m_list->currentRow());
}

void zoHostCameraPanel::updateActions()
{
    const bool current = m_list->currentItem() != nullptr;
    m_rename->setEnabled(current);
    m_remove->setEnabled(current);
}
