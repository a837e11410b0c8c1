#include "zoHostFileNews.h"

#include "zoHostDocument.h"
#include "zoHostImportDialog.h"
#include "zoHostLog.h"

#include <zoClusterTags.h>
#include <zoControllerService.h>
#include <zoFileReader.h>
#include <zoFileText.h>

#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>
#include <QXmlStreamReader>

namespace
{
constexpr int s_messageMs = 20000;

// Of the first element; 0 where there is none.
int versionOf(const QString& text)
{
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    return xml.readNextStartElement() ? xml.attributes().value(zoClusterTags::VersionAttribute).toInt() : 0;
}
} // namespace

zoHostFileNews::zoHostFileNews(QMainWindow* window, zoHostDocument* document, zoControllerService* controller)
    : QObject(window), m_window(window), m_document(document), m_controller(controller)
{
    connect(document, &zoHostDocument::saveFailed, this, &zoHostFileNews::tellFailure);
    connect(document, &zoHostDocument::fileRead, this, &zoHostFileNews::tellVersion);
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
    box->setEscapeButton(QMessageBox::Ok);
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

void zoHostFileNews::tellVersion(const QString& fileName)
{
    QByteArray bytes;
    if (zoFileReader::read(fileName, bytes) != zoFileReader::Result::Read)
        return;
    const int version = versionOf(zoFileText(bytes).text());
    if (version <= zoClusterTags::Version)
        return;
    const QString name = QFileInfo(fileName).fileName();
    const QString known = QString::number(zoClusterTags::Version);
    zoHostLog::warn(
        tr("%1 is of version %2, and this program knows version %3. What is new in it is not shown, "
           "and Save leaves it out.")
            .arg(name, QString::number(version), known));
    if (m_controller->isNonInteractive() || m_document->isBringingBack())
        return;
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("zohost"),
                                tr("%1 is of a later version.").arg(name), QMessageBox::Ok, m_window);
    box->setObjectName(QStringLiteral("VersionBox"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(
        tr("It is of version %1, and this program knows version %2. What is new in it is not shown, and Save "
           "leaves it out.")
            .arg(QString::number(version), known));
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
