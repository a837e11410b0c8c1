#include "zoHostCameraService.h"

#include "zoHostNodeService.h"

#include <QSettings>

#include <algorithm>

namespace
{
constexpr char s_camerasKey[] = "Cameras";

// Not translated: displays refer to cameras by name, and their documents read the same everywhere.
QString defaultName(int number)
{
    return QStringLiteral("Camera %1").arg(number);
}
} // namespace

zoHostCameraService::zoHostCameraService(QSettings* settings, zoHostNodeService* nodes, QObject* parent)
    : zoCameraService(parent), m_settings(settings), m_nodes(nodes)
{
    const QString key = QLatin1String(s_camerasKey);
    const QStringList stored =
        m_settings->contains(key) ? m_settings->value(key).toStringList() : QStringList(defaultName(1));
    for (const QString& entry : stored) {
        const QString name = entry.trimmed();
        if (!name.isEmpty() && !isTaken(name))
            m_cameras.append({m_nextNode++, name});
    }
}

zoHostCameraService::~zoHostCameraService() = default;

QStringList zoHostCameraService::cameraNames()
{
    QStringList names;
    for (const Camera& camera : qAsConst(m_cameras))
        names << camera.name;
    return names;
}

int zoHostCameraService::addCamera()
{
    int number = 1;
    while (isTaken(defaultName(number)))
        ++number;
    m_cameras.append({m_nextNode++, defaultName(number)});
    save();
    emit camerasChanged();
    return m_cameras.size() - 1;
}

bool zoHostCameraService::renameCamera(int index, const QString& name)
{
    const QString wanted = name.trimmed();
    if (index < 0 || index >= m_cameras.size())
        return false;
    if (wanted == m_cameras.at(index).name)
        return true;
    if (wanted.isEmpty() || isTaken(wanted))
        return false;
    m_cameras[index].name = wanted;
    save();
    m_nodes->announceCameraName(m_cameras.at(index).node, wanted);
    return true;
}

void zoHostCameraService::removeCamera(int index)
{
    if (index < 0 || index >= m_cameras.size())
        return;
    m_cameras.remove(index);
    save();
    emit camerasChanged();
}

bool zoHostCameraService::isTaken(const QString& name) const
{
    return std::any_of(m_cameras.cbegin(), m_cameras.cend(),
                       [&name](const Camera& camera) { return camera.name == name; });
}

void zoHostCameraService::save()
{
    m_settings->setValue(QLatin1String(s_camerasKey), cameraNames());
}
