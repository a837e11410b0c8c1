#include "zoHostFileNews.h"

#include "zoHostDocument.h"
#include "zoHostImportDialog.h"

#include <zoControllerService.h>

#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>

namespace
{
constexpr int s_messageMs = 20000;
} // namespace

zoHostFileNews::zoHostFileNews(QMainWindow* window, zoHostDocument* document, zoControllerService* controller)
    : QObject(window), m_window(window), m_document(document), m_controller(controller)
{
    connect(document, &zoHostDocument::saveFailed, this, &zoHostFileNews::tellFailure);
    connect(document, &zoHostDocument::imported, this, &zoHostFileNews::tellImport);
}

zoHostFileNews::~zoHostFileNews() = default;

void zoHostFileNews::tellFailure(QWidget* moduleWindow, const QString& fileName, const QString& reason)
{
    if (m_controller->isNonInteractive())
        return;
    auto* box = new QMessageBox(QMessageBox::Critical, QStringLiteral("zohost"),
                                tr("%1 could not be saved.").arg(QFileInfo(fileName).fileName()),
                                QMessageBox::Ok, m_window);
    box->setObjectName(QStringLiteral("SaveFailedBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(reason + QLatin1Char('\n') + tr("What is not saved is still there."));
    QPushButton* saveAs = box->addButton(tr("Save &As..."), QMessageBox::ActionRole);
    const QPointer<QWidget> window(moduleWindow);
    connect(box, &QMessageBox::finished, this, [this, box, saveAs, window] {
        if (box->clickedButton() != saveAs || !window)
            return;
        QString next;
        if (!m_document->saveAs(window, &next) && window && !next.isEmpty())
            tellFailure(window, QString(), next);
    });
    box->open();
}

void zoHostFileNews::tellImport(QWidget* moduleWindow, const QString& fileName, const QStringList& remarks)
{
    if (m_controller->isNonInteractive())
        return;
    const QString target = moduleWindow->windowFilePath();
    if (remarks.isEmpty() && target.isEmpty()) {
        m_window->statusBar()->showMessage(
            tr("%1 was imported. It is not saved yet.").arg(QFileInfo(fileName).fileName()), s_messageMs);
        return;
    }
    auto* dialog = new zoHostImportDialog(fileName, target, remarks, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<QWidget> window(moduleWindow);
    connect(dialog, &zoHostImportDialog::saveAsRequested, this, [this, window, fileName] {
        QString reason;
        if (window && !m_document->saveAs(window, &reason) && window && !reason.isEmpty())
            tellFailure(window, fileName, reason);
    });
    dialog->open();
}
