#pragma once

#include <QString>

#include <sys/resource.h>

// A folder on a disk of its own that can be filled, seen by this process and its children alone. Where nobody
// may mount one, a limit on the size of files takes its place.
class zoFullDisk final
{
public:
    // The folder is there already, and empty.
    explicit zoFullDisk(const QString& folder);
    ~zoFullDisk();

    zoFullDisk(const zoFullDisk&) = delete;
    zoFullDisk& operator=(const zoFullDisk&) = delete;

    // From here on files take no more than so many bytes, rounded up to whole pages.
    void fill(int spare = 0);
    // What the system says when a file takes no more.
    QString reason() const;
    // Of the files in the folder but what fills it.
    int countFiles() const;

private:
    QString m_folder;
    bool m_isMounted = false;
    rlimit m_before{};
    void (*m_signal)(int);
};
