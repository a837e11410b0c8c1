#pragma once

#include <zoClusterService.h>

#include <QList>
#include <QObject>
#include <QStringList>

// The signals of a service in the order in which they came, as words.
class zoSessionRecorder final : public QObject
{
public:
    explicit zoSessionRecorder(zoClusterService* service)
    {
        connect(service, &zoClusterService::started, this, [this] { words << QStringLiteral("started"); });
        connect(service, &zoClusterService::stopped, this, [this] { words << QStringLiteral("stopped"); });
        connect(service, &zoClusterService::runningNodesChanged, this,
                [this] { words << QStringLiteral("nodes"); });
        connect(service, &zoClusterService::configChanged, this,
                [this] { words << QStringLiteral("config"); });
        connect(service, &zoClusterService::multipleServersFound, this,
                [this](const QString& nodes) { words << QStringLiteral("servers ") + nodes; });
        connect(service, &zoClusterService::notEnoughMemoryFound, this,
                [this](const QString& nodes) { words << QStringLiteral("memory ") + nodes; });
        connect(service, &zoClusterService::progressChanged, this, [this](const QString& text, int percent) {
            texts << text;
            percents << percent;
            words << QStringLiteral("progress");
        });
        connect(service, &zoClusterService::progressFinished, this,
                [this] { words << QStringLiteral("finished"); });
    }

    // Without the progress, whose number of steps is the service's own affair.
    QStringList outcome() const
    {
        QStringList rest = words;
        rest.removeAll(QStringLiteral("progress"));
        return rest;
    }

    QStringList words;
    QStringList texts;
    QList<int> percents;
};
