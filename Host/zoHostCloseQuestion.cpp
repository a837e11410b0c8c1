#include "zoHostCloseQuestion.h"

#include "zoHostDocument.h"

#include <QFileInfo>
#include <QMessageBox>
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
    // A module that is gone, or a save that failed or was given up: better not to close.
    return answer == QMessageBox::Save && moduleWindow && document.save(moduleWindow);
}
