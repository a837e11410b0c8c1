#pragma once

#include <zoBaseService.h>

#include <QObject>
#include <QStringList>

// The cameras of the host's scene.
class ZO_KERNEL_EXPORT zoCameraService : public QObject, public zoBaseService
{
    Q_OBJECT

public:
    explicit zoCameraService(QObject* parent = nullptr);
    ~zoCameraService() override;

    // In the order in which the host lists them.
    virtual QStringList cameraNames() = 0;

signals:
    // A camera was added or removed.
    void camerasChanged();
};
