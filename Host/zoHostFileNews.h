#pragma once

#include <QObject>
#include <QStringList>

class QMainWindow;
class QWidget;
class zoControllerService;
class zoHostDocument;

// Tells a person what became of a file when the log alone would not do: one that could not be saved, one of another
// format that was imported, one of a later version. A script reads the log.
class zoHostFileNews final : public QObject
{
    Q_OBJECT

public:
    // All outlive it; the window is also the parent.
    zoHostFileNews(QMainWindow* window, zoHostDocument* document, zoControllerService* controller);
    ~zoHostFileNews() override;

private:
    void tellFailure(QWidget* moduleWindow, const QString& fileName, const QString& reason);
    // Of a format that is newer than this program: what it does not know is not shown.
    void tellVersion(const QString& fileName);
    void tellImport(QWidget* moduleWindow, const QString& fileName, const QStringList& remarks);

    QMainWindow* m_window;
    zoHostDocument* m_document;
    zoControllerService* m_controller;
};
