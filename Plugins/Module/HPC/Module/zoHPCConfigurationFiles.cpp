#include "zoHPCConfigurationFiles.h"

#include "zoText.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>
#include <zoLog.h>
#include <zoPlatform.h>

namespace
{
// Not kept in a file: what follows from the others for whoever asks.
constexpr QFile::Permissions s_ofThisUser{QFile::ReadUser | QFile::WriteUser | QFile::ExeUser};
} // namespace

void zoHPCConfigurationFiles::setCurrent(const QString& fileName)
{
    const QFileInfo file(fileName);
    m_directory = file.absolutePath();
    m_current = file.absoluteFilePath();
}

void zoHPCConfigurationFiles::closeCurrent()
{
    m_current.clear();
}

QString zoHPCConfigurationFiles::directory()
{
    if (m_directory.isEmpty())
        m_directory = QDir(QString::fromLatin1(zoPlatform::getDataDir().c_str())).filePath(zoText("cluster"));
    return m_directory;
}

bool zoHPCConfigurationFiles::read(const QString& fileName, QString& text)
{
    QByteArray bytes;
    QString reason;
    switch (zoFileReader::read(fileName, bytes, &reason)) {
    case zoFileReader::Result::Read:
        break;
    case zoFileReader::Result::NotOpened:
        // Scripts look for it: the same in every language.
        zoLog::error("Unable to load cluster config %s", qUtf8Printable(fileName));
        return false;
    case zoFileReader::Result::NotRead:
        // Half a file would take the place of a whole configuration.
        zoLog::error("%s", qUtf8Printable(tr("Unable to load cluster config %1: %2").arg(fileName, reason)));
        return false;
    }
    const zoFileText content(bytes);
    if (!content.isValid()) {
        const zoFileText::Place place = content.invalidPlace();
        zoLog::error("%s", qUtf8Printable(tr("Cluster config %1, line %2, column %3: the bytes are not UTF-8")
                                              .arg(fileName, QString::number(place.line),
                                                   QString::number(place.column))));
    }
    // As a file that is opened in text mode, which cannot be done before the bytes of UTF-16 are characters.
    text = QString(content.text()).remove(QLatin1Char('\r'));
    return true;
}

bool zoHPCConfigurationFiles::readLegacy(const QString& fileName, QByteArray& bytes)
{
    QString reason;
    const zoFileReader::Result result = zoFileReader::read(fileName, bytes, &reason);
    if (result == zoFileReader::Result::NotRead)
        zoLog::error("%s", qUtf8Printable(tr("Unable to import legacy config %1: %2").arg(fileName, reason)));
    return result != zoFileReader::Result::NotRead;
}

bool zoHPCConfigurationFiles::write(const QString& fileName, const std::function<QString()>& text,
                                    Failure* failure)
{
    if (fileName.isEmpty())
        return false;
    QString name = fileName;
    const QString suffix = zoText(".zhpc");
    if (name.right(suffix.size()).toLower() != suffix)
        name += suffix;
    if (!zoFileWriter::isGuarded() && !keepUnreadable(name))
        return false;

    QString reason;
    const zoFileWriter::Result result = zoFileWriter::write(
        name, [&text] { return text().toUtf8(); }, &reason);
    if (failure != nullptr)
        *failure = {QFileInfo(name).absoluteFilePath(), reason, result != zoFileWriter::Result::NotOpened};
    switch (result) {
    case zoFileWriter::Result::Written:
        setCurrent(name);
        return true;
    case zoFileWriter::Result::NotOpened:
        break;
    case zoFileWriter::Result::NotWritten:
        zoLog::error("%s",
                     qUtf8Printable(
                         tr("Unable to save cluster config %1: %2. What the file held before is still there.")
                             .arg(name, reason)));
        break;
    case zoFileWriter::Result::Damaged:
        zoLog::error("%s", qUtf8Printable(tr("Unable to save cluster config %1: %2").arg(name, reason)));
        break;
    }
    return false;
}

// The window showed something else for them, and saving writes what the window shows.
bool zoHPCConfigurationFiles::keepUnreadable(const QString& fileName)
{
    QByteArray bytes;
    if (zoFileReader::read(fileName, bytes) != zoFileReader::Result::Read || zoFileText(bytes).isValid() ||
        !zoFileWriter::canWrite(fileName))
        return true;
    QString keptName = fileName + zoText("~");
    for (int i = 2; QFileInfo::exists(keptName) || QFileInfo(keptName).isSymLink(); ++i) {
        QByteArray kept;
        if (zoFileReader::read(keptName, kept) == zoFileReader::Result::Read && kept == bytes)
            return true;
        keptName = fileName + zoText("~%1").arg(i);
    }
    QString reason;
    if (!writeKept(keptName, fileName, bytes, reason)) {
        zoLog::error("%s", qUtf8Printable(tr("Cluster config %1 holds bytes that are not UTF-8 and was not "
                                             "overwritten, since they cannot be kept in %2: %3. Save under "
                                             "another name.")
                                              .arg(fileName, keptName, reason)));
        return false;
    }
    zoLog::error("%s", qUtf8Printable(tr("Cluster config %1 holds bytes that are not UTF-8. What it held "
                                         "before it was saved is in %2.")
                                          .arg(fileName, keptName)));
    return true;
}

// Readable for nobody else than the file itself is, from the first byte on.
bool zoHPCConfigurationFiles::writeKept(const QString& keptName, const QString& fileName,
                                        const QByteArray& bytes, QString& reason)
{
    QFile kept(keptName);
    if (!kept.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        reason = kept.errorString();
        return false;
    }
    const QFile::Permissions ofFile = QFileInfo(fileName).permissions() & ~s_ofThisUser;
    const bool isWritten = kept.setPermissions(ofFile | QFile::ReadOwner | QFile::WriteOwner) &&
                           zoFileWriter::write(keptName, bytes, &reason) == zoFileWriter::Result::Written;
    if (!isWritten)
        kept.remove();
    return isWritten;
}

void zoHPCConfigurationFiles::setUntouched(const QString& text)
{
    m_saved = text;
    m_untouched = text;
}

bool zoHPCConfigurationFiles::isWorthKeeping(const QString& text) const
{
    static const QString s_empty = zoText("<cluster version=\"1\">\n <master/>\n</cluster>\n");
    return text != s_empty && text != m_untouched;
}
