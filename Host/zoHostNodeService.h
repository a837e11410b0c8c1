#pragma once

#include <zoNodeService.h>

// Announces changes of the host's scene nodes, of which the cameras are the only ones here.
class zoHostNodeService final : public zoNodeService
{
    Q_OBJECT

public:
    explicit zoHostNodeService(QObject* parent = nullptr);
    ~zoHostNodeService() override;

    // Called by the camera service once the new name is in place.
    void announceCameraName(uint node, const QString& name);
};
