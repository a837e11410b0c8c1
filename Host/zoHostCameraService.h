#pragma once

#include <zoCameraService.h>

#include <QVector>

class QSettings;
class zoHostNodeService;

// The cameras of the host, kept in its settings. Names are never empty and never equal; a camera's node
// number stays with it as long as the program runs.
class zoHostCameraService final : public zoCameraService
{
    Q_OBJECT

public:
    // Neither is owned; both outlive the service. Without stored cameras there is one, "Camera 1".
    zoHostCameraService(QSettings* settings, zoHostNodeService* nodes, QObject* parent = nullptr);
    ~zoHostCameraService() override;

    QStringList cameraNames() override;

    int count() const { return m_cameras.size(); }
    // Adds a camera at the end with the first free name "Camera 1", "Camera 2", ...; its index.
    int addCamera();
    // False, and nothing changed, when the trimmed name is empty or belongs to another camera.
    bool renameCamera(int index, const QString& name);
    void removeCamera(int index);

private:
    struct Camera
    {
        uint node;
        QString name;
    };

    bool isTaken(const QString& name) const;
    void save();

    QSettings* m_settings;
    zoHostNodeService* m_nodes;
    QVector<Camera> m_cameras;
    uint m_nextNode = 1;
};
