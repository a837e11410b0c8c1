#include "zoFileWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{
zoFileWriter::Result fail(zoFileWriter::Result result, const QFileDevice& file, QString* reason)
{
    if (reason != nullptr)
        *reason = file.errorString();
    return result;
}
} // namespace

zoFileWriter::Result zoFileWriter::write(const QString& fileName, const QByteArray& bytes, QString* reason)
{
    return write(
        fileName, [&bytes] { return bytes; }, reason);
}

zoFileWriter::Result zoFileWriter::write(const QString& fileName, const std::function<QByteArray()>& bytes,
                                         QString* reason)
{
    const QFileInfo target(fileName);
    // Replacing /dev/null by a file is within the rights of an administrator; a file of one's own may lie in
    // a folder of somebody else; the longest names leave no room for that of a temporary file beside them.
    constexpr int LONGEST_NAME = 255 - 7;
    const bool isReplaced =
        !target.exists() || (target.isFile() && QFileInfo(target.canonicalPath()).isWritable() &&
                             QFile::encodeName(target.fileName()).size() <= LONGEST_NAME);
    if (isReplaced) {
        QSaveFile file(fileName);
        if (!file.open(QIODevice::WriteOnly))
            return fail(Result::NotOpened, file, reason);
        const QByteArray content = bytes();
        if (file.write(content) != content.size() || !file.commit())
            return fail(Result::NotWritten, file, reason);
    } else {
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly))
            return fail(Result::NotOpened, file, reason);
        const QByteArray content = bytes();
        if (file.write(content) != content.size() || !file.flush())
            return fail(Result::Damaged, file, reason);
    }
    return Result::Written;
}
