#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

// Where unsaved work goes while the folder of the earlier configurations takes none: one file of its own, which
// nobody else may read and any program loads as a configuration. A comment at its end says where it belongs.
class zoHostRefuge final
{
public:
    struct Work
    {
        QString fileName;
        QString text;
        QString originFile; // empty: it had no file
        QDateTime kept;     // UTC
    };

    zoHostRefuge() = delete;

    // For any work, the one that outlives a restart of the machine first. `TMPDIR` says another one.
    static QStringList folders();

    // Writes the text into the first of the folders, the one beside its file being the second, that takes it.
    // Returns the name of the file; empty, with the reasons, when none does.
    static QString keep(const QString& text, const QString& originFile, QStringList folders,
                        QString& reasons);

    // What this user has in these folders, oldest first. Others' files are left alone: anybody may put some
    // into a folder for all.
    static QVector<Work> find(const QStringList& folders);
};
