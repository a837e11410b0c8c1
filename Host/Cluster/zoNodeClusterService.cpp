#include "zoNodeClusterService.h"

#include "zoControllerProcess.h"
#include "zoSessionRequest.h"

#include <zoLauncher.h>
#include <zoLog.h>
#include <zoServerBeat.h>
#include <zoServerHello.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QPointer>

#include <algorithm>

namespace
{
constexpr int s_complete = 100;
// Longer than what programs allow each other, so that they can say which node it was.
constexpr int s_connectMs = 30000;
constexpr int s_openMs = 30000;
constexpr int s_measureMs = 120000;
constexpr int s_picturesMs = 120000;
constexpr int s_lossesMs = 50;
// Intervals without a word before the controller counts as hung; it may be busy with a large document.
constexpr int s_controllerPatience = 8;

QStringList textsOf(const QJsonValue& value)
{
    QStringList texts;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& text : array)
        texts << text.toString();
    return texts;
}

QString figure(double value)
{
    return QString::number(qint64(std::max(value, 1.0)));
}
} // namespace

zoNodeClusterService::Launch zoNodeClusterService::defaultLaunch()
{
    Launch launch;
    launch.program = zoControllerProcess::defaultProgram();
    launch.remoteProgram = QStringLiteral("ZOKEClusterServer");
    QString reason;
    launch.pattern = zoLauncher::fromText(QLatin1String(zoLauncher::DefaultTemplate), reason);
    return launch;
}

zoNodeClusterService::zoNodeClusterService(const Launch& launch, QObject* parent)
    : zoHostSessionService(parent), m_launch(launch), m_wait([this] { return isOver(); })
{
    m_losses.setSingleShot(true);
    m_losses.setInterval(s_lossesMs);
    connect(&m_losses, &QTimer::timeout, this, &zoNodeClusterService::tellLosses);
    m_watch.setInterval(zoServerBeat::Interval);
    connect(&m_watch, &QTimer::timeout, this, &zoNodeClusterService::watchController);
}

zoNodeClusterService::~zoNodeClusterService()
{
    endController();
}

QStringList zoNodeClusterService::runningNodes()
{
    return m_running;
}

void zoNodeClusterService::setLaunch(const Launch& launch)
{
    m_launch = launch;
}

void zoNodeClusterService::setRehearsal(bool on)
{
    m_wantsRehearsal = on;
}

void zoNodeClusterService::setRehearsalQuestion(std::function<bool()> question)
{
    m_rehearsalQuestion = std::move(question);
}

void zoNodeClusterService::setOwnPlace(std::function<QRect()> place)
{
    m_ownPlace = std::move(place);
}

void zoNodeClusterService::setEndsWithLostNode(bool on)
{
    m_endsWithLostNode = on;
}

void zoNodeClusterService::setAvailableMemory(qint64 bytes)
{
    m_availableMemory = bytes;
}

void zoNodeClusterService::setLockDirectory(const QString& directory)
{
    m_lockDirectory = directory;
}

qint64 zoNodeClusterService::controllerProcess() const
{
    return m_controller != nullptr ? m_controller->processId() : 0;
}

qint64 zoNodeClusterService::nodeProcess(const QString& id) const
{
    return m_reports.process(id);
}

zoClusterService::Capabilities zoNodeClusterService::capabilities()
{
    Capabilities all = ShowsTiles | ShowsTestImage | MeasuresSpeed | JoinsWhileRunning | ReportsLostNodes;
    bool rehearses = m_isRehearsal;
    if (state() == State::Idle) {
        zoClusterDocument document;
        QString reason;
        rehearses = m_wantsRehearsal || (document.parse(config(), reason) &&
                                         zoSessionRequest::isAllOnThisMachine(document.enabledNodes()));
    }
    all.setFlag(Rehearses, rehearses);
    return all;
}

QVector<zoClusterNodeReport> zoNodeClusterService::nodeReport()
{
    return m_reports.all();
}

void zoNodeClusterService::changeSession(const Nodes& nodes)
{
    m_reports.setOrder(zoSessionRequest::idsOf(nodes));
    m_controller->send("CONFIG", zoSessionRequest::config(config(), nodes, m_shares));
}

bool zoNodeClusterService::connectSession(const Nodes& nodes, const Accepted& accepted)
{
    const QPointer<zoNodeClusterService> self(this);
    m_shares = accepted.runningServers;
    m_isRehearsal = m_wantsRehearsal || zoSessionRequest::isAllOnThisMachine(nodes);
    Attempt outcome = attempt(nodes);
    if (outcome == Attempt::Unreachable && !m_isRehearsal && m_rehearsalQuestion) {
        const bool rehearse = m_rehearsalQuestion();
        if (!self)
            return false;
        endController();
        m_isRehearsal = rehearse;
        if (rehearse && !isAborted())
            outcome = attempt(nodes);
    }
    if (outcome == Attempt::Destroyed)
        return false;
    if (outcome != Attempt::Succeeded) {
        emit progressFinished();
        return self && fail(isAborted() ? tr("aborted") : m_broken);
    }
    if (!judge(textsOf(m_answer.value(QLatin1String("inUse"))),
               textsOf(m_answer.value(QLatin1String("short"))), accepted))
        return false;
    outcome = openWindows();
    if (outcome == Attempt::Destroyed)
        return false;
    emit progressFinished();
    if (!self)
        return false;
    if (outcome != Attempt::Succeeded || isAborted())
        return fail(isAborted() ? tr("aborted") : m_broken);
    m_running = textsOf(m_opened.value(QLatin1String("running")));
    return announceStart();
}

// Unreachable when not one node could be had, for whatever reason; m_broken says it.
zoNodeClusterService::Attempt zoNodeClusterService::attempt(const Nodes& nodes)
{
    const QPointer<zoNodeClusterService> self(this);
    m_reports.reset(zoSessionRequest::idsOf(nodes));
    m_running.clear();
    m_broken.clear();
    m_answer = {};
    m_opened = {};
    m_answered = 0;
    m_silence = 0;
    m_controller = new zoControllerProcess(this);
    connect(m_controller, &zoControllerProcess::received, this, &zoNodeClusterService::receive);
    connect(m_controller, &zoControllerProcess::ended, this, &zoNodeClusterService::loseController);
    m_controller->start(m_launch.program);
    m_watch.start();
    emit progressChanged(tr("Connecting to %1 ...").arg(zoSessionRequest::listOf(m_reports.order())), 0);
    return self ? connectNodes(nodes) : Attempt::Destroyed;
}

zoNodeClusterService::Attempt zoNodeClusterService::connectNodes(const Nodes& nodes)
{
    if (!isOver()) {
        QJsonObject session = zoSessionRequest::config(config(), nodes, true);
        session.insert(QStringLiteral("rehearse"), m_isRehearsal);
        const QRect own = m_ownPlace ? m_ownPlace() : QRect();
        if (!own.isEmpty())
            session.insert(QStringLiteral("avoid"), QJsonArray{own.x(), own.y(), own.width(), own.height()});
        session.insert(QStringLiteral("template"), QJsonArray::fromStringList(m_launch.pattern));
        session.insert(QStringLiteral("program"), m_launch.remoteProgram);
        session.insert(QStringLiteral("mpi"), m_launch.mpi == Mpi::Always ||
                                                  (m_launch.mpi == Mpi::BetweenMachines && !m_isRehearsal));
        session.insert(QStringLiteral("locks"), m_lockDirectory);
        session.insert(QStringLiteral("memory"), double(memoryPerNode()));
        session.insert(QStringLiteral("available"), double(m_availableMemory));
        session.insert(QStringLiteral("content"), contentWord());
        m_controller->send("SESSION", session);
    }
    switch (pump(s_connectMs, [this] { return !m_answer.isEmpty(); })) {
    case zoSessionWait::Outcome::Done:
        break;
    case zoSessionWait::Outcome::TimedOut:
        m_broken = tr("the nodes did not answer");
        return Attempt::Failed;
    case zoSessionWait::Outcome::Ended:
        return Attempt::Failed;
    case zoSessionWait::Outcome::Destroyed:
        return Attempt::Destroyed;
    }
    const QStringList failed = textsOf(m_answer.value(QLatin1String("failed")));
    if (failed.isEmpty())
        return Attempt::Succeeded;
    logFailures();
    m_broken = tr("%1 cannot be used").arg(zoSessionRequest::listOf(failed));
    return failed.size() == m_reports.order().size() ? Attempt::Unreachable : Attempt::Failed;
}

void zoNodeClusterService::logFailures() const
{
    const QVector<zoClusterNodeReport> reports = m_reports.all();
    for (const zoClusterNodeReport& report : reports) {
        if (report.state == zoClusterNodeReport::State::Failed)
            zoLog::error(tr("Node %1 failed: %2").arg(report.id, report.reason));
    }
}

zoNodeClusterService::Attempt zoNodeClusterService::openWindows()
{
    if (!isOver())
        m_controller->send("OPEN");
    switch (pump(s_openMs, [this] { return !m_opened.isEmpty(); })) {
    case zoSessionWait::Outcome::Done:
        break;
    case zoSessionWait::Outcome::TimedOut:
        m_broken = tr("the windows were not opened");
        return Attempt::Failed;
    case zoSessionWait::Outcome::Ended:
        return Attempt::Failed;
    case zoSessionWait::Outcome::Destroyed:
        return Attempt::Destroyed;
    }
    const QStringList failed = textsOf(m_opened.value(QLatin1String("failed")));
    if (failed.isEmpty())
        return Attempt::Succeeded;
    logFailures();
    m_broken = tr("%1 cannot be used").arg(zoSessionRequest::listOf(failed));
    return Attempt::Failed;
}

// The only place that handles events. The end of the application is that of an attempt, too.
zoSessionWait::Outcome zoNodeClusterService::pump(int limit, const std::function<bool()>& done)
{
    const zoSessionWait::Outcome outcome = m_wait.until(done, limit);
    if (outcome != zoSessionWait::Outcome::Destroyed && m_wait.takeQuit())
        setAborted(true);
    return outcome;
}

bool zoNodeClusterService::isOver() const
{
    return isAborted() || !m_broken.isEmpty() || m_controller == nullptr;
}

void zoNodeClusterService::receive(const zoServerMessage& message)
{
    const QPointer<zoNodeClusterService> self(this);
    m_silence = 0;
    const QJsonObject object = message.object();
    if (message.verb == "HELLO") {
        const QString mismatch = zoServerHello::fromMessage(message).mismatch();
        if (!mismatch.isEmpty())
            m_broken = tr("%1 does not belong to this program: %2").arg(m_launch.program, mismatch);
    } else if (message.verb == "NODE") {
        receiveNode(object);
    } else if (message.verb == "ANSWERED") {
        m_answer = object;
    } else if (message.verb == "OPENED") {
        m_opened = object;
    } else if (message.verb == "CHANGED") {
        receiveChange(object);
    } else if (message.verb == "WAITS") {
        m_reports.takeWaits(object);
    } else if (message.verb == "MEASURED") {
        m_measured = object;
        m_isMeasured = true;
    } else if (message.verb == "PICTURE") {
        m_pictures.windows.insert(
            object.value(QLatin1String("node")).toString() + QLatin1Char('-') +
                QString::number(object.value(QLatin1String("window")).toInt()),
            QByteArray::fromBase64(object.value(QLatin1String("png")).toString().toLatin1()));
    } else if (message.verb == "PICTURED") {
        m_pictures.wall = QByteArray::fromBase64(object.value(QLatin1String("wall")).toString().toLatin1());
        m_hasPictures = true;
    } else if (message.verb == "NOTE") {
        receiveNote(object);
    } else if (message.verb == "BROKEN") {
        const QString reason = object.value(QLatin1String("reason")).toString();
        if (state() == State::Starting)
            m_broken = reason;
        else
            zoLog::error(tr("Configuration of the running cluster refused: %1").arg(reason));
    }
    if (self)
        m_wait.wake();
}

void zoNodeClusterService::receiveNode(const QJsonObject& object)
{
    const QPointer<zoNodeClusterService> self(this);
    const zoClusterNodeReport report = m_reports.take(object);
    const QString& id = report.id;
    const bool wasRunning = m_running.contains(id);
    if (state() == State::Running && report.state == zoClusterNodeReport::State::Lost && wasRunning) {
        m_running.removeAll(id);
        zoLog::error(tr("Node %1 lost: %2").arg(id, report.reason));
        if (!m_losses.isActive())
            m_losses.start();
    } else if (state() == State::Running && report.state == zoClusterNodeReport::State::Failed) {
        zoLog::error(tr("Node %1 not added: %2").arg(id, report.reason));
    }
    emit nodeStateChanged(id);
    if (self && state() == State::Starting &&
        object.value(QLatin1String("state")).toString() == QLatin1String("connected"))
        showProgress(id);
}

void zoNodeClusterService::showProgress(const QString& id)
{
    ++m_answered;
    const int percent = int(qint64(m_answered) * s_complete / std::max(int(m_reports.order().size()), 1));
    emit progressChanged(tr("Connected to %1").arg(id), std::min(percent, s_complete));
}

void zoNodeClusterService::receiveChange(const QJsonObject& object)
{
    if (state() != State::Running)
        return;
    const QStringList running = textsOf(object.value(QLatin1String("running")));
    m_reports.forgetOthers();
    if (running == m_running)
        return;
    m_running = running;
    m_losses.stop();
    zoLog::info(tr("Cluster runs on %1").arg(zoSessionRequest::listOf(m_running)));
    emit runningNodesChanged();
}

void zoNodeClusterService::receiveNote(const QJsonObject& object) const
{
    const QString text = object.value(QLatin1String("text")).toString();
    const QString locks = object.value(QLatin1String("locks")).toString();
    const QString node = object.value(QLatin1String("node")).toString();
    if (!locks.isEmpty())
        zoLog::error(tr("Other hosts on this machine cannot be seen: %1").arg(locks));
    else
        zoLog::info(node.isEmpty() ? text : tr("Node %1: %2").arg(node, text));
}

void zoNodeClusterService::loseController(const QString& lastLine)
{
    const QString reason =
        lastLine.isEmpty() ? tr("its controller ended") : tr("its controller ended: %1").arg(lastLine);
    if (state() == State::Starting) {
        m_broken = reason;
        m_wait.wake();
        return;
    }
    if (state() != State::Running)
        return;
    zoLog::error(tr("Cluster session lost: %1").arg(reason));
    endSession();
}

// A controller that hangs is as good as none: its nodes have ended by themselves.
void zoNodeClusterService::watchController()
{
    if (m_controller == nullptr) {
        m_watch.stop();
        return;
    }
    m_silence = m_controller->takeSign() ? 0 : m_silence + 1;
    if (m_silence > s_controllerPatience && state() != State::Idle) {
        m_silence = 0;
        loseController(tr("it stopped answering"));
    }
}

// Losses that came together are told together.
void zoNodeClusterService::tellLosses()
{
    if (state() != State::Running)
        return;
    if (m_running.isEmpty()) {
        zoLog::error(tr("Cluster session lost: no node runs any more"));
        endSession();
    } else if (m_endsWithLostNode) {
        zoLog::error(tr("Cluster session ends: a node is lost"));
        endSession();
    } else {
        emit runningNodesChanged();
    }
}

void zoNodeClusterService::releaseSession()
{
    endController();
    m_running.clear();
}

// Whoever waits for it waits no longer. The nodes are free when this returns.
void zoNodeClusterService::endController()
{
    m_watch.stop();
    m_losses.stop();
    if (m_controller == nullptr)
        return;
    zoControllerProcess* controller = m_controller;
    m_controller = nullptr;
    controller->disconnect(this);
    controller->end();
    // Its signal may be the one that led here.
    controller->setParent(nullptr);
    controller->deleteLater();
    m_wait.wake();
}

QString zoNodeClusterService::contentWord() const
{
    switch (content()) {
    case Content::Tiles:
        return QStringLiteral("tiles");
    case Content::TestImage:
        return QStringLiteral("test-image");
    case Content::None:
        break;
    }
    return QStringLiteral("none");
}

void zoNodeClusterService::showContent()
{
    if (state() == State::Running)
        m_controller->send("SHOW", {{QStringLiteral("content"), contentWord()}});
}

QStringList zoNodeClusterService::speedTest()
{
    if (state() != State::Running || m_running.isEmpty() || m_isWaiting)
        return {};
    setAborted(false);
    m_isMeasured = false;
    m_isWaiting = true;
    m_controller->send("MEASURE");
    const zoSessionWait::Outcome pumped = pump(s_measureMs, [this] { return m_isMeasured; });
    if (pumped == zoSessionWait::Outcome::Destroyed)
        return {};
    m_isWaiting = false;
    if (pumped != zoSessionWait::Outcome::Done || m_measured.isEmpty()) {
        zoLog::error(tr("Network speed test failed: the nodes did not answer"));
        return {};
    }
    const QJsonObject nodes = m_measured.value(QLatin1String("nodes")).toObject();
    for (const QString& id : qAsConst(m_running)) {
        constexpr double Mebibyte = 1024 * 1024;
        const QJsonArray rates = nodes.value(id).toArray();
        if (rates.size() == 2)
            zoLog::info(tr("Node %1: sent %2 MByte/s, received %3 MByte/s")
                            .arg(id, QString::number(rates.at(0).toDouble() / Mebibyte, 'f', 1),
                                 QString::number(rates.at(1).toDouble() / Mebibyte, 'f', 1)));
    }
    return {figure(m_measured.value(QLatin1String("sent")).toDouble()),
            figure(m_measured.value(QLatin1String("received")).toDouble()),
            figure(m_measured.value(QLatin1String("synchronised")).toDouble())};
}

bool zoNodeClusterService::takePictures(Pictures& pictures, QString& reason)
{
    if (state() != State::Running || m_isWaiting) {
        reason = tr("no session runs");
        return false;
    }
    setAborted(false);
    m_pictures = {};
    m_hasPictures = false;
    m_isWaiting = true;
    m_controller->send("PICTURES");
    // Of a large wall they take their time: as long as pictures come, the others are waited for.
    using Outcome = zoSessionWait::Outcome;
    Outcome pumped = Outcome::TimedOut;
    for (int before = -1; pumped == Outcome::TimedOut && m_pictures.windows.size() > before;) {
        before = m_pictures.windows.size();
        pumped = pump(s_picturesMs, [this] { return m_hasPictures; });
    }
    if (pumped == Outcome::Destroyed)
        return false;
    m_isWaiting = false;
    if (pumped != Outcome::Done) {
        reason = tr("the nodes did not answer");
        return false;
    }
    pictures = m_pictures;
    m_pictures = {};
    return true;
}

void zoNodeClusterService::inject(const QString& id, const QString& what, int milliseconds)
{
    if (state() == State::Running && m_isRehearsal)
        m_controller->send("INJECT", {{QStringLiteral("id"), id},
                                      {QStringLiteral("what"), what},
                                      {QStringLiteral("ms"), milliseconds}});
}
