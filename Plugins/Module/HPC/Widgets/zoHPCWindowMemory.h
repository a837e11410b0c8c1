#pragma once

#include <QObject>
#include <QString>

class QDialog;
class QWidget;

// Keeps how a person left a part of a window, in a file of the module's own, from one run to the next: the
// sizes of a splitter's panes, the current tab of a tab widget, the size of a dialog. Written when the part is
// hidden, if a person changed it. Where the file holds something else the part stays as it is.
class zoHPCWindowMemory final : public QObject
{
    Q_OBJECT

public:
    // A splitter, a tab widget or a dialog, which becomes the parent. The name is a part of the key: the
    // same in all versions and languages.
    zoHPCWindowMemory(QWidget* widget, const QString& name);

    // A dialog with all splitters and tabs in it that have a name.
    static void rememberDialog(QDialog* dialog, const QString& name);

    // Below the folder of the user's settings; the host's preferences are for what people choose.
    static QString fileName();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString state() const;
    void setState(const QString& state);
    void restore();
    void save();

    QWidget* m_widget;
    QString m_key;
    QString m_shown; // the state when the part was shown
    bool m_isRestored = false;
    bool m_isTouched = false;
};
