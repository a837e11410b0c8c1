#pragma once

#include <QObject>
#include <QString>

// Takes every message of the process while it lives: prints it on standard error and announces what host and modules
// log (zoLog) to the log panel. What the toolkit and other libraries say is for programmers. At most one at a time.
class zoHostLog final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostLog(QObject* parent = nullptr);
    ~zoHostLog() override; // gives the messages back to the handler of before

    // To the log, as zoLog does: what a person should look at although nothing has failed.
    static void warn(const QString& text);

signals:
    // `type` is a QtMsgType. Emitted on the thread that logged; the text shares nothing with its sender.
    void messageLogged(int type, const QString& text);

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static zoHostLog* s_instance;

    QtMessageHandler m_previous = nullptr;
};
