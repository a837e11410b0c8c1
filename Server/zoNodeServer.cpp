#include "zoNodeServer.h"

#include "zoSpeedStore.h"

#include <zoServerHello.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QScreen>
#include <QTimer>

namespace
{
constexpr int s_longWorkMs = 20000;
constexpr int s_pictureWorkMs = 10000;
// To make a block of a speed test, on a machine that has much else to do.
constexpr int s_longestBlockMs = 100;

// Milliseconds that drawing and packing it take at most on a busy machine.
int pictureWork(const QSize& pixels)
{
    constexpr qint64 PixelsPerMs = 5000;
    return int(s_pictureWorkMs + qint64(pixels.width()) * pixels.height() / PixelsPerMs);
}

zoShowContent contentOf(const QString& word)
{
    if (word == QLatin1String("tiles"))
        return zoShowContent::Tiles;
    return word == QLatin1String("test-image") ? zoShowContent::TestImage : zoShowContent::None;
}
} // namespace

zoNodeServer::zoNodeServer(std::unique_ptr<zoServerLink> link, QObject* parent)
    : QObject(parent), m_link(std::move(link))
{
    connect(m_link.get(), &zoServerLink::received, this, &zoNodeServer::obey);
    connect(m_link.get(), &zoServerLink::closed, qApp, [] { QCoreApplication::exit(); });
}

zoNodeServer::~zoNodeServer() = default;

QStringList zoNodeServer::screens()
{
    QStringList texts;
    const QList<QScreen*> all = QGuiApplication::screens();
    for (const QScreen* screen : all) {
        const QRect area = screen->geometry();
        texts << QString::asprintf("%dx%d%+d%+d", area.width(), area.height(), area.x(), area.y());
    }
    return texts;
}

void zoNodeServer::open()
{
    zoServerHello hello = zoServerHello::own();
    hello.display = QGuiApplication::platformName();
    hello.screens = screens();
    m_link->open(hello.message());
}

void zoNodeServer::tell(const QByteArray& verb, const QJsonObject& object)
{
    m_link->send(zoServerMessage::of(verb, object));
}

void zoNodeServer::obey(const zoServerMessage& message)
{
    const QByteArray& verb = message.verb;
    if (verb == "DATA")
        return; // it is here, which is all that is asked
    if (verb == "DATAEND") {
        m_link->send({"DATAEND", "taken"});
        return;
    }
    const QJsonObject object = message.object();
    if (verb == "NODES") {
        hold(object);
    } else if (verb == "OPEN") {
        openWindows(object);
    } else if (verb == "SHOW") {
        show(object.value(QLatin1String("content")).toString());
    } else if (verb == "DRAW") {
        draw(object);
    } else if (verb == "GO") {
        const bool isEmpty = object.value(QLatin1String("empty")).toBool();
        m_link->together([this, isEmpty] { swap(isEmpty); });
    } else if (verb == "PICTURES") {
        takePictures();
    } else if (verb == "FETCH") {
        fetch(object);
    } else if (verb == "SLOW") {
        m_delayMs = object.value(QLatin1String("ms")).toInt();
    } else if (verb == "QUIT") {
        m_link->send({"BYE", {}});
        QCoreApplication::exit();
    }
}

void zoNodeServer::hold(const QJsonObject& object)
{
    if (m_held.isEmpty())
        m_locks.setDirectory(object.value(QLatin1String("locks")).toString());
    QHash<QString, int> wanted;
    const QJsonArray nodes = object.value(QLatin1String("nodes")).toArray();
    for (const QJsonValue& node : nodes)
        wanted.insert(node.toObject().value(QLatin1String("id")).toString(),
                      node.toObject().value(QLatin1String("port")).toInt());
    const QHash<QString, int> held = m_held;
    for (auto it = held.begin(); it != held.end(); ++it) {
        if (wanted.value(it.key(), -1) != it.value()) {
            m_locks.release(it.key(), it.value());
            m_held.remove(it.key());
        }
    }
    QStringList inUse;
    QString trouble;
    for (const QJsonValue& value : nodes) {
        const QJsonObject node = value.toObject();
        const QString id = node.value(QLatin1String("id")).toString();
        const int port = node.value(QLatin1String("port")).toInt();
        if (m_held.contains(id) || !trouble.isEmpty())
            continue;
        switch (m_locks.acquire(id, port, node.value(QLatin1String("share")).toBool())) {
        case zoClusterNodeLocks::Outcome::Free:
            m_held.insert(id, port);
            break;
        case zoClusterNodeLocks::Outcome::Shared:
            m_held.insert(id, port);
            inUse << id;
            break;
        case zoClusterNodeLocks::Outcome::InUse:
            inUse << id;
            break;
        case zoClusterNodeLocks::Outcome::NoLocking:
            trouble = m_locks.errorString();
            break;
        }
    }
    tell("HELD", {{QStringLiteral("inUse"), QJsonArray::fromStringList(inUse)},
                  {QStringLiteral("trouble"), trouble}});
}

void zoNodeServer::openWindows(const QJsonObject& object)
{
    m_link->expectWork(s_longWorkMs);
    QJsonObject failures;
    zoWallSetup setup;
    QString reason;
    m_content = contentOf(object.value(QLatin1String("content")).toString());
    if (!setup.fromJson(object.value(QLatin1String("setup")).toObject(), reason)) {
        for (auto it = m_held.cbegin(); it != m_held.cend(); ++it)
            failures.insert(it.key(), reason);
        tell("OPENED", {{QStringLiteral("failures"), failures}});
        return;
    }
    m_setup = setup;
    // The old windows go first: a screen may have one that fills it.
    m_show.reset();
    m_isDrawn = false;
    m_show = std::make_unique<zoNodeShow>(setup);
    std::vector<QRect> places;
    const QJsonArray rectangles = object.value(QLatin1String("places")).toArray();
    for (const QJsonValue& value : rectangles) {
        const QJsonArray numbers = value.toArray();
        places.emplace_back(numbers.at(0).toInt(), numbers.at(1).toInt(), numbers.at(2).toInt(),
                            numbers.at(3).toInt());
    }
    if (!places.empty())
        m_show->setDesktopPlaces(places);
    m_show->setContent(m_content);
    connect(m_show.get(), &zoNodeShow::needsFrame, this, [this] { tell("CHANGED", {}); });
    const QStringList failed = m_show->open();
    if (!failed.isEmpty()) {
        for (const zoWallNode& node : setup.nodes)
            failures.insert(node.id, failed.join(QStringLiteral("; ")));
    }
    for (const zoNodeShow::Remark& remark : m_show->remarks())
        tell("NOTE", {{QStringLiteral("node"), remark.node}, {QStringLiteral("text"), remark.text}});
    tell("OPENED", {{QStringLiteral("failures"), failures}});
}

void zoNodeServer::show(const QString& content)
{
    m_content = contentOf(content);
    if (m_show)
        m_show->setContent(m_content);
}

void zoNodeServer::draw(const QJsonObject& object)
{
    if (m_show && m_show->isOpen() && !object.value(QLatin1String("empty")).toBool()) {
        m_link->expectWork(s_pictureWorkMs);
        m_show->draw();
        m_show->finish();
        m_isDrawn = true;
    }
    const QJsonObject ready{{QStringLiteral("frame"), object.value(QLatin1String("frame"))}};
    if (m_delayMs > 0)
        QTimer::singleShot(m_delayMs, this, [this, ready] { tell("READY", ready); });
    else
        tell("READY", ready);
}

void zoNodeServer::swap(bool isEmpty)
{
    if (!m_show || !m_isDrawn || isEmpty)
        return;
    m_isDrawn = false;
    m_show->swap();
}

void zoNodeServer::takePictures()
{
    int number = 0;
    for (const zoWallNode& node : m_setup.nodes) {
        for (const zoWallWindow& window : node.windows) {
            if (!m_show)
                break;
            m_link->expectWork(pictureWork(window.geometry.size()));
            QByteArray png;
            QBuffer buffer(&png);
            buffer.open(QIODevice::WriteOnly);
            m_show->picture(number++).save(&buffer, "PNG");
            tell("PICTURE", {{QStringLiteral("node"), node.id},
                             {QStringLiteral("window"), window.number},
                             {QStringLiteral("png"), QString::fromLatin1(png.toBase64())}});
        }
    }
    tell("PICTURED", {});
}

// The event loop waits for it: nothing else is to be measured with it.
void zoNodeServer::fetch(const QJsonObject& object)
{
    const auto bytes = qint64(object.value(QLatin1String("bytes")).toDouble());
    const int milliseconds = object.value(QLatin1String("ms")).toInt();
    zoSpeedStore store(bytes);
    m_link->expectWork(int(milliseconds + s_pictureWorkMs + qint64(store.count()) * s_longestBlockMs));
    QElapsedTimer clock;
    qint64 sent = 0;
    while (!store.isMade())
        store.makeSome();
    m_link->send({"DATAEND", "begun"});
    clock.start();
    while (sent < bytes && clock.elapsed() < milliseconds) {
        const QByteArray block = store.block(sent);
        m_link->send({"DATA", block});
        m_link->waitForSent(2 * block.size());
        sent += block.size();
    }
    m_link->send({"DATAEND", "sent"});
}
