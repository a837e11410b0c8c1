#pragma once

#include <QPlainTextEdit>

// The host's log as the user reads it: one line per message with its time, warnings and errors marked.
class zoHostLogPanel final : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit zoHostLogPanel(QWidget* parent = nullptr);
    ~zoHostLogPanel() override;

public slots:
    // `type` is a QtMsgType.
    void addMessage(int type, const QString& text);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
};
