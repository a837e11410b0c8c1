#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCWindowChecks.h>

#include <QApplication>

#include <climits>

using List = zoHPCProblem::List;
using Item = zoHPCWindowItem;

// Windows: their viewports, sizes and screens, and machines that several nodes name.
class tst_zoHPCWindowChecks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void windowNeedsAViewport();
    void sizeIsMissing_data();
    void sizeIsMissing();
    void sizeThatIsNotGivenIsTheUsual();
    void sizeIsMadePositiveWhereNothingIsHidden();
    void windowBeginsOutsideOfItsScreen_data();
    void windowBeginsOutsideOfItsScreen();
    void windowIsMovedWhereNothingIsHidden();
    void displayNeedsAWindow();
    void nothingIsSaidOfWhatSomebodyJustBegan();
    void gatewaysAreOfferedLast();
    void screenIsUnknown_data();
    void screenIsUnknown();
    void screenIsUsedWhereNothingIsHidden();
    void unknownScreenHidesNothing();
    void nodesOfOneMachineShareItsScreens_data();
    void nodesOfOneMachineShareItsScreens();
};

void tst_zoHPCWindowChecks::windowNeedsAViewport()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("a"), QString());
    zoHPCWindowItem* const empty = setup.addWindow(QStringLiteral("b"), QString(), QString());

    const List problems = zoHPCWindowChecks::windowsWithoutViewport(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, empty);
    QVERIFY(problems[0].message.startsWith(QStringLiteral("Window 2 of display 1 ")));
}

void tst_zoHPCWindowChecks::sizeIsMissing_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("isFullScreen");
    QTest::addColumn<bool>("missing");
    QTest::addColumn<bool>("canBeMended");

    QTest::newRow("usual") << 1280 << 1024 << false << false << false;
    QTest::newRow("one-pixel") << 1 << 1 << false << false << false;
    QTest::newRow("no-width") << 0 << 1024 << false << true << false;
    QTest::newRow("no-height") << 1280 << 0 << false << true << false;
    QTest::newRow("negative-height") << 1280 << -1024 << false << true << true;
    QTest::newRow("both-negative") << -1 << -1 << false << true << true;
    QTest::newRow("the-least-number") << INT_MIN << 1 << false << true << false;
    QTest::newRow("full-screen-needs-none") << 0 << 0 << true << false << false;
}

void tst_zoHPCWindowChecks::sizeIsMissing()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, isFullScreen);
    QFETCH(bool, missing);
    QFETCH(bool, canBeMended);
    zoHPCSetup setup;
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, width, height);
    window->setBool(Item::FullScreen, isFullScreen);

    const List problems = zoHPCWindowChecks::windowsWithoutSize(setup.layout());

    QCOMPARE(problems.size(), size_t(missing ? 1 : 0));
    if (!missing)
        return;
    QCOMPARE(problems[0].hasFix(), canBeMended);
    if (!canBeMended)
        return;
    problems[0].fix();
    QCOMPARE(window->getInt(Item::Height), qAbs(height));
    QVERIFY(zoHPCWindowChecks::windowsWithoutSize(setup.layout()).empty());
}

void tst_zoHPCWindowChecks::sizeThatIsNotGivenIsTheUsual()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 0, 0);
    // An empty text is not there any more when the file is read.
    for (const QVariant& nothing : {QVariant(), QVariant(QString(""))}) {
        window->setData(Item::Width, Qt::EditRole, nothing);
        window->setData(Item::Height, Qt::EditRole, nothing);

        QVERIFY(zoHPCWindowChecks::windowsWithoutSize(setup.layout()).empty());
    }
}

void tst_zoHPCWindowChecks::sizeIsMadePositiveWhereNothingIsHidden()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, -1024);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, 1024);

    QVERIFY(!zoHPCWindowChecks::windowsWithoutSize(setup.layout()).at(0).hasFix());
}

void tst_zoHPCWindowChecks::windowBeginsOutsideOfItsScreen_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<QString>("screen");
    QTest::addColumn<bool>("isFullScreen");
    QTest::addColumn<bool>("outside");

    QTest::newRow("corner") << 0 << 0 << "0" << false << false;
    QTest::newRow("left") << -1 << 0 << "0" << false << true;
    QTest::newRow("above") << 0 << -1 << "1" << false << true;
    QTest::newRow("primary") << -5 << -5 << "-1" << false << true;
    QTest::newRow("all-screens") << -5 << -5 << "-2" << false << false;
    QTest::newRow("full-screen") << -5 << -5 << "0" << true << false;
    QTest::newRow("far-right") << 100000 << 0 << "0" << false << false; // nobody knows how large screens are
}

void tst_zoHPCWindowChecks::windowBeginsOutsideOfItsScreen()
{
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(QString, screen);
    QFETCH(bool, isFullScreen);
    QFETCH(bool, outside);
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindowAt(QStringLiteral("n"), screen, x, y, 100, 100);
    window->setBool(Item::FullScreen, isFullScreen);

    const List problems = zoHPCWindowChecks::windowsOutsideScreen(setup.layout());

    QCOMPARE(problems.size(), size_t(outside ? 1 : 0));
}

void tst_zoHPCWindowChecks::windowIsMovedWhereNothingIsHidden()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("n"));
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), -7, 9, 100, 100);
    const List alone = zoHPCWindowChecks::windowsOutsideScreen(setup.layout());
    QVERIFY(alone.at(0).hasFix());

    alone.at(0).fix();

    QCOMPARE(window->getInt(Item::X), 0);
    QCOMPARE(window->getInt(Item::Y), 9);
    QVERIFY(zoHPCWindowChecks::windowsOutsideScreen(setup.layout()).empty());
    window->setInt(Item::X, -7);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 100, 0, 100, 100);
    QVERIFY(!zoHPCWindowChecks::windowsOutsideScreen(setup.layout()).at(0).hasFix());
}

void tst_zoHPCWindowChecks::displayNeedsAWindow()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("a"), QString());
    setup.displays.addTopLevelItem(new zoHPCDisplayItem);

    const List problems = zoHPCWindowChecks::displaysWithoutWindow(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].item, setup.displays.topLevelItem(1));
    QVERIFY(problems[0].message.startsWith(QStringLiteral("Display 2 ")));
}

void tst_zoHPCWindowChecks::nothingIsSaidOfWhatSomebodyJustBegan()
{
    zoHPCSetup setup;
    QVERIFY(zoHPCWindowChecks::displaysWithoutWindow(setup.layout()).empty());

    setup.addPowerWall(QStringLiteral("Wall"), 1, 1);
    QCOMPARE(zoHPCWindowChecks::displaysWithoutWindow(setup.layout()).size(), size_t(1));
}

void tst_zoHPCWindowChecks::gatewaysAreOfferedLast()
{
    zoHPCSetup setup;
    zoHPCTreeItem* const gateway = setup.addNode(QStringLiteral("gate"));
    setup.addNode(QStringLiteral("inner"), setup.hosts.createNetwork(gateway, -1));
    setup.addNode(QStringLiteral("outer"));
    for (int i = 0; i < 4; ++i)
        setup.addWindow(QString(), QString());

    const List problems = zoHPCWindowChecks::windowsWithoutNode(setup.layout());

    QCOMPARE(problems.size(), size_t(4));
    QStringList offered;
    for (const zoHPCProblem& problem : problems)
        offered << problem.fixText;
    QCOMPARE(offered, (QStringList{QStringLiteral("Use inner"), QStringLiteral("Use outer"),
                                   QStringLiteral("Use gate"), QString()}));
}

void tst_zoHPCWindowChecks::screenIsUnknown_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("fix"); // "-" for a screen

    for (const char* screen : {"0", "15", "16", "-1", "-2", ""})
        QTest::addRow("known-%s", screen) << QString::fromLatin1(screen) << "-";
    QTest::newRow("below") << "-3"
                           << "";
    QTest::newRow("word") << "left"
                          << "";
    QTest::newRow("as-x-says") << ":0.1"
                               << "Use screen 2";
    QTest::newRow("as-x-says-of-a-host") << "n1:0.0"
                                         << "Use screen 1";
    QTest::newRow("as-x-says-without-screen") << ":0"
                                              << "";
    QTest::newRow("with-a-point") << "1.0"
                                  << "Use screen 2";
    QTest::newRow("between-two") << "1.5"
                                 << "";
    QTest::newRow("beyond-numbers") << "99999999999"
                                    << "";
}

void tst_zoHPCWindowChecks::screenIsUnknown()
{
    QFETCH(QString, screen);
    QFETCH(QString, fix);
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    window->setString(Item::Screen, screen);

    const List problems = zoHPCWindowChecks::windowsOnUnknownScreen(setup.layout());

    QCOMPARE(problems.empty(), fix == QLatin1String("-"));
    if (problems.empty())
        return;
    QVERIFY(problems[0].message.contains('"' + screen + '"'));
    QCOMPARE(problems[0].fixText, fix);
    if (fix.isEmpty())
        return;
    problems[0].fix();
    QVERIFY(zoHPCWindowChecks::windowsOnUnknownScreen(setup.layout()).empty());
    QVERIFY(fix.endsWith(QString::number(setup.layout().windows().at(0).screen + 1)));
}

void tst_zoHPCWindowChecks::screenIsUsedWhereNothingIsHidden()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString());
    setup.addWindow(QStringLiteral("n"), QString())->setString(Item::Screen, QStringLiteral(":0.0"));

    QVERIFY(!zoHPCWindowChecks::windowsOnUnknownScreen(setup.layout()).at(0).hasFix());
}

void tst_zoHPCWindowChecks::unknownScreenHidesNothing()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString());
    setup.addWindow(QStringLiteral("n"), QString())->setString(Item::Screen, QStringLiteral("right"));

    QVERIFY(zoHPCWindowChecks::overlappingWindows(setup.layout()).empty());
}

void tst_zoHPCWindowChecks::nodesOfOneMachineShareItsScreens_data()
{
    QTest::addColumn<QStringList>("hosts");
    QTest::addColumn<QStringList>("nodes"); // of the two windows
    QTest::addColumn<QStringList>("screens");
    QTest::addColumn<bool>("overlap");

    QTest::newRow("one-screen") << QStringList{"a", "a"} << QStringList{"a 1", "a 2"} << QStringList{"0", "0"}
                                << true;
    QTest::newRow("two-screens") << QStringList{"a", "a"} << QStringList{"a 1", "a 2"}
                                 << QStringList{"0", "1"} << false;
    QTest::newRow("two-machines") << QStringList{"a", "b"} << QStringList{"a", "b"} << QStringList{"0", "0"}
                                  << false;
    QTest::newRow("spelt-otherwise") << QStringList{"a", "A"} << QStringList{"a", "A"}
                                     << QStringList{"0", "0"} << true;
}

void tst_zoHPCWindowChecks::nodesOfOneMachineShareItsScreens()
{
    QFETCH(QStringList, hosts);
    QFETCH(QStringList, nodes);
    QFETCH(QStringList, screens);
    QFETCH(bool, overlap);
    zoHPCSetup setup;
    for (int i = 0; i < 2; ++i) {
        setup.addNode(hosts[i]);
        setup.addWindow(nodes[i], QString())->setString(Item::Screen, screens[i]);
    }

    const List problems = zoHPCWindowChecks::overlappingWindows(setup.layout());

    QCOMPARE(problems.size(), size_t(overlap ? 1 : 0));
    if (overlap)
        QVERIFY(problems[0].message.contains(
            QStringLiteral("\"%1\" and \"%2\" are one machine").arg(nodes[0], nodes[1])));
}

ZO_TEST_MAIN(tst_zoHPCWindowChecks)
#include "tst_zoHPCWindowChecks.moc"
