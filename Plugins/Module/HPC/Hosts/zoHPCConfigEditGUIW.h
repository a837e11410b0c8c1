#pragma once

#include "zoHPCHostsSummary.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <vector>

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
    // Whether the text is hosts text: then a line below says what the host tree makes of it, or of the file, and marks
    // what reads otherwise than it looks.
    void setIsHostsText(bool isHostsText);

public slots:
    void browseServersFile();
    // Accepts, unless the file is hosts text that cannot be read: nothing that was typed is lost to it.
    void confirm();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Of a file that is named, and of its content.
    struct FileState
    {
        bool isReadable = false;
        QString text;
        QString reason; // why it is not
    };

    FileState serversFileState() const;
    void noteChange();
    void showUnderstood();
    QString notesText(const QString& text, bool hasLinks) const;
    void markNotes();
    void followLink(const QString& link);

    const std::unique_ptr<Ui_zoHPCConfigEditGUIW> m_ui;
    QTimer m_timer; // until what was typed is read
    std::vector<zoHPCHostsSummary::Note> m_notes;
    bool m_isHostsText = false;
};
