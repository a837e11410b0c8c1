#include "zoDialogRobot.h"
#include "zoFakeHost.h"
#include "zoFullDisk.h"
#include "zoHPCWindowTest.h"

#include <zoHPCDocumentText.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoPlatform.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTextCodec>

namespace
{
// Types a file name into the file dialog and accepts.
void choose(QDialog* dialog, const QString& fileName)
{
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
    QMetaObject::invokeMethod(dialog, "accept");
}
} // namespace

// The cluster window and its files: what is written, read, refused and imported.
class tst_zoHPCGUIWFiles final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void newDocumentHasItsText();
    void treeSectionComesFirst();
    void textIsAFixedPoint();
    void placeholdersInNamesStay();
    void textThatDoesNotParseEmptiesTheWindow();
    void savingAppendsTheExtension_data();
    void savingAppendsTheExtension();
    void savingWithAnEmptyNameChangesNothing();
    void savingWhereNothingCanBeWrittenChangesNothing();
    void fullDiskLeavesTheOldFileWhole_data();
    void fullDiskLeavesTheOldFileWhole();
    void saveAsksForANameOnlyWhenThereIsNone();
    void newForgetsTheFile();
    void loadedFileEndsAtTheFirstNulByte();
    void loadedFileIsUtf8();
    void loadedFileMayBeOfAnOldTool_data();
    void loadedFileMayBeOfAnOldTool();
    void fileThatIsNotUtf8IsTold();
    void bytesThatAreNotUtf8SurviveTheSave();
    void whatNobodyReadsIsTold();
    void longListOfWhatNobodyReadsIsCut();
    void fileThatCannotBeOpenedChangesNothing();
    void fileThatCannotBeReadChangesNothing();
    void directoryFollowsTheFile();
    void loadDialogLoads();
    void loadDialogCancelledChangesNothing();
    void saveKeepsTheMarksOfATreeWithAHostsFile();
    void saveThatCannotOpenItsFileReadsNoHostsFile();
    void editConfigShowsTheTextAndAppliesItUnchanged();
    void editConfigCancelledChangesNothing();
    void importLegacyLoadsTheConvertedText();
    void importedDocumentIsNotSaved();
    void valuesSurviveLookingAtThem();
    void replacedValueCountsAsAChange();
    void loadingAnotherFileSaysSoInTheStatusBar_data();
    void loadingAnotherFileSaysSoInTheStatusBar();
    void importLegacyOfAnotherFileSaysSoInTheStatusBar();
    void importLegacyOfAMissingFileIsAnEmptyCluster();
    void deepHostsTextIsSavedAndLoaded();
    void deepestDocumentIsReadAsAWhole();
    void documentTooDeepForTheTreeIsRefusedAsAWhole();
    void hashSeedDoesNotChangeTheBytes_data();
    void hashSeedDoesNotChangeTheBytes();
};

void tst_zoHPCGUIWFiles::newDocumentHasItsText()
{
    action("New")->trigger();

    QCOMPARE(m_window->getConfigString(), QStringLiteral("<cluster version=\"1\">\n"
                                                         " <master scenecompression=\"best\">\n"
                                                         "  <network>\n"
                                                         "   <node name=\"localhost\"/>\n"
                                                         "  </network>\n"
                                                         " </master>\n"
                                                         " <display eyeseparation=\"65\" user=\"1\""
                                                         " hardwaresync=\"false\"/>\n"
                                                         "</cluster>\n"));
}

void tst_zoHPCGUIWFiles::treeSectionComesFirst()
{
    m_window->setConfigString(
        QStringLiteral("<cluster version=\"1\"><display user=\"2\"/><projection name=\"p\""
                       " type=\"plane\"/><master><network/></master></cluster>"));

    const QString text = m_window->getConfigString();

    const int master = text.indexOf(QStringLiteral("<master"));
    const int projection = text.indexOf(QStringLiteral("<projection"));
    const int display = text.indexOf(QStringLiteral("<display"));
    QVERIFY(master > 0);
    QVERIFY(projection > master);
    QVERIFY(display > projection);
}

void tst_zoHPCGUIWFiles::textIsAFixedPoint()
{
    m_window->setConfigString(QLatin1String(s_document));

    const QString first = m_window->getConfigString();
    m_window->setConfigString(first);

    QCOMPARE(m_window->getConfigString(), first);
    QCOMPARE(first, QLatin1String(s_document));
}

void tst_zoHPCGUIWFiles::placeholdersInNamesStay()
{
    const QString document = QLatin1String(s_document);
    m_window->setConfigString(QString(document).replace(QStringLiteral("\"a\""), QStringLiteral("\"%1%2\"")));

    QCOMPARE(m_window->getTree()->getNodeItems().at(2)->uniqueHostName(), QStringLiteral("%1%2 2"));
}

void tst_zoHPCGUIWFiles::textThatDoesNotParseEmptiesTheWindow()
{
    m_window->setConfigString(QLatin1String(s_document));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Cluster config line 1, column \\d+: ")));

    m_window->setConfigString(QStringLiteral("<cluster><master>"));

    QCOMPARE(m_window->getConfigString(),
             QStringLiteral("<cluster version=\"1\">\n <master/>\n</cluster>\n"));
}

void tst_zoHPCGUIWFiles::savingAppendsTheExtension_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("written");

    QTest::newRow("none") << "cfg"
                          << "cfg.zhpc";
    QTest::newRow("mixed-case-kept") << "cfg.Zhpc"
                                     << "cfg.Zhpc";
    QTest::newRow("upper-case-kept") << "a.ZHPC"
                                     << "a.ZHPC";
    QTest::newRow("other-extension") << "a.xml"
                                     << "a.xml.zhpc";
    QTest::newRow("only-the-extension") << ".zhpc"
                                        << ".zhpc";
    QTest::newRow("umlaut") << QString::fromUtf8("w\xc3\xa4nde") << QString::fromUtf8("w\xc3\xa4nde.zhpc");
}

void tst_zoHPCGUIWFiles::savingAppendsTheExtension()
{
    QFETCH(QString, given);
    QFETCH(QString, written);
    m_window->setConfigString(QLatin1String(s_document));

    m_window->saveConfig(m_folder->filePath(given));

    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{written});
    QCOMPARE(contentOf(m_folder->filePath(written)), QByteArray(s_document));
}

void tst_zoHPCGUIWFiles::savingWithAnEmptyNameChangesNothing()
{
    const QString before = m_window->getConfigPath();

    m_window->saveConfig(QString());

    QCOMPARE(m_window->getConfigPath(), before);
    QVERIFY(!QFile::exists(QStringLiteral(".zhpc")));
}

void tst_zoHPCGUIWFiles::savingWhereNothingCanBeWrittenChangesNothing()
{
    const QString before = m_window->getConfigPath();

    m_window->saveConfig(path("no-such-folder/cfg.zhpc"));

    QCOMPARE(m_window->getConfigPath(), before);
    QVERIFY(messages().isEmpty());
}

void tst_zoHPCGUIWFiles::fullDiskLeavesTheOldFileWhole_data()
{
    QTest::addColumn<QString>("hosts");

    QTest::newRow("a-few-hundred-bytes") << QStringLiteral("n1 - n9");
    QTest::newRow("more-than-a-buffer") << QStringLiteral("n0001 - n9000");
}

void tst_zoHPCGUIWFiles::fullDiskLeavesTheOldFileWhole()
{
    QFETCH(QString, hosts);
    zoFullDisk disk(m_folder->path());
    const QString fileName = path("wall.zhpc");
    write(fileName, "the old content");
    m_window->getTree()->setHostString(hosts);
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(QStringLiteral("^Unable to save cluster config .*wall\\.zhpc: %1\\. What "
                                          "the file held before is still there\\.$")
                               .arg(disk.reason())));
    disk.fill();

    m_window->saveConfig(fileName);

    QCOMPARE(contentOf(fileName), QByteArray("the old content"));
    QCOMPARE(disk.countFiles(), 1);
    QCOMPARE(m_window->windowFilePath(), QString());
}

void tst_zoHPCGUIWFiles::saveAsksForANameOnlyWhenThereIsNone()
{
    const QString fileName = path("first.zhpc");
    QString title;
    {
        const zoDialogRobot robot([&](QDialog* dialog) {
            title = dialog->windowTitle();
            choose(dialog, fileName);
        });
        action("Save")->trigger();
        QCOMPARE(robot.handled(), 1);
    }
    QCOMPARE(title, QStringLiteral("Save Cluster Configuration"));
    QVERIFY(QFile::exists(fileName));

    m_window->getTree()->setHostString(QStringLiteral("changed"));
    action("Save")->trigger();
    QVERIFY(contentOf(fileName).contains("changed"));
}

void tst_zoHPCGUIWFiles::newForgetsTheFile()
{
    const QString fileName = path("old.zhpc");
    m_window->saveConfig(fileName);
    const QByteArray before = contentOf(fileName);
    action("New")->trigger();

    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
    action("Save")->trigger();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(contentOf(fileName), before);
}

void tst_zoHPCGUIWFiles::loadedFileEndsAtTheFirstNulByte()
{
    QByteArray bytes(s_document);
    bytes.append('\0');
    bytes.append("rubbish behind");
    write(path("nul.zhpc"), bytes);

    m_window->loadConfig(path("nul.zhpc"));

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIWFiles::loadedFileIsUtf8()
{
    write(path("utf8.zhpc"), QByteArray(s_document).replace("\"b\"", "\"w\xc3\xa4nde\""));

    m_window->loadConfig(path("utf8.zhpc"));

    QCOMPARE(m_window->getTree()->getNodeNames().at(1), QString::fromUtf8("w\xc3\xa4nde"));
}

void tst_zoHPCGUIWFiles::loadedFileMayBeOfAnOldTool_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QString text = QString::fromLatin1(s_document).replace("\"b\"", QString::fromUtf8("\"wände\""));
    QTest::newRow("latin-1") << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n") +
                                    text.toLatin1();
    QTest::newRow("utf-16") << QTextCodec::codecForName("UTF-16LE")
                                   ->fromUnicode(
                                       QChar(QChar::ByteOrderMark) +
                                       QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n") +
                                       text);
}

void tst_zoHPCGUIWFiles::loadedFileMayBeOfAnOldTool()
{
    QFETCH(QByteArray, bytes);
    write(path("old.zhpc"), bytes);

    m_window->loadConfig(path("old.zhpc"));

    QCOMPARE(m_window->getTree()->getNodeNames().at(1), QString::fromUtf8("wände"));
}

void tst_zoHPCGUIWFiles::fileThatIsNotUtf8IsTold()
{
    write(path("odd.zhpc"), QByteArray("<cluster version=\"1\">\n <master name=\"\xe4\"/>\n</cluster>\n"));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral(
                                     "odd\\.zhpc, line 2, column 16: the bytes are not UTF-8$")));

    m_window->loadConfig(path("odd.zhpc"));

    QCOMPARE(m_window->windowFilePath(), path("odd.zhpc"));
}

// A host that is not ours does not ask before the file is overwritten.
void tst_zoHPCGUIWFiles::bytesThatAreNotUtf8SurviveTheSave()
{
    const QByteArray bytes(
        "<cluster version=\"1\">\n <master><network><node name=\"\xe4\"/></network></master>\n</cluster>\n");
    write(path("odd.zhpc"), bytes);
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("line 2, column 31: the bytes are not UTF-8$")));
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("What it held before .*/odd\\.zhpc~\\.$")));
    m_window->loadConfig(path("odd.zhpc"));

    action("Save")->trigger();

    QCOMPARE(contentOf(path("odd.zhpc~")), bytes);
    QCOMPARE(contentOf(path("odd.zhpc")), m_window->getConfigString().toUtf8());
}

void tst_zoHPCGUIWFiles::whatNobodyReadsIsTold()
{
    const QString fileName = path("mistakes.zhpc");
    write(fileName, "<cluster version=\"1\">\n"
                    " <master><network><node name=\"a\"/></network></master>\n"
                    " <projection name=\"Wall\" type=\"wall\" rows=\"1\" columns=\"1\"/>\n"
                    " <display eyeseperation=\"65\">\n"
                    "  <window node=\"a\"><viewport projection=\"Wall row:9 col:9\"/></window>\n"
                    " </display>\n"
                    "</cluster>\n");

    m_window->loadConfig(fileName);

    QStringList told;
    const QStringList all = messages();
    for (const QString& message : all) {
        if (message.contains(fileName))
            told << message.mid(message.indexOf(fileName) + fileName.size());
    }
    QCOMPARE(told, (QStringList{
                       ", line 4, column 11: \"display\" has no attribute \"eyeseperation\": did you mean "
                       "\"eyeseparation\"?",
                       ", line 5, column 42: There is no projection \"Wall row:9 col:9\": \"Wall\" has tiles "
                       "up to row:1 col:1."}));
}

void tst_zoHPCGUIWFiles::longListOfWhatNobodyReadsIsCut()
{
    const QString fileName = path("many.zhpc");
    write(fileName,
          "<cluster version=\"1\"><master/>" + QByteArray("<mistake/>").repeated(23) + "</cluster>");

    m_window->loadConfig(fileName);

    const QStringList told = messages().filter(fileName);
    QCOMPARE(told.size(), 21);
    QVERIFY2(told.last().contains(QLatin1String("and 3 more")), qPrintable(told.last()));
}

void tst_zoHPCGUIWFiles::fileThatCannotBeOpenedChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const QString directory = m_window->getConfigPath();
    const QString missing = m_folder->filePath(QString::fromUtf8("w\xc3\xa4nde.zhpc"));
    expectMessage(QtCriticalMsg,
                  QRegularExpression(
                      QLatin1Char('^') +
                      QRegularExpression::escape(QStringLiteral("Unable to load cluster config ") + missing) +
                      QLatin1Char('$')));

    m_window->loadConfig(missing);

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
    QCOMPARE(m_window->getConfigPath(), directory);
}

void tst_zoHPCGUIWFiles::fileThatCannotBeReadChangesNothing()
{
    // Opens, but nothing is mapped where it begins: reading fails.
    const QString unreadable = QStringLiteral("/proc/self/mem");
    m_window->setConfigString(QLatin1String(s_document));
    const QString directory = m_window->getConfigPath();
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^Unable to load cluster config /proc/self/mem: .")));

    m_window->loadConfig(unreadable);

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
    QCOMPARE(m_window->getConfigPath(), directory);
}

void tst_zoHPCGUIWFiles::directoryFollowsTheFile()
{
    QCOMPARE(m_window->getConfigPath(),
             QDir(QString::fromStdString(zoPlatform::getDataDir())).filePath(QStringLiteral("cluster")));

    m_window->saveConfig(path("cfg.zhpc"));
    QCOMPARE(m_window->getConfigPath(), QFileInfo(m_folder->path()).absoluteFilePath());

    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("below")));
    write(path("below/other.zhpc"), s_document);
    m_window->loadConfig(path("below/other.zhpc"));
    QCOMPARE(m_window->getConfigPath(), path("below"));
}

void tst_zoHPCGUIWFiles::loadDialogLoads()
{
    write(path("cfg.zhpc"), s_document);
    QString title;
    QStringList filters;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        filters = qobject_cast<QFileDialog*>(dialog)->nameFilters();
        choose(dialog, path("cfg.zhpc"));
    });

    action("Load...")->trigger();

    QCOMPARE(title, QStringLiteral("Load Cluster Configuration"));
    QCOMPARE(filters, QStringList{QStringLiteral("Cluster Config (*.zhpc)")});
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIWFiles::loadDialogCancelledChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    action("Load...")->trigger();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIWFiles::saveKeepsTheMarksOfATreeWithAHostsFile()
{
    write(path("hosts.txt"), "a b a c");
    QString document = QLatin1String(s_document);
    document.replace(QStringLiteral("<master "),
                     QStringLiteral("<master nodesfile=\"%1\" ").arg(path("hosts.txt")));
    m_window->setConfigString(document);
    m_window->setIsRunning(true, QStringList{QStringLiteral("a_2")});
    const QImage before = m_window->getTree()->getNodeItems().at(2)->icon(0).pixmap(32, 32).toImage();

    m_window->saveConfig(path("cfg.zhpc"));

    const std::vector<zoHPCTreeItem*> nodes = m_window->getTree()->getNodeItems();
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{"a", "b", "a", "c"}));
    QVERIFY(nodes.at(2)->isDisplayNode());
    QVERIFY(!nodes.at(0)->isDisplayNode());
    QCOMPARE(nodes.at(2)->uniqueHostName(), QStringLiteral("a 2"));
    QCOMPARE(nodes.at(2)->icon(0).pixmap(32, 32).toImage(), before);
}

void tst_zoHPCGUIWFiles::saveThatCannotOpenItsFileReadsNoHostsFile()
{
    write(path("hosts"), "{ n1 n2 }");
    m_window->getTree()->setHostFile(path("hosts"));
    m_window->saveConfig(path("a.zhpc"));
    const QStringList names = m_window->getTree()->getNodeNames();
    write(path("hosts"), "{ n3 }");

    m_window->saveConfig(path("none/a.zhpc"));
    QCOMPARE(m_window->getTree()->getNodeNames(), names);
    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));

    m_window->saveConfig(path("a.zhpc"));
    QCOMPARE(m_window->getTree()->getNodeNames(), QStringList{QStringLiteral("n3")});
}

void tst_zoHPCGUIWFiles::editConfigShowsTheTextAndAppliesItUnchanged()
{
    m_window->setConfigString(QLatin1String(s_document));
    QString title;
    QString shown;
    bool fileRowVisible = true;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        auto* edit = dialog->findChild<QPlainTextEdit*>(QStringLiteral("m_textEdit"));
        shown = edit->toPlainText();
        fileRowVisible = dialog->findChild<QLineEdit*>(QStringLiteral("m_serversFile"))->isVisible();
        edit->setPlainText(QStringLiteral("<cluster/>"));
        dialog->accept();
    });

    m_window->editConfig();

    QCOMPARE(title, QStringLiteral("Edit configuration..."));
    QCOMPARE(shown, QLatin1String(s_document));
    QVERIFY(!fileRowVisible);
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIWFiles::editConfigCancelledChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const QSignalSpy loaded(m_window->getTree(), SIGNAL(hostsChanged()));
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    m_window->editConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(loaded.count(), 0);
}

void tst_zoHPCGUIWFiles::importLegacyLoadsTheConvertedText()
{
    write(path("old.xml"), "<config><key name=\"zoClusterProjectionType\">Powerwall</key>"
                           "<key name=\"zoClusterPWServers\">a b</key></config>");
    QString title;
    QStringList filters;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        filters = qobject_cast<QFileDialog*>(dialog)->nameFilters();
        choose(dialog, path("old.xml"));
    });

    action("Import legacy...")->trigger();

    QCOMPARE(title, QStringLiteral("Load Legacy Configuration"));
    QCOMPARE(filters, QStringList{QStringLiteral("Legacy Config (*.xml)")});
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{"a", "b"}));
    QVERIFY(m_window->getTree()->getNodeItems().front()->isDisplayNode());
    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(), QString());
}

void tst_zoHPCGUIWFiles::importedDocumentIsNotSaved()
{
    m_window->setDefaultConfig();
    write(path("old.xml"), "<config><key name=\"zoClusterPWServers\">a b</key></config>");
    const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("old.xml")); });

    action("Import legacy...")->trigger();

    QVERIFY(m_window->windowFilePath().isEmpty());
    QVERIFY(m_window->differs());
    QTRY_VERIFY(m_window->isWindowModified());
}

void tst_zoHPCGUIWFiles::valuesSurviveLookingAtThem()
{
    write(path("own.zhpc"),
          "<cluster version='1'><master scenecompression='best' homogeneous='yes'>"
          "<network encrypted='1' serviceport='70000'><node name='a'/></network>"
          "<network serviceport='8889'><node name='b' enabled='no' rendernode='0'/></network>"
          "</master></cluster>");
    m_window->loadConfig(path("own.zhpc"));
    const QString loaded = m_window->documentText();
    QVERIFY(loaded.contains(QStringLiteral("homogeneous=\"yes\"")));

    zoHPCTreeGUIW* tree = m_window->getTree();
    for (int round = 0; round < 2; ++round) {
        for (zoHPCTreeItem* item :
             {tree->findNetworkByIndex(1), tree->findNetworkByIndex(2), tree->getNodeItems().front(),
              tree->getNodeItems().back(), tree->master()})
            tree->setSelectedItem(item);
    }
    m_window->saveConfig();

    QCOMPARE(m_window->documentText(), loaded);
    for (const char* kept : {"homogeneous=\"yes\"", "encrypted=\"1\"", "serviceport=\"70000\"",
                             "serviceport=\"8889\"", "enabled=\"no\"", "rendernode=\"0\""})
        QVERIFY2(loaded.contains(QLatin1String(kept)), kept);
    QFile file(path("own.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), loaded);
}

void tst_zoHPCGUIWFiles::replacedValueCountsAsAChange()
{
    write(path("ultra.zhpc"), "<cluster version='1'><master scenecompression='ultra'><network speed='5g'>"
                              "<node name='a'/></network></master></cluster>");

    m_window->loadConfig(path("ultra.zhpc"));

    QCOMPARE(messages().filter(QStringLiteral("ultra")).size(), 1);
    QVERIFY(m_window->differs());
    QVERIFY(m_window->isWindowModified());
    m_window->getTree()->master()->setOption(zoHPCOption::SceneCompression, QStringLiteral("ultra"));
    QVERIFY(!m_window->differs());
    m_window->getTree()->setSelectedItem(m_window->getTree()->findNetworkByIndex(1));
    QCOMPARE(messages().filter(QStringLiteral("5g")).size(), 1);
    QVERIFY(m_window->differs());
    QTRY_VERIFY(m_window->isWindowModified());

    m_window->getTree()->setSelectedItem(m_window->getTree()->master());
    m_window->saveConfig();
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());
    const QString saved = m_window->documentText();
    m_window->loadConfig(path("ultra.zhpc"));
    QCOMPARE(m_window->documentText(), saved);
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());
}

void tst_zoHPCGUIWFiles::loadingAnotherFileSaysSoInTheStatusBar_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("configuration") << QByteArray(s_document) << false;
    QTest::newRow("no-displays") << QByteArray("<cluster><master/></cluster>") << false;
    QTest::newRow("displays-only") << QByteArray("<cluster><display/></cluster>") << false;
    QTest::newRow("legacy") << QByteArray("<config><key name=\"a\">b</key></config>") << true;
    QTest::newRow("nothing") << QByteArray() << true;
}

void tst_zoHPCGUIWFiles::loadingAnotherFileSaysSoInTheStatusBar()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isTold);
    write(path("other.xml"), content);
    m_window->findChild<QStatusBar*>()->showMessage(QStringLiteral("of the file before"));

    m_window->loadConfig(path("other.xml"));

    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(),
             isTold ? path("other.xml") + QStringLiteral(" holds no cluster configuration.") : QString());
}

void tst_zoHPCGUIWFiles::importLegacyOfAnotherFileSaysSoInTheStatusBar()
{
    write(path("other.xml"), "<html><body/></html>");
    const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("other.xml")); });

    action("Import legacy...")->trigger();

    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(),
             path("other.xml") + QStringLiteral(" holds no parameters of a legacy configuration."));
    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
}

void tst_zoHPCGUIWFiles::importLegacyOfAMissingFileIsAnEmptyCluster()
{
    m_window->setConfigString(QLatin1String(s_document));
    const zoDialogRobot robot([this](QDialog* dialog) {
        // Gone between choosing and opening.
        const QString fileName = path("gone.xml");
        write(fileName, "x");
        QObject::connect(dialog, &QDialog::accepted, [fileName] { QFile::remove(fileName); });
        choose(dialog, fileName);
    });

    action("Import legacy...")->trigger();

    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
}

void tst_zoHPCGUIWFiles::deepHostsTextIsSavedAndLoaded()
{
    QString text;
    for (int i = 0; i < 5000; ++i)
        text += QStringLiteral("{ n%1 ").arg(i);
    m_window->getTree()->setHostString(text);
    m_window->show();
    QCOMPARE(int(m_window->getTree()->getNodeItems().size()), 5000);

    m_window->saveConfig(path("deep.zhpc"));
    action("New")->trigger();
    m_window->loadConfig(path("deep.zhpc"));

    QCOMPARE(int(m_window->getTree()->getNodeItems().size()), 5000);
    QCOMPARE(m_window->getConfigString().toUtf8(), contentOf(path("deep.zhpc")));
}

void tst_zoHPCGUIWFiles::deepestDocumentIsReadAsAWhole()
{
    const int pairs = (zoHPCDocumentText::maximumDepth() - 2) / 2; // below the root and the master

    m_window->setConfigString(QStringLiteral("<cluster><master>") +
                              QStringLiteral("<network><node name=\"n\">").repeated(pairs) +
                              QStringLiteral("</node></network>").repeated(pairs) +
                              QStringLiteral("</master><display user=\"2\"/></cluster>"));

    QCOMPARE(m_window->getTree()->getNodeNames().size(), pairs);
    QVERIFY(m_window->getConfigString().contains(QStringLiteral("<display")));
}

void tst_zoHPCGUIWFiles::documentTooDeepForTheTreeIsRefusedAsAWhole()
{
    m_window->setConfigString(QLatin1String(s_document));
    const int pairs = zoHPCDocumentText::maximumDepth() / 2 + 1;
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("more than \\d+ elements are nested")));

    m_window->setConfigString(QStringLiteral("<cluster><master>") +
                              QStringLiteral("<network><node name=\"n\">").repeated(pairs) +
                              QStringLiteral("</node></network>").repeated(pairs) +
                              QStringLiteral("</master><display user=\"2\"/></cluster>"));

    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
    QVERIFY(!m_window->getConfigString().contains(QStringLiteral("<display")));
}

void tst_zoHPCGUIWFiles::hashSeedDoesNotChangeTheBytes_data()
{
    QTest::addColumn<QString>("seed");

    QTest::newRow("seed-0") << "0";
    QTest::newRow("seed-1") << "1";
    QTest::newRow("seed-42") << "42";
}

void tst_zoHPCGUIWFiles::hashSeedDoesNotChangeTheBytes()
{
    QFETCH(QString, seed);
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_HASH_SEED"), seed);
    other.setProcessEnvironment(environment);

    other.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--save-sample"), path("sample.zhpc")});
    QVERIFY(other.waitForFinished());

    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(contentOf(path("sample.zhpc")), QByteArray(s_document));
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--save-sample") == 0) {
        zoFakeHost host;
        zoHPCGUIW window(nullptr, QStringLiteral("Module"));
        window.setConfigString(QLatin1String(zoHPCWindowTest::s_document));
        window.saveConfig(QFile::decodeName(argv[2]));
        return 0;
    }
    tst_zoHPCGUIWFiles test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoHPCGUIWFiles.moc"
