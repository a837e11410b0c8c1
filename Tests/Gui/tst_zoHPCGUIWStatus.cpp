#include "zoDialogRobot.h"
#include "zoDocumentSpy.h"
#include "zoHPCWindowTest.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCElidedLabel.h>
#include <zoHPCGUIW.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCStatusPane.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QToolButton>

namespace
{
// Types a file name into the file dialog and accepts.
void choose(QDialog* dialog, const QString& fileName)
{
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
    QMetaObject::invokeMethod(dialog, "accept");
}
} // namespace

// What the cluster window tells of its configuration: the file, changes, counts, what is replaced.
class tst_zoHPCGUIWStatus final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void filePathFollowsTheFile();
    void statusBarNamesTheFile();
    void changeShowsInTheStatusBar_data();
    void changeShowsInTheStatusBar();
    void changeThatIsUndoneByHandIsNone();
    void nodesThatTheDisplaySetupClearedShowAsAChange();
    void fractionOfAnOverlapIsNoChange();
    void savedDocumentDoesNotDiffer();
    void documentBroughtInDiffersFromTheOpenFile();
    void sameDocumentComingAgainSavesNothing();
    void askingReadsNoHostsFile();
    void windowAloneShowsThatItWasChanged();
    void statusBarCounts();
    void problemsLeadToTheDisplaySetup();
    void messagesStillShowBesideTheStatus();
    void fileNameGetsItsRoom();
    void narrowWindowShortensTheFileNameOnly();
    void replacedDocumentIsAnnounced_data();
    void replacedDocumentIsAnnounced();
    void nothingIsAnnouncedWhenNothingGetsLost_data();
    void nothingIsAnnouncedWhenNothingGetsLost();
};

void tst_zoHPCGUIWStatus::filePathFollowsTheFile()
{
    write(path("a.zhpc"), s_document);
    const zoDocumentSpy spy(m_window.get());
    QCOMPARE(m_window->windowFilePath(), QString());

    m_window->loadConfig(path("a.zhpc"));
    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));
    QCOMPARE(spy.titles, 1);
    m_window->saveConfig(path("b"));
    QCOMPARE(m_window->windowFilePath(), path("b.zhpc"));
    QCOMPARE(spy.titles, 2);
    m_window->saveConfig();
    QCOMPARE(spy.titles, 2);
    m_window->setDefaultConfig();
    QCOMPARE(m_window->windowFilePath(), QString());
    QCOMPARE(spy.titles, 3);

    QCOMPARE(m_window->windowTitle(), QStringLiteral("HPC Cluster"));
}

void tst_zoHPCGUIWStatus::statusBarNamesTheFile()
{
    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QCOMPARE(file->text(), QStringLiteral("Not saved"));

    m_window->saveConfig(path("wall.zhpc"));

    QCOMPARE(file->text(), QStringLiteral("wall.zhpc"));
    QCOMPARE(file->toolTip(), QDir::toNativeSeparators(path("wall.zhpc")));

    m_window->setDefaultConfig();

    QCOMPARE(file->text(), QStringLiteral("Not saved"));
}

void tst_zoHPCGUIWStatus::changeShowsInTheStatusBar_data()
{
    QTest::addColumn<int>("row"); // 0 master, 1 network, 2 node, 3 the display setup
    QTest::addColumn<QString>("widget");

    QTest::newRow("combo-of-the-master") << 0 << "m_imageCompression";
    QTest::newRow("option-that-is-never-announced") << 0 << "m_homogeneousCluster";
    QTest::newRow("combo-of-a-network") << 1 << "m_networkSpeedSelection";
    QTest::newRow("service-port") << 1 << "m_servicePort";
    QTest::newRow("description") << 1 << "m_networkDescription";
    QTest::newRow("node-enabled") << 2 << "m_hostEnabled";
    QTest::newRow("node-name") << 2 << "m_hostName";
    QTest::newRow("window-in-the-display-setup") << 3 << "";
}

void tst_zoHPCGUIWStatus::changeShowsInTheStatusBar()
{
    QFETCH(int, row);
    QFETCH(QString, widget);
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a.zhpc"));
    zoHPCTreeGUIW* tree = m_window->getTree();
    tree->setSelectedItem(row == 2   ? tree->getNodeItems().front()
                          : row == 1 ? tree->findNetworkByIndex(1)
                                     : tree->master());
    QVERIFY(!m_window->isWindowModified());
    const zoDocumentSpy spy(m_window.get());

    if (row == 3)
        m_window->getDisplayEditor()->getWindowItems().first()->setInt(zoHPCWindowItem::X, 12);
    auto* changed = m_window->getEditor()->findChild<QWidget*>(widget);
    if (auto* combo = qobject_cast<QComboBox*>(changed))
        combo->setCurrentIndex(2);
    else if (auto* port = qobject_cast<QSpinBox*>(changed))
        port->setValue(1234);
    else if (auto* box = qobject_cast<QCheckBox*>(changed))
        box->toggle();
    else if (auto* line = qobject_cast<QLineEdit*>(changed))
        line->setText(QStringLiteral("other"));

    // Known at once to who asks, shown once the changes are over.
    QVERIFY(m_window->property("differs").toBool());
    QVERIFY(!m_window->isWindowModified());
    QTRY_VERIFY(m_window->isWindowModified());
    QCOMPARE(spy.marks, 1);
    QCOMPARE(spy.titles, 0);
    QCOMPARE(status<QLabel>("m_changedStatus")->text(), QStringLiteral("changed"));
    QVERIFY(!status<QLabel>("m_changedStatus")->isHidden());
}

void tst_zoHPCGUIWStatus::changeThatIsUndoneByHandIsNone()
{
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a.zhpc"));
    zoHPCTreeItem* node = m_window->getTree()->getNodeItems().front();
    m_window->getTree()->setSelectedItem(node);
    auto* name = m_window->getEditor()->findChild<QLineEdit*>(QStringLiteral("m_hostName"));

    name->setText(QStringLiteral("ab"));
    QTRY_VERIFY(m_window->isWindowModified());
    name->setText(QStringLiteral("a"));

    QVERIFY(!m_window->differs());
    QTRY_VERIFY(!m_window->isWindowModified());
    QVERIFY(status<QLabel>("m_changedStatus")->isHidden());
}

void tst_zoHPCGUIWStatus::savedDocumentDoesNotDiffer()
{
    // A file in another order of words than the window writes is no change.
    QByteArray other(s_document);
    other.replace("eyeseparation=\"65\" user=\"1\"", "user=\"1\"  eyeseparation=\"65\"");
    write(path("a.zhpc"), other);
    m_window->loadConfig(path("a.zhpc"));
    QVERIFY(!m_window->differs());

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QVERIFY(m_window->differs());
    m_window->saveConfig();
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("d"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->setDefaultConfig();
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());

    // What cannot be written is not saved.
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("e"));
    m_window->saveConfig(path("missing/folder/a.zhpc"));
    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIWStatus::documentBroughtInDiffersFromTheOpenFile()
{
    m_window->replaceConfigString(QLatin1String(s_document));
    QVERIFY(!m_window->differs()); // in no file, and nobody changed it

    m_window->saveConfig(path("a.zhpc"));
    m_window->replaceConfigString(
        QString(QLatin1String(s_document)).replace(QLatin1String("\"b\""), QLatin1String("\"c\"")));

    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));
    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIWStatus::sameDocumentComingAgainSavesNothing()
{
    m_window->replaceConfigString(QLatin1String(s_document));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));

    // As a service does that tells what it was given at the start of a session.
    m_window->replaceConfigString(m_window->getConfigString());

    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIWStatus::askingReadsNoHostsFile()
{
    write(path("hosts"), "{ n1 n2 }");
    m_window->getTree()->setHostFile(path("hosts"));
    m_window->saveConfig(path("a.zhpc"));
    QVERIFY(!m_window->differs());

    write(path("hosts"), "{ n3 }");

    QVERIFY(!m_window->differs());
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{QStringLiteral("n1"), QStringLiteral("n2")}));

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("n7"));
    const zoDocumentSpy spy(m_window.get());
    m_window->setDefaultConfig();
    QCOMPARE(spy.replaced.size(), 1);
    QVERIFY2(spy.replaced.first().contains(QStringLiteral("n7")), qPrintable(spy.replaced.first()));
}

void tst_zoHPCGUIWStatus::nodesThatTheDisplaySetupClearedShowAsAChange()
{
    write(path("a.zhpc"), R"(<cluster version="1">
 <master scenecompression="best"><network><node name="a"/></network></master>
 <display eyeseparation="65" camera="" user="1" hardwaresync="false">
  <window node="gone" screen="0" x="0" y="0" width="1280" height="1024" fullscreen="true"/>
 </display>
</cluster>
)");
    m_window->loadConfig(path("a.zhpc"));
    m_window->show();
    QTRY_VERIFY(!m_window->isWindowModified());

    m_window->displaySetup();
    QTRY_VERIFY(m_window->isWindowModified());
    QVERIFY(status<QLabel>("m_changedStatus")->isVisible());

    // Cancel brings the name back.
    m_window->getDisplayEditor()->reject();
    QTRY_VERIFY(!m_window->isWindowModified());
}

void tst_zoHPCGUIWStatus::fractionOfAnOverlapIsNoChange()
{
    m_window->replaceConfigString(QLatin1String(s_document));
    m_window->getDisplayEditor()->addProjection();
    auto* const wall = m_window->getDisplayEditor()->getProjectionItems().first();
    wall->setDouble(zoHPCProjectionItem::OverlapX, 12.6);
    m_window->saveConfig(path("a.zhpc"));
    m_window->show();
    QTRY_VERIFY(!m_window->isWindowModified());

    // Reads the setup again from its text.
    m_window->displaySetup();
    m_window->getDisplayEditor()->reject();

    QTRY_VERIFY(!m_window->isWindowModified());
    const QByteArray before = contentOf(path("a.zhpc"));
    m_window->saveConfig();
    QCOMPARE(contentOf(path("a.zhpc")), before);
}

void tst_zoHPCGUIWStatus::windowAloneShowsThatItWasChanged()
{
    // Qt would warn, which fails the test, that there is no "[*]" in the title.
    m_window->show();
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    QVERIFY(status<QLabel>("m_changedStatus")->isVisible());

    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->show();
    QVERIFY(m_window->isWindowModified());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("HPC Cluster"));
}

void tst_zoHPCGUIWStatus::statusBarCounts()
{
    m_window->replaceConfigString(QLatin1String(s_document));

    QTRY_COMPARE(status<QLabel>("m_nodesStatus")->text(), QStringLiteral("3 nodes"));
    QCOMPARE(status<QLabel>("m_displaysStatus")->text(), QStringLiteral("1 display"));
    // Two nodes called "a", and a window without a viewport.
    const auto* problems = status<QToolButton>("m_problemsStatus");
    QCOMPARE(problems->text(), QStringLiteral("2 problems"));
    QVERIFY(!problems->icon().isNull());
    QCOMPARE(problems->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QVERIFY2(problems->toolTip().contains(QStringLiteral("a")), qPrintable(problems->toolTip()));

    m_window->getTree()->getNodeItems().back()->setHostName(QStringLiteral("c"));
    m_window->getDisplayEditor()->getWindowItems().first()->setRenderNode(QStringLiteral("c"));
    QTRY_COMPARE(problems->text(), QStringLiteral("1 problem"));
    delete m_window->getDisplayEditor()->getWindowItems().first();
    QTRY_COMPARE(problems->text(), QStringLiteral("No problems"));
    QVERIFY(problems->icon().isNull());

    m_window->getTree()->setSelectedItem(m_window->getTree()->getNodeItems().back());
    action("Remove compute node")->trigger();
    QTRY_COMPARE(status<QLabel>("m_nodesStatus")->text(), QStringLiteral("2 nodes"));
}

void tst_zoHPCGUIWStatus::problemsLeadToTheDisplaySetup()
{
    status<QToolButton>("m_problemsStatus")->click();

    QVERIFY(m_window->getDisplayEditor()->isVisible());
}

void tst_zoHPCGUIWStatus::messagesStillShowBesideTheStatus()
{
    m_window->saveConfig(path("a-name-as-long-as-people-give-them-to-be-sure-of-what-they-hold.zhpc"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    const auto* pane = status<zoHPCStatusPane>("m_statusPane");
    const int left = pane->x();
    const int height = m_window->statusBar()->height();
    const auto widthOf = [this](const QString& message) {
        return m_window->statusBar()->fontMetrics().horizontalAdvance(message);
    };

    const QString small = QStringLiteral("A message");
    m_window->statusBar()->showMessage(small);
    QTRY_VERIFY(pane->x() > widthOf(small));
    QVERIFY(pane->isVisible() && file->isVisible());
    QVERIFY(status<QLabel>("m_nodesStatus")->isVisible());

    const QString large = QStringLiteral("A message that needs nearly all of this window's width for itself");
    m_window->statusBar()->showMessage(large);
    QTRY_VERIFY(pane->x() > widthOf(large));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    QTRY_VERIFY(pane->x() > widthOf(large));
    QCOMPARE(m_window->statusBar()->height(), height);

    m_window->statusBar()->clearMessage();
    QTRY_VERIFY(pane->x() <= left);
    QVERIFY(file->isVisible());
    QVERIFY(status<QLabel>("m_changedStatus")->isVisible());
    QVERIFY(status<QLabel>("m_nodesStatus")->isVisible());
}

void tst_zoHPCGUIWStatus::fileNameGetsItsRoom()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));

    m_window->saveConfig(path("tiledwall-3x5-gateway.zhpc"));

    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QCOMPARE(file->shownText(), QStringLiteral("tiledwall-3x5-gateway.zhpc"));
    QCOMPARE(file->width(), file->sizeHint().width());
}

void tst_zoHPCGUIWStatus::narrowWindowShortensTheFileNameOnly()
{
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a-name-as-long-as-people-give-them-to-be-sure-of-what-they-hold.zhpc"));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));

    m_window->resize(m_window->minimumSizeHint());

    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QTRY_COMPARE(m_window->width(), m_window->minimumSizeHint().width());
    QVERIFY(file->shownText() != file->text());
    QVERIFY(file->shownText().size() > 3);
    for (const char* name : {"m_changedStatus", "m_nodesStatus", "m_displaysStatus", "m_problemsStatus"}) {
        const auto* part = status<QWidget>(name);
        QVERIFY2(part->isVisible() && part->width() >= part->sizeHint().width(), name);
    }
}

void tst_zoHPCGUIWStatus::replacedDocumentIsAnnounced_data()
{
    QTest::addColumn<QString>("way");

    for (const char* way : {"new", "load", "import", "service"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void tst_zoHPCGUIWStatus::replacedDocumentIsAnnounced()
{
    QFETCH(QString, way);
    m_window->setConfigString(QLatin1String(s_document));
    write(path("other.zhpc"), QByteArray(s_document).replace("\"b\"", "\"c\""));
    write(path("old.xml"), "");
    zoDocumentSpy spy(m_window.get());
    QString nodesThen;
    spy.onReplaced = [this, &nodesThen] {
        nodesThen = m_window->getTree()->getNodeNames().join(QLatin1Char(' '));
    };

    if (way == QLatin1String("new"))
        m_window->setDefaultConfig();
    else if (way == QLatin1String("load"))
        m_window->loadConfig(path("other.zhpc"));
    else if (way == QLatin1String("service"))
        m_window->replaceConfigString(QString::fromUtf8(contentOf(path("other.zhpc"))));
    else {
        const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("old.xml")); });
        m_window->importLegacy();
    }

    QCOMPARE(spy.replaced, QStringList{QLatin1String(s_document)});
    QCOMPARE(nodesThen, QStringLiteral("a b a")); // before it goes
    QVERIFY(!m_window->dynamicPropertyNames().contains("replacedConfiguration"));
    QVERIFY(m_window->getConfigString() != QLatin1String(s_document));
}

void tst_zoHPCGUIWStatus::nothingIsAnnouncedWhenNothingGetsLost_data()
{
    QTest::addColumn<QString>("before"); // empty for the window as it is built
    QTest::addColumn<QString>("next");   // text, or "new", or a file that is missing

    const QString document = QString::fromLatin1(s_document);
    QTest::newRow("first-document") << QString() << document;
    QTest::newRow("empty-document") << "<cluster/>" << document;
    QTest::newRow("same-document") << document << document;
    QTest::newRow("new-twice") << "new"
                               << "new";
    QTest::newRow("load-that-fails") << document << "missing";
}

void tst_zoHPCGUIWStatus::nothingIsAnnouncedWhenNothingGetsLost()
{
    QFETCH(QString, before);
    QFETCH(QString, next);
    if (before == QLatin1String("new"))
        m_window->setDefaultConfig();
    else if (!before.isEmpty())
        m_window->setConfigString(before);
    const zoDocumentSpy spy(m_window.get());

    if (next == QLatin1String("missing")) {
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Unable to load")));
        m_window->loadConfig(path("missing.zhpc"));
    } else if (next == QLatin1String("new")) {
        m_window->setDefaultConfig();
    } else {
        m_window->replaceConfigString(next);
    }

    QCOMPARE(spy.replaced, QStringList());
}

ZO_TEST_MAIN(tst_zoHPCGUIWStatus)
#include "tst_zoHPCGUIWStatus.moc"
