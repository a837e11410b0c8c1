#include "zoParaViewPicture.h"

#include <zoLog.h>
#include <zoPlatform.h>
#include <zoServerChild.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace
{
constexpr int s_terminateMs = 1000;
constexpr int s_killMs = 10000; // on a busy machine; else at once
} // namespace

zoParaViewPicture::zoParaViewPicture(const QString& pvpython, QObject* parent)
    : QObject(parent)
    , m_program(pvpython)
    , m_script(QString::fromStdString(zoPlatform::getDataDir()) +
               QStringLiteral("/paraview/check-picture.py"))
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(DefaultLimit);
    connect(&m_limit, &QTimer::timeout, this,
            [this] { fail(tr("nothing was shown within %1 s").arg(double(m_limit.interval()) / 1000.0)); });
}

zoParaViewPicture::~zoParaViewPicture()
{
    end();
}

void zoParaViewPicture::show(Content content, const QUrl& server, quint32 connectId, const QByteArray& scene)
{
    end();
    QJsonObject described = QJsonDocument::fromJson(scene).object();
    described.insert(QStringLiteral("content"),
                     content == Content::TestImage ? QStringLiteral("test-image") : QStringLiteral("tiles"));
    const QJsonObject request{{QStringLiteral("host"), server.host()},
                              {QStringLiteral("port"), server.port()},
                              {QStringLiteral("connectId"), double(connectId)},
                              {QStringLiteral("scene"), described}};
    m_child = new zoServerChild(zoServerMessageReader::Start::AtOnce, this);
    connect(m_child, &zoServerChild::received, this, &zoParaViewPicture::receive);
    connect(m_child, &zoServerChild::ended, this, &zoParaViewPicture::lose);
    QMap<QString, QString> environment;
    if (!m_display.isEmpty())
        environment.insert(QStringLiteral("DISPLAY"), m_display);
    m_child->setEnvironment(environment);
    m_limit.start();
    m_child->start({m_program, QStringLiteral("--force-offscreen-rendering"), m_script});
    m_child->send(zoServerMessage::of("SHOW", request));
}

void zoParaViewPicture::end()
{
    m_limit.stop();
    m_isShown = false;
    if (m_child == nullptr)
        return;
    m_child->disconnect(this);
    if (m_child->isRunning()) {
        m_child->terminate();
        if (!m_child->waitForEnd(s_terminateMs)) {
            m_child->kill();
            m_child->waitForEnd(s_killMs);
        }
    }
    forget();
}

void zoParaViewPicture::receive(const zoServerMessage& message)
{
    if (message.verb == "SHOWN" && !m_isShown) {
        m_limit.stop();
        m_isShown = true;
        zoLog::info(tr("The check picture is on the wall"));
        emit shown();
    } else if (message.verb == "WANTED") {
        zoLog::info(tr("A client wants the server: the check picture makes way"));
    } else if (message.verb == "FAILED") {
        const QString reason = message.object().value(QLatin1String("reason")).toString();
        if (m_isShown)
            zoLog::error(tr("The check picture is gone: %1").arg(reason));
        else
            fail(reason);
    }
}

void zoParaViewPicture::lose()
{
    if (!m_isShown) {
        fail(m_child->lastLine());
        return;
    }
    m_isShown = false;
    forget();
    emit ended();
}

void zoParaViewPicture::fail(const QString& reason)
{
    const bool isMissing = QStandardPaths::findExecutable(m_program).isEmpty();
    const bool hasDisplay = !m_display.isEmpty() || !qEnvironmentVariableIsEmpty("DISPLAY");
    end();
    // Without a display it ends with a fault that says nothing.
    emit failed(isMissing     ? tr("%1 is not installed on this machine").arg(m_program)
                : !hasDisplay ? tr("this machine has no X display, which %1 needs").arg(m_program)
                              : reason);
}

void zoParaViewPicture::forget()
{
    // Whoever hears of it may be one of its own signals.
    m_child->deleteLater();
    m_child = nullptr;
}

qint64 zoParaViewPicture::processId() const
{
    return m_child != nullptr ? m_child->processId() : 0;
}
