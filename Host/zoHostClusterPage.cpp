#include "zoHostClusterPage.h"

#include <zoLauncher.h>
#include <zoLog.h>
#include <zoPreferencesService.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <algorithm>

namespace
{
constexpr char s_memoryKey[] = "Local cluster memory per node";
constexpr char s_engineKey[] = "Cluster sessions run on";
constexpr char s_launchKey[] = "Cluster launch command";
constexpr char s_programKey[] = "Cluster server program";
constexpr char s_lostKey[] = "Cluster session ends with a lost node";
constexpr char s_paraViewKey[] = "ParaView server program";
constexpr char s_portKey[] = "ParaView server port";
constexpr char s_clientsKey[] = "ParaView clients";
constexpr char s_reverseKey[] = "ParaView client that is called";
constexpr char s_nodes[] = "nodes";
constexpr char s_paraView[] = "paraview";
constexpr char s_asTheWall[] = "wall";
constexpr char s_thisMachine[] = "this machine";
constexpr char s_anywhere[] = "anywhere";
constexpr int s_maximumPort = 65535 - zoParaViewService::PortTries;
constexpr char s_local[] = "local";
constexpr qint64 s_mebibyte = 1024 * 1024;
constexpr int s_defaultMebibytes = int(zoHostClusterService::DefaultMemoryPerNode / s_mebibyte);
constexpr int s_maximumMebibytes = 1024 * 1024;

QString stored(zoPreferencesService* preferences, const char* key, const QString& otherwise)
{
    return preferences->getString(QLatin1String(key), otherwise);
}
} // namespace

zoHostClusterPage::zoHostClusterPage(zoPreferencesService* preferences, zoHostClusterService* cluster)
    : m_preferences(preferences)
    , m_cluster(cluster)
    , m_engine(new QComboBox(this))
    , m_launch(new QLineEdit(this))
    , m_program(new QLineEdit(this))
    , m_paraView(new QLineEdit(this))
    , m_port(new QSpinBox(this))
    , m_clients(new QComboBox(this))
    , m_reverseClient(new QLineEdit(this))
    , m_endsWithLostNode(new QCheckBox(tr("&End the session when a node is lost"), this))
    , m_memoryPerNode(new QSpinBox(this))
{
    m_engine->setObjectName(QStringLiteral("Engine"));
    m_engine->addItem(tr("Node servers"), QLatin1String(s_nodes));
    m_engine->addItem(tr("ParaView"), QLatin1String(s_paraView));
    m_engine->addItem(tr("This program (shows nothing)"), QLatin1String(s_local));
    m_engine->setToolTip(tr("Takes effect when the program is started next"));
    m_launch->setObjectName(QStringLiteral("LaunchCommand"));
    constexpr int FrameWidth = 16; // of the field, pixels
    m_launch->setMinimumWidth(
        m_launch->fontMetrics().horizontalAdvance(QLatin1String(zoLauncher::DefaultTemplate)) + FrameWidth);
    m_launch->setToolTip(tr("How a program is started on another machine: %h is its name, %program what is "
                            "started there. No shell of this machine reads it."));
    m_program->setObjectName(QStringLiteral("ServerProgram"));
    m_program->setToolTip(tr("Name or path of the server program on the nodes"));
    m_endsWithLostNode->setObjectName(QStringLiteral("EndsWithLostNode"));
    m_memoryPerNode->setObjectName(QStringLiteral("MemoryPerNode"));
    m_memoryPerNode->setRange(0, s_maximumMebibytes);
    m_memoryPerNode->setSingleStep(64);
    m_memoryPerNode->setSuffix(tr(" MiB"));
    m_memoryPerNode->setSpecialValueText(tr("Do not ask"));
    m_memoryPerNode->setToolTip(tr("A start asks when a machine has less memory available for a node"));
    createParaViewFields();
    auto* hint =
        new QLabel(tr("Each node runs the program ZOKEClusterServer, which opens its windows. When all "
                      "hosts are this machine, a session is a rehearsal: its windows are scaled into "
                      "this desktop."),
                   this);
    hint->setWordWrap(true);
    auto* layout = new QFormLayout(this);
    layout->addRow(hint);
    layout->addRow(tr("&Sessions run on:"), m_engine);
    layout->addRow(tr("&Launch command:"), m_launch);
    layout->addRow(tr("Server &program:"), m_program);
    layout->addRow(m_endsWithLostNode);
    layout->addRow(tr("P&araView's server:"), m_paraView);
    layout->addRow(tr("P&ort of ParaView:"), m_port);
    layout->addRow(tr("Cl&ients of ParaView:"), m_clients);
    layout->addRow(tr("Calls its clien&t on:"), m_reverseClient);
    layout->addRow(tr("&Memory per node:"), m_memoryPerNode);

    m_preferences->registerPage(
        tr("Cluster sessions"), this, [this] { restoreDefaults(); }, [this] { save(); }, [this] { show(); });
    useStored();
}

zoHostClusterPage::~zoHostClusterPage() = default;

void zoHostClusterPage::createParaViewFields()
{
    m_paraView->setObjectName(QStringLiteral("ParaViewProgram"));
    m_paraView->setToolTip(tr("Name or path of ParaView's server, pvserver, on all machines"));
    m_port->setObjectName(QStringLiteral("ParaViewPort"));
    m_port->setRange(1024, s_maximumPort);
    m_port->setToolTip(
        tr("Where ParaView's server waits for its client; when it is taken, the next ones are tried"));
    m_clients->setObjectName(QStringLiteral("ParaViewClients"));
    m_clients->addItem(tr("On this machine when all of the wall is here"), QLatin1String(s_asTheWall));
    m_clients->addItem(tr("On this machine only; others tunnel"), QLatin1String(s_thisMachine));
    m_clients->addItem(tr("Anywhere"), QLatin1String(s_anywhere));
    m_clients->setToolTip(tr("What the connect command names. The port is open on all addresses in any case: "
                             "close it with a firewall."));
    m_reverseClient->setObjectName(QStringLiteral("ParaViewReverse"));
    m_reverseClient->setPlaceholderText(tr("nobody: it waits to be called"));
    m_reverseClient->setToolTip(tr("For nodes that may not be reached: the machine of the client, which then "
                                   "listens on all of its addresses"));
}

QString zoHostClusterPage::storedEngine(zoPreferencesService* preferences)
{
    const QString engine = stored(preferences, s_engineKey, QString());
    for (const char* known : {s_local, s_paraView}) {
        if (engine == QLatin1String(known))
            return engine;
    }
    return QLatin1String(s_nodes);
}

zoParaViewService::Launch zoHostClusterPage::storedParaView(zoPreferencesService* preferences)
{
    zoParaViewService::Launch launch = zoParaViewPlan::defaultLaunch();
    const zoNodeClusterService::Launch nodes = storedLaunch(preferences);
    launch.pattern = nodes.pattern;
    launch.nodeServer = nodes.remoteProgram;
    const QString program = stored(preferences, s_paraViewKey, QString());
    if (!program.isEmpty())
        launch.program = program;
    bool ok = false;
    const int port = stored(preferences, s_portKey, QString()).toInt(&ok);
    if (ok && port > 0 && port <= s_maximumPort)
        launch.port = port;
    const QString clients = stored(preferences, s_clientsKey, QString());
    if (clients == QLatin1String(s_thisMachine))
        launch.clients = zoParaViewService::Clients::ThisMachine;
    else if (clients == QLatin1String(s_anywhere))
        launch.clients = zoParaViewService::Clients::Anywhere;
    const QString reverse = stored(preferences, s_reverseKey, QString());
    if (reverse.isEmpty() || zoLauncher::isHostName(reverse))
        launch.reverseClient = reverse;
    else
        zoLog::error(tr("\"%1\" cannot be the name of ParaView's client").arg(reverse));
    return launch;
}

zoNodeClusterService::Launch zoHostClusterPage::storedLaunch(zoPreferencesService* preferences)
{
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    const QString text = stored(preferences, s_launchKey, QLatin1String(zoLauncher::DefaultTemplate));
    QString reason;
    const QStringList words = zoLauncher::fromText(text, reason);
    if (words.isEmpty())
        zoLog::error(tr("The launch command \"%1\" cannot be used: %2").arg(text, reason));
    else
        launch.pattern = words;
    const QString program = stored(preferences, s_programKey, QString());
    if (!program.isEmpty())
        launch.remoteProgram = program;
    return launch;
}

bool zoHostClusterPage::storedEndsWithLostNode(zoPreferencesService* preferences)
{
    return stored(preferences, s_lostKey, QString()) == QLatin1String("true");
}

int zoHostClusterPage::storedMebibytes(zoPreferencesService* preferences)
{
    bool ok = false;
    const int mebibytes = stored(preferences, s_memoryKey, QString()).toInt(&ok);
    return ok ? qBound(0, mebibytes, s_maximumMebibytes) : s_defaultMebibytes;
}

void zoHostClusterPage::show()
{
    m_engine->setCurrentIndex(m_engine->findData(storedEngine(m_preferences)));
    m_launch->setText(stored(m_preferences, s_launchKey, QLatin1String(zoLauncher::DefaultTemplate)));
    m_launch->setCursorPosition(0);
    m_program->setText(
        stored(m_preferences, s_programKey, zoNodeClusterService::defaultLaunch().remoteProgram));
    const zoParaViewService::Launch paraView = storedParaView(m_preferences);
    m_paraView->setText(paraView.program);
    m_port->setValue(paraView.port);
    const QString clients = stored(m_preferences, s_clientsKey, QLatin1String(s_asTheWall));
    m_clients->setCurrentIndex(std::max(0, m_clients->findData(clients)));
    m_reverseClient->setText(stored(m_preferences, s_reverseKey, QString()));
    m_endsWithLostNode->setChecked(storedEndsWithLostNode(m_preferences));
    m_memoryPerNode->setValue(storedMebibytes(m_preferences));
}

void zoHostClusterPage::save()
{
    m_preferences->setString(QLatin1String(s_engineKey), m_engine->currentData().toString());
    m_preferences->setString(QLatin1String(s_launchKey), m_launch->text());
    m_preferences->setString(QLatin1String(s_programKey), m_program->text());
    m_preferences->setString(QLatin1String(s_paraViewKey), m_paraView->text());
    m_preferences->setString(QLatin1String(s_portKey), QString::number(m_port->value()));
    m_preferences->setString(QLatin1String(s_clientsKey), m_clients->currentData().toString());
    m_preferences->setString(QLatin1String(s_reverseKey), m_reverseClient->text().trimmed());
    m_preferences->setString(QLatin1String(s_lostKey), m_endsWithLostNode->isChecked()
                                                           ? QStringLiteral("true")
                                                           : QStringLiteral("false"));
    m_preferences->setString(QLatin1String(s_memoryKey), QString::number(m_memoryPerNode->value()));
    useStored();
}

void zoHostClusterPage::restoreDefaults()
{
    m_preferences->setString(QLatin1String(s_engineKey), QLatin1String(s_nodes));
    m_preferences->setString(QLatin1String(s_launchKey), QLatin1String(zoLauncher::DefaultTemplate));
    m_preferences->setString(QLatin1String(s_programKey),
                             zoNodeClusterService::defaultLaunch().remoteProgram);
    m_preferences->setString(QLatin1String(s_paraViewKey), zoParaViewPlan::defaultLaunch().program);
    m_preferences->setString(QLatin1String(s_portKey), QString::number(zoParaViewPlan::DefaultPort));
    m_preferences->setString(QLatin1String(s_clientsKey), QLatin1String(s_asTheWall));
    m_preferences->setString(QLatin1String(s_reverseKey), QString());
    m_preferences->setString(QLatin1String(s_lostKey), QStringLiteral("false"));
    m_preferences->setString(QLatin1String(s_memoryKey), QString::number(s_defaultMebibytes));
    useStored();
}

void zoHostClusterPage::useStored()
{
    m_cluster->setMemoryPerNode(storedMebibytes(m_preferences) * s_mebibyte);
    if (auto* nodes = qobject_cast<zoNodeClusterService*>(m_cluster)) {
        nodes->setLaunch(storedLaunch(m_preferences));
        nodes->setEndsWithLostNode(storedEndsWithLostNode(m_preferences));
    }
    if (auto* paraView = qobject_cast<zoParaViewService*>(m_cluster))
        paraView->setLaunch(storedParaView(m_preferences));
}
