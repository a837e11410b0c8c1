#pragma once

#include <zoConfigurationService.h>

#include <QTimer>

class zoClusterService;
class zoHostDocument;

// The configuration service of the host: the document of the module that edits it, by its window's properties and
// slots.
class zoHostConfigurationService final : public zoConfigurationService
{
    Q_OBJECT

public:
    // Document and cluster are not owned and outlive this.
    zoHostConfigurationService(zoHostDocument* document, zoClusterService* cluster,
                               QObject* parent = nullptr);
    ~zoHostConfigurationService() override;

    QString text() const override;
    QString fileName() const override;
    QString obstacle() const override;
    // The window that shows it comes to the front.
    bool replace(const QString& text, const QString& step, QString* refusal = nullptr) override;

private:
    zoHostDocument* m_document;
    zoClusterService* m_cluster;
    QString m_obstacle; // as it was told
    QTimer m_timer;     // until changes that follow each other are over
};
