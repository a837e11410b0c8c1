#pragma once

#include <zoBaseService.h>

#include <QObject>

// The nodes of the host's scene.
class ZO_KERNEL_EXPORT zoNodeService : public QObject, public zoBaseService
{
    Q_OBJECT

public:
    explicit zoNodeService(QObject* parent = nullptr);
    ~zoNodeService() override;

signals:
    // The camera with scene-node number `node` is now called `name`.
    void cameraNameChanged(uint node, QString name);
};
