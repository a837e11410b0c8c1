#include "zoControllerProcess.h"

#include <zoServerChild.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace
{
// Together less than the two seconds that a stop may take.
constexpr int s_politeMs = 1200;
constexpr int s_terminateMs = 200;
constexpr int s_killMs = 300;
} // namespace

QString zoControllerProcess::defaultProgram()
{
    const QFileInfo file(QDir(QCoreApplication::applicationDirPath()), QStringLiteral("ZOKEClusterServer"));
    return file.isFile() && file.isExecutable() ? file.absoluteFilePath() : QString();
}

zoControllerProcess::zoControllerProcess(QObject* parent)
    : QObject(parent), m_child(new zoServerChild(zoServerMessageReader::Start::AfterNoise, this))
{
    connect(m_child, &zoServerChild::received, this, &zoControllerProcess::received);
    connect(m_child, &zoServerChild::ended, this, [this] { emit ended(m_child->lastLine()); });
}

zoControllerProcess::~zoControllerProcess() = default;

void zoControllerProcess::start(const QString& program)
{
    m_child->start({program, QStringLiteral("controller")});
}

void zoControllerProcess::send(const QByteArray& verb, const QJsonObject& object)
{
    m_child->send(zoServerMessage::of(verb, object));
}

void zoControllerProcess::end()
{
    m_child->send({"QUIT", {}});
    m_child->closeInput();
    if (m_child->waitForEnd(s_politeMs))
        return;
    m_child->terminate();
    if (m_child->waitForEnd(s_terminateMs))
        return;
    m_child->kill();
    m_child->waitForEnd(s_killMs);
}

bool zoControllerProcess::takeSign()
{
    return m_child->takeSign();
}

qint64 zoControllerProcess::processId() const
{
    return m_child->processId();
}
