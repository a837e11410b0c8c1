#include "zoHostRecentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace
{
constexpr char s_filesKey[] = "Recent/Files";

bool isSameFile(const QString& left, const QString& right)
{
    if (left == right)
        return true;
    // Only names that look alike are worth a look at the disk.
    const QFileInfo first(left);
    const QFileInfo second(right);
    return first.fileName() == second.fileName() && first.exists() && first == second;
}

void removeFrom(QStringList& files, const QString& file)
{
    for (int i = files.size() - 1; i >= 0; --i) {
        if (isSameFile(files.at(i), file))
            files.removeAt(i);
    }
}
} // namespace

zoHostRecentFiles::zoHostRecentFiles(QSettings* settings, QObject* parent)
    : QObject(parent), m_settings(settings)
{
}

zoHostRecentFiles::~zoHostRecentFiles() = default;

QStringList zoHostRecentFiles::files() const
{
    // What another host added meanwhile.
    m_settings->sync();
    return m_settings->value(QLatin1String(s_filesKey)).toStringList().mid(0, Limit);
}

void zoHostRecentFiles::add(const QString& fileName)
{
    if (fileName.isEmpty())
        return;
    // A text of its own: the given one may lie in a module that is unloaded before the settings are written.
    const QString given(fileName.constData(), fileName.size());
    const QString file = QFileInfo(given).absoluteFilePath();
    QStringList list = files();
    removeFrom(list, file);
    list.prepend(file);
    store(list.mid(0, Limit));
}

void zoHostRecentFiles::remove(const QString& fileName)
{
    QStringList list = files();
    removeFrom(list, QFileInfo(fileName).absoluteFilePath());
    store(list);
}

void zoHostRecentFiles::clear()
{
    store(QStringList());
}

void zoHostRecentFiles::store(const QStringList& list)
{
    if (list == m_settings->value(QLatin1String(s_filesKey)).toStringList())
        return;
    m_settings->setValue(QLatin1String(s_filesKey), list);
    m_settings->sync();
    emit changed();
}
