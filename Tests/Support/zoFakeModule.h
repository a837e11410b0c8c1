#pragma once

#include <QMainWindow>
#include <QObject>
#include <QStringList>

// A module's window with a document of plain text, for tests of hosts: tells its file and whether it differs
// from it, and says which text goes before it replaces it. What begins with "foreign" is no document to it.
class zoFakeModuleWindow final : public QMainWindow
{
    Q_OBJECT
    Q_PROPERTY(bool differs READ differs)
    Q_PROPERTY(QString configuration READ text)

public:
    explicit zoFakeModuleWindow(QWidget* parent = nullptr);
    ~zoFakeModuleWindow() override;

    bool differs() const { return m_text != m_savedText; }
    QString text() const { return m_text; }
    // As a person edits it.
    void edit(const QString& text);
    // As it comes from the service: the file stays.
    void setConfigString(const QString& text);
    // As from a file of another format: the open file stays.
    void import(const QString& fileName, const QStringList& remarks);

    QString nextSaveName; // what the file dialog answers; empty: given up
    QString nextLoadName; // the same
    QStringList loaded;   // through the slot of this window
    int saves = 0;

public slots:
    void loadConfig();
    void loadConfig(const QString& fileName);
    void saveConfig();
    void saveAsConfig();
    void setDefaultConfig();

private:
    void replace(const QString& text);
    void setFile(const QString& fileName);
    void tell(const char* note, const QVariant& what);
    void updateMark();
    void saveAs(const QString& fileName);

    QString m_text;
    QString m_savedText;
};

// The module object of such a window.
class zoFakeModule final : public QObject
{
    Q_OBJECT

public:
    explicit zoFakeModule(zoFakeModuleWindow* window); // not owned
    ~zoFakeModule() override;

    QAction* toggleAction() const { return m_toggleAction; }

    QStringList loaded; // through the slot of this object

public slots:
    void loadConfig(const char* fileName);
    void setConfig(const QString& text);

private:
    zoFakeModuleWindow* m_window;
    QAction* m_toggleAction;
};
