#include "zoHostRefuge.h"

#include <zoFileReader.h>
#include <zoFileWriter.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <tuple>

namespace
{
constexpr char s_stampFormat[] = "yyyyMMdd'T'HHmmss'Z'";

// New files are this user's alone while it lives.
class PrivateFiles final
{
public:
    PrivateFiles() : m_before(::umask(S_IRWXG | S_IRWXO)) {}
    ~PrivateFiles() { ::umask(m_before); }

    PrivateFiles(const PrivateFiles&) = delete;
    PrivateFiles& operator=(const PrivateFiles&) = delete;

private:
    mode_t m_before;
};

QString prefix()
{
    return QStringLiteral("zohost-unsaved-%1-").arg(::geteuid());
}

// Percent signs keep two hyphens, which a comment cannot hold, out of it.
QString trailer(const QString& originFile, const QString& stamp)
{
    return QStringLiteral("<!-- unsaved work of %1 %2 -->\n")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(originFile, "/", "-")), stamp);
}

bool isOwn(const QString& fileName)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(fileName).constData(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid();
}

// False for a file of another kind.
bool readWork(const QString& fileName, zoHostRefuge::Work& work)
{
    static const QRegularExpression pattern(
        QStringLiteral("<!-- unsaved work of ([^ ]*) (\\d{8}T\\d{6}Z) -->\n$"));
    QByteArray bytes;
    if (!isOwn(fileName) || zoFileReader::read(fileName, bytes) != zoFileReader::Result::Read)
        return false;
    const QString text = QString::fromUtf8(bytes);
    const QRegularExpressionMatch match =
        pattern.match(text, qMax(0, text.lastIndexOf(QLatin1String("<!--"))));
    if (!match.hasMatch())
        return false;
    work.fileName = fileName;
    work.text = text.left(match.capturedStart());
    work.originFile = QUrl::fromPercentEncoding(match.captured(1).toLatin1());
    work.kept = QDateTime::fromString(match.captured(2), QLatin1String(s_stampFormat));
    work.kept.setTimeSpec(Qt::UTC);
    return true;
}
} // namespace

QStringList zoHostRefuge::folders()
{
    QStringList folders{QStringLiteral("/var/tmp"), QStringLiteral("/tmp")};
    // Not the toolkit's answer: it takes the working folder for one that is missing.
    const QString chosen = QFile::decodeName(qgetenv("TMPDIR"));
    if (QDir::isAbsolutePath(chosen))
        folders = QStringList(QDir::cleanPath(chosen));
    folders << QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    folders.removeAll(QString());
    folders.removeDuplicates();
    return folders;
}

QString zoHostRefuge::keep(const QString& text, const QString& originFile, QStringList folders,
                           QString& reasons)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QLatin1String(s_stampFormat));
    const QByteArray bytes = (text + trailer(originFile, stamp)).toUtf8();
    // Hard to guess, so that nobody has put a link there.
    const QString name =
        prefix() + stamp +
        QStringLiteral("-%1.zhpc").arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
    if (!originFile.isEmpty())
        folders.insert(std::min<int>(1, folders.size()), QFileInfo(originFile).absolutePath());
    QStringList failures;
    const PrivateFiles privacy;
    for (const QString& folder : qAsConst(folders)) {
        const QString fileName = QDir(folder).filePath(name);
        QString reason;
        if (zoFileWriter::write(fileName, bytes, &reason) == zoFileWriter::Result::Written)
            return fileName;
        failures << QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(fileName), reason);
    }
    reasons = failures.join(QLatin1String("; "));
    return {};
}

QVector<zoHostRefuge::Work> zoHostRefuge::find(const QStringList& folders)
{
    QVector<Work> found;
    const QByteArray start = prefix().toLatin1();
    for (const QString& folder : folders) {
        // Names alone: in a /tmp where much lies, the toolkit's look at each file takes longer than the rest.
        const std::unique_ptr<DIR, int (*)(DIR*)> names(::opendir(QFile::encodeName(folder).constData()),
                                                        ::closedir);
        while (const dirent* const entry = names ? ::readdir(names.get()) : nullptr) {
            const QByteArray name(entry->d_name);
            Work work;
            if (name.startsWith(start) && name.endsWith(".zhpc") &&
                readWork(QDir(folder).filePath(QFile::decodeName(name)), work))
                found.append(work);
        }
    }
    std::sort(found.begin(), found.end(), [](const Work& a, const Work& b) {
        return std::tie(a.kept, a.fileName) < std::tie(b.kept, b.fileName);
    });
    return found;
}
