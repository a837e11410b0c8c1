#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class QStatusBar;
class QWidget;

// One status bar for the host and the module's window that it shows: what that one has in its own stands in the
// host's, which also shows its messages, and its own is hidden.
class zoHostPageStatus final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostPageStatus(QStatusBar* bar, QObject* parent = nullptr); // of the host, not owned
    ~zoHostPageStatus() override;                                          // gives back

    // The window gets back what is its own when another one, or null, takes its place.
    void setPage(QWidget* page);

private:
    void take(QStatusBar* pageBar);
    void giveBack();

    QPointer<QStatusBar> m_bar;
    QPointer<QWidget> m_page;
    QPointer<QStatusBar> m_pageBar;
    QVector<QPointer<QWidget>> m_taken;
};
