#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QToolBar;
class QUrl;

// The manual in a window of its own: one page, the way back and forth, and what is found on it.
class zoHostManualWindow final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostManualWindow(QWidget* parent = nullptr);
    ~zoHostManualWindow() override;

    // A page of zoHostManual, with or without an anchor; the first one when there is no such page. Shows the window.
    void open(const QString& page);
    QString page() const; // that is shown, with its anchor

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolBar* createBar();
    void tellMissing();
    void find(bool backwards);
    void updateTitle(const QUrl& shown);

    QTextBrowser* m_browser;
    QLineEdit* m_find;
    QLabel* m_found;
};
