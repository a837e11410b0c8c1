#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// The text that a hosts command works on: its arguments, files or standard input, one below the other, with a
// way back from a place in the whole to the place in its source.
class zoHostsInput final
{
public:
    struct Place
    {
        QString file; // "-" for standard input, "TEXT" for arguments
        int line;
        int column;
    };

    // An argument "-" is standard input, no argument at all too.
    bool readArguments(const QStringList& texts);
    // When it cannot be read, prints an error and returns false.
    bool readFile(const QString& fileName);

    const QString& text() const { return m_text; }
    // Places from top to bottom cost one pass over the text.
    Place place(int offset) const;

private:
    struct Source
    {
        QString file;
        int offset;
    };

    bool readStandardInput();
    void append(const QString& file, const QString& text);

    // The place that was asked for last: counting goes on from there.
    struct Counted
    {
        int offset = -1;
        int line = 1;
        int column = 1;
    };

    QString m_text;
    std::vector<Source> m_sources;
    mutable Counted m_counted;
};
