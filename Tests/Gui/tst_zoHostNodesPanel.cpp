#include "zoTestCase.h"

#include <zoHostMainWindow.h>
#include <zoHostNodesPanel.h>
#include <zoNodeClusterService.h>
#include <zoReadableColour.h>
#include <zoSessionText.h>

#include <QApplication>
#include <QLabel>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeWidget>

#include <memory>

namespace
{
const QString Document = QStringLiteral("<cluster version=\"1\"><master><network><node name=\"n1\"/>"
                                        "<node name=\"n2\"/></network></master></cluster>");

// The same, with a small window for each.
const QString DocumentWithWindows = QString(Document).replace(
    QStringLiteral("</cluster>"),
    QStringLiteral(
        "<projection name=\"P\" type=\"plane\" x1=\"-1\" y1=\"-1\" z1=\"-1\" x2=\"1\" y2=\"-1\" z2=\"-1\" "
        "x3=\"1\" y3=\"1\" z3=\"-1\"/><display>"
        "<window node=\"n1\" width=\"40\" height=\"30\"/><window node=\"n2\" width=\"40\" height=\"30\"/>"
        "</display></cluster>"));
} // namespace

// The panel of the nodes, with real ones on this machine.
class tst_zoHostNodesPanel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withoutASessionNothingRuns();
    void runningNodesAreShown();
    void statesAreReadOnADarkDesktop();
    void lostNodeIsToldWithItsReason();
    void delayIsTakenAwayAgain();
    void longWaitIsNotCutOff();
    void screensAreNotCutOffAfterAFailedStart();
    void endOfTheSessionIsShown();

private:
    QString summary() const { return m_panel->findChild<QLabel*>("NodesSummary")->text(); }
    double waitOf(int row) const { return list()->topLevelItem(row)->text(5).section(' ', 0, 0).toDouble(); }
    QTreeWidget* list() const { return m_panel->findChild<QTreeWidget*>("NodesList"); }
    QString state(int row) const { return list()->topLevelItem(row)->text(1); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<zoNodeClusterService> m_cluster;
    std::unique_ptr<zoHostNodesPanel> m_panel;
};

void tst_zoHostNodesPanel::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    zoNodeClusterService::Launch launch = zoNodeClusterService::defaultLaunch();
    launch.program = QStringLiteral(ZO_SERVER_FILE);
    m_cluster = std::make_unique<zoNodeClusterService>(launch);
    m_cluster->setRehearsal(true);
    m_cluster->setLockDirectory(m_directory->path());
    m_cluster->setMemoryPerNode(0);
    m_cluster->applyConfig(Document);
    m_panel = std::make_unique<zoHostNodesPanel>(m_cluster.get());
    m_panel->resize(800, 200);
    m_panel->show();
}

void tst_zoHostNodesPanel::cleanup()
{
    m_panel.reset();
    m_cluster.reset();
    zoTestCase::cleanup();
}

void tst_zoHostNodesPanel::withoutASessionNothingRuns()
{
    QCOMPARE(summary(), QStringLiteral("No session"));
    QCOMPARE(list()->topLevelItemCount(), 0);
    QVERIFY(!m_panel->findChild<QToolButton*>("LoseNode")->isVisible());
    QVERIFY(!m_panel->findChild<QLabel*>("NodesReason")->isVisible());
}

void tst_zoHostNodesPanel::runningNodesAreShown()
{
    QVERIFY(m_cluster->start());

    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));
    QCOMPARE(list()->topLevelItemCount(), 2);
    QCOMPARE(list()->topLevelItem(0)->text(0), QStringLiteral("n1"));
    QCOMPARE(state(0), QStringLiteral("running"));
    QCOMPARE(list()->topLevelItem(1)->text(2), QStringLiteral(ZO_VERSION));
    QVERIFY(list()->topLevelItem(1)->text(4).endsWith(QStringLiteral(" MiB")));
    QCOMPARE(zoSessionText::of(m_cluster.get()), QStringLiteral("rehearsal of 2 nodes on this machine"));
    QCOMPARE(zoSessionText::forScripts(m_cluster.get()),
             QStringLiteral("rehearsal of 2 nodes on this machine"));
}

void tst_zoHostNodesPanel::statesAreReadOnADarkDesktop()
{
    const QColor base(0x1b, 0x1e, 0x20);
    QPalette palette = m_panel->palette();
    palette.setColor(QPalette::Base, base);
    m_panel->setPalette(palette);
    const auto readable = [this, &base] {
        const QColor colour = list()->topLevelItem(0)->foreground(1).color();
        return zoReadableColour::contrast(base, colour) >= zoReadableColour::Least;
    };

    QVERIFY(m_cluster->start());

    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));
    QVERIFY(readable());
    m_cluster->stop();
    QTRY_COMPARE(state(0), QStringLiteral("ended"));
    QVERIFY(readable());
}

void tst_zoHostNodesPanel::lostNodeIsToldWithItsReason()
{
    QVERIFY(m_cluster->start());
    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));
    auto* lose = m_panel->findChild<QToolButton*>("LoseNode");
    QVERIFY(lose->isVisible());
    QVERIFY(!lose->isEnabled());
    list()->setCurrentItem(list()->topLevelItem(0));
    QVERIFY(lose->isEnabled());
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("n1 lost")));

    lose->click();

    QTRY_COMPARE(summary(), QStringLiteral("1 of 2 run"));
    QTRY_VERIFY2(state(0).startsWith(QStringLiteral("lost: its server ended")), qPrintable(state(0)));
    QCOMPARE(state(1), QStringLiteral("running"));
    QVERIFY(!lose->isEnabled());
    // In full below the list, whatever row is the current one, and wrapped in the tool tip.
    auto* reason = m_panel->findChild<QLabel*>("NodesReason");
    QVERIFY(reason->isVisible());
    QVERIFY2(reason->text().startsWith("n1: its server ended"), qPrintable(reason->text()));
    QVERIFY(reason->wordWrap());
    QVERIFY(list()->topLevelItem(0)->toolTip(1).startsWith("<qt>"));
    list()->setCurrentItem(list()->topLevelItem(1));
    QVERIFY2(reason->text().startsWith("n1: its server ended"), qPrintable(reason->text()));
    if (qEnvironmentVariableIsSet("ZO_SCREENSHOTS"))
        m_panel->grab().save(qEnvironmentVariable("ZO_SCREENSHOTS") + "/nodes-panel.png");
    QCOMPARE(zoSessionText::of(m_cluster.get()), QStringLiteral("rehearsal of 1 node on this machine"));
}

void tst_zoHostNodesPanel::delayIsTakenAwayAgain()
{
    m_cluster->applyConfig(DocumentWithWindows);
    QVERIFY(m_cluster->start());
    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));
    auto* delay = m_panel->findChild<QToolButton*>("DelayNode");
    list()->setCurrentItem(list()->topLevelItem(0));
    QVERIFY(!delay->isChecked());

    delay->click();
    m_cluster->setShowTiles(true);
    QTRY_VERIFY(waitOf(1) > 200.0);
    QVERIFY(delay->isChecked());
    list()->setCurrentItem(list()->topLevelItem(1));
    QVERIFY(!delay->isChecked());
    list()->setCurrentItem(list()->topLevelItem(0));
    QVERIFY(delay->isChecked());

    delay->click();
    m_cluster->setShowTiles(false);
    QTRY_VERIFY(waitOf(1) < 200.0);
    QVERIFY(!delay->isChecked());
}

void tst_zoHostNodesPanel::longWaitIsNotCutOff()
{
    m_cluster->applyConfig(DocumentWithWindows);
    QVERIFY(m_cluster->start());
    QTRY_COMPARE(list()->topLevelItemCount(), 2);
    QTRY_VERIFY(!list()->topLevelItem(1)->text(5).isEmpty());
    m_cluster->delayNode(QStringLiteral("n1"), 1000);
    m_cluster->setShowTiles(true);

    QTRY_VERIFY(waitOf(1) > 500.0);

    const int text = list()->fontMetrics().horizontalAdvance(list()->topLevelItem(1)->text(5));
    QVERIFY2(list()->columnWidth(5) > text, qPrintable(QString::number(list()->columnWidth(5))));
}

// The rows stay the same: their columns were sized for nodes that never answered.
void tst_zoHostNodesPanel::screensAreNotCutOffAfterAFailedStart()
{
    zoNodeClusterService::Launch unreachable = zoNodeClusterService::defaultLaunch();
    unreachable.program = QStringLiteral(ZO_SERVER_FILE);
    unreachable.pattern = QStringList{QStringLiteral("/bin/false")};
    unreachable.mpi = zoNodeClusterService::Mpi::Never;
    m_cluster->setLaunch(unreachable);
    m_cluster->setRehearsal(false);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Node n1 failed")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Node n2 failed")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Cluster not started")));
    QVERIFY(!m_cluster->start());
    QTRY_COMPARE(summary(), QStringLiteral("0 of 2 run"));
    QTRY_VERIFY(state(1).startsWith(QStringLiteral("failed")));

    m_cluster->setRehearsal(true);
    QVERIFY(m_cluster->start());

    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));
    for (const int column : {2, 3, 4}) {
        const QString text = list()->topLevelItem(1)->text(column);
        QVERIFY(!text.isEmpty());
        QVERIFY2(list()->columnWidth(column) > list()->fontMetrics().horizontalAdvance(text),
                 qPrintable(text));
    }
}

void tst_zoHostNodesPanel::endOfTheSessionIsShown()
{
    QVERIFY(m_cluster->start());
    QTRY_COMPARE(summary(), QStringLiteral("2 of 2 run"));

    m_cluster->stop();

    QTRY_COMPARE(summary(), QStringLiteral("0 of 2 run"));
    QCOMPARE(state(0), QStringLiteral("ended"));
    QCOMPARE(zoSessionText::of(m_cluster.get()), QString());
}

ZO_TEST_MAIN(tst_zoHostNodesPanel)
#include "tst_zoHostNodesPanel.moc"
