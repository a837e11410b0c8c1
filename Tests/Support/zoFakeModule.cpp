#include "zoFakeModule.h"

#include <QAction>
#include <zoFileWriter.h>

#include <QCoreApplication>
#include <QFile>
#include <QVariant>

zoFakeModuleWindow::zoFakeModuleWindow(QWidget* parent) : QMainWindow(parent) {}
zoFakeModuleWindow::~zoFakeModuleWindow() = default;

void zoFakeModuleWindow::edit(const QString& text)
{
    m_text = text;
    updateMark();
}

void zoFakeModuleWindow::setConfigString(const QString& text)
{
    replace(text);
    // Without a file there is nothing to compare it with.
    if (windowFilePath().isEmpty())
        m_savedText = m_text;
    updateMark();
}

void zoFakeModuleWindow::loadConfig()
{
    if (!nextLoadName.isEmpty())
        loadConfig(nextLoadName);
}

void zoFakeModuleWindow::loadConfig(const QString& fileName)
{
    loaded << fileName;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QString text = QString::fromUtf8(file.readAll());
    const bool isForeign = text.startsWith(QLatin1String("foreign"));
    tell("readFile", fileName);
    replace(isForeign ? QString() : text);
    m_savedText = m_text;
    setFile(fileName);
    updateMark();
    if (isForeign)
        tell("fileNotUnderstood", QStringList{fileName, QStringLiteral("line 1, column 8: strange")});
}

void zoFakeModuleWindow::saveConfig()
{
    ++saves;
    saveAs(windowFilePath().isEmpty() ? nextSaveName : windowFilePath());
}

void zoFakeModuleWindow::saveAsConfig()
{
    ++saves;
    saveAs(nextSaveName);
}

void zoFakeModuleWindow::saveAs(const QString& fileName)
{
    QString reason;
    if (fileName.isEmpty())
        return;
    if (zoFileWriter::write(fileName, m_text.toUtf8(), &reason) != zoFileWriter::Result::Written) {
        if (!reason.isEmpty())
            tell("fileNotSaved", QStringList{fileName, reason});
        return;
    }
    m_savedText = m_text;
    setFile(fileName);
    updateMark();
    tell("savedFile", fileName);
}

void zoFakeModuleWindow::import(const QString& fileName, const QStringList& remarks)
{
    replace(QStringLiteral("imported"));
    updateMark();
    tell("importedFile", QStringList{fileName} + remarks);
}

void zoFakeModuleWindow::tell(const char* note, const QVariant& what)
{
    setProperty(note, what);
    setProperty(note, QVariant());
}

void zoFakeModuleWindow::setDefaultConfig()
{
    replace(QStringLiteral("new"));
    m_savedText = m_text;
    setFile(QString());
    updateMark();
}

void zoFakeModuleWindow::replace(const QString& text)
{
    tell("replacedConfiguration", m_text);
    m_text = text;
}

void zoFakeModuleWindow::setFile(const QString& fileName)
{
    if (fileName == windowFilePath())
        return;
    setWindowFilePath(fileName);
    QEvent changed(QEvent::WindowTitleChange);
    QCoreApplication::sendEvent(this, &changed);
}

void zoFakeModuleWindow::updateMark()
{
    if (!windowTitle().contains(QLatin1String("[*]")))
        setWindowTitle(QStringLiteral("fake[*]"));
    setWindowModified(differs());
}

zoFakeModule::zoFakeModule(zoFakeModuleWindow* window)
    : m_window(window), m_toggleAction(new QAction(QStringLiteral("Fake"), this))
{
}

zoFakeModule::~zoFakeModule() = default;

void zoFakeModule::loadConfig(const char* fileName)
{
    loaded << QString::fromLatin1(fileName);
    m_window->loadConfig(loaded.constLast());
}

void zoFakeModule::setConfig(const QString& text)
{
    m_window->setConfigString(text);
}
