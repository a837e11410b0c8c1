#include "zoHostCloseQuestion.h"

#include "zoHostDocument.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QWidget>

bool zoHostCloseQuestion::mayClose(zoHostDocument& document, const QPointer<QWidget>& moduleWindow,
                                   const QString& title, QWidget* parent)
{
    const QString file = QFileInfo(moduleWindow->windowFilePath()).fileName();
    QMessageBox box(QMessageBox::Warning, title,
                    file.isEmpty() ? tr("The configuration has never been saved.")
                                   : tr("%1 has changes that are not saved.").arg(file),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.setInformativeText(tr("What is not saved is lost when the host closes."));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    if (answer == QMessageBox::Discard)
        return true;
    // A module that is gone, or a save that was given up: better not to close.
    if (answer != QMessageBox::Save || !moduleWindow)
        return false;
    QString reason;
    bool isSaved = document.save(moduleWindow, &reason);
    while (!isSaved && !reason.isEmpty() && moduleWindow && mayTryElsewhere(reason, title, parent))
        isSaved = moduleWindow && document.saveAs(moduleWindow, &reason);
    return isSaved;
}

bool zoHostCloseQuestion::mayTryElsewhere(const QString& reason, const QString& title, QWidget* parent)
{
    QMessageBox box(QMessageBox::Critical, title, tr("The configuration could not be saved."),
                    QMessageBox::Cancel, parent);
    box.setObjectName(QStringLiteral("SaveFailedBox"));
    box.setInformativeText(reason + QLatin1Char('\n') +
                           tr("The host stays open, and what is not saved is still there."));
    QPushButton* saveAs = box.addButton(tr("Save &As..."), QMessageBox::ActionRole);
    box.setDefaultButton(saveAs);
    box.exec();
    return box.clickedButton() == saveAs;
}
