#include "zoParaViewFake.h"
#include "zoTestCase.h"

#include <zoHostConnectionPanel.h>
#include <zoHostNodesPanel.h>
#include <zoHostTranslations.h>
#include <zoLocalClusterService.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>

// How a person's ParaView finds the session: what the panel says, copies and starts.
class tst_zoHostConnectionPanel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withoutASessionThereIsNothingToCopy();
    void commandIsCopied();
    void startIsThereWithAParaView_data();
    void startIsThereWithAParaView();
    void startRunsTheCommand();
    void connectedClientIsTold();
    void refusedChangeOffersARestart();
    void otherSessionsHaveNoPanel();
    void textsAreShownWhole_data();
    void textsAreShownWhole();

private:
    QToolButton* button(const char* name) const { return m_panel->findChild<QToolButton*>(name); }
    QLineEdit* command() const { return m_panel->findChild<QLineEdit*>("ConnectCommand"); }
    QString shownState() const { return m_panel->findChild<QLabel*>("ConnectionState")->text(); }
    // A folder as the whole search path, with a program "paraview" that writes down what it is called with.
    void setPath(bool hasParaView);
    void show();

    QByteArray m_path;
    std::unique_ptr<QTemporaryDir> m_programs;
    std::unique_ptr<zoParaViewFake> m_fake;
    std::unique_ptr<zoParaViewService> m_service;
    std::unique_ptr<zoHostConnectionPanel> m_panel;
};

void tst_zoHostConnectionPanel::init()
{
    m_path = qgetenv("PATH");
    m_programs = std::make_unique<QTemporaryDir>();
    m_fake = std::make_unique<zoParaViewFake>();
    m_service = m_fake->create();
    m_service->applyConfig(zoParaViewFake::wallOf({"n1", "n2"}));
}

void tst_zoHostConnectionPanel::cleanup()
{
    m_panel.reset();
    m_service.reset();
    m_fake.reset();
    m_programs.reset();
    qputenv("PATH", m_path);
    zoTestCase::cleanup();
}

void tst_zoHostConnectionPanel::setPath(bool hasParaView)
{
    QFile program(m_programs->filePath("paraview"));
    if (hasParaView) {
        QVERIFY(program.open(QIODevice::WriteOnly));
        // Under another name first: whoever finds the file finds all of it.
        const QByteArray file = QFile::encodeName(m_programs->filePath("called"));
        program.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + file + ".part'\n/bin/mv '" + file +
                      ".part' '" + file + "'\n");
        QVERIFY(
            program.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
    }
    qputenv("PATH", QFile::encodeName(m_programs->path()));
}

void tst_zoHostConnectionPanel::show()
{
    m_panel = std::make_unique<zoHostConnectionPanel>(m_service.get());
    m_panel->resize(700, m_panel->sizeHint().height());
    m_panel->show();
}

void tst_zoHostConnectionPanel::withoutASessionThereIsNothingToCopy()
{
    show();

    QCOMPARE(shownState(), QStringLiteral("No session"));
    QCOMPARE(command()->text(), QString());
    QVERIFY(!button("CopyConnectCommand")->isEnabled());
    QVERIFY(!button("StartParaView")->isEnabled());
    QVERIFY(!button("RestartSession")->isVisible());
}

void tst_zoHostConnectionPanel::commandIsCopied()
{
    show();
    QVERIFY(m_service->start());
    const QString text =
        QStringLiteral("paraview --server-url=cs://n1:11111 --connect-id=%1").arg(m_service->connectId());

    QCOMPARE(shownState(), QStringLiteral("Waits for ParaView:"));
    QCOMPARE(command()->text(), text);
    QVERIFY(command()->isReadOnly());
    QApplication::clipboard()->clear();
    button("CopyConnectCommand")->click();
    QCOMPARE(QApplication::clipboard()->text(), text);

    m_service->stop();
    QCOMPARE(shownState(), QStringLiteral("No session"));
    QCOMPARE(command()->text(), QString());
    QVERIFY(!button("CopyConnectCommand")->isEnabled());
}

void tst_zoHostConnectionPanel::startIsThereWithAParaView_data()
{
    QTest::addColumn<bool>("hasParaView");

    QTest::newRow("installed") << true;
    QTest::newRow("not-installed") << false;
}

void tst_zoHostConnectionPanel::startIsThereWithAParaView()
{
    QFETCH(bool, hasParaView);
    QVERIFY(m_service->start());
    setPath(hasParaView);

    show();

    QCOMPARE(button("StartParaView")->isVisible(), hasParaView);
    QVERIFY(button("CopyConnectCommand")->isVisible());
}

void tst_zoHostConnectionPanel::startRunsTheCommand()
{
    QVERIFY(m_service->start());
    setPath(true);
    show();

    button("StartParaView")->click();

    QFile called(m_programs->filePath("called"));
    QTRY_VERIFY_WITH_TIMEOUT(called.exists(), 60000);
    QVERIFY(called.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(called.readAll()),
             m_service->connectCommand().mid(1).join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void tst_zoHostConnectionPanel::connectedClientIsTold()
{
    for (const char* part : {"/accepting.out", "/accepting.err"})
        QVERIFY(QFile::copy(QLatin1String(ZO_TEST_DATA_DIR "/ParaView") + part, m_programs->path() + part));
    QFile connected(m_programs->filePath("connected.out"));
    QVERIFY(connected.open(QIODevice::WriteOnly) && connected.write("Client connected.\n") > 0);
    connected.close();
    QFile errors(m_programs->filePath("connected.err"));
    QVERIFY(errors.open(QIODevice::WriteOnly));
    qputenv("ZO_FAKE_LOGS", QFile::encodeName(m_programs->path()));
    m_fake->setJobs("accepting>connected");
    show();
    QVERIFY(m_service->start());
    QVERIFY(button("StartParaView")->isEnabled());

    m_fake->letGoOn();

    QTRY_COMPARE_WITH_TIMEOUT(shownState(), QStringLiteral("ParaView is connected"), 60000);
    QVERIFY(!button("StartParaView")->isEnabled());
    QVERIFY(button("CopyConnectCommand")->isEnabled());
}

void tst_zoHostConnectionPanel::refusedChangeOffersARestart()
{
    show();
    QVERIFY(m_service->start());
    QSignalSpy restarts(m_panel.get(), &zoHostConnectionPanel::restartRequested);
    auto* change = m_panel->findChild<QLabel*>("RefusedChange");
    QVERIFY(!change->isVisible());

    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Restart session")));
    const QString before = m_service->currentConfig();
    m_service->applyConfig(QString(before).replace("height=\"200\"", "height=\"100\""));

    QVERIFY(change->isVisible());
    QVERIFY2(change->text().contains(QStringLiteral("n1, n2")), qPrintable(change->text()));
    QVERIFY(button("RestartSession")->isVisible());
    button("RestartSession")->click();
    QCOMPARE(restarts.count(), 1);

    m_service->applyConfig(before);
    QVERIFY(!change->isVisible());
    QVERIFY(!button("RestartSession")->isVisible());
}

void tst_zoHostConnectionPanel::otherSessionsHaveNoPanel()
{
    zoLocalClusterService local;
    const zoHostNodesPanel without(&local);
    const zoHostNodesPanel with(m_service.get());

    QCOMPARE(without.findChildren<zoHostConnectionPanel*>().size(), 0);
    QCOMPARE(with.findChildren<zoHostConnectionPanel*>().size(), 1);
}

void tst_zoHostConnectionPanel::textsAreShownWhole_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("english") << "en";
    QTest::newRow("german") << "de";
}

// With all that the panel can have, in a host of the usual width.
void tst_zoHostConnectionPanel::textsAreShownWhole()
{
    QFETCH(QString, language);
    const zoHostTranslations translations(language);
    QVERIFY(m_service->start());
    setPath(true);
    m_panel = std::make_unique<zoHostConnectionPanel>(m_service.get());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1, n2")));
    m_service->applyConfig(m_service->currentConfig().replace("height=\"200\"", "height=\"100\""));

    m_panel->resize(640, m_panel->heightForWidth(640));
    m_panel->show();

    if (qEnvironmentVariableIsSet("ZO_SCREENSHOTS"))
        m_panel->grab().save(qEnvironmentVariable("ZO_SCREENSHOTS") + "/connection-panel-" + language +
                             ".png");
    for (const char* name : {"CopyConnectCommand", "StartParaView", "RestartSession"})
        QVERIFY2(button(name)->width() >= button(name)->sizeHint().width(), name);
    QVERIFY2(command()->fontMetrics().horizontalAdvance(command()->text()) < command()->width(),
             qPrintable(QString::number(command()->width())));
    auto* change = m_panel->findChild<QLabel*>("RefusedChange");
    QVERIFY(change->height() >= change->heightForWidth(change->width()));
}

ZO_TEST_MAIN(tst_zoHostConnectionPanel)
#include "tst_zoHostConnectionPanel.moc"
