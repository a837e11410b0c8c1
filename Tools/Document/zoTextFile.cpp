#include "zoTextFile.h"

#include "zoConsole.h"

#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int s_longestChain = 40; // of links, as the system has it

bool printError(const QString& fileName, const QString& reason)
{
    zoConsole::printError(
        QStringLiteral("%1: %2").arg(fileName.isEmpty() ? QStringLiteral("\"\"") : fileName, reason));
    return false;
}

QString tr(const char* text)
{
    return QCoreApplication::translate("zoTextFile", text);
}

bool readStatus(const QString& fileName, struct stat& status)
{
    return (fileName == QLatin1String("-") ? ::fstat(STDIN_FILENO, &status)
                                           : ::stat(QFile::encodeName(fileName).constData(), &status)) == 0;
}

// What is standard output under a name of its own, too: opened by that, a file to which output is appended would
// be replaced.
bool isStandardOutput(const QString& fileName)
{
    return fileName == QLatin1String("-") || fileName == QLatin1String("/dev/stdout") ||
           fileName == QLatin1String("/dev/fd/1") || fileName == QLatin1String("/proc/self/fd/1");
}

// Whether both lead to one file, one of which may be standard output.
bool isOneOutput(const QString& a, const QString& b)
{
    if (isStandardOutput(a) && isStandardOutput(b))
        return true;
    if (!isStandardOutput(a) && !isStandardOutput(b))
        return zoTextFile::isSameFile(a, b);
    struct stat standard = {};
    struct stat named = {};
    const QString& name = isStandardOutput(a) ? b : a;
    return ::fstat(STDOUT_FILENO, &standard) == 0 && readStatus(name, named) && S_ISREG(named.st_mode) &&
           named.st_dev == standard.st_dev && named.st_ino == standard.st_ino;
}

// Of a file that is not there yet, at the end of its links.
QString absoluteName(const QString& fileName)
{
    QFileInfo file(fileName);
    for (int i = 0; file.isSymLink() && i < s_longestChain; ++i)
        file.setFile(file.symLinkTarget());
    const QString folder = QFileInfo(file.path()).canonicalFilePath();
    return (folder.isEmpty() ? file.absolutePath() : folder) + QLatin1Char('/') + file.fileName();
}
} // namespace

bool zoTextFile::read(const QString& fileName, QString& text)
{
    Content content;
    if (!read(fileName, content))
        return false;
    text = content.text;
    return true;
}

bool zoTextFile::read(const QString& fileName, Content& content)
{
    QString reason;
    const zoFileReader::Result result =
        fileName == QLatin1String("-")
            ? zoFileReader::readStandardInput(content.bytes, &reason)
            : zoFileReader::read(fileName, content.bytes, &reason, zoFileReader::Pipes::Unnamed);
    if (result != zoFileReader::Result::Read)
        return printError(fileName, reason);
    const zoFileText decoded(content.bytes);
    if (!decoded.isValid()) {
        const zoFileText::Place place = decoded.invalidPlace();
        zoConsole::printError(fileName, place.line, place.column,
                              tr("invalid %1").arg(QString::fromLatin1(decoded.encoding())));
        return false;
    }
    content.text = decoded.text();
    content.isCut = decoded.isCut();
    content.cutLine = decoded.cutPlace().line;
    content.cutColumn = decoded.cutPlace().column;
    return true;
}

bool zoTextFile::mayWrite(const QStringList& outputs, const QString& input, bool mayBeInput)
{
    for (int i = 0; i < outputs.size(); ++i) {
        const QString& output = outputs.at(i);
        for (int k = 0; k < i; ++k) {
            if (isOneOutput(outputs.at(k), output))
                return printError(output, tr("two outputs cannot go into one file"));
        }
        if (isStandardOutput(output))
            continue;
        if (!mayBeInput && isSameFile(input, output))
            return printError(output, tr("the input would be overwritten"));
        QString reason;
        if (!zoFileWriter::canWrite(output, &reason))
            return printError(output, reason);
    }
    return true;
}

bool zoTextFile::isSameFile(const QString& input, const QString& output)
{
    struct stat read = {};
    struct stat written = {};
    if (output == QLatin1String("-") || output.isEmpty())
        return false;
    // Devices take every output and lose no input.
    if (readStatus(output, written))
        return readStatus(input, read) && S_ISREG(written.st_mode) && read.st_dev == written.st_dev &&
               read.st_ino == written.st_ino;
    return input != QLatin1String("-") && absoluteName(input) == absoluteName(output);
}

bool zoTextFile::write(const QString& fileName, const QString& text)
{
    return writeBytes(fileName, text.toUtf8());
}

bool zoTextFile::writeBytes(const QString& fileName, const QByteArray& bytes)
{
    if (isStandardOutput(fileName))
        return zoConsole::write(bytes);
    QString reason;
    return zoFileWriter::write(fileName, bytes, &reason) == zoFileWriter::Result::Written ||
           printError(fileName, reason);
}
