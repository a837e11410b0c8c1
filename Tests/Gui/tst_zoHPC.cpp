#include "zoDialogRobot.h"
#include "zoDocumentSpy.h"
#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPC.h>
#include <zoHPCConnectGUIW.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDomDocument>
#include <QMessageBox>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>

#include <zoKernelServiceFactory.h>
#include <zoPlatform.h>

namespace
{
QString documentWithHost(const char* name)
{
    return QStringLiteral(
               "<cluster version=\"1\">\n <master>\n  <network>\n   <node name=\"%1\"/>\n  </network>\n"
               " </master>\n</cluster>\n")
        .arg(QLatin1String(name));
}

// Nothing keeps its words in the language of this one.
class EveryTextTranslator final : public QTranslator
{
public:
    using QTranslator::translate;
    QString translate(const char*, const char*, const char*, int) const override
    {
        return QStringLiteral("translated");
    }
    bool isEmpty() const override { return false; }
};
} // namespace

// The module object: what it wires and how it runs a session.
class tst_zoHPC final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thereIsNoInstanceBeforeConstruction();
    void slotsStandInTheirOrder_data();
    void slotsStandInTheirOrder();
    void windowIsRegistered();
    void windowStartsIdle();
    void toggleActionIsOnTheModuleToolBar();
    void toggleActionStaysAwayWhenTheHostDoesNotWantIt();
    void missingToolBarIsTolerated();
    void interactiveHostHasAnOverlay();
    void nonInteractiveHostHasNoOverlay();
    void configurationOfTheServiceIsShown();
    void emptyConfigurationOfTheServiceShowsAnEmptyDocument();
    void runningStateOfTheServiceIsMirroredAtStart();
    void configPathIsBelowTheDataDirectory();
    void loadConfigTakesLatin1();
    void loadConfigOfNullChangesNothing();

    void startHandsOverTheDocumentAndStarts();
    void failedStartIsNotRetried();
    void succeededStartIsNotRetried();
    void riskAcceptedInAnEarlierStartDoesNotCount();
    void yesToBothQuestionsRetriesOnce();
    void anythingButYesEndsTheAttempts_data();
    void anythingButYesEndsTheAttempts();
    void questionHasItsTexts_data();
    void questionHasItsTexts();
    void nonInteractiveHostAcceptsEveryRisk();
    void serviceThatAlwaysAsksIsStartedTenTimes();
    void personMayAnswerMoreOften();
    void serviceMayGoWhileItIsUsed_data();
    void serviceMayGoWhileItIsUsed();
    void questionsAreHeardOnlyDuringTheStart();
    void secondStartInsideAStartDoesNothing();
    void stopStops();
    void toggleIgnoresItsArgument_data();
    void toggleIgnoresItsArgument();
    void toggleActionFollowsTheSession();
    void toggleActionOfAFailedStartIsOffAgain();
    void serviceSignalsSetTheWindow();
    void runningNodesAreMarked();
    void networkOptionIsSetAndShown();
    void networkOptionOfTheSelectedNetworkIsShown();
    void unknownNetworkIsReported();
    void linesForScriptsAreTheSameInEveryLanguage();
    void windowMayGoDuringTheStart();
    void advancedShowsTheEditAction();
    void diagnosticSwitchesReachTheService();
    void speedTestShowsTheRates();
    void speedTestOfAFastNetworkIsNotCut();
    void speedTestOfAnotherLengthIsSilent_data();
    void speedTestOfAnotherLengthIsSilent();
    void runtimeOptionsReachARunningSession_data();
    void runtimeOptionsReachARunningSession();
    void displayChangesReachARunningSession();
    void selectingSendsNothingThatTheSessionHas();
    void valueReplacedBySelectingIsSentOnce();
    void nothingIsSentWhileIdle();
    void configurationFromTheServiceIsNotSentBack();
    void configurationThatTheServiceReplacesIsAnnounced();
    void windowsMayGoBeforeTheModule();
    void nothingRunsAfterTheModuleIsGone();

private:
    zoHPCGUIW* window() const { return qobject_cast<zoHPCGUIW*>(m_host->modules.first().window); }
    QAction* action(const char* text) const
    {
        const QList<QAction*> actions = window()->findChildren<QAction*>();
        for (QAction* candidate : actions) {
            if (candidate->text() == QLatin1String(text))
                return candidate;
        }
        return nullptr;
    }
    void make() { m_module = std::make_unique<zoHPC>(); }

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<zoHPC> m_module;
};

void tst_zoHPC::init()
{
    m_host = std::make_unique<zoFakeHost>();
}

void tst_zoHPC::cleanup()
{
    if (m_host)
        m_host->window.reset();
    m_module.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHPC::thereIsNoInstanceBeforeConstruction()
{
    QVERIFY(zoHPC::getInstance() == nullptr);

    make();

    QCOMPARE(zoHPC::getInstance(), m_module.get());
}

void tst_zoHPC::slotsStandInTheirOrder_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");

    int index = 0;
    for (const char* signature :
         {"loadConfig(const char*)", "setConfig(QString)", "startCluster()", "stopCluster()",
          "setNetworkOption(int,QString,QString)", "setAdvanced(bool)", "showTilesChanged(bool)",
          "showTestImageChanged(bool)", "runSpeedTest()", "toggleCluster(bool)",
          "setFoundMultipleServers(QString)", "setFoundNotEnoughMemory(QString)", "setRunning(bool)",
          "updateRuntimConfig()"})
        QTest::newRow(signature) << index++ << QByteArray(signature);
}

void tst_zoHPC::slotsStandInTheirOrder()
{
    QFETCH(int, index);
    QFETCH(QByteArray, signature);

    const QMetaMethod method = zoHPC::staticMetaObject.method(zoHPC::staticMetaObject.methodOffset() + index);

    QCOMPARE(method.methodType(), QMetaMethod::Slot);
    QCOMPARE(method.methodSignature(), signature);
}

void tst_zoHPC::windowIsRegistered()
{
    make();

    QCOMPARE(m_host->modules.size(), 1);
    const zoFakeHost::Registration& registration = m_host->modules.first();
    QCOMPARE(registration.name, QStringLiteral("Cluster"));
    QCOMPARE(registration.category, QStringLiteral("Rendering"));
    QVERIFY(window() != nullptr);
    QCOMPARE(window()->parentWidget(), m_host->mainWindowWidget());
    QCOMPARE(window()->objectName(), QStringLiteral("Module"));
    QCOMPARE(registration.toolTipKey, QStringLiteral("Tipreel_Cluster"));
    QVERIFY(!registration.icon.isNull());
    QCOMPARE(registration.title, QStringLiteral("Cluster"));
    QCOMPARE(registration.flags, 0);
}

void tst_zoHPC::windowStartsIdle()
{
    make();

    QVERIFY(action("Start")->isEnabled());
    QVERIFY(!action("Stop")->isEnabled());
    QVERIFY(!action("Show tiles")->isEnabled());
    QVERIFY(!action("Show test image")->isEnabled());
    QVERIFY(!action("Run network speed test...")->isEnabled());
    QVERIFY(action("New")->isEnabled());
}

void tst_zoHPC::toggleActionIsOnTheModuleToolBar()
{
    make();

    QCOMPARE(m_host->toolBar->actions().size(), 1);
    const QAction* toggle = m_host->toolBar->actions().first();
    QCOMPARE(toggle->parent(), m_module.get());
    QCOMPARE(toggle->text(), QStringLiteral("&Toggle Connection to the Cluster"));
    QCOMPARE(toggle->iconText(), QStringLiteral("Cluster"));
    QCOMPARE(toggle->toolTip(), QStringLiteral("Tipreel_Cluster"));
    QCOMPARE(toggle->statusTip(), QStringLiteral("Toggle Connection to the Cluster"));
    QVERIFY(toggle->isCheckable());
    QVERIFY(!toggle->icon().isNull());
}

void tst_zoHPC::toggleActionStaysAwayWhenTheHostDoesNotWantIt()
{
    m_host->toolBarUsed = false;

    make();

    QVERIFY(m_host->toolBar->actions().isEmpty());
}

void tst_zoHPC::missingToolBarIsTolerated()
{
    m_host->toolBarMissing = true;

    make();

    QVERIFY(m_host->toolBar->actions().isEmpty());
    QCOMPARE(m_host->modules.size(), 1);
}

void tst_zoHPC::interactiveHostHasAnOverlay()
{
    make();

    const QList<zoHPCConnectGUIW*> overlays = m_host->window->findChildren<zoHPCConnectGUIW*>();
    QCOMPARE(overlays.size(), 1);
    QCOMPARE(overlays.first()->parentWidget(), m_host->mainWindowWidget());
}

void tst_zoHPC::nonInteractiveHostHasNoOverlay()
{
    m_host->nonInteractive = true;

    make();

    QVERIFY(m_host->window->findChildren<zoHPCConnectGUIW*>().isEmpty());
}

void tst_zoHPC::configurationOfTheServiceIsShown()
{
    m_host->cluster.config = documentWithHost("from-service");

    make();

    QCOMPARE(window()->getTree()->getNodeNames(), QStringList{QStringLiteral("from-service")});
}

void tst_zoHPC::emptyConfigurationOfTheServiceShowsAnEmptyDocument()
{
    make();

    QVERIFY(window()->getTree()->getNodeNames().isEmpty());
    QCOMPARE(window()->getConfigString(),
             QStringLiteral("<cluster version=\"1\">\n <master/>\n</cluster>\n"));
}

void tst_zoHPC::runningStateOfTheServiceIsMirroredAtStart()
{
    m_host->cluster.config = documentWithHost("n1");
    m_host->cluster.running = true;
    m_host->cluster.nodes = QStringList{QStringLiteral("n1")};

    make();

    QVERIFY(!action("Start")->isEnabled());
    QVERIFY(action("Stop")->isEnabled());
    QVERIFY(action("Show tiles")->isEnabled());
}

void tst_zoHPC::configPathIsBelowTheDataDirectory()
{
    make();

    QCOMPARE(m_module->getConfigPath(),
             QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/cluster"));
}

void tst_zoHPC::loadConfigTakesLatin1()
{
    make();
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QString::fromUtf8("^Unable to load cluster config /no/\xc3\xbc$")));

    QVERIFY(QMetaObject::invokeMethod(m_module.get(), "loadConfig", Q_ARG(const char*, "/no/\xfc")));
}

void tst_zoHPC::loadConfigOfNullChangesNothing()
{
    m_host->cluster.config = documentWithHost("n1");
    make();
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Unable to load cluster config $")));

    m_module->loadConfig(nullptr);

    QCOMPARE(window()->getTree()->getNodeNames(), QStringList{QStringLiteral("n1")});
}

void tst_zoHPC::startHandsOverTheDocumentAndStarts()
{
    m_host->cluster.config = documentWithHost("n1");
    make();
    m_host->cluster.onStart = [] { return true; };

    action("Start")->trigger();

    QCOMPARE(m_host->cluster.calls, (QStringList{QStringLiteral("setAcceptRunningServers false"),
                                                 QStringLiteral("setAcceptLowMemory false"),
                                                 QStringLiteral("applyConfig"), QStringLiteral("start")}));
    QCOMPARE(m_host->cluster.documents, QStringList{documentWithHost("n1")});
    // The window follows the service's signals, not the result of the call.
    QVERIFY(!action("Start")->isEnabled());
    QVERIFY(!action("Stop")->isEnabled());
}

void tst_zoHPC::failedStartIsNotRetried()
{
    make();
    m_host->cluster.onStart = [] { return false; };

    m_module->startCluster();

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
}

void tst_zoHPC::succeededStartIsNotRetried()
{
    m_host->nonInteractive = true;
    make();
    m_host->cluster.onStart = [this] {
        emit m_host->cluster.multipleServersFound(QString());
        return true;
    };

    m_module->startCluster();

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
}

void tst_zoHPC::riskAcceptedInAnEarlierStartDoesNotCount()
{
    m_host->nonInteractive = true;
    make();
    m_host->cluster.onStart = [this] {
        emit m_host->cluster.multipleServersFound(QString());
        return true;
    };
    m_module->startCluster();
    m_host->cluster.calls.clear();
    m_host->cluster.onStart = [] { return false; };

    m_module->startCluster();

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
    QCOMPARE(m_host->cluster.calls.first(), QStringLiteral("setAcceptRunningServers false"));
}

void tst_zoHPC::yesToBothQuestionsRetriesOnce()
{
    make();
    int attempts = 0;
    QStringList titles;
    m_host->cluster.onStart = [this, &attempts, &titles] {
        if (++attempts > 1)
            return true;
        const auto yes = [&titles](QDialog* dialog) {
            titles << dialog->windowTitle();
            qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Yes)->click();
        };
        {
            const zoDialogRobot first(yes);
            emit m_host->cluster.multipleServersFound(QString());
        }
        {
            const zoDialogRobot second(yes);
            emit m_host->cluster.notEnoughMemoryFound(QString());
        }
        return false;
    };

    m_module->startCluster();

    QCOMPARE(titles.size(), 2);
    QCOMPARE(attempts, 2);
    QCOMPARE(m_host->cluster.calls.mid(3),
             (QStringList{QStringLiteral("start"), QStringLiteral("setAcceptRunningServers true"),
                          QStringLiteral("setAcceptLowMemory true"), QStringLiteral("start")}));
}

void tst_zoHPC::anythingButYesEndsTheAttempts_data()
{
    QTest::addColumn<bool>("lowMemory");
    QTest::addColumn<bool>("escape");

    QTest::newRow("servers-abort") << false << false;
    QTest::newRow("servers-escape") << false << true;
    QTest::newRow("memory-abort") << true << false;
    QTest::newRow("memory-escape") << true << true;
}

void tst_zoHPC::anythingButYesEndsTheAttempts()
{
    QFETCH(bool, lowMemory);
    QFETCH(bool, escape);
    make();
    m_host->cluster.onStart = [this, lowMemory, escape] {
        const zoDialogRobot robot([escape](QDialog* dialog) {
            if (escape)
                QTest::keyClick(dialog, Qt::Key_Escape);
            else
                qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Abort)->click();
        });
        if (lowMemory)
            emit m_host->cluster.notEnoughMemoryFound(QString());
        else
            emit m_host->cluster.multipleServersFound(QString());
        return false;
    };

    m_module->startCluster();

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
    QVERIFY(!m_host->cluster.calls.contains(QStringLiteral("setAcceptRunningServers true")));
    QVERIFY(!m_host->cluster.calls.contains(QStringLiteral("setAcceptLowMemory true")));
}

void tst_zoHPC::questionHasItsTexts_data()
{
    QTest::addColumn<bool>("lowMemory");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("text");

    QTest::newRow("servers") << false << int(QMessageBox::Warning)
                             << "There is already a ZOKEClusterServer running\n"
                                "on one or more of the requested cluster nodes.\n"
                                "Do you really want to start clustering and risk\n"
                                "performance problems?";
    QTest::newRow("memory") << true << int(QMessageBox::Critical)
                            << "There is already a ZOKEClusterServer running\n"
                               "on one or more of the requested cluster nodes\n"
                               "and there is likely not enough free memory.\n"
                               "Do you really want to start clustering and risk\n"
                               "server instability?";
}

void tst_zoHPC::questionHasItsTexts()
{
    QFETCH(bool, lowMemory);
    QFETCH(int, icon);
    QFETCH(QString, text);
    make();
    QString title;
    QString shown;
    int shownIcon = 0;
    bool parentless = false;
    const zoDialogRobot robot([&](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        title = box->windowTitle();
        shown = box->text();
        shownIcon = box->icon();
        parentless = box->parentWidget() == nullptr;
        box->button(QMessageBox::Yes)->click();
    });

    if (lowMemory)
        m_module->setFoundNotEnoughMemory(QStringLiteral("n1"));
    else
        m_module->setFoundMultipleServers(QStringLiteral("n1"));

    QCOMPARE(title, QStringLiteral("Cluster"));
    QCOMPARE(shown, text);
    QCOMPARE(shownIcon, icon);
    QVERIFY(parentless);
}

void tst_zoHPC::nonInteractiveHostAcceptsEveryRisk()
{
    m_host->nonInteractive = true;
    make();
    int attempts = 0;
    m_host->cluster.onStart = [this, &attempts] {
        ++attempts;
        if (attempts == 1)
            emit m_host->cluster.multipleServersFound(QStringLiteral("n1"));
        else if (attempts == 2)
            emit m_host->cluster.notEnoughMemoryFound(QStringLiteral("n1"));
        return attempts == 3;
    };

    m_module->startCluster();

    QCOMPARE(attempts, 3);
    QVERIFY(m_host->cluster.calls.contains(QStringLiteral("setAcceptRunningServers true")));
    QVERIFY(m_host->cluster.calls.contains(QStringLiteral("setAcceptLowMemory true")));
}

void tst_zoHPC::serviceThatAlwaysAsksIsStartedTenTimes()
{
    m_host->nonInteractive = true;
    make();
    int attempts = 0;
    m_host->cluster.onStart = [this, &attempts] {
        ++attempts;
        emit m_host->cluster.multipleServersFound(QStringLiteral("n1"));
        return false;
    };
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("given up after 10 attempts")));

    m_module->startCluster();

    QCOMPARE(attempts, 10);
}

void tst_zoHPC::personMayAnswerMoreOften()
{
    make();
    int attempts = 0;
    m_host->cluster.onStart = [this, &attempts] {
        if (++attempts > 12)
            return false;
        const zoDialogRobot yes(
            [](QDialog* dialog) { qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Yes)->click(); });
        emit m_host->cluster.multipleServersFound(QStringLiteral("n1"));
        return false;
    };

    m_module->startCluster();

    QCOMPARE(attempts, 13);
}

namespace
{
// A service that is destroyed by one of its own operations, as by a host that closes meanwhile.
class ShortLivedService final : public zoClusterService
{
public:
    explicit ShortLivedService(const char* end) : m_end(end) {}

    QString currentConfig() override { return {}; }
    bool isRunning() override { return m_running; }
    QStringList runningNodes() override { return {}; }
    void setAcceptRunningServers(bool) override {}
    void setAcceptLowMemory(bool) override { m_running = false; }
    void applyConfig(const QString&) override { endIn("applyConfig"); }
    bool start() override
    {
        emit multipleServersFound(QStringLiteral("n1"));
        return endIn("start");
    }
    void stop() override { endIn("stop"); }
    void abort() override {}
    void setShowTiles(bool) override {}
    void setShowTestImage(bool) override {}
    QStringList speedTest() override { return {}; }

    void run()
    {
        m_running = true;
        emit started();
    }

private:
    bool endIn(const char* operation)
    {
        if (qstrcmp(m_end, operation) == 0)
            delete this;
        return false;
    }

    const char* m_end;
    bool m_running = false;
};
} // namespace

void tst_zoHPC::serviceMayGoWhileItIsUsed_data()
{
    QTest::addColumn<QByteArray>("end");

    QTest::newRow("start") << QByteArray("start");
    QTest::newRow("configuration") << QByteArray("applyConfig");
    QTest::newRow("stop") << QByteArray("stop");
}

void tst_zoHPC::serviceMayGoWhileItIsUsed()
{
    QFETCH(QByteArray, end);
    m_host->nonInteractive = true;
    QPointer<ShortLivedService> service(new ShortLivedService(end.constData()));
    zoKernelServiceFactory::the().registerService<zoClusterService>(service);
    make();
    if (end == "stop")
        service->run();

    if (end == "stop")
        m_module->stopCluster();
    else
        m_module->startCluster();

    QVERIFY(service.isNull());
    QCOMPARE(action("Start")->isEnabled(), true);
    // Nothing of it is used any more.
    m_module->startCluster();
    m_module->stopCluster();
    m_module->toggleCluster(true);
    m_module->updateRuntimConfig();
    m_module->showTilesChanged(true);
    m_module->showTestImageChanged(true);
    m_module->runSpeedTest();
    m_module->setRunning(true);
    m_module->setFoundMultipleServers(QString());
    m_module->setFoundNotEnoughMemory(QString());
}

void tst_zoHPC::questionsAreHeardOnlyDuringTheStart()
{
    m_host->nonInteractive = true;
    make();
    m_module->startCluster();
    m_host->cluster.calls.clear();

    emit m_host->cluster.multipleServersFound(QString());
    emit m_host->cluster.notEnoughMemoryFound(QString());

    QVERIFY(m_host->cluster.calls.isEmpty());
}

void tst_zoHPC::secondStartInsideAStartDoesNothing()
{
    make();
    m_host->cluster.onStart = [this] {
        m_module->toggleCluster(true);
        return true;
    };

    m_module->startCluster();

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
}

void tst_zoHPC::stopStops()
{
    m_host->cluster.running = true;
    make();

    action("Stop")->trigger();

    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("stop")});
    QVERIFY(!action("Stop")->isEnabled());
}

void tst_zoHPC::toggleIgnoresItsArgument_data()
{
    QTest::addColumn<bool>("running");
    QTest::addColumn<bool>("argument");
    QTest::addColumn<QString>("called");

    QTest::newRow("idle-off") << false << false << "start";
    QTest::newRow("idle-on") << false << true << "start";
    QTest::newRow("running-off") << true << false << "stop";
    QTest::newRow("running-on") << true << true << "stop";
}

void tst_zoHPC::toggleIgnoresItsArgument()
{
    QFETCH(bool, running);
    QFETCH(bool, argument);
    QFETCH(QString, called);
    m_host->cluster.running = running;
    make();

    m_module->toggleCluster(argument);

    QCOMPARE(m_host->cluster.calls.last(), called);
}

void tst_zoHPC::toggleActionFollowsTheSession()
{
    m_host->cluster.running = true;
    make();
    const QAction* toggle = m_host->toolBar->actions().first();
    QVERIFY(toggle->isChecked());
    QVERIFY(m_host->cluster.calls.isEmpty()); // showing a state asks for nothing

    m_host->cluster.running = false;
    emit m_host->cluster.stopped();
    QVERIFY(!toggle->isChecked());

    m_host->cluster.running = true;
    emit m_host->cluster.started();
    QVERIFY(toggle->isChecked());
    QVERIFY(m_host->cluster.calls.isEmpty());
}

void tst_zoHPC::toggleActionOfAFailedStartIsOffAgain()
{
    make();
    QAction* toggle = m_host->toolBar->actions().first();

    toggle->trigger(); // without more, the service's start fails

    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 1);
    QVERIFY(!toggle->isChecked());

    m_host->cluster.onStart = [this] {
        m_host->cluster.running = true;
        emit m_host->cluster.started();
        return true;
    };
    toggle->trigger();

    QVERIFY(toggle->isChecked());
    QCOMPARE(m_host->cluster.calls.count(QStringLiteral("start")), 2);
}

void tst_zoHPC::serviceSignalsSetTheWindow()
{
    make();

    emit m_host->cluster.started();
    QVERIFY(!action("Start")->isEnabled());
    QVERIFY(action("Stop")->isEnabled());
    QVERIFY(action("Run network speed test...")->isEnabled());
    QVERIFY(!action("Load...")->isEnabled());

    emit m_host->cluster.stopped();
    QVERIFY(action("Start")->isEnabled());
    QVERIFY(!action("Stop")->isEnabled());
    QVERIFY(!action("Run network speed test...")->isEnabled());
    QVERIFY(action("Load...")->isEnabled());
}

void tst_zoHPC::runningNodesAreMarked()
{
    m_host->cluster.config = QStringLiteral(
        "<cluster version=\"1\"><master><network><node name=\"a\"/><node name=\"b\"/></network>"
        "</master></cluster>");
    make();
    const std::vector<zoHPCTreeItem*> nodes = window()->getTree()->getNodeItems();
    const auto picture = [](zoHPCTreeItem* node) { return node->icon(0).pixmap(32, 32).toImage(); };
    const QImage idle = picture(nodes.at(0));

    m_host->cluster.nodes = QStringList{QStringLiteral("b")};
    emit m_host->cluster.started();
    QCOMPARE(picture(nodes.at(0)), idle);
    QVERIFY(picture(nodes.at(1)) != idle);

    m_host->cluster.nodes = QStringList{QStringLiteral("a")};
    emit m_host->cluster.runningNodesChanged();
    QVERIFY(picture(nodes.at(0)) != idle);
    QCOMPARE(picture(nodes.at(1)), idle);

    // Nothing is marked once the session has ended, whatever the service still lists.
    emit m_host->cluster.stopped();
    QCOMPARE(picture(nodes.at(0)), idle);
}

void tst_zoHPC::networkOptionIsSetAndShown()
{
    m_host->cluster.config = QStringLiteral(
        "<cluster version=\"1\"><master><network><node name=\"a\"/></network><network/></master></cluster>");
    make();
    zoHPCTreeGUIW* tree = window()->getTree();
    zoHPCTreeItem* selected = tree->getNodeItems().front();
    tree->setSelectedItem(selected);

    m_module->setNetworkOption(2, zoHPCOption::LinkSpeed, QStringLiteral("10g"));

    QCOMPARE(tree->findNetworkByIndex(2)->getOption(zoHPCOption::LinkSpeed), QStringLiteral("10g"));
    QCOMPARE(tree->findNetworkByIndex(1)->getOption(zoHPCOption::LinkSpeed), QString());
    QCOMPARE(tree->selectedItem(), selected);
}

void tst_zoHPC::networkOptionOfTheSelectedNetworkIsShown()
{
    m_host->cluster.config = documentWithHost("a");
    make();
    zoHPCTreeGUIW* tree = window()->getTree();
    tree->setSelectedItem(tree->findNetworkByIndex(1));
    const auto* speed =
        window()->getEditor()->findChild<QComboBox*>(QStringLiteral("m_networkSpeedSelection"));
    QCOMPARE(speed->currentText(), QStringLiteral("Auto"));

    m_module->setNetworkOption(1, zoHPCOption::LinkSpeed, QStringLiteral("10g"));

    QCOMPARE(speed->currentText(), QStringLiteral("10 Gigabit"));
    QCOMPARE(tree->selectedItem(), tree->findNetworkByIndex(1));
}

// The service runs the event loop while it connects, and the person closes the program.
void tst_zoHPC::windowMayGoDuringTheStart()
{
    make();
    int attempts = 0;
    m_host->cluster.onStart = [this, &attempts] {
        ++attempts;
        m_host->window.reset();
        emit m_host->cluster.progressChanged(QStringLiteral("n1"), 50);
        emit m_host->cluster.stopped();
        return false;
    };

    action("Start")->trigger();

    QCOMPARE(attempts, 1);
    m_module->startCluster();
    QCOMPARE(attempts, 1);
}

void tst_zoHPC::unknownNetworkIsReported()
{
    make();
    const QString before = window()->getConfigString();
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Network 7 not found\\.$")));

    m_module->setNetworkOption(7, zoHPCOption::LinkSpeed, QStringLiteral("10g"));

    QCOMPARE(window()->getConfigString(), before);
}

void tst_zoHPC::linesForScriptsAreTheSameInEveryLanguage()
{
    make();
    EveryTextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Network -3 not found\\.$")));
    expectMessage(QtCriticalMsg, QRegularExpression(QString::fromUtf8(
                                     "^Unable to load cluster config /no/\xc3\xbc %s %1$")));

    m_module->setNetworkOption(-3, zoHPCOption::LinkSpeed, QStringLiteral("10g"));
    m_module->loadConfig("/no/\xfc %s %1");

    QCoreApplication::removeTranslator(&translator);
}

void tst_zoHPC::advancedShowsTheEditAction()
{
    make();
    QVERIFY(!action("Edit configuration...")->isVisible());

    m_module->setAdvanced(true);
    QVERIFY(action("Edit configuration...")->isVisible());

    m_module->setAdvanced(false);
    QVERIFY(!action("Edit configuration...")->isVisible());
}

void tst_zoHPC::diagnosticSwitchesReachTheService()
{
    make();
    emit m_host->cluster.started();

    action("Show tiles")->trigger();
    action("Show test image")->trigger();
    action("Show tiles")->trigger();

    QCOMPARE(m_host->cluster.calls,
             (QStringList{QStringLiteral("setShowTiles true"), QStringLiteral("setShowTestImage true"),
                          QStringLiteral("setShowTiles false")}));
}

void tst_zoHPC::speedTestShowsTheRates()
{
    m_host->cluster.rates =
        QStringList{QStringLiteral("1048576"), QStringLiteral("2097152"), QStringLiteral("59")};
    make();
    emit m_host->cluster.started();
    QString title;
    QString text;
    int icon = 0;
    const zoDialogRobot robot([&](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        title = box->windowTitle();
        text = box->text();
        icon = box->icon();
        box->button(QMessageBox::Ok)->click();
    });

    action("Run network speed test...")->trigger();

    const QString expected =
        QStringLiteral("Send: 1.0000 MByte/s\nReceive: 2.0000 MByte/s\nSync: 59.00 frames/s\n");
    QCOMPARE(title, QStringLiteral("Results"));
    QCOMPARE(text, expected);
    QCOMPARE(icon, int(QMessageBox::Information));
    QVERIFY(messages().contains(expected));
}

void tst_zoHPC::speedTestOfAFastNetworkIsNotCut()
{
    m_host->cluster.rates =
        QStringList{QStringLiteral("5368709120"), QStringLiteral("x"), QStringLiteral("0")};
    make();
    QString text;
    const zoDialogRobot robot([&](QDialog* dialog) {
        text = qobject_cast<QMessageBox*>(dialog)->text();
        dialog->accept();
    });

    m_module->runSpeedTest();

    QCOMPARE(text, QStringLiteral("Send: 5120.0000 MByte/s\nReceive: 0.0000 MByte/s\nSync: 0.00 frames/s\n"));
}

void tst_zoHPC::speedTestOfAnotherLengthIsSilent_data()
{
    QTest::addColumn<QStringList>("rates");

    QTest::newRow("none") << QStringList();
    QTest::newRow("two") << QStringList{QStringLiteral("1"), QStringLiteral("2")};
    QTest::newRow("four") << QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                         QStringLiteral("4")};
}

void tst_zoHPC::speedTestOfAnotherLengthIsSilent()
{
    QFETCH(QStringList, rates);
    m_host->cluster.rates = rates;
    make();
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    m_module->runSpeedTest();

    QCOMPARE(robot.handled(), 0);
    QVERIFY(messages().isEmpty());
}

void tst_zoHPC::runtimeOptionsReachARunningSession_data()
{
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QString>("attribute");

    QTest::newRow("image-compression") << "m_imageCompression"
                                       << "imagecompression";
    QTest::newRow("scene-compression") << "m_sceneCompression"
                                       << "scenecompression";
    QTest::newRow("start-stop-action") << "m_startStopAction"
                                       << "startstopaction";
    QTest::newRow("parallel-frames") << "m_parallelFrames"
                                     << "parallelframes";
    QTest::newRow("frame-queue-length") << "m_frameQueueLength"
                                        << "framequeuelength";
    QTest::newRow("still-supersampling") << "m_stillFrameSupersampling"
                                         << "stillframesupersampling";
}

void tst_zoHPC::runtimeOptionsReachARunningSession()
{
    QFETCH(QString, combo);
    QFETCH(QString, attribute);
    make();
    m_host->cluster.running = true;
    emit m_host->cluster.started();

    window()->getEditor()->findChild<QComboBox*>(combo)->setCurrentIndex(2);

    QCOMPARE(m_host->cluster.documents.size(), 1);
    QDomDocument sent;
    QVERIFY(sent.setContent(m_host->cluster.documents.first()));
    QVERIFY(sent.documentElement().firstChildElement(QStringLiteral("master")).hasAttribute(attribute));
}

void tst_zoHPC::displayChangesReachARunningSession()
{
    make();
    m_host->cluster.running = true;
    emit m_host->cluster.started();

    window()->getDisplayEditor()->apply();

    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("applyConfig")});
    QCOMPARE(m_host->cluster.documents.first(), window()->getConfigString());
}

void tst_zoHPC::selectingSendsNothingThatTheSessionHas()
{
    m_host->cluster.config = documentWithHost("a");
    make();
    m_host->cluster.running = true;
    emit m_host->cluster.started();
    zoHPCTreeGUIW* tree = window()->getTree();
    tree->setSelectedItem(tree->getNodeItems().front());
    // The editor's page of the master shows the value of before, until somebody looks at the master again.
    tree->master()->setOption(zoHPCOption::ImageCompression, QStringLiteral("lossless"));
    window()->getDisplayEditor()->apply();
    QCOMPARE(m_host->cluster.documents.size(), 1);
    const QSignalSpy announced(window()->getEditor(), SIGNAL(imageCompressionChanged(QString)));

    tree->setSelectedItem(tree->findNetworkByIndex(1));
    tree->setSelectedItem(tree->master());

    QCOMPARE(announced.count(), 1);
    QCOMPARE(m_host->cluster.documents.size(), 1);

    // The same with what the service told.
    emit m_host->cluster.configChanged(documentWithHost("b"));
    tree->setSelectedItem(tree->getNodeItems().front());
    tree->master()->setOption(zoHPCOption::ImageCompression, QStringLiteral("lossless"));
    m_module->setConfig(window()->documentText());
    QCOMPARE(m_host->cluster.documents.size(), 1);
    window()->getEditor()->findChild<QComboBox*>(QStringLiteral("m_imageCompression"))->setCurrentIndex(0);
    QCOMPARE(m_host->cluster.documents.size(), 2);
}

void tst_zoHPC::valueReplacedBySelectingIsSentOnce()
{
    m_host->cluster.config = documentWithHost("a");
    make();
    m_host->cluster.running = true;
    emit m_host->cluster.started();
    zoHPCTreeGUIW* tree = window()->getTree();
    tree->setSelectedItem(tree->getNodeItems().front());
    tree->master()->setOption(zoHPCOption::ImageCompression, QStringLiteral("unknown"));
    window()->getDisplayEditor()->apply();
    QVERIFY(m_host->cluster.documents.last().contains(QStringLiteral("unknown")));

    tree->setSelectedItem(tree->master());
    tree->setSelectedItem(tree->getNodeItems().front());
    tree->setSelectedItem(tree->master());

    QCOMPARE(m_host->cluster.documents.size(), 2);
    QVERIFY(!m_host->cluster.documents.last().contains(QStringLiteral("unknown")));
}

void tst_zoHPC::nothingIsSentWhileIdle()
{
    make();

    window()->getDisplayEditor()->apply();
    m_module->updateRuntimConfig();

    QVERIFY(m_host->cluster.calls.isEmpty());
}

void tst_zoHPC::configurationFromTheServiceIsNotSentBack()
{
    make();
    m_host->cluster.running = true;
    emit m_host->cluster.started();

    emit m_host->cluster.configChanged(documentWithHost("pushed"));

    QCOMPARE(window()->getTree()->getNodeNames(), QStringList{QStringLiteral("pushed")});
    QVERIFY(m_host->cluster.calls.isEmpty());

    // Afterwards changes are sent again.
    window()->getDisplayEditor()->apply();
    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("applyConfig")});
}

void tst_zoHPC::configurationThatTheServiceReplacesIsAnnounced()
{
    m_host->cluster.config = documentWithHost("first");
    make();
    const QString first = window()->documentText();
    QVERIFY(!window()->differs());
    const zoDocumentSpy spy(window());

    m_module->setConfig(documentWithHost("second"));
    QCOMPARE(spy.replaced, QStringList{first});

    const QTemporaryDir folder;
    window()->saveConfig(folder.filePath(QStringLiteral("a.zhpc")));
    emit m_host->cluster.configChanged(documentWithHost("third"));
    QCOMPARE(spy.replaced.size(), 2);
    QVERIFY(window()->differs());
}

void tst_zoHPC::windowsMayGoBeforeTheModule()
{
    make();

    m_host->window.reset();
    emit m_host->cluster.started();
    emit m_host->cluster.configChanged(documentWithHost("late"));
    m_module->startCluster();
    m_module->setAdvanced(true);
    m_module->show();
    m_module->loadConfig("/late.zhpc");

    QVERIFY(!m_host->cluster.calls.contains(QStringLiteral("start")));
}

void tst_zoHPC::nothingRunsAfterTheModuleIsGone()
{
    m_host->cluster.config = documentWithHost("n");
    make();
    zoHPCGUIW* kept = window();
    m_host->window->show();
    kept->show();
    kept->displaySetup();
    const QPointer<zoHPCConnectGUIW> overlay = m_host->window->findChild<zoHPCConnectGUIW*>();
    QCoreApplication::processEvents();
    // Changes, which the window follows a moment later: as does one that no module ever had.
    kept->getTree()->getNodeItems().front()->setHostName(QStringLiteral("later"));
    emit kept->getDisplayEditor()->displayChanged();
    zoHPCGUIW other(nullptr, QStringLiteral("Other"));
    other.getTree()->getNodeItems().front()->setHostName(QStringLiteral("later"));

    m_module.reset();
    emit m_host->cluster.progressChanged(QStringLiteral("half"), 50);
    emit m_host->cluster.started();

    QTRY_VERIFY(other.isWindowModified());
    QVERIFY(!kept->isWindowModified());
    QVERIFY(!overlay->isVisible());
    QVERIFY(!kept->isVisible());
    QVERIFY(!kept->getDisplayEditor()->isVisible());
    QVERIFY(!kept->isEnabled());
    const QList<QTimer*> timers = kept->findChildren<QTimer*>();
    QVERIFY(!timers.isEmpty());
    for (const QTimer* timer : timers)
        QVERIFY(!timer->isActive());
    // The window is the host's, with what it holds.
    QCOMPARE(kept->getTree()->getNodeNames(), QStringList{QStringLiteral("later")});
}

ZO_TEST_MAIN(tst_zoHPC)
#include "tst_zoHPC.moc"
