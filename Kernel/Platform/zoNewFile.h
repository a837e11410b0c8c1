#pragma once

#include "zoOpenFile.h"

#include <QByteArray>

#include <sys/types.h>

#include <csignal>

// The bytes that a file is to hold, until they take its name. Where the file system can, they have no name at all
// before, and are gone with a process that is killed. Otherwise, and for a moment where a file is replaced, they
// are beside the file as "name.xxxxxxxxxxxxxxxx". What a killed process leaves so, the next one that writes this
// file takes away: the ending is a sum over the name, and who writes holds a lock. Errors are numbers of the
// system, 0 is none.
class zoNewFile final
{
public:
    enum class Kind {
        Unnamed, // named where the file system has no others
        Named
    };

    // `path` is that of the file to be, and no link.
    zoNewFile(const QByteArray& path, Kind kind);
    // Without its name the file goes.
    ~zoNewFile();

    zoNewFile(const zoNewFile&) = delete;
    zoNewFile& operator=(const zoNewFile&) = delete;

    // The error that open() would meet.
    static int mayOpen(const QByteArray& path);

    int number() const { return m_file.number(); }

    // `owner` is that of the file to be replaced: remains may be this one's as well.
    int open(mode_t mode, uid_t owner);
    // All is on the disk before the name is given, so that a machine that goes down leaves one or the other.
    int write(const QByteArray& bytes, mode_t mode = 0);
    // Replaces what has the name, or takes it where it is free.
    int takeName();
    // Whether takeName() failed because files without a name get none here; a named one may.
    bool isNamelessForEver() const { return m_isNamelessForEver; }

private:
    static QByteArray nameOf(const QByteArray& path);
    static QByteArray folderOf(const QByteArray& path);
    static int errorOf(const QByteArray& name);

    int openUnnamed(mode_t mode);
    int openNamed(mode_t mode);
    int link(const QByteArray& name);
    QByteArray temporaryName(int attempt) const;
    void removeRemains();
    bool isRemains(const QByteArray& name, zoOpenFile& file) const;

    sigset_t m_signalsBefore{};
    zoOpenFile m_folder;
    zoOpenFile m_file;
    QByteArray m_name;
    QByteArray m_temporary; // empty: there is none
    uid_t m_owner = 0;
    Kind m_kind;
    bool m_isNamelessForEver = false;
};
