#include "zoTestCase.h"

#include <zoLocalClusterService.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// What the embedded cluster service does beyond the contract of all cluster services.
class tst_zoLocalClusterService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void memoryIsSharedByTheNodes_data();
    void memoryIsSharedByTheNodes();
    void figuresOfTheSystemAreUsed();

    void sessionOfAnotherProcessIsMet();
    void sessionOfAKilledProcessIsForgotten();
    void anotherProcessMeetsThisSession();
    void withoutLockFileTheStartGoesOn();

    void offeredConfigurationIsAnnounced();
    void offeredConfigurationChangesTheRunningNodes();
    void equalOrRefusedConfigurationIsNotAnnounced();
    void configurationIsCopied();

    void serviceMayBeDestroyedWhileItConnects();
    void serviceMayBeDestroyedByAQuestion();
    void serviceMayBeDestroyedOnceStarted();
    void destructionOfARunningServiceIsSilent();

    void diagnosticModesAreKeptAndLogged();
    void longListsAreCutInTheLog();
    void tenThousandNodesStart();

private:
    std::unique_ptr<zoLocalClusterService> createService(const QStringList& nodes) const;
    std::unique_ptr<QProcess> startHolder(const QStringList& nodes) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace
{
constexpr int ProcessTimeoutMs = 30000;

QString documentOf(const QStringList& nodes)
{
    QString text = QStringLiteral("<cluster><master><network>");
    for (const QString& node : nodes)
        text += QStringLiteral("<node name=\"%1\"/>").arg(node);
    return text + QStringLiteral("</network></master></cluster>");
}
} // namespace

void tst_zoLocalClusterService::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

std::unique_ptr<zoLocalClusterService>
tst_zoLocalClusterService::createService(const QStringList& nodes) const
{
    auto service = std::make_unique<zoLocalClusterService>();
    service->setLockDirectory(m_directory->path());
    service->setMemoryPerNode(0);
    service->applyConfig(documentOf(nodes));
    return service;
}

// Another process with a session on these nodes.
std::unique_ptr<QProcess> tst_zoLocalClusterService::startHolder(const QStringList& nodes) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QStringLiteral(ZO_SESSION_HOLDER), QStringList(m_directory->path()) + nodes);
    if (!process->waitForStarted(ProcessTimeoutMs))
        return process;
    while (!process->canReadLine() && process->waitForReadyRead(ProcessTimeoutMs)) {
    }
    return process;
}

void tst_zoLocalClusterService::memoryIsSharedByTheNodes_data()
{
    QTest::addColumn<qint64>("perNode");
    QTest::addColumn<qint64>("available");
    QTest::addColumn<QString>("shortNodes");

    QTest::newRow("enough") << qint64(100) << qint64(1000) << "";
    QTest::newRow("exactly-enough") << qint64(100) << qint64(300) << "";
    QTest::newRow("one-byte-short") << qint64(100) << qint64(299) << "n3";
    QTest::newRow("enough-for-one") << qint64(100) << qint64(100) << "n2, n3";
    QTest::newRow("nothing-left") << qint64(100) << qint64(0) << "n1, n2, n3";
    QTest::newRow("unknown") << qint64(100) << qint64(-1) << "";
    QTest::newRow("no-need") << qint64(0) << qint64(0) << "";
    QTest::newRow("negative-need") << qint64(-1) << qint64(0) << "";
}

void tst_zoLocalClusterService::memoryIsSharedByTheNodes()
{
    QFETCH(qint64, perNode);
    QFETCH(qint64, available);
    QFETCH(QString, shortNodes);
    const auto service = createService({"n1", "n2", "n3"});
    service->setMemoryPerNode(perNode);
    service->setAvailableMemory([available] { return available; });
    QSignalSpy asked(service.get(), &zoClusterService::notEnoughMemoryFound);
    if (!shortNodes.isEmpty())
        expectMessage(QtCriticalMsg,
                      QRegularExpression(QStringLiteral("not enough memory for %1$").arg(shortNodes)));

    const bool started = service->start();

    QCOMPARE(started, shortNodes.isEmpty());
    QCOMPARE(asked.count(), shortNodes.isEmpty() ? 0 : 1);
    if (!shortNodes.isEmpty())
        QCOMPARE(asked.at(0).at(0).toString(), shortNodes);
}

void tst_zoLocalClusterService::figuresOfTheSystemAreUsed()
{
    const auto service = createService({"n1"});
    constexpr qint64 MoreThanAnyMachineHas = qint64(1) << 60;
    service->setMemoryPerNode(MoreThanAnyMachineHas);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("not enough memory")));
    QVERIFY(!service->start());

    service->setMemoryPerNode(1);
    QVERIFY(service->start());
}

void tst_zoLocalClusterService::sessionOfAnotherProcessIsMet()
{
    const auto holder = startHolder({"n1", "n2"});
    QCOMPARE(holder->readLine(), QByteArray("running\n"));
    const auto service = createService({"n2", "n3"});
    QSignalSpy asked(service.get(), &zoClusterService::multipleServersFound);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("a server already runs on n2$")));

    QVERIFY(!service->start());
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.at(0).at(0).toString(), QStringLiteral("n2"));

    service->setAcceptRunningServers(true);
    QVERIFY(service->start());
    service->stop();
    service->setAcceptRunningServers(false);
    holder->closeWriteChannel();
    QVERIFY(holder->waitForFinished(ProcessTimeoutMs));
    QVERIFY(service->start());
}

void tst_zoLocalClusterService::sessionOfAKilledProcessIsForgotten()
{
    const auto holder = startHolder({"n1"});
    QCOMPARE(holder->readLine(), QByteArray("running\n"));
    holder->kill();
    QVERIFY(holder->waitForFinished(ProcessTimeoutMs));
    const auto service = createService({"n1"});

    QVERIFY(service->start());
}

void tst_zoLocalClusterService::anotherProcessMeetsThisSession()
{
    const auto service = createService({"n1"});
    QVERIFY(service->start());

    const auto refused = startHolder({"n1"});
    QCOMPARE(refused->readLine(), QByteArray("failed\n"));
    const auto other = startHolder({"n2"});
    QCOMPARE(other->readLine(), QByteArray("running\n"));

    for (QProcess* process : {refused.get(), other.get()}) {
        process->closeWriteChannel();
        QVERIFY(process->waitForFinished(ProcessTimeoutMs));
    }
}

void tst_zoLocalClusterService::withoutLockFileTheStartGoesOn()
{
    QFile file(m_directory->filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto service = createService({"n1", "n2"});
    service->setLockDirectory(file.fileName());
    // Once, not for each node.
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("cannot be seen: .*file")));

    QVERIFY(service->start());
}

void tst_zoLocalClusterService::offeredConfigurationIsAnnounced()
{
    zoLocalClusterService service;
    QSignalSpy announced(&service, &zoClusterService::configChanged);

    service.offerConfig(documentOf({"n1"}));

    QCOMPARE(service.currentConfig(), documentOf({"n1"}));
    QCOMPARE(announced.count(), 1);
    QCOMPARE(announced.at(0).at(0).toString(), documentOf({"n1"}));
}

void tst_zoLocalClusterService::offeredConfigurationChangesTheRunningNodes()
{
    const auto service = createService({"n1"});
    QVERIFY(service->start());
    QSignalSpy nodes(service.get(), &zoClusterService::runningNodesChanged);

    service->offerConfig(documentOf({"n1", "n2"}));

    QCOMPARE(service->runningNodes(), QStringList({"n1", "n2"}));
    QCOMPARE(nodes.count(), 1);
}

void tst_zoLocalClusterService::equalOrRefusedConfigurationIsNotAnnounced()
{
    const auto service = createService({"n1"});
    QVERIFY(service->start());
    QSignalSpy announced(service.get(), &zoClusterService::configChanged);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("refused")));

    service->offerConfig(documentOf({"n1"}));
    service->offerConfig("<cluster>");

    QCOMPARE(announced.count(), 0);
    QCOMPARE(service->currentConfig(), documentOf({"n1"}));
}

void tst_zoLocalClusterService::configurationIsCopied()
{
    QString text = documentOf({"n1"});
    zoLocalClusterService service;

    // As the text of a module that is unloaded later.
    service.applyConfig(QString::fromRawData(text.constData(), text.size()));
    text.fill(QLatin1Char('x'));

    QCOMPARE(service.currentConfig(), documentOf({"n1"}));
}

void tst_zoLocalClusterService::serviceMayBeDestroyedWhileItConnects()
{
    auto service = createService({"n1", "n2"});
    connect(service.get(), &zoClusterService::progressChanged, this, [&] { service.reset(); });

    QVERIFY(!service->start());

    QVERIFY(!service);
}

void tst_zoLocalClusterService::serviceMayBeDestroyedByAQuestion()
{
    const auto first = createService({"n1"});
    QVERIFY(first->start());
    auto second = createService({"n1"});
    second->setMemoryPerNode(1);
    second->setAvailableMemory([] { return qint64(0); });
    connect(second.get(), &zoClusterService::multipleServersFound, this, [&] { second.reset(); });

    QVERIFY(!second->start());

    QVERIFY(!second);
}

void tst_zoLocalClusterService::serviceMayBeDestroyedOnceStarted()
{
    auto service = createService({"n1"});
    connect(service.get(), &zoClusterService::started, this, [&] { service.reset(); });

    service->start();

    QVERIFY(!service);
}

void tst_zoLocalClusterService::destructionOfARunningServiceIsSilent()
{
    auto service = createService({"n1"});
    QVERIFY(service->start());
    QSignalSpy stopped(service.get(), &zoClusterService::stopped);

    service.reset();

    QCOMPARE(stopped.count(), 0);
}

void tst_zoLocalClusterService::diagnosticModesAreKeptAndLogged()
{
    zoLocalClusterService service;
    QVERIFY(!service.showsTiles());
    QVERIFY(!service.showsTestImage());

    service.setShowTiles(true);
    service.setShowTiles(true);
    service.setShowTestImage(true);
    service.setShowTestImage(false);

    QVERIFY(service.showsTiles());
    QVERIFY(!service.showsTestImage());
    QCOMPARE(messages(), QStringList({"Show tiles: on", "Show test image: on", "Show test image: off"}));
}

void tst_zoLocalClusterService::longListsAreCutInTheLog()
{
    const auto service = createService({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});

    QVERIFY(service->start());

    QCOMPARE(messages(), QStringList("Cluster runs on a, b, c, d, e, f, g, h and 2 more"));
}

void tst_zoLocalClusterService::tenThousandNodesStart()
{
    QStringList nodes;
    for (int i = 0; i < 10000; ++i)
        nodes << QStringLiteral("n%1").arg(i);
    const auto service = createService(nodes);

    QVERIFY(service->start());
    QCOMPARE(service->runningNodes(), nodes);
    nodes.removeLast();
    service->applyConfig(documentOf(nodes));
    QCOMPARE(service->runningNodes(), nodes);
}

ZO_TEST_MAIN(tst_zoLocalClusterService)
#include "tst_zoLocalClusterService.moc"
