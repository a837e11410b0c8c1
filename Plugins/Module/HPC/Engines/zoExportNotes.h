#pragma once

#include "zoParaViewRelease.h"

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

    // What is written.
    struct Targets
    {
        bool paraView = false;
        bool equalizer = false;
        zoParaViewRelease release;
    };

    // The setup outlives the notes.
    zoExportNotes(const zoHPCRenderSetup& setup, const Targets& targets);

    const std::vector<Note>& notes() const { return m_notes; }

private:
    enum Engine : unsigned { ParaView = 1, Equalizer = 2, All = ParaView | Equalizer };

    void noteDisplays();
    void noteFullScreen();
    void noteHosts();
    void noteGateways();
    void noteProjections();
    void noteViewports();
    // What the engines leave out; nothing when none of them is written.
    void note(const QTreeWidgetItem* item, const QString& text, unsigned engines = All);

    const zoHPCRenderSetup& m_setup;
    const Targets m_targets;
    std::vector<Note> m_notes;
};
