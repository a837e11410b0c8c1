#pragma once

#include <QObject>
#include <QString>

// Takes every message of the process while it lives: prints it on standard error and announces it to the log
// panel. At most one at a time.
class zoHostLog final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostLog(QObject* parent = nullptr);
    ~zoHostLog() override; // gives the messages back to the handler of before

signals:
    // `type` is a QtMsgType. Emitted on the thread that logged; the text shares nothing with its sender.
    void messageLogged(int type, const QString& text);

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static zoHostLog* s_instance;

    QtMessageHandler m_previous = nullptr;
};
