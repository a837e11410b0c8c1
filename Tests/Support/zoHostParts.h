#pragma once

#include <zoHostCameraService.h>
#include <zoHostControllerService.h>
#include <zoHostEarlierConfigurations.h>
#include <zoHostMainWindow.h>
#include <zoHostNodeService.h>
#include <zoHostPreferencesService.h>
#include <zoHostRecentFiles.h>
#include <zoLocalClusterService.h>

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

// What a host's window stands on, in a folder of its own, for tests that link the host.
class zoHostParts final
{
public:
    explicit zoHostParts(bool nonInteractive = false) : controller(nonInteractive)
    {
        cluster.setLockDirectory(directory.path());
        cluster.setMemoryPerNode(0);
    }

    zoHostMainWindow::Services services()
    {
        return {&preferences, &cameras, &nodes, &controller, &cluster, &settings, &recent, &earlier};
    }

    QString filePath(const QString& name) const { return directory.filePath(name); }

    QString writeFile(const QString& name, const QString& text) const
    {
        QFile file(filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(text.toUtf8());
        return file.fileName();
    }

    QTemporaryDir directory;
    QSettings settings{directory.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
    zoHostPreferencesService preferences{&settings};
    zoHostNodeService nodes;
    zoHostCameraService cameras{&settings, &nodes};
    zoHostControllerService controller;
    zoLocalClusterService cluster;
    zoHostRecentFiles recent{&settings};
    zoHostEarlierConfigurations earlier{directory.filePath(QStringLiteral("earlier"))};
};
