#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Reads and writes texts as the document commands do: "-" is standard input or output, and failures are
// told on standard error.
namespace zoTextFile
{
// A file as it was read.
struct Content
{
    QByteArray bytes;
    QString text;       // to the first NUL
    bool isCut = false; // whether more than blanks follow that
    int cutLine = 1;
    int cutColumn = 1;
};

// In the encoding that the file asks for; what cannot be decoded is an error.
bool read(const QString& fileName, Content& content);
bool read(const QString& fileName, QString& text);

// Whether the outputs can be written and none of them is the input (unless `mayBeInput`) or another output; to
// be asked before the work begins. "-" may be given once.
bool mayWrite(const QStringList& outputs, const QString& input, bool mayBeInput = false);
// Whether both names lead to one file; "-" is what standard input comes from.
bool isSameFile(const QString& input, const QString& output);
// Replaces the file when all of it is written; a full disk leaves the old one whole.
bool write(const QString& fileName, const QString& text);
bool writeBytes(const QString& fileName, const QByteArray& bytes);
} // namespace zoTextFile
