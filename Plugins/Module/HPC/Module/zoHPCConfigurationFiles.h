#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>

// The files of the window's configuration: which one is open, how it is read and written, and whether the
// configuration is another one than was loaded or saved.
class zoHPCConfigurationFiles final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCGUIW)

public:
    // Absolute path of the file last loaded or saved; empty for a new or imported configuration.
    const QString& current() const { return m_current; }
    void setCurrent(const QString& fileName);
    void closeCurrent();
    // Where the file dialogs open: the directory of the file last loaded or saved, at first the host's samples.
    QString directory();

    // The text of a configuration file. False, with an error in the log, when it cannot be opened or read as a
    // whole.
    static bool read(const QString& fileName, QString& text);
    // The bytes of a file of an earlier format; empty when it cannot be opened. False, with an error in the log,
    // when it is none that can be read as a whole.
    static bool readLegacy(const QString& fileName, QByteArray& bytes);
    // Why a file was not written, and whether the log says so already. No reason: the host did not want it.
    struct Failure
    {
        QString fileName;
        QString reason;
        bool isLogged = false;
    };
    // Writes what `text` gives once the file is open, and makes the file the current one. Appends ".zhpc" when
    // missing. False, with the failure, for a name that cannot be opened, which changes nothing, and when the file
    // could not be written, which is reported in the log; the old file stays whole until the new one is complete. In a host
    // that asks nobody, bytes of the old file that are no text are first kept in "name.zhpc~", which the log
    // tells; where they cannot be, nothing is written.
    bool write(const QString& fileName, const std::function<QString()>& text, Failure* failure = nullptr);

    // The configuration is that of the current file, or without one that of the last New, Load or Import.
    void setSaved(const QString& text) { m_saved = text; }
    bool differs(const QString& text) const { return text != m_saved; }
    // What nobody has touched yet is not lost when it goes: that of a new window, or of the last New.
    void setUntouched(const QString& text);
    bool isWorthKeeping(const QString& text) const;

private:
    static bool keepUnreadable(const QString& fileName);
    static bool writeKept(const QString& keptName, const QString& fileName, const QByteArray& bytes,
                          QString& reason);

    QString m_current;
    QString m_directory;
    QString m_saved;
    QString m_untouched;
};
