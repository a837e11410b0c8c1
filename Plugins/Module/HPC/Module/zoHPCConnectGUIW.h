#pragma once

#include <QDialog>
#include <QRegion>

#include <memory>

class Ui_zoHPCConnectGUIW;

// The overlay that shows the progress of a session start, and lets the user abandon it.
class zoHPCConnectGUIW : public QDialog
{
    Q_OBJECT

public:
    zoHPCConnectGUIW(QWidget* parent, const QString& name);
    ~zoHPCConnectGUIW() override;

    // The rectangle with its corners rounded to `radius` pixels.
    static QRegion createRoundedRect(const QRect& rect, int radius);

public slots:
    // Shows the overlay. A negative value turns the bar into a busy indicator; otherwise percent.
    void setProgress(const QString& text, int value);
    void setFinished();
    void clickedAbort();
    // Esc aborts, too. The overlay stays until the service tells that the attempt is over.
    void reject() override;
    // Abandons the connection attempt whatever the argument says; hosts rely on it as a second way to abort.
    void setAbortEnabled(bool enabled); // for hosts and tests

signals:
    // Declared for hosts that connect to them by name; nothing emits them.
    void textChanged(const QString& text);
    void maxProgressChanged(int maximum);
    void progressChanged(int value);
    void abortTriggered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void abortConnecting();
    void giveKeysBack();
    void growToText();

    const std::unique_ptr<Ui_zoHPCConnectGUIW> m_ui;
};
