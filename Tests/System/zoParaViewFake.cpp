#include "zoParaViewFake.h"

#include <zoSetupLibrary.h>

#include <QFile>
#include <QHash>
#include <QJsonDocument>
#include <QSaveFile>

zoParaViewFake::zoParaViewFake()
{
    zoSetupLibrary::setFolder(QStringLiteral(ZO_COMPONENT_DIR));
    qputenv("ZO_FAKE_JOBS", m_folder.path().toLocal8Bit());
    qputenv("ZO_FAKE_LOGS", ZO_TEST_DATA_DIR "/ParaView");
    qputenv("DISPLAY", ":0");
    qputenv("FAKE_PVPYTHON", "client");
    qputenv("FAKE_PVPYTHON_REQUEST", m_folder.filePath("picture").toLocal8Bit());
    setJobs("accepting");
}

zoParaViewFake::~zoParaViewFake()
{
    for (const char* name : {"ZO_FAKE_JOBS", "ZO_FAKE_LOGS", "ZO_FAKE_RELEASE", "FAKE_PVPYTHON",
                             "FAKE_PVPYTHON_REQUEST", "DISPLAY"})
        qunsetenv(name);
}

void zoParaViewFake::setJobs(const QByteArray& lines)
{
    QFile::remove(m_folder.filePath("calls"));
    QFile file(m_folder.filePath("jobs"));
    if (file.open(QIODevice::WriteOnly))
        file.write(lines + '\n');
}

QStringList zoParaViewFake::calls() const
{
    QFile file(m_folder.filePath("calls"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void zoParaViewFake::letGoOn()
{
    QFile file(m_folder.filePath("go"));
    file.open(QIODevice::WriteOnly);
}

void zoParaViewFake::connectClient(qint64 process) const
{
    QSaveFile file(m_folder.filePath("client"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::number(process));
        file.commit();
    }
}

void zoParaViewFake::wantServer() const
{
    QFile file(m_folder.filePath("wanted"));
    file.open(QIODevice::WriteOnly);
}

QJsonObject zoParaViewFake::pictureRequest() const
{
    QFile file(m_folder.filePath("picture"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

zoParaViewService::Launch zoParaViewFake::launch() const
{
    zoParaViewService::Launch launch;
    launch.mpirun = QStringLiteral(ZO_FAKE_MPIRUN);
    launch.program = QStringLiteral(ZO_FAKE_PVSERVER);
    launch.pvpython = QStringLiteral(ZO_FAKE_PVPYTHON);
    launch.nodeServer = launch.program;
    launch.nodeServerHere = launch.program;
    launch.pattern = QStringList({QStringLiteral(ZO_LAUNCHER), "%h", "%program"});
    return launch;
}

std::unique_ptr<zoParaViewService> zoParaViewFake::create() const
{
    auto service = std::make_unique<zoParaViewService>(launch());
    service->setLockDirectory(m_locks.path());
    service->setMemoryPerNode(0);
    return service;
}

QString zoParaViewFake::withWindows(const QString& document)
{
    zoClusterDocument parsed;
    QString reason;
    const int end = document.lastIndexOf(QLatin1String("</cluster>"));
    if (end < 0 || !parsed.parse(document, reason))
        return document;
    // Windows name nodes by names of which no two are equal.
    QHash<QString, int> counts;
    for (const zoClusterDocument::Node& node : parsed.nodes())
        ++counts[node.hostName];
    QHash<QString, int> numbers;
    QString windows = QStringLiteral("<projection name=\"P\" type=\"powerwall\" rows=\"1\" columns=\"1\" "
                                     "width=\"2000\" height=\"1000\" distance=\"1500\"/><display>");
    for (const zoClusterDocument::Node& node : parsed.nodes()) {
        QString name = node.hostName;
        if (counts.value(name) > 1)
            name += QStringLiteral(" %1").arg(++numbers[node.hostName]);
        if (node.enabled && !node.hostName.isEmpty())
            windows +=
                QStringLiteral("<window node=\"%1\" screen=\"0\" x=\"0\" y=\"0\" width=\"400\" "
                               "height=\"200\"><viewport projection=\"P\" position=\"fill\"/></window>")
                    .arg(name.toHtmlEscaped());
    }
    return document.left(end) + windows + QStringLiteral("</display>") + document.mid(end);
}

QString zoParaViewFake::wallOf(const QStringList& hosts)
{
    QString text = QStringLiteral("<cluster version=\"1\"><master><network>");
    for (const QString& host : hosts)
        text += QStringLiteral("<node name=\"%1\"/>").arg(host);
    return withWindows(text + QStringLiteral("</network></master></cluster>"));
}
