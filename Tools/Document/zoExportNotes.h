#pragma once

#include <QCoreApplication>
#include <QString>

#include <vector>

class QTreeWidgetItem;
class zoHPCRenderSetup;

// What of a configuration other engines cannot take, in words.
class zoExportNotes final
{
    Q_DECLARE_TR_FUNCTIONS(zoExportNotes)

public:
    struct Note
    {
        const QTreeWidgetItem* item; // not owned
        QString text;
    };

    // The setup outlives the notes.
    explicit zoExportNotes(const zoHPCRenderSetup& setup);

    const std::vector<Note>& notes() const { return m_notes; }

private:
    void noteDisplays();
    void noteGateways();
    void noteProjections();
    void noteViewports();
    void note(const QTreeWidgetItem* item, const QString& text);

    const zoHPCRenderSetup& m_setup;
    std::vector<Note> m_notes;
};
