#pragma once

#include <zoServerMessage.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

class zoServerChild;

// The check picture of a ParaView session: a client of the session's server that shows on the wall what node servers
// show, until it is ended. The server knows one client, and ends with it.
class zoParaViewPicture final : public QObject
{
    Q_OBJECT

public:
    enum class Content { TestImage, Tiles };

    static constexpr int DefaultLimit = 60000; // ms

    // The program, or its name in the search path.
    explicit zoParaViewPicture(const QString& pvpython = QStringLiteral("pvpython"),
                               QObject* parent = nullptr);
    ~zoParaViewPicture() override; // as end()

    // The part of the picture that the client draws itself, and shows to nobody, needs an X display: this one, by
    // default that of the environment.
    void setDisplay(const QString& display) { m_display = display; }
    void setLimit(int milliseconds) { m_limit.setInterval(milliseconds); } // until it is shown
    void setScript(const QString& file) { m_script = file; }               // for tests

    // Of cs://HOST:PORT; the scene is what the component writes for this content (ZO_WRITE_CHECK_SCENE). Answers with
    // shown() or failed(), later; one that runs is ended before.
    void show(Content content, const QUrl& server, quint32 connectId, const QByteArray& scene);
    // Takes the picture off: SIGTERM, a second, SIGKILL. Waits for it, handles no event and emits no signal.
    void end();

    bool isRunning() const { return m_child != nullptr; } // shown, or about to be
    bool isShown() const { return m_isShown; }
    qint64 processId() const; // for tests; 0 for none

signals:
    void shown();
    // It was not shown, for a reason in words.
    void failed(const QString& reason);
    // It was shown and is not any more: another client wants the server, or the client ended.
    void ended();

private:
    void receive(const zoServerMessage& message);
    void lose();
    void fail(const QString& reason);
    void forget();

    QString m_program;
    QString m_script;
    QString m_display;
    QTimer m_limit;
    zoServerChild* m_child = nullptr;
    bool m_isShown = false;
};
