#include "zoTestCase.h"
#include "zoTwoWindows.h"

#include <zoNodeServer.h>
#include <zoServerLink.h>

#include <QApplication>
#include <QJsonObject>

#include <memory>

namespace
{
// Notes what the server says and announces.
class Link final : public zoServerLink
{
public:
    explicit Link(QStringList* said) : m_said(said) {}

    void open(const zoServerMessage& hello) override { send(hello); }
    void send(const zoServerMessage& message) override { *m_said << QString::fromLatin1(message.verb); }
    void waitForSent(qint64) override {}
    void expectWork(int milliseconds) override { *m_said << QStringLiteral("work %1").arg(milliseconds); }

private:
    QStringList* m_said;
};
} // namespace

// What a node does for the messages that it gets.
class tst_zoNodeServer final : public zoTestCase
{
    Q_OBJECT

private slots:
    void longWorkIsAnnounced();
};

// Else a node that draws slowly would be taken for one that hangs.
void tst_zoNodeServer::longWorkIsAnnounced()
{
    QStringList said;
    auto owned = std::make_unique<Link>(&said);
    Link* const link = owned.get();
    zoNodeServer server(std::move(owned));
    const auto tell = [&](const char* verb, const QJsonObject& object = QJsonObject()) {
        said.clear();
        emit link->received(zoServerMessage::of(verb, object));
        for (const char* other : {"NOTE", "CHANGED"})
            said.removeAll(QLatin1String(other));
        return said;
    };

    QCOMPARE(tell("OPEN", {{QStringLiteral("setup"), zoTwoWindows().toJson()}}),
             QStringList({"work 20000", "OPENED"}));
    QCOMPARE(tell("DRAW"), QStringList({"work 10000", "READY"}));
    // 10 s, and one millisecond for each 5,000 pixels.
    QCOMPARE(tell("PICTURES"), QStringList({"work 10004", "PICTURE", "work 10001", "PICTURE", "PICTURED"}));
    // With what making one block takes at most.
    QCOMPARE(tell("FETCH", {{QStringLiteral("bytes"), 1}, {QStringLiteral("ms"), 60000}}),
             QStringList({"work 70100", "DATAEND", "DATA", "DATAEND"}));
}

ZO_TEST_MAIN(tst_zoNodeServer)
#include "tst_zoNodeServer.moc"
