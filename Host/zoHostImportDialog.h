#pragma once

#include <QDialog>
#include <QStringList>

// What a person should know of a configuration of another format after its import: what was dropped or changed by
// rule, and which file Save would write.
class zoHostImportDialog final : public QDialog
{
    Q_OBJECT

public:
    // `target` is the file that is open, or empty.
    zoHostImportDialog(const QString& fileName, const QString& target, const QStringList& remarks,
                       QWidget* parent = nullptr);
    ~zoHostImportDialog() override;

signals:
    // The dialog has closed.
    void saveAsRequested();
};
