#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QLibrary;

// Loads modules from their files, calls their entries and unloads them. Must not outlive the application
// object.
class zoModuleLoader final : public QObject
{
    Q_OBJECT

public:
    explicit zoModuleLoader(QObject* parent = nullptr);
    ~zoModuleLoader() override; // unloads what is still loaded

    // Loads the file and calls initPlugin() and, when the module has one, initPreferencesPlugin(). False when
    // the module cannot be used; file and reason are logged then and nothing of it stays in memory. One that was
    // built for another interface is refused before any code of it runs.
    bool load(const QString& fileName);

    // Absolute files of the loaded modules in the order of loading.
    QStringList loadedFiles() const; // for tests

    // Unloads in reverse order of loading. Widgets of a module that nobody destroyed are destroyed before,
    // since their code goes away.
    void unloadAll();

    // The modules that belong to this host, in the order of loading: the cluster module, where it exists beside the
    // running program in a build or an installation, else the first place that was tried; and those that add to it, if
    // they are there.
    static QStringList defaultModuleFiles();

private:
    void unload(QLibrary& library);

    std::vector<std::unique_ptr<QLibrary>> m_libraries;
};
