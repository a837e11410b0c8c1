#include "zoHostCameraPanel.h"

#include "zoHostCameraService.h"
#include "zoHostNodeService.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

zoHostCameraPanel::zoHostCameraPanel(zoHostCameraService* cameras, zoHostNodeService* nodes, QWidget* parent)
    : QWidget(parent), m_cameras(cameras), m_list(new QListWidget(this))
{
    const auto makeButton = [this](const QString& text, void (zoHostCameraPanel::*slot)()) {
        auto* button = new QToolButton(this);
        button->setText(text);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, slot);
        return button;
    };
    m_add = makeButton(tr("Add"), &zoHostCameraPanel::addCamera);
    m_rename = makeButton(tr("Rename"), &zoHostCameraPanel::renameCurrent);
    m_remove = makeButton(tr("Remove"), &zoHostCameraPanel::removeCurrent);
    m_list->setObjectName(QStringLiteral("CameraList"));
    m_list->setAccessibleName(tr("Cameras"));
    m_list->setFrameShape(QFrame::NoFrame);

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(2, 2, 2, 2);
    buttons->setSpacing(2);
    buttons->addWidget(m_add);
    buttons->addWidget(m_rename);
    buttons->addWidget(m_remove);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_list, &QListWidget::currentRowChanged, this, &zoHostCameraPanel::updateButtons);
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
    updateButtons();
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

void zoHostCameraPanel::updateButtons()
{
    const bool current = m_list->currentItem() != nullptr;
    m_rename->setEnabled(current);
    m_remove->setEnabled(current);
}
