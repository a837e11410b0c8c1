#pragma once

#include <QString>
#include <QStringList>

// Takes away what a session left in a folder, of this machine or of another one. A small program waits for the word, or for
// the end of this one, whatever ends it: nothing stays behind a host that was killed. It tries for a while, and nobody waits
// for it.
class zoFolderSweeper final
{
public:
    // `command` removes the folder, and may be run again. Nothing happens when it is empty.
    explicit zoFolderSweeper(const QStringList& command);
    ~zoFolderSweeper(); // as sweep()

    zoFolderSweeper(const zoFolderSweeper&) = delete;
    zoFolderSweeper& operator=(const zoFolderSweeper&) = delete;

    // Now. Call it once the programs that write there have ended.
    void sweep();

private:
    int m_pipe = -1;
};
