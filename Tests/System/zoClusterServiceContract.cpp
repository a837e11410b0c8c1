#include "zoClusterServiceContract.h"

#include "zoContractDocument.h"
#include "zoSessionRecorder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>

using zoContractDocument::documentOf;

namespace
{
// What must not take long is told by what happens meanwhile, and not by the clock of a machine that has other work: a
// service gives a silent node up with a reason in its report, so that one without has not waited to the end. Where only
// the clock can tell, the bound is many times what people are promised.
constexpr int SoonMs = 10000;

const QRegularExpression AnyReason(QStringLiteral("\\S"));
} // namespace

#define ZO_NEEDS_JOINS(service)                                                                              \
    if (((service)->capabilities() & zoClusterService::JoinsWhileRunning) == 0)                              \
    QSKIP("nodes of this service do not join while it runs")

zoClusterServiceContract::zoClusterServiceContract(Factory factory) : m_factory(std::move(factory))
{
    zoContractDocument::completion() = m_factory.complete;
}

zoClusterServiceContract::~zoClusterServiceContract() = default;

void zoClusterServiceContract::newServiceIsIdle()
{
    const auto service = m_factory.create();

    QVERIFY(!service->isRunning());
    QCOMPARE(service->runningNodes(), QStringList());
}

void zoClusterServiceContract::appliedConfigurationIsCurrent()
{
    const auto service = m_factory.create();
    const QString first = documentOf({"n1"});
    const QString second = documentOf({"n1", "n2"});

    service->applyConfig(first);
    QCOMPARE(service->currentConfig(), first);

    QVERIFY(service->start());
    const bool joins = service->capabilities().testFlag(zoClusterService::JoinsWhileRunning);
    if (!joins)
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("refused.*n2")));
    service->applyConfig(second);
    QCOMPARE(service->currentConfig(), joins ? second : first);
}

void zoClusterServiceContract::appliedConfigurationIsNotAnnounced()
{
    const auto service = m_factory.create();
    const zoSessionRecorder recorder(service.get());

    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    if ((service->capabilities() & zoClusterService::JoinsWhileRunning) == 0)
        expectMessage(QtCriticalMsg, AnyReason);
    service->applyConfig(documentOf({"n1", "n2"}));

    QVERIFY(!recorder.words.contains(QStringLiteral("config")));
}

void zoClusterServiceContract::startRunsTheEnabledNodes()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2", "n3"}));
    const zoSessionRecorder recorder(service.get());

    const bool started = service->start();

    QVERIFY(started);
    QVERIFY(service->isRunning());
    QCOMPARE(service->runningNodes(), QStringList({"n1", "n2", "n3"}));
    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}

void zoClusterServiceContract::idsFollowTheDocument_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QStringList>("ids");

    QTest::newRow("equal-names-are-numbered") << "<master><network><node name=\"a\"/><node name=\"b\"/><node "
                                                 "name=\"a\"/><node name=\"a\"/></network></master>"
                                              << QStringList({"a", "b", "a_2", "a_3"});
    QTest::newRow("disabled-node-keeps-its-number")
        << "<master><network><node name=\"a\" enabled=\"false\"/><node name=\"a\"/></network></master>"
        << QStringList({"a_2"});
    QTest::newRow("disabled-network-disables-its-nodes")
        << "<master><network enabled=\"false\"><node name=\"a\"/></network><network><node "
           "name=\"a\"/></network></master>"
        << QStringList({"a_2"});
    QTest::newRow("only-false-disables")
        << "<master><network enabled=\"FALSE\"><node name=\"a\" enabled=\"0\"/><node name=\"b\" "
           "enabled=\"\"/></network></master>"
        << QStringList({"a", "b"});
    QTest::newRow("disabled-gateway-disables-what-is-behind")
        << "<master><network><node name=\"gw\" enabled=\"false\"><network><node name=\"a\"/></network></node>"
           "<node name=\"b\"/></network></master>"
        << QStringList({"b"});
    QTest::newRow("forwarded-nodes-come-after-their-gateway")
        << "<master><network><node name=\"gw\"><network><node name=\"a\"/><node name=\"b\"/></network></node>"
           "<node name=\"a\"/></network></master>"
        << QStringList({"gw", "a", "b", "a_2"});
    QTest::newRow("node-without-network")
        << "<master><node name=\"a\"/><network><node name=\"a\"/></network></master>"
        << QStringList({"a", "a_2"});
    QTest::newRow("node-without-name-is-localhost")
        << "<master><network><node/><node/></network></master>" << QStringList({"localhost", "localhost_2"});
    QTest::newRow("unknown-elements-are-transparent")
        << "<group><master><rack><network><shelf><node name=\"a\"/></shelf></network></rack></master></group>"
        << QStringList({"a"});
    QTest::newRow("nodes-outside-the-master-do-not-count")
        << "<network><node name=\"x\"/></network><master><network><node name=\"a\"/></network></master>"
        << QStringList({"a"});
    QTest::newRow("taken-suffix-is-skipped")
        << "<master><network><node name=\"a_2\"/><node name=\"a\"/><node name=\"a\"/></network></master>"
        << QStringList({"a_2", "a", "a_3"});
    QTest::newRow("master-and-networks-have-ids-too")
        << "<master><network><node name=\"Network:/0/\"/></network></master>"
        << QStringList({"Network:/0/_2"});
}

void zoClusterServiceContract::idsFollowTheDocument()
{
    QFETCH(QString, section);
    QFETCH(QStringList, ids);
    if (!m_factory.takesAnyName && section.contains(QStringLiteral("\"Network:/")))
        QSKIP("no machine has such a name");
    if (!m_factory.takesGateways && ids.contains(QStringLiteral("gw")))
        QSKIP("this service passes no gateway");
    const auto service = m_factory.create();
    service->applyConfig(zoContractDocument::completed(QStringLiteral("<cluster version=\"1\">") + section +
                                                       QStringLiteral("</cluster>")));

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), ids);
}

void zoClusterServiceContract::handlerOfStartedSeesTheSession()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    bool running = false;
    QStringList nodes;
    connect(service.get(), &zoClusterService::started, this, [&] {
        running = service->isRunning();
        nodes = service->runningNodes();
    });

    QVERIFY(service->start());

    QVERIFY(running);
    QCOMPARE(nodes, QStringList("n1"));
}

void zoClusterServiceContract::progressRisesNodeByNodeAndFinishesBeforeStarted()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2", "n3"}));
    const zoSessionRecorder recorder(service.get());

    QVERIFY(service->start());

    QVERIFY(recorder.percents.size() >= 3);
    for (const QString& node : QStringList({"n1", "n2", "n3"}))
        QVERIFY2(recorder.texts.join(QLatin1Char('\n')).contains(node), qPrintable(node));
    int last = 0;
    for (const int percent : recorder.percents) {
        QVERIFY(percent < 0 || (percent >= last && percent <= 100));
        last = qMax(last, percent);
    }
    QVERIFY(recorder.words.lastIndexOf(QStringLiteral("progress")) <
            recorder.words.indexOf(QStringLiteral("finished")));
    QVERIFY(recorder.words.indexOf(QStringLiteral("finished")) <
            recorder.words.indexOf(QStringLiteral("started")));
    QCOMPARE(recorder.words.count(QStringLiteral("finished")), 1);
}

void zoClusterServiceContract::startOfARunningSessionChangesNothing()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    QVERIFY(service->start());

    QCOMPARE(recorder.words, QStringList());
    QCOMPARE(service->runningNodes(), QStringList("n1"));
}

void zoClusterServiceContract::manyNodesStart()
{
    QStringList names;
    for (int i = 1; i <= m_factory.many; ++i)
        names << QStringLiteral("n%1").arg(i);
    const auto service = m_factory.create();
    service->applyConfig(documentOf(names));
    service->setAcceptLowMemory(true);

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), names);
}

void zoClusterServiceContract::stopEndsTheSession()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    service->stop();

    QTRY_VERIFY(!service->isRunning());
    QCOMPARE(service->runningNodes(), QStringList());
    QCOMPARE(recorder.words, QStringList("stopped"));
}

void zoClusterServiceContract::handlerOfStoppedSeesTheEnd()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    bool running = true;
    QStringList nodes("unset");
    connect(service.get(), &zoClusterService::stopped, this, [&] {
        running = service->isRunning();
        nodes = service->runningNodes();
    });

    service->stop();

    QTRY_VERIFY(!running);
    QCOMPARE(nodes, QStringList());
}

void zoClusterServiceContract::stopAndAbortOfAnIdleServiceAreSilent()
{
    const auto service = m_factory.create();
    const zoSessionRecorder recorder(service.get());

    service->stop();
    service->abort();
    QCoreApplication::processEvents();

    QCOMPARE(recorder.words, QStringList());
}

void zoClusterServiceContract::abortOfARunningSessionChangesNothing()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    service->abort();
    QCoreApplication::processEvents();

    QVERIFY(service->isRunning());
    QCOMPARE(recorder.words, QStringList());
}

void zoClusterServiceContract::sessionStartsAgainAfterStop()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    service->stop();
    QTRY_VERIFY(!service->isRunning());
    const zoSessionRecorder recorder(service.get());

    QVERIFY(service->start());

    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}

void zoClusterServiceContract::sessionStoppedByItsStartedHandlerIsOver()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(service.get());
    connect(service.get(), &zoClusterService::started, service.get(), [&] { service->stop(); });

    service->start();

    QTRY_VERIFY(!service->isRunning());
    QCOMPARE(recorder.outcome(), QStringList({"finished", "started", "stopped"}));
}

void zoClusterServiceContract::abortFromProgressEndsTheStart()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    const zoSessionRecorder recorder(service.get());
    connect(service.get(), &zoClusterService::progressChanged, service.get(), [&] { service->abort(); });
    expectMessage(QtInfoMsg, AnyReason);

    const bool started = service->start();

    QVERIFY(!started);
    QVERIFY(!service->isRunning());
    QCOMPARE(service->runningNodes(), QStringList());
    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
}

void zoClusterServiceContract::abortFromAnEventEndsTheStart()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    const zoSessionRecorder recorder(service.get());
    // As a click on a button of the overlay does.
    QMetaObject::invokeMethod(
        service.get(), [&] { service->abort(); }, Qt::QueuedConnection);
    expectMessage(QtInfoMsg, AnyReason);

    const bool started = service->start();

    QVERIFY(!started);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
}

void zoClusterServiceContract::stopWhileConnectingEndsTheStart()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    const zoSessionRecorder recorder(service.get());
    connect(service.get(), &zoClusterService::progressChanged, service.get(), [&] { service->stop(); });
    expectMessage(QtInfoMsg, AnyReason);

    const bool started = service->start();

    QVERIFY(!started);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
}

void zoClusterServiceContract::sessionStartsAgainAfterAbort()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    const QMetaObject::Connection aborting =
        connect(service.get(), &zoClusterService::progressChanged, service.get(), [&] { service->abort(); });
    expectMessage(QtInfoMsg, AnyReason);
    QVERIFY(!service->start());
    disconnect(aborting);

    QVERIFY(service->start());

    QCOMPARE(service->runningNodes(), QStringList("n1"));
}

void zoClusterServiceContract::startWhileConnectingIsRefusedInSilence()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(service.get());
    QList<bool> inner;
    connect(service.get(), &zoClusterService::progressChanged, service.get(), [&] {
        if (inner.isEmpty())
            inner << service->start();
    });
    expectMessage(QtCriticalMsg, AnyReason);

    const bool outer = service->start();

    QCOMPARE(inner, QList<bool>({false}));
    QVERIFY(outer);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}

void zoClusterServiceContract::configurationWhileConnectingReachesTheSession()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    const QString later = documentOf({"n2"});
    const auto once = std::make_shared<QMetaObject::Connection>();
    *once = connect(service.get(), &zoClusterService::progressChanged, service.get(), [&, once] {
        disconnect(*once);
        service->applyConfig(later);
    });

    QVERIFY(service->start());

    QTRY_COMPARE(service->runningNodes(), QStringList("n2"));
    QCOMPARE(service->currentConfig(), later);
}

void zoClusterServiceContract::quitWhileConnectingLetsTheStartReturn()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    QEventLoop loop;
    bool returned = false;
    connect(service.get(), &zoClusterService::progressChanged, &loop, &QEventLoop::quit);
    QMetaObject::invokeMethod(
        &loop,
        [&] {
            service->start();
            returned = true;
        },
        Qt::QueuedConnection);

    loop.exec();

    QVERIFY(returned);
}

void zoClusterServiceContract::endOfTheApplicationEndsTheStart()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    bool returned = false;
    connect(service.get(), &zoClusterService::progressChanged, qApp, &QCoreApplication::quit);
    QElapsedTimer time;
    time.start();
    QMetaObject::invokeMethod(
        service.get(),
        [&] {
            service->start();
            returned = true;
        },
        Qt::QueuedConnection);
    // Others are done before.
    if ((service->capabilities() & zoClusterService::ReportsLostNodes) != 0)
        expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

    QCoreApplication::exec();

    QVERIFY(returned);
    QVERIFY2(time.elapsed() < SoonMs, qPrintable(QString::number(time.elapsed())));
}

void zoClusterServiceContract::serviceDestroyedByItsProgressHandlerIsGone()
{
    for (const bool fromAnEvent : {false, true}) {
        auto service = m_factory.create();
        service->applyConfig(documentOf({"n1", "n2"}));
        QPointer<zoClusterService> pointer(service.get());
        connect(service.get(), &zoClusterService::progressChanged, this, [&] {
            if (fromAnEvent)
                QMetaObject::invokeMethod(
                    this, [&] { service.reset(); }, Qt::QueuedConnection);
            else
                service.reset();
        });

        pointer->start();

        QTRY_VERIFY(!pointer);
        const auto next = m_factory.create();
        next->applyConfig(documentOf({"n1"}));
        QVERIFY(next->start());
    }
}

void zoClusterServiceContract::abortEndsTheWaitForASilentNode()
{
    if (m_factory.silent.isEmpty())
        QSKIP("no node of this service is silent");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", m_factory.silent}));
    const zoSessionRecorder recorder(service.get());
    connect(service.get(), &zoClusterService::progressChanged, service.get(),
            [&](const QString&, int percent) {
                if (percent > 0)
                    service->abort(); // n1 is there, and the other one never will be
            });
    expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

    QVERIFY(!service->start());

    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
    QCOMPARE(service->nodeReport().at(1).state, zoClusterNodeReport::State::Connecting);
}

// A loop that goes on after quit() would wait until the node is given up, with a core at 100 %.
void zoClusterServiceContract::endOfTheApplicationEndsTheWaitForASilentNode()
{
    if (m_factory.silent.isEmpty())
        QSKIP("no node of this service is silent");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", m_factory.silent}));
    const zoSessionRecorder recorder(service.get());
    connect(service.get(), &zoClusterService::progressChanged, service.get(),
            [&](const QString&, int percent) {
                if (percent > 0)
                    QCoreApplication::quit();
            });
    bool returned = false;
    QMetaObject::invokeMethod(
        service.get(),
        [&] {
            service->start();
            returned = true;
        },
        Qt::QueuedConnection);
    expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

    QCoreApplication::exec();

    QVERIFY(returned);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
    QCOMPARE(service->nodeReport().at(1).state, zoClusterNodeReport::State::Connecting);
}

// From now on every new event loop ends at once.
void zoClusterServiceContract::startOfAnApplicationThatEndsReturns()
{
    const auto service = m_factory.create();
    if ((service->capabilities() & zoClusterService::ReportsLostNodes) == 0)
        QSKIP("this service waits for nothing");
    service->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(service.get());
    bool started = true;
    QMetaObject::invokeMethod(
        service.get(),
        [&] {
            QCoreApplication::quit();
            started = service->start();
        },
        Qt::QueuedConnection);
    expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

    QCoreApplication::exec();

    QVERIFY(!started);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
    QVERIFY(!service->isRunning());
}

void zoClusterServiceContract::abortAtEveryStepEndsTheStart()
{
    // Signals of a start, and what an abort in each of them leads to.
    const auto onEachSignal = [this](zoClusterService* service, const std::function<void()>& act) {
        connect(service, &zoClusterService::progressChanged, this, act);
        connect(service, &zoClusterService::nodeStateChanged, this, act);
    };
    int steps = 0;
    {
        const auto service = m_factory.create();
        service->applyConfig(documentOf({"n1", "n2"}));
        bool isStarting = true;
        connect(service.get(), &zoClusterService::progressFinished, this, [&] { isStarting = false; });
        onEachSignal(service.get(), [&] { steps += isStarting ? 1 : 0; });
        QVERIFY(service->start());
    }
    QVERIFY(steps >= 2);
    for (int step = 0; step < steps; ++step) {
        const auto service = m_factory.create();
        service->applyConfig(documentOf({"n1", "n2"}));
        const zoSessionRecorder recorder(service.get());
        int at = 0;
        onEachSignal(service.get(), [&] {
            if (at++ == step)
                service->abort();
        });
        expectMessage(QtInfoMsg, QRegularExpression(QStringLiteral("aborted")));

        QVERIFY2(!service->start(), qPrintable(QString::number(step)));

        QCOMPARE(recorder.outcome(), QStringList({"finished", "stopped"}));
        QCOMPARE(service->runningNodes(), QStringList());
    }
    // The last one left its nodes, too.
    const auto next = m_factory.create();
    next->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(next->start());
}

void zoClusterServiceContract::failedNodeIsNamedAndTheOthersAreFree()
{
    if (m_factory.failing.isEmpty())
        QSKIP("no node of this service fails");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", m_factory.failing}));
    expectMessage(QtCriticalMsg, QRegularExpression(m_factory.failing + QStringLiteral(".*\\S")));
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!service->start());

    const QVector<zoClusterNodeReport> reports = service->nodeReport();
    QCOMPARE(reports.size(), 2);
    QCOMPARE(reports.at(1).state, zoClusterNodeReport::State::Failed);
    QVERIFY(!reports.at(1).reason.isEmpty());
    const auto next = m_factory.create();
    next->applyConfig(documentOf({"n1"}));
    QVERIFY(next->start());
}

void zoClusterServiceContract::unusableConfigurationFailsWithStopped_data()
{
    QTest::addColumn<QString>("document");

    QTest::newRow("empty") << "";
    QTest::newRow("blank") << " \n";
    QTest::newRow("not-xml") << "n1, n2";
    QTest::newRow("truncated") << documentOf({"n1"}).chopped(12);
    QTest::newRow("two-roots") << documentOf({"n1"}) + documentOf({"n1"});
    QTest::newRow("no-master") << "<cluster version=\"1\"/>";
    QTest::newRow("no-node") << documentOf({});
    QTest::newRow("all-nodes-disabled")
        << "<cluster><master><network><node name=\"a\" enabled=\"false\"/></network></master></cluster>";
    QTest::newRow("master-disabled")
        << "<cluster><master enabled=\"false\"><network><node name=\"a\"/></network></master></cluster>";
    QTest::newRow("only-a-node-without-a-name")
        << "<cluster><master><network><node name=\"\"/></network></master></cluster>";
}

void zoClusterServiceContract::unusableConfigurationFailsWithStopped()
{
    QFETCH(QString, document);
    const auto service = m_factory.create();
    service->applyConfig(document);
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, AnyReason);

    const bool started = service->start();

    QVERIFY(!started);
    QVERIFY(!service->isRunning());
    QCOMPARE(recorder.words.count(QStringLiteral("stopped")), 1);
    QCOMPARE(recorder.words.constLast(), QStringLiteral("stopped"));
}

void zoClusterServiceContract::secondSessionMeetsTheFirst()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n2", "n3"}));
    const zoSessionRecorder recorder(second.get());
    expectMessage(QtCriticalMsg, AnyReason);

    const bool started = second->start();

    QVERIFY(!started);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "servers n2", "stopped"}));
    QVERIFY(first->isRunning());
}

void zoClusterServiceContract::answerInsideTheQuestionCountsForTheNextStart()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));
    connect(second.get(), &zoClusterService::multipleServersFound, second.get(),
            [&] { second->setAcceptRunningServers(true); });
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!second->start());
    QVERIFY(second->start());

    QCOMPARE(second->runningNodes(), QStringList("n1"));
}

void zoClusterServiceContract::acceptedServersStart()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(second.get());

    second->setAcceptRunningServers(true);
    QVERIFY(second->start());

    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}

void zoClusterServiceContract::acceptanceCanBeTakenBack()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));
    second->setAcceptRunningServers(true);
    second->setAcceptRunningServers(false);
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!second->start());
}

void zoClusterServiceContract::otherServicePortIsAnotherServer()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}, 8889));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}, 8890));

    QVERIFY(second->start());

    // No port is 8889.
    const auto third = m_factory.create();
    third->applyConfig(documentOf({"n1"}));
    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!third->start());
}

void zoClusterServiceContract::stoppedSessionFreesItsNodes()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));

    first->stop();

    QVERIFY(second->start());
}

void zoClusterServiceContract::destroyedServiceFreesItsNodes()
{
    auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));

    first.reset();

    QVERIFY(second->start());
}

void zoClusterServiceContract::failedStartFreesItsNodes()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n2", "n1"}));
    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!second->start());
    const auto third = m_factory.create();
    third->applyConfig(documentOf({"n2"}));

    QVERIFY(third->start());
}

void zoClusterServiceContract::abortedStartFreesItsNodes()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1", "n2", "n3"}));
    connect(first.get(), &zoClusterService::progressChanged, first.get(), [&](const QString& text) {
        if (text.contains(QStringLiteral("n3")))
            first->abort();
    });
    expectMessage(QtInfoMsg, AnyReason);
    QVERIFY(!first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1", "n2"}));

    QVERIFY(second->start());
}

void zoClusterServiceContract::sharedNodeStaysInUseUntilTheLastSessionLeaves()
{
    const auto first = m_factory.create();
    const auto second = m_factory.create();
    const auto third = m_factory.create();
    for (zoClusterService* service : {first.get(), second.get(), third.get()})
        service->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    second->setAcceptRunningServers(true);
    QVERIFY(second->start());

    first->stop();

    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!third->start());
    second->stop();
    QVERIFY(third->start());
}

void zoClusterServiceContract::abortInsideTheQuestionEndsTheStart()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(second.get());
    connect(second.get(), &zoClusterService::multipleServersFound, second.get(), [&] { second->abort(); });
    expectMessage(QtInfoMsg, AnyReason);

    QVERIFY(!second->start());

    QCOMPARE(recorder.words.count(QStringLiteral("stopped")), 1);
    QVERIFY(!second->isRunning());
}

void zoClusterServiceContract::lowMemoryAsks()
{
    const auto service = m_factory.createShortOfMemory();
    service->applyConfig(documentOf({"n1", "n2"}));
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, AnyReason);

    const bool started = service->start();

    QVERIFY(!started);
    QCOMPARE(recorder.outcome(), QStringList({"finished", "memory n1, n2", "stopped"}));
}

void zoClusterServiceContract::acceptedLowMemoryStarts()
{
    const auto service = m_factory.createShortOfMemory();
    service->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(service.get());

    service->setAcceptLowMemory(true);
    QVERIFY(service->start());

    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}

void zoClusterServiceContract::bothQuestionsComeInOneAttempt()
{
    const auto first = m_factory.create();
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.createShortOfMemory();
    second->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(second.get());
    connect(second.get(), &zoClusterService::multipleServersFound, second.get(),
            [&] { second->setAcceptRunningServers(true); });
    connect(second.get(), &zoClusterService::notEnoughMemoryFound, second.get(),
            [&] { second->setAcceptLowMemory(true); });
    expectMessage(QtCriticalMsg, AnyReason);

    QVERIFY(!second->start());
    QVERIFY(second->start());

    QCOMPARE(recorder.outcome(),
             QStringList({"finished", "servers n1", "memory n1", "stopped", "finished", "started"}));
}

void zoClusterServiceContract::nodesChangeWithTheConfigurationOfARunningSession()
{
    const auto service = m_factory.create();
    ZO_NEEDS_JOINS(service);
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    service->applyConfig(documentOf({"n2", "n3"}));

    QTRY_COMPARE(service->runningNodes(), QStringList({"n2", "n3"}));
    QCOMPARE(recorder.outcome(), QStringList("nodes"));
    QVERIFY(service->isRunning());

    service->applyConfig(documentOf({}));

    QTRY_COMPARE(service->runningNodes(), QStringList());
    QVERIFY(service->isRunning());
}

void zoClusterServiceContract::sameNodesAreNotAnnouncedAgain()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    service->applyConfig(documentOf({"n1"}));
    service->applyConfig(documentOf({"n1"}) + QStringLiteral("<!-- the same nodes -->"));
    QCoreApplication::processEvents();

    QCOMPARE(recorder.words, QStringList());
}

void zoClusterServiceContract::malformedConfigurationLeavesARunningSessionAlone()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, AnyReason);

    service->applyConfig(QStringLiteral("<cluster>"));
    QCoreApplication::processEvents();

    QCOMPARE(service->runningNodes(), QStringList("n1"));
    QCOMPARE(service->currentConfig(), documentOf({"n1"}));
    QCOMPARE(recorder.words, QStringList());
}

void zoClusterServiceContract::nodeThatLeftIsFree()
{
    const auto first = m_factory.create();
    ZO_NEEDS_JOINS(first);
    first->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n2"}));

    first->applyConfig(documentOf({"n1"}));

    QTRY_COMPARE(first->runningNodes(), QStringList("n1"));
    QVERIFY(second->start());
}

void zoClusterServiceContract::nodeThatJoinedIsInUse()
{
    const auto first = m_factory.create();
    ZO_NEEDS_JOINS(first);
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n2"}));

    first->applyConfig(documentOf({"n1", "n2"}));

    QTRY_COMPARE(first->runningNodes(), QStringList({"n1", "n2"}));
    expectMessage(QtCriticalMsg, AnyReason);
    QVERIFY(!second->start());
}

void zoClusterServiceContract::nodeInUseDoesNotJoinUninvited()
{
    const auto first = m_factory.create();
    ZO_NEEDS_JOINS(first);
    first->applyConfig(documentOf({"n1"}));
    QVERIFY(first->start());
    const auto second = m_factory.create();
    second->applyConfig(documentOf({"n2"}));
    QVERIFY(second->start());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1")));

    second->applyConfig(documentOf({"n1", "n2"}));

    QTRY_VERIFY(messages().filter(QStringLiteral("n1")).filter(QStringLiteral("not added")).size() == 1);
    QCOMPARE(second->runningNodes(), QStringList("n2"));
}

void zoClusterServiceContract::oneChangeForEachAppliedDocument()
{
    const auto service = m_factory.create();
    ZO_NEEDS_JOINS(service);
    service->applyConfig(documentOf({"n1", "n2", "n3"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());

    service->applyConfig(documentOf({"n4", "n5", "n3"}));

    QTRY_COMPARE(service->runningNodes(), QStringList({"n4", "n5", "n3"}));
    service->applyConfig(documentOf({"n3"}));
    QTRY_COMPARE(service->runningNodes(), QStringList({"n3"}));
    QCOMPARE(recorder.outcome(), QStringList({"nodes", "nodes"}));
}

void zoClusterServiceContract::failingJoinLeavesTheSessionAlone()
{
    if (m_factory.failing.isEmpty())
        QSKIP("no node of this service fails");
    const auto service = m_factory.create();
    ZO_NEEDS_JOINS(service);
    service->applyConfig(documentOf({"n1"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, QRegularExpression(m_factory.failing));

    service->applyConfig(documentOf({"n1", m_factory.failing, "n2"}));

    QTRY_COMPARE(service->runningNodes(), QStringList({"n1", "n2"}));
    QCOMPARE(recorder.outcome(), QStringList("nodes"));
    QVERIFY(service->isRunning());
    QCOMPARE(service->nodeReport().at(1).state, zoClusterNodeReport::State::Failed);
}

void zoClusterServiceContract::lostNodeLeavesTheSession()
{
    if (!m_factory.lose)
        QSKIP("this service does not look at single nodes");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    QSignalSpy states(service.get(), &zoClusterService::nodeStateChanged);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1")));

    m_factory.lose(service.get(), "n1");

    QTRY_COMPARE(recorder.outcome(), QStringList("nodes"));
    QCOMPARE(service->runningNodes(), QStringList("n2"));
    QVERIFY(service->isRunning());
    QCOMPARE(states.value(0).value(0).toString(), QStringLiteral("n1"));
    QCOMPARE(service->nodeReport().at(0).state, zoClusterNodeReport::State::Lost);
    QVERIFY(!service->nodeReport().at(0).reason.isEmpty());
}

void zoClusterServiceContract::lossesTogetherAreOneChange()
{
    if (!m_factory.lose)
        QSKIP("this service does not look at single nodes");
    if (!m_factory.namesAllLosses)
        QSKIP("this service is told of one node when several are lost at once");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2", "n3"}));
    QVERIFY(service->start());
    int changes = 0;
    QStringList seen;
    connect(service.get(), &zoClusterService::runningNodesChanged, this, [&] {
        ++changes;
        seen = service->runningNodes();
    });
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n2")));

    m_factory.lose(service.get(), "n1");
    m_factory.lose(service.get(), "n2");

    QTRY_COMPARE(service->runningNodes(), QStringList("n3"));
    QTRY_COMPARE(seen, QStringList("n3"));
    // A machine that is busy may take longer from the one to the other than a change waits; that losses which are told
    // within that time are one change is tested where the time is known.
    QVERIFY(changes == 1 || changes == 2);
}

void zoClusterServiceContract::hungNodeIsLost()
{
    if (!m_factory.hang)
        QSKIP("this service does not look at single nodes");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n2")));

    m_factory.hang(service.get(), "n2");

    QTRY_COMPARE_WITH_TIMEOUT(service->runningNodes(), QStringList("n1"), SoonMs);
    QTRY_COMPARE(recorder.outcome(), QStringList("nodes"));
    QVERIFY(service->isRunning());
    // And its node is free.
    const auto next = m_factory.create();
    next->applyConfig(documentOf({"n2"}));
    QVERIFY(next->start());
}

void zoClusterServiceContract::stopDoesNotWaitForAHungNode()
{
    if (!m_factory.hang)
        QSKIP("this service does not look at single nodes");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    m_factory.hang(service.get(), "n2");
    QElapsedTimer time;
    time.start();

    service->stop();

    QVERIFY2(time.elapsed() < SoonMs, qPrintable(QString::number(time.elapsed())));
    QVERIFY(!service->isRunning());
    QCOMPARE(recorder.outcome(), QStringList("stopped"));
    const auto next = m_factory.create();
    next->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(next->start());
}

void zoClusterServiceContract::lossOfAllNodesEndsTheSession()
{
    if (!m_factory.lose)
        QSKIP("this service does not look at single nodes");
    const QStringList nodes = m_factory.namesAllLosses ? QStringList({"n1", "n2"}) : QStringList("n1");
    const auto service = m_factory.create();
    service->applyConfig(documentOf(nodes));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    for (const QString& node : nodes)
        expectMessage(QtCriticalMsg, QRegularExpression(node));
    expectMessage(QtCriticalMsg, AnyReason);

    for (const QString& node : nodes)
        m_factory.lose(service.get(), node);

    QTRY_COMPARE(recorder.outcome().filter(QStringLiteral("stopped")), QStringList("stopped"));
    // Losses that are told one by one come first.
    QCOMPARE(recorder.words.constLast(), QStringLiteral("stopped"));
    QVERIFY(!service->isRunning());
    QCOMPARE(service->runningNodes(), QStringList());
    QVERIFY(service->start());
}

void zoClusterServiceContract::sessionEndsWithItsFirstLostNodeIfThatIsWanted()
{
    if (!m_factory.lose || !m_factory.createEndingWithLostNode)
        QSKIP("this service does not look at single nodes");
    const auto service = m_factory.createEndingWithLostNode();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    const zoSessionRecorder recorder(service.get());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n2")));
    expectMessage(QtCriticalMsg, AnyReason);

    m_factory.lose(service.get(), "n2");

    QTRY_COMPARE(recorder.outcome(), QStringList("stopped"));
    QVERIFY(!service->isRunning());
}

void zoClusterServiceContract::reportsNameEveryNode()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n2", "n1"}));
    QVERIFY(service->start());
    if ((service->capabilities() & zoClusterService::ReportsLostNodes) == 0) {
        QVERIFY(service->nodeReport().isEmpty());
        return;
    }

    const QVector<zoClusterNodeReport> reports = service->nodeReport();

    QCOMPARE(reports.size(), 2);
    QCOMPARE(reports.at(0).id, QStringLiteral("n2"));
    QCOMPARE(reports.at(1).id, QStringLiteral("n1"));
    for (const zoClusterNodeReport& report : reports) {
        QCOMPARE(report.state, zoClusterNodeReport::State::Running);
        QVERIFY(!report.version.isEmpty());
        QVERIFY(report.freeMemory != 0);
    }
}

void zoClusterServiceContract::speedTestMeasuresARunningSession()
{
    const auto service = m_factory.create();
    if ((service->capabilities() & zoClusterService::MeasuresSpeed) == 0)
        QSKIP("this service measures nothing");
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());

    const QStringList figures = service->speedTest();

    QCOMPARE(figures.size(), 3);
    for (const QString& figure : figures) {
        bool ok = false;
        QVERIFY2(figure.toLongLong(&ok) > 0 && ok, qPrintable(figure));
    }
    QVERIFY(service->isRunning());
}

// At once, also where the others are started again because of it.
void zoClusterServiceContract::speedTestAfterALossMeasuresTheOthers()
{
    if (!m_factory.lose)
        QSKIP("this service does not look at single nodes");
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1", "n2"}));
    QVERIFY(service->start());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1")));
    m_factory.lose(service.get(), "n1");
    QTRY_COMPARE(service->runningNodes(), QStringList("n2"));

    const QStringList figures = service->speedTest();

    QCOMPARE(figures.size(), 3);
    QVERIFY(figures.at(2).toLongLong() > 0);
}

void zoClusterServiceContract::speedTestOfAnIdleServiceIsEmpty()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));

    QCOMPARE(service->speedTest(), QStringList());
}

void zoClusterServiceContract::diagnosticsAreSilent()
{
    const auto service = m_factory.create();
    service->applyConfig(documentOf({"n1"}));
    const zoSessionRecorder recorder(service.get());

    service->setShowTiles(true);
    service->setShowTestImage(true);
    QVERIFY(service->start());
    service->setShowTiles(false);
    service->setShowTestImage(false);

    QCOMPARE(recorder.outcome(), QStringList({"finished", "started"}));
}
