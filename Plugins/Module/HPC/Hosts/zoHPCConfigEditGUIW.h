#pragma once

#include <QDialog>

#include <memory>

class Ui_zoHPCConfigEditGUIW;

// Dialog that shows a text for editing, and the file which may take its place.
class zoHPCConfigEditGUIW final : public QDialog
{
    Q_OBJECT

public:
    explicit zoHPCConfigEditGUIW(QWidget* parent = nullptr);
    ~zoHPCConfigEditGUIW() override;

    QString text() const;
    QString getServersFile() const;

    // The cursor is at the end afterwards, and in view.
    void setText(const QString& text);
    void setServersFile(const QString& fileName);
    // Shows or hides the whole row of the file.
    void setServersFileEditable(bool editable);

public slots:
    void browseServersFile();

private:
    const std::unique_ptr<Ui_zoHPCConfigEditGUIW> m_ui;
};
