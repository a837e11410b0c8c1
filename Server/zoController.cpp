#include "zoController.h"

#include "zoRehearsalPlaces.h"
#include "zoSessionNetworks.h"
#include "zoSetupLibrary.h"
#include "zoSpeedRun.h"

#include <zoNodeReason.h>
#include <zoServerHello.h>
#include <zoWallPicture.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>
#include <cmath>

#include <csignal>

namespace
{
constexpr int s_longWorkMs = 20000;
constexpr int s_synchroniseMs = 200;
constexpr qint64 s_nanosecondsPerMillisecond = 1000000;

QJsonArray arrayOf(const QStringList& texts)
{
    return QJsonArray::fromStringList(texts);
}
} // namespace

zoController::zoController(QObject* parent) : QObject(parent), m_link(zoPipeLink::Watch::EndOfFile)
{
    connect(&m_link, &zoPipeLink::received, this, &zoController::obey);
    connect(&m_link, &zoPipeLink::closed, &m_heads, &zoHeads::end);
    connect(&m_heads, &zoHeads::received, this, &zoController::hear);
    connect(&m_heads, &zoHeads::ended, this, &zoController::loseServer);
    connect(&m_heads, &zoHeads::restarting, this, &zoController::serversRestart);
    connect(&m_heads, &zoHeads::note, this, [this](const QString& text) {
        report("NOTE", {{QStringLiteral("text"), text}});
    });
    connect(&m_heads, &zoHeads::drawn, this, &zoController::frameDrawn);
    connect(&m_heads, &zoHeads::measured, this, [this](const QJsonObject& rates) {
        m_rates = rates;
        synchronise();
    });
    connect(&m_heads, &zoHeads::allEnded, this, [this] {
        m_link.send({"BYE", {}});
        QCoreApplication::exit();
    });
}

zoController::~zoController() = default;

void zoController::open()
{
    m_link.open(zoServerHello::own().message());
}

void zoController::obey(const zoServerMessage& message)
{
    const QByteArray& verb = message.verb;
    const QJsonObject object = message.object();
    if (verb == "SESSION") {
        begin(object);
    } else if (verb == "OPEN") {
        if (m_step == Step::Asking)
            openWindows();
    } else if (verb == "SHOW") {
        m_content = object.value(QLatin1String("content")).toString();
        showContent();
    } else if (verb == "CONFIG") {
        change(object);
    } else if (verb == "MEASURE") {
        measure();
    } else if (verb == "PICTURES") {
        takePictures();
    } else if (verb == "INJECT") {
        inject(object);
    } else if (verb == "QUIT") {
        m_heads.end();
    }
}

void zoController::begin(const QJsonObject& session)
{
    m_rehearse = session.value(QLatin1String("rehearse")).toBool();
    m_useMpi = session.value(QLatin1String("mpi")).toBool();
    m_lockDirectory = session.value(QLatin1String("locks")).toString();
    m_memoryBase = qint64(session.value(QLatin1String("memory")).toDouble());
    m_availableMemory = qint64(session.value(QLatin1String("available")).toDouble(-1));
    m_content = session.value(QLatin1String("content")).toString();
    const QJsonArray avoided = session.value(QLatin1String("avoid")).toArray();
    m_avoided =
        QRect(avoided.at(0).toInt(), avoided.at(1).toInt(), avoided.at(2).toInt(), avoided.at(3).toInt());
    m_remoteProgram = session.value(QLatin1String("program")).toString();
    QStringList words;
    const QJsonArray pattern = session.value(QLatin1String("template")).toArray();
    for (const QJsonValue& word : pattern)
        words << word.toString();
    m_launcher = zoLauncher(words);
    m_heads.setLauncher(m_launcher, m_remoteProgram);
    change(session);
}

// A configuration that comes while another one is put into effect waits; of several, the last one counts.
void zoController::change(const QJsonObject& config)
{
    if (m_step != Step::None) {
        m_nextConfig = config;
        return;
    }
    m_nextConfig = {};
    if (!readDocument(config.value(QLatin1String("document")).toString()))
        return;
    m_wanted = zoSessionNodes::fromJson(config.value(QLatin1String("nodes")).toArray());
    m_share = config.value(QLatin1String("share")).toBool();
    m_order.clear();
    for (const Node& node : m_wanted)
        m_order << node.id;
    m_failed.clear();
    leave();
}

bool zoController::readDocument(const QString& document)
{
    beBusy();
    QString reason;
    zoWallSetup setup;
    if (!zoSetupLibrary::read(document, setup, reason)) {
        report("BROKEN", {{QStringLiteral("reason"), reason}});
        return false;
    }
    const QStringList before = m_setup.notes;
    m_setup = setup;
    for (const QString& note : qAsConst(m_setup.notes)) {
        if (!before.contains(note))
            report("NOTE", {{QStringLiteral("text"), note}});
    }
    return true;
}

// Before what may take longer than others wait for a sign of life.
void zoController::beBusy()
{
    m_link.expectWork(s_longWorkMs);
    m_heads.announceWork(s_longWorkMs);
}

void zoController::report(const QByteArray& verb, const QJsonObject& object)
{
    m_link.send(zoServerMessage::of(verb, object));
}

void zoController::reportNode(const Node& node)
{
    const zoSessionNodes::Server* server = m_nodes.server(node.server);
    QJsonObject object{{QStringLiteral("id"), node.id},
                       {QStringLiteral("state"), QLatin1String(zoSessionNodes::word(node.state))},
                       {QStringLiteral("reason"), node.reason},
                       {QStringLiteral("detail"), node.detail}};
    if (server != nullptr) {
        object.insert(QStringLiteral("version"), server->hello.version);
        object.insert(QStringLiteral("memory"), double(server->hello.freeMemory));
        object.insert(QStringLiteral("screens"), arrayOf(server->hello.screens));
        object.insert(QStringLiteral("process"), double(server->hello.processId));
    }
    const zoWallNode* shown = m_setup.node(node.id);
    if (shown != nullptr && !shown->windows.empty() && !shown->windows.front().viewports.empty())
        object.insert(QStringLiteral("tile"), shown->windows.front().viewports.front().tile);
    report("NODE", object);
}

// First step: nodes that go give back what they hold, before others may ask for the same.
void zoController::leave()
{
    m_step = Step::Leaving;
    QSet<int> touched;
    // What failed or was lost is tried again.
    QStringList leaving = m_nodes.leaving(m_wanted);
    for (const auto& entry : m_nodes.nodes()) {
        if (entry.second.state >= State::Failed && !leaving.contains(entry.first))
            leaving << entry.first;
    }
    for (const QString& id : qAsConst(leaving)) {
        touched << m_nodes.node(id)->server;
        m_nodes.remove(id);
    }
    touched.remove(-1);
    m_awaited = touched;
    for (const int key : qAsConst(touched))
        tellNodes(key);
    advance();
}

// Second step: new nodes get a server and are marked as in use.
void zoController::join()
{
    m_step = Step::Joining;
    QList<int> empty;
    for (const auto& entry : m_nodes.servers()) {
        if (entry.second.nodes.isEmpty())
            empty << entry.first;
    }
    m_heads.drop(empty);
    for (const int key : qAsConst(empty))
        m_nodes.removeServer(key);
    QSet<int> touched;
    launch(m_nodes.joining(m_wanted), touched);
    m_awaited = touched;
    for (const int key : qAsConst(touched)) {
        if (m_nodes.server(key)->hasGreeted)
            tellNodes(key);
    }
    advance();
}

void zoController::launch(const std::vector<Node>& joining, QSet<int>& servers)
{
    const int networks =
        std::clamp(int(m_setup.networks.size()), 1, int(zoSessionNodes::MaximumRehearsedNetworks));
    std::vector<zoHeads::Server> launched;
    QStringList refused;
    for (const Node& node : joining) {
        const int index = zoSessionNetworks::indexOf(m_setup, node.id);
        const zoWallNetwork* network = zoSessionNetworks::networkOf(m_setup, node.id);
        const int place = m_rehearse ? std::max(index, 0) % networks : index;
        const bool isNew = m_nodes.add(node, m_rehearse, place, networks);
        const int key = m_nodes.node(node.id)->server;
        if (!isNew) {
            servers << key;
            continue;
        }
        zoHeads::Server server;
        server.key = key;
        server.network = QString::number(place);
        QString reason;
        const QString own = QCoreApplication::applicationFilePath();
        if (m_rehearse || (node.isHere && zoSessionNetworks::gatewayHosts(m_setup, network).isEmpty())) {
            server.command = QStringList({own, QStringLiteral("server")});
            server.program = server.command;
        } else {
            server.gateways = zoSessionNetworks::gatewayHosts(m_setup, network);
            server.host = node.host;
            server.program = QStringList({m_remoteProgram, QStringLiteral("server")});
            server.command = m_launcher.command({node.host}, server.program, reason);
        }
        if (m_useMpi)
            server.mpi = zoSessionNetworks::mpi(network, m_launcher.agent());
        if (!server.mpi.isEmpty())
            server.program << QStringLiteral("--mpi");
        if (server.command.isEmpty()) {
            m_nodes.removeServer(key);
            failNode(node.id, QLatin1String(zoNodeReason::HostName), reason);
            continue;
        }
        servers << key;
        launched.push_back(server);
    }
    m_heads.launch(launched);
}

// What a server is to hold: all its nodes, those that it has included.
void zoController::tellNodes(int key)
{
    const zoSessionNodes::Server* server = m_nodes.server(key);
    QJsonArray nodes;
    for (const QString& id : server->nodes) {
        const Node* node = m_nodes.node(id);
        nodes << QJsonObject{{QStringLiteral("id"), id},
                             {QStringLiteral("port"), node->port},
                             {QStringLiteral("share"), m_share || !m_isSession}};
    }
    m_heads.send({key}, "NODES",
                 {{QStringLiteral("nodes"), nodes}, {QStringLiteral("locks"), m_lockDirectory}});
}

// After the second step a start asks what the person thinks of what was found; a change goes on.
void zoController::answer()
{
    if (m_isSession) {
        openWindows();
        return;
    }
    m_step = Step::Asking;
    QStringList inUse;
    for (const QString& id : qAsConst(m_order)) {
        const Node* node = m_nodes.node(id);
        if (node != nullptr && node->inUse)
            inUse << id;
    }
    report("ANSWERED", {{QStringLiteral("inUse"), arrayOf(inUse)},
                        {QStringLiteral("short"),
                         arrayOf(m_nodes.shortOfMemory(m_order, m_setup, m_memoryBase, m_availableMemory))},
                        {QStringLiteral("failed"), arrayOf(m_failed)}});
}

// Third step: windows, where the document wants others than there are.
void zoController::openWindows()
{
    m_step = Step::Opening;
    m_awaited.clear();
    const QList<int> keys = m_nodes.keys();
    for (const int key : keys) {
        zoSessionNodes::Server* server = m_nodes.server(key);
        const zoWallSetup setup = m_setup.ofNodes(server->nodes);
        QJsonObject body{{QStringLiteral("setup"), setup.toJson()}};
        if (m_rehearse)
            body.insert(QStringLiteral("places"), placesOf(setup));
        const QByteArray wanted = zoServerMessage::of("OPEN", body).payload;
        if (wanted == server->shown)
            continue;
        server->shown = wanted;
        body.insert(QStringLiteral("content"), m_content);
        m_awaited << key;
        m_heads.send({key}, "OPEN", body);
    }
    advance();
}

void zoController::finishOpening()
{
    m_step = Step::None;
    QStringList running;
    for (const QString& id : qAsConst(m_order)) {
        Node* node = m_nodes.node(id);
        if (node == nullptr || node->state == State::Failed || node->state == State::Lost)
            continue;
        if (node->state != State::Running) {
            node->state = State::Running;
            reportNode(*node);
        }
        running << id;
    }
    const bool isStart = !m_isSession;
    m_isSession = true;
    drawFrame();
    report(isStart ? "OPENED" : "CHANGED",
           {{QStringLiteral("failed"), arrayOf(m_failed)}, {QStringLiteral("running"), arrayOf(running)}});
    if (!m_nextConfig.isEmpty())
        change(m_nextConfig);
    if (m_measureIsWanted)
        measure();
}

// Goes on when nobody is waited for.
void zoController::advance()
{
    if (!m_awaited.isEmpty())
        return;
    switch (m_step) {
    case Step::Leaving:
        join();
        break;
    case Step::Joining:
        answer();
        break;
    case Step::Opening:
        finishOpening();
        break;
    case Step::None:
    case Step::Asking:
        break;
    }
}

void zoController::serverAnswered(int key)
{
    if (m_awaited.remove(key))
        advance();
}

// What they were told is gone with their programs: from the second step on they take part again.
void zoController::serversRestart(const QList<int>& keys)
{
    for (const int key : keys) {
        zoSessionNodes::Server* server = m_nodes.server(key);
        if (server == nullptr)
            continue;
        server->hasGreeted = false;
        server->shown.clear();
        m_awaited << key;
        m_picturesAwaited.remove(key);
    }
    finishPictures();
    if (m_step == Step::None || m_step == Step::Opening || m_step == Step::Asking)
        m_step = Step::Joining;
}

void zoController::hear(int key, const QByteArray& verb, const QJsonObject& body)
{
    zoSessionNodes::Server* server = m_nodes.server(key);
    if (server == nullptr)
        return;
    if (verb == "HELLO") {
        server->hello = zoServerHello::fromMessage(zoServerMessage::of(verb, body));
        server->hasGreeted = true;
        tellNodes(key);
        // One that is started again is another process, with other memory left.
        for (const QString& id : qAsConst(server->nodes)) {
            if (m_nodes.node(id)->state == State::Running)
                reportNode(*m_nodes.node(id));
        }
    } else if (verb == "HELD") {
        hearHeld(key, body);
    } else if (verb == "OPENED") {
        hearOpened(key, body);
    } else if (verb == "CHANGED") {
        drawFrame();
    } else if (verb == "PICTURE") {
        hearPicture(body);
    } else if (verb == "PICTURED") {
        m_picturesAwaited.remove(key);
        finishPictures();
    } else if (verb == "NOTE") {
        report("NOTE", body);
    }
}

void zoController::hearHeld(int key, const QJsonObject& body)
{
    const QString trouble = body.value(QLatin1String("trouble")).toString();
    if (!trouble.isEmpty())
        report("NOTE", {{QStringLiteral("locks"), trouble}});
    QSet<QString> inUse;
    const QJsonArray used = body.value(QLatin1String("inUse")).toArray();
    for (const QJsonValue& id : used)
        inUse << id.toString();
    const QStringList ids = m_nodes.server(key)->nodes;
    for (const QString& id : ids) {
        Node* node = m_nodes.node(id);
        if (node->state != State::Connecting)
            continue;
        node->inUse = inUse.contains(id);
        if (node->inUse && m_isSession && !m_share) {
            failNode(id, QLatin1String(zoNodeReason::InUse), {});
            continue;
        }
        node->state = State::Connected;
        reportNode(*node);
    }
    serverAnswered(key);
}

void zoController::hearOpened(int key, const QJsonObject& body)
{
    const QJsonObject failures = body.value(QLatin1String("failures")).toObject();
    for (auto it = failures.begin(); it != failures.end(); ++it) {
        const Node* node = m_nodes.node(it.key());
        // A node that runs goes on without the window that could not be changed.
        if (node == nullptr || node->state == State::Running)
            report("NOTE", {{QStringLiteral("node"), it.key()}, {QStringLiteral("text"), it.value()}});
        else
            failNode(it.key(), QLatin1String(zoNodeReason::Window), it.value().toString());
    }
    serverAnswered(key);
}

void zoController::loseServer(int key, const QString& reason, const QString& detail)
{
    const zoSessionNodes::Server* server = m_nodes.server(key);
    if (server == nullptr)
        return;
    const QStringList ids = server->nodes;
    m_nodes.removeServer(key);
    m_picturesAwaited.remove(key);
    for (const QString& id : ids)
        failNode(id, reason, detail);
    finishPictures();
    serverAnswered(key);
}

// A node that ran is lost; one that did not could not be started. Whoever waits for its server is told by the caller.
void zoController::failNode(const QString& id, const QString& reason, const QString& detail)
{
    Node* node = m_nodes.node(id);
    if (node == nullptr)
        return;
    const bool ran = node->state == State::Running;
    node->state = ran ? State::Lost : State::Failed;
    node->reason = reason;
    node->detail = detail;
    if (!ran)
        m_failed << id;
    if (zoSessionNodes::Server* server = m_nodes.server(node->server)) {
        server->nodes.removeAll(id);
        node->server = -1;
        if (server->nodes.isEmpty() && !ran) {
            const int key = server->key;
            m_heads.drop({key});
            m_nodes.removeServer(key);
        }
    }
    reportNode(*node);
}

void zoController::showContent()
{
    if (!m_isSession)
        return;
    m_heads.send(m_nodes.keys(), "SHOW", {{QStringLiteral("content"), m_content}});
    drawFrame();
}

QList<int> zoController::serversWithWindows() const
{
    QList<int> keys;
    for (const auto& entry : m_nodes.servers()) {
        const bool hasWindow =
            std::any_of(entry.second.nodes.begin(), entry.second.nodes.end(), [this](const QString& id) {
                const zoWallNode* node = m_setup.node(id);
                return node != nullptr && !node->windows.empty();
            });
        if (hasWindow && entry.second.hasGreeted)
            keys << entry.first;
    }
    return keys;
}

// One frame at a time; what changes meanwhile is in the next one.
void zoController::drawFrame()
{
    if (!m_isSession)
        return;
    if (m_heads.isDrawing() || m_measuring != Measuring::No) {
        m_frameIsWanted = true;
        return;
    }
    m_frameIsWanted = false;
    const QList<int> keys = serversWithWindows();
    if (!keys.isEmpty())
        m_heads.draw(keys, false);
}

void zoController::frameDrawn(const QHash<int, qint64>& waits)
{
    if (m_measuring == Measuring::Synchronisations) {
        ++m_synchronisations;
        if (!waits.isEmpty() && m_clock.elapsed() < s_synchroniseMs)
            m_heads.draw(m_nodes.keys(), true);
        else
            finishMeasuring();
        return;
    }
    QJsonObject nodes;
    for (auto it = waits.begin(); it != waits.end(); ++it) {
        const zoSessionNodes::Server* server = m_nodes.server(it.key());
        if (server == nullptr)
            continue;
        for (const QString& id : server->nodes)
            nodes.insert(id, double(it.value()));
    }
    if (!nodes.isEmpty())
        report("WAITS", nodes);
    if (m_frameIsWanted)
        drawFrame();
}

void zoController::measure()
{
    // Nodes that come, go or are started again have no ways yet.
    m_measureIsWanted = m_isSession && m_step != Step::None;
    if (m_measureIsWanted)
        return;
    if (m_measuring != Measuring::No || m_nodes.servers().empty()) {
        report("MEASURED", {});
        return;
    }
    m_measuring = Measuring::Rates;
    const QList<int> keys = m_nodes.keys();
    const zoSpeedRun::Limits limits = zoSpeedRun::limitsFor(keys.size(), m_rehearse);
    m_heads.measure(keys, limits.bytes, limits.milliseconds);
}

void zoController::synchronise()
{
    m_measuring = Measuring::Synchronisations;
    m_synchronisations = 0;
    m_clock.start();
    // A frame that is on its way goes on with the first of them.
    if (!m_heads.isDrawing())
        m_heads.draw(m_nodes.keys(), true);
}

// The slowest node counts: a wall waits for it.
void zoController::finishMeasuring()
{
    const qint64 nanoseconds = std::max<qint64>(m_clock.nsecsElapsed(), 1);
    m_measuring = Measuring::No;
    double sent = 0;
    double received = 0;
    QJsonObject nodes;
    for (auto it = m_rates.begin(); it != m_rates.end(); ++it) {
        const zoSessionNodes::Server* server = m_nodes.server(it.key().toInt());
        const QJsonArray pair = it.value().toArray();
        if (server == nullptr || pair.size() != 2)
            continue;
        for (const QString& id : server->nodes)
            nodes.insert(id, pair);
        sent = sent > 0 ? std::min(sent, pair.at(0).toDouble()) : pair.at(0).toDouble();
        received = received > 0 ? std::min(received, pair.at(1).toDouble()) : pair.at(1).toDouble();
    }
    QJsonObject result;
    if (!nodes.isEmpty())
        result = {
            {QStringLiteral("sent"), std::floor(sent)},
            {QStringLiteral("received"), std::floor(received)},
            {QStringLiteral("synchronised"),
             std::floor(m_synchronisations * 1000.0 * s_nanosecondsPerMillisecond / double(nanoseconds))},
            {QStringLiteral("nodes"), nodes}};
    report("MEASURED", result);
    if (m_frameIsWanted)
        drawFrame();
}

void zoController::takePictures()
{
    if (m_isTakingPictures)
        return;
    m_isTakingPictures = true;
    m_wallPicture = std::make_unique<zoWallPicture>(m_setup);
    const QList<int> keys = serversWithWindows();
    m_picturesAwaited = QSet<int>(keys.begin(), keys.end());
    m_heads.send(keys, "PICTURES", {});
    finishPictures();
}

void zoController::finishPictures()
{
    if (!m_isTakingPictures || !m_picturesAwaited.isEmpty())
        return;
    m_isTakingPictures = false;
    beBusy();
    QByteArray wall;
    QBuffer buffer(&wall);
    buffer.open(QIODevice::WriteOnly);
    if (!m_setup.size.isEmpty())
        m_wallPicture->image().save(&buffer, "PNG");
    m_wallPicture.reset();
    report("PICTURED", {{QStringLiteral("wall"), QString::fromLatin1(wall.toBase64())}});
}

void zoController::hearPicture(const QJsonObject& body)
{
    if (!m_isTakingPictures)
        return;
    beBusy();
    const QByteArray png = QByteArray::fromBase64(body.value(QLatin1String("png")).toString().toLatin1());
    m_wallPicture->add(body.value(QLatin1String("node")).toString(),
                       body.value(QLatin1String("window")).toInt(), QImage::fromData(png, "PNG"));
    report("PICTURE", body);
}

// Trouble on purpose, to see what a session does then; in a rehearsal alone.
void zoController::inject(const QJsonObject& object)
{
    const Node* node = m_nodes.node(object.value(QLatin1String("id")).toString());
    const zoSessionNodes::Server* server = node != nullptr ? m_nodes.server(node->server) : nullptr;
    if (!m_rehearse || server == nullptr || server->hello.processId <= 0)
        return;
    const QString what = object.value(QLatin1String("what")).toString();
    if (what == QLatin1String("lose"))
        kill(pid_t(server->hello.processId), SIGKILL);
    else if (what == QLatin1String("hang"))
        kill(pid_t(server->hello.processId), SIGSTOP);
    else if (what == QLatin1String("slow"))
        m_heads.send({server->key}, "SLOW", {{QStringLiteral("ms"), object.value(QLatin1String("ms"))}});
}

// The windows of a rehearsal, as the wall is arranged, on the screen of this machine.
QJsonArray zoController::placesOf(const zoWallSetup& setup) const
{
    const auto& servers = m_nodes.servers();
    const auto told = std::find_if(servers.begin(), servers.end(), [](const auto& entry) {
        return !entry.second.hello.screens.value(0).isEmpty();
    });
    const QRect screen = zoRehearsalPlaces::screenOf(
        told == servers.end() ? QString() : told->second.hello.screens.constFirst());
    const zoRehearsalPlaces desktop(m_setup.size, screen, m_avoided);
    QJsonArray places;
    for (const zoWallNode& node : setup.nodes) {
        for (const zoWallWindow& window : node.windows) {
            const QRect place = desktop.of(window.place);
            places << QJsonArray{place.x(), place.y(), place.width(), place.height()};
        }
    }
    return places;
}
