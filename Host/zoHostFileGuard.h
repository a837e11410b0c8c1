#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QMainWindow;
class QMessageBox;
class QWidget;
class zoClusterService;
class zoControllerService;
class zoHostDocument;
class zoHostEarlierConfigurations;
class zoHostModules;

// Sees to it that nobody's changes get lost in the file of an open configuration: one that another program
// changed is not overwritten unasked, and is offered to be read again while nothing of its window is unsaved. Nor
// is one with bytes that could not be shown, or one that is no configuration.
class zoHostFileGuard final : public QObject
{
    Q_OBJECT

public:
    // The window is also the parent; the modules outlive this. One guard at a time speaks for the files that
    // are written.
    zoHostFileGuard(QMainWindow* window, const zoHostModules* modules, zoHostDocument* document,
                    zoControllerService* controller, zoClusterService* cluster,
                    zoHostEarlierConfigurations* earlier);
    ~zoHostFileGuard() override;

    // Of what this file held when it was last read or written here, hexadecimal; empty for one that is not open.
    QByteArray sumOf(const QString& fileName) const;
    // What is open as this file was made of another content of it: from now on what it holds is taken for a change of
    // another program, unless its sum is the same. An empty sum is that of no file.
    void expect(const QString& fileName, const QByteArray& sum);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the window

private:
    // What a file held when it was last read or written here.
    struct State
    {
        bool exists = false;
        quint64 device = 0;
        quint64 number = 0;
        qint64 size = 0;
        qint64 changedNs = 0;
        QByteArray sum; // of the content

        bool isUntouched(const State& other) const;
    };

    static State stateOf(const QString& fileName);
    // Whether another program changed it; also takes note of one that was only written anew.
    bool isChanged(const QString& fileName);
    void takeNote(const QString& fileName);
    void takeNoteOfRead(const QString& fileName);
    void forgetOthers();
    void watch();

    bool mayWrite(const QString& fileName);
    bool ask(const QString& fileName);
    // The file holds what the window could not show: asks whether it may be replaced; it is then kept among the earlier
    // configurations. `what` and `then` are the sentences of the question.
    bool mayReplace(const QString& fileName, const QString& what, const QString& then);
    bool mayReplaceUnreadable(const QString& fileName);
    bool mayReplaceForeign(const QString& fileName);
    // Takes note of bytes that are no text, and tells them.
    void lookForUnreadable(const QString& fileName);
    void takeNoteOfForeign(const QString& fileName, const QString& reason);
    void tell(const char* boxName, const QString& what, const QString& more);
    void checkFiles();
    void offerReload(const QString& fileName);
    QWidget* windowOf(const QString& fileName) const;

    QMainWindow* m_window;
    const zoHostModules* m_modules; // not owned
    zoHostDocument* m_document;
    zoControllerService* m_controller;
    zoClusterService* m_cluster;
    zoHostEarlierConfigurations* m_earlier;
    QHash<QString, State> m_known;        // by absolute name
    QHash<QString, QByteArray> m_told;    // sums of the changes that a person knows of
    QHash<QString, QString> m_unreadable; // by absolute name: where the first bytes are that are no text
    QHash<QString, QString> m_foreign;    // by absolute name: why it is no configuration
    QString m_reading;                    // its window has another name yet
    QFileSystemWatcher m_watcher;
    QTimer m_settled{this}; // programs write in several steps
    QPointer<QMessageBox> m_offer;
    QPointer<QMessageBox> m_telling;
};
