#pragma once

#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCGUIW.h>

#include <QAction>
#include <QByteArray>
#include <QFile>
#include <QStatusBar>
#include <QTemporaryDir>

#include <memory>

// What the tests of the cluster window have in common: a host, a folder and a window, made anew for each.
class zoHPCWindowTest : public zoTestCase
{
    Q_OBJECT

public:
    // A configuration of which two nodes have the same name.
    static const char* const s_document;

protected slots:
    void init();
    void cleanup();

protected:
    static QByteArray contentOf(const QString& fileName);
    static void write(const QString& fileName, const QByteArray& bytes);

    QAction* action(const char* text) const;
    template <class Widget>
    Widget* status(const char* name) const
    {
        return m_window->statusBar()->findChild<Widget*>(QLatin1String(name));
    }
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<zoHPCGUIW> m_window;
};
