#pragma once

#include <QByteArray>

// An open file of the system, that is closed in the end. Errors are numbers of the system, 0 is none.
class zoOpenFile final
{
public:
    explicit zoOpenFile(int number = -1) : m_number(number) {}
    ~zoOpenFile() { close(); }

    zoOpenFile(const zoOpenFile&) = delete;
    zoOpenFile& operator=(const zoOpenFile&) = delete;

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    void reset(int number);

    // Goes on with a write that is cut short, so that the error is the one that stopped it.
    int write(const QByteArray& bytes);
    // On the disk. Not every file system knows what this is.
    int flush();
    // What close() would tell, of a file that stays open: some file systems tell only then that there was no
    // room.
    int settle();
    int close();

private:
    int m_number;
};
