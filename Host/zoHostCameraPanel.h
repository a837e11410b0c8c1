#pragma once

#include <QWidget>

class QListWidget;
class QToolButton;
class zoHostCameraService;
class zoHostNodeService;

// The list of cameras with buttons to add, rename and remove them.
class zoHostCameraPanel final : public QWidget
{
    Q_OBJECT

public:
    // Neither is owned; both outlive the panel.
    zoHostCameraPanel(zoHostCameraService* cameras, zoHostNodeService* nodes, QWidget* parent = nullptr);
    ~zoHostCameraPanel() override;

private:
    void refresh();
    void addCamera();
    void renameCurrent();
    void removeCurrent();
    void updateButtons();

    zoHostCameraService* m_cameras;
    QListWidget* m_list;
    QToolButton* m_add;
    QToolButton* m_rename;
    QToolButton* m_remove;
};
