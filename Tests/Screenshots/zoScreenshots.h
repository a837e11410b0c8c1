#pragma once

#include <QImage>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QAction;
class QDialog;
class QTreeWidget;
class zoClusterService;
class zoHostApplication;
class zoHostMainWindow;

// The pictures of the documentation: opens each window of host and module in one language and writes what it
// looks like. Lives inside a QApplication.
class zoScreenshots final : public QObject
{
    Q_OBJECT

public:
    zoScreenshots(const QString& language, const QString& folder);
    ~zoScreenshots() override;

    // False, with a line on standard error, when a window did not come or a file could not be written.
    bool takeAll();

private:
    void prepareEarlierConfigurations() const;
    void takeStart();
    void takeHelp();
    void takeImport();
    void takeHost();
    void takeConnecting();
    void takeNodeEditor();
    void takeEditMenu();
    void takeHostsDialog();
    void takeDocumentDialog();
    void takeDisplaySetup();
    void takePreferences();
    void takeAssistant();
    void takeMeasuredRoom();
    void takeNewWall();
    void takeEarlierConfigurations();

    zoHostMainWindow* window() const;
    QWidget* module() const;
    zoClusterService* cluster() const;
    void load(const QString& fileName);
    void trigger(const char* slot); // of the module's window
    void openDisplaySetup(const std::function<void(QDialog*)>& show);
    void choose(QWidget* parent, const char* tree, int row, int child = -1, int grandchild = -1);
    void atDialog(const std::function<void()>& open, const QSize& size, const QString& name);
    void take(QWidget* widget, const QString& name);
    void write(const QImage& image, const QString& name);
    void settleLog();
    void fail(const QString& reason);

    QString m_language;
    QString m_folder;
    std::unique_ptr<zoHostApplication> m_host;
    bool m_failed = false;
};
