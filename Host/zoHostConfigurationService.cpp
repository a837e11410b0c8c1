#include "zoHostConfigurationService.h"

#include "zoClusterDocument.h"
#include "zoHostDocument.h"

#include <zoClusterService.h>

#include <QDialog>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace
{
bool hasOpenDialog(const QWidget& window)
{
    const QList<QDialog*> dialogs = window.findChildren<QDialog*>();
    return std::any_of(dialogs.begin(), dialogs.end(),
                       [](const QDialog* dialog) { return dialog->isVisible(); });
}
} // namespace

zoHostConfigurationService::zoHostConfigurationService(zoHostDocument* document, zoClusterService* cluster,
                                                       QObject* parent)
    : zoConfigurationService(parent), m_document(document), m_cluster(cluster)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_obstacle = obstacle();
        emit changed();
    });
    const auto note = [this] { m_timer.start(); };
    connect(document, &zoHostDocument::changed, this, note);
    connect(document, &zoHostDocument::textChanged, this, note);
    connect(cluster, &zoClusterService::started, this, note);
    connect(cluster, &zoClusterService::stopped, this, note);
    // A dialog that edits the configuration comes or goes: with nothing to undo nobody else tells it.
    connect(
        qGuiApp, &QGuiApplication::focusWindowChanged, this,
        [this] {
            if (obstacle() != m_obstacle)
                m_timer.start();
        },
        Qt::QueuedConnection);
}

zoHostConfigurationService::~zoHostConfigurationService() = default;

QString zoHostConfigurationService::text() const
{
    const QWidget* window = m_document->configurationWindow();
    return window != nullptr ? m_document->text(window) : QString();
}

QString zoHostConfigurationService::fileName() const
{
    const QWidget* window = m_document->configurationWindow();
    return window != nullptr ? window->windowFilePath() : QString();
}

QString zoHostConfigurationService::obstacle() const
{
    const QWidget* window = m_document->configurationWindow();
    if (window == nullptr)
        return tr("No module is loaded that edits configurations");
    if (m_cluster->isRunning())
        return tr("A session runs");
    return hasOpenDialog(*window) ? tr("A dialog that edits the configuration is open") : QString();
}

bool zoHostConfigurationService::replace(const QString& text, const QString& step, QString* refusal)
{
    const auto refuse = [refusal](const QString& reason) {
        if (refusal != nullptr)
            *refusal = reason;
        return false;
    };
    const QString reason = obstacle();
    if (!reason.isEmpty())
        return refuse(reason);
    zoClusterDocument document;
    QString flaw;
    if (!document.parse(text, flaw))
        return refuse(tr("The configuration cannot be used: %1").arg(flaw));
    QWidget* window = m_document->configurationWindow();
    if (!zoHostDocument::replace(window, text, step))
        return refuse(tr("The text holds no cluster configuration"));
    window->show();
    return true;
}
