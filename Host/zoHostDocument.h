#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

class QWidget;
class zoHostModules;

// The configuration that a module has open, as the host sees it: the module's window tells its file and
// whether it differs from it, and takes requests through slots by name.
//
// A module's window keeps windowFilePath and windowModified, and announces changes with WindowTitleChange and
// ModifiedChange. When it has the property "differs", that is the state of this very moment. Before it
// replaces the document it sets its property "replacedConfiguration" to the text that goes, and when it has
// read a file its property "readFile" to the name. Its property "configuration" is the text that it would save, which
// is another one when its property "revision" is. Its properties "undoStep" and "redoStep" are the names of the steps
// that its slots undo() and redo() would take; its slot replaceConfiguration(QString,QString) takes another text as a
// step with a name. "savedFile" is the name of a file that it wrote; "fileNotUnderstood" is the open file and why it is
// no configuration, "fileNotSaved" one that could not be written, the reason and "logged" when the log has it,
// "importedFile" one of another format and what a person should look at in the result.
class zoHostDocument final : public QObject
{
    Q_OBJECT

public:
    // The modules outlive this.
    zoHostDocument(const zoHostModules* modules, QObject* parent);
    ~zoHostDocument() override;

    void watch(QWidget* moduleWindow);
    void forget(QObject* moduleWindow); // also from inside its destructor

    // Whether closing would lose work. One that was brought back and never saved is work.
    bool differs(const QWidget* moduleWindow) const;
    bool differs() const; // of any module's window
    // The same as the window marks it, which may follow the document a moment later.
    bool isMarked(const QWidget* moduleWindow) const;

    // False when no loaded module opens configurations. What is wrong with a file goes to the log.
    bool load(const QString& fileName);

    // Replaces the document by an earlier one. It is open as the file that it came from if that is the one
    // that is open now, else without a file, so that Save overwrites nothing else. False when no loaded
    // module opens configurations.
    bool bringBack(const QString& text, const QString& originFile);

    // The same for work that was not saved when its host ended: it is open as the file that it came from, which is
    // loaded for that, and differs from it. Without that file it has none.
    bool bringBackWork(const QString& text, const QString& originFile);
    bool isBringingBack() const { return m_isBringingBack; }

    // A new configuration without a file, the module's own or this text. It is not yet anybody's work. False when no
    // loaded module makes one.
    bool begin(const QString& text = QString());

    // What the window would save; null when its module does not tell.
    QString text(const QWidget* moduleWindow) const;

    // The first module's window that tells its text; null when none does.
    QWidget* configurationWindow() const;
    // Another text as a step with this name. False, and nothing changed, when the window does not take it.
    static bool replace(QWidget* moduleWindow, const QString& text, const QString& step);

    // What undo() and redo() would take back and bring again; empty when there is nothing.
    static QString undoStep(const QWidget* moduleWindow);
    static QString redoStep(const QWidget* moduleWindow);
    static void undo(QWidget* moduleWindow);
    static void redo(QWidget* moduleWindow);

    // Lets the module save, which may ask for a name; saveAs() always asks. False when the document still differs;
    // `reason` is then why, or empty when a person gave up. What failed is in the log, and not announced.
    bool save(QWidget* moduleWindow, QString* reason = nullptr);
    bool saveAs(QWidget* moduleWindow, QString* reason = nullptr);
    // Lets the module ask for a file and open it.
    static bool open(QWidget* moduleWindow);

signals:
    // File or unsaved mark of a module's window changed.
    void changed();
    // Of what can be undone or redone in a module's window.
    void stepsChanged();
    // What a module's window would save is another text now; a moment after the change.
    void textChanged();
    // A module's window has another file now; never empty.
    void fileOpened(const QString& fileName);
    // A module read this file, whether or not it was open before.
    void fileRead(const QString& fileName);
    // A module wrote this file.
    void fileSaved(const QString& fileName);
    // The open file is no configuration: its window shows an empty one instead.
    void fileNotUnderstood(const QString& fileName, const QString& reason);
    // This file could not be written. The log says so.
    void saveFailed(QWidget* moduleWindow, const QString& fileName, const QString& reason);
    // The window shows what became of a file of another format; each remark is one line.
    void imported(QWidget* moduleWindow, const QString& fileName, const QStringList& remarks);
    // The text is about to go; `fileName` is the file that it was open as, or empty.
    void replaced(const QString& text, const QString& fileName);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void announceFile(QWidget* moduleWindow);
    void hearProperty(QWidget* moduleWindow, const QByteArray& name);
    void hearNote(QWidget* moduleWindow, const QByteArray& name);
    bool saveBy(QWidget* moduleWindow, const char* slot, QString* reason);

    const zoHostModules* m_modules;             // not owned
    QHash<const QObject*, QString> m_announced; // the file that was told last, by module window
    QSet<const QObject*> m_broughtBack;         // module windows that show one without a file
    QString* m_saveReason = nullptr;            // of who waits for a save
    bool m_isBringingBack = false;
};
