#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCStereoChecks.h>

#include <QApplication>

using List = zoHPCProblem::List;

// What the two eyes see.
class tst_zoHPCStereoChecks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void separationIsInMetres_data();
    void separationIsInMetres();
    void stereoNeedsASeparation_data();
    void stereoNeedsASeparation();
    void separationThatIsNotGivenIsTheUsual();
    void signsDiffer_data();
    void signsDiffer();
    void usersMayHaveUnlikeEyes();
    void fewerTilesAreTold_data();
    void fewerTilesAreTold();
    void tileGetsTheModeOfTheOthers();
    void twoModesAreNoModel();
    void copyWithoutStereoIsNoTile();
    void wholeWithoutStereoIsNoTile();

private:
    static QStringList names(const List& problems);
};

QStringList tst_zoHPCStereoChecks::names(const List& problems)
{
    QStringList result;
    for (const zoHPCProblem& problem : problems)
        result << problem.item->text(0);
    return result;
}

void tst_zoHPCStereoChecks::separationIsInMetres_data()
{
    QTest::addColumn<double>("separation");
    QTest::addColumn<bool>("metres");

    QTest::newRow("usual") << 65.0 << false;
    QTest::newRow("metres") << 0.065 << true;
    QTest::newRow("metres-swapped") << -0.065 << true;
    QTest::newRow("none") << 0.0 << false;
    QTest::newRow("below-the-limit") << 0.999 << true;
    QTest::newRow("at-the-limit") << 1.0 << false;
    QTest::newRow("a-doll") << 6.5 << false;
    QTest::newRow("not-a-number") << qQNaN() << false;
}

void tst_zoHPCStereoChecks::separationIsInMetres()
{
    QFETCH(double, separation);
    QFETCH(bool, metres);
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString(), QStringLiteral("stereo"));
    setup.display()->setEyeSeparation(separation);

    const List problems = zoHPCStereoChecks::eyeSeparationsInMetres(setup.layout());

    QCOMPARE(problems.size(), size_t(metres ? 1 : 0));
    if (!metres)
        return;
    QCOMPARE(problems[0].item, setup.display());
    problems[0].fix();
    QCOMPARE(setup.display()->getEyeSeparation(), 1000 * separation);
    QVERIFY(zoHPCStereoChecks::eyeSeparationsInMetres(setup.layout()).empty());
}

void tst_zoHPCStereoChecks::stereoNeedsASeparation_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<bool>("needed");

    QTest::newRow("mono") << "mono" << false;
    QTest::newRow("unset") << "" << false;
    QTest::newRow("left") << "left" << true;
    QTest::newRow("double-buffered") << "stereo" << true;
    QTest::newRow("anaglyph") << "redcyan" << true;
    QTest::newRow("unknown") << "3d" << false;
}

void tst_zoHPCStereoChecks::stereoNeedsASeparation()
{
    QFETCH(QString, eye);
    QFETCH(bool, needed);
    zoHPCSetup setup;
    setup.addViewport(setup.addWindow(QStringLiteral("n"), QString(), QString()), QString(), eye);
    setup.display()->setEyeSeparation(0.0);

    const List problems = zoHPCStereoChecks::noEyeSeparations(setup.layout());

    QCOMPARE(problems.size(), size_t(needed ? 1 : 0));
    if (!needed)
        return;
    problems[0].fix();
    QCOMPARE(setup.display()->getEyeSeparation(), 65.0);
    QVERIFY(zoHPCStereoChecks::noEyeSeparations(setup.layout()).empty());
}

void tst_zoHPCStereoChecks::separationThatIsNotGivenIsTheUsual()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString(), QStringLiteral("stereo"));
    // An empty text is not there any more when the file is read.
    for (const QVariant& nothing : {QVariant(), QVariant(QString(""))}) {
        setup.display()->setData(zoHPCDisplayItem::EyeSeparation, Qt::EditRole, nothing);

        QVERIFY(zoHPCStereoChecks::noEyeSeparations(setup.layout()).empty());
        QVERIFY(zoHPCStereoChecks::eyeSeparationsInMetres(setup.layout()).empty());
    }
}

void tst_zoHPCStereoChecks::signsDiffer_data()
{
    QTest::addColumn<QVector<double>>("separations");
    QTest::addColumn<QVector<int>>("told");
    QTest::addColumn<QVector<int>>("noted"); // of those that may be meant so

    using Which = QVector<int>;
    QTest::newRow("alike") << QVector<double>{65, 65} << Which{} << Which{};
    QTest::newRow("sizes-differ") << QVector<double>{65, 63} << Which{} << Which{};
    QTest::newRow("single-swapped") << QVector<double>{-65} << Which{} << Which{0};
    QTest::newRow("all-swapped") << QVector<double>{-65, -65} << Which{} << Which{0, 1};
    QTest::newRow("second") << QVector<double>{65, -65} << Which{1} << Which{};
    QTest::newRow("first") << QVector<double>{-65, 65} << Which{0} << Which{};
    QTest::newRow("two-of-three") << QVector<double>{-65, 65, -65} << Which{0, 2} << Which{};
    QTest::newRow("none-and-swapped") << QVector<double>{0, -65} << Which{} << Which{1};
}

void tst_zoHPCStereoChecks::signsDiffer()
{
    QFETCH(QVector<double>, separations);
    QFETCH(QVector<int>, told);
    QFETCH(QVector<int>, noted);
    zoHPCSetup setup;
    for (int i = 0; i < separations.size(); ++i) {
        zoHPCDisplayItem* const display = i == 0 ? setup.display() : setup.addDisplay(QStringLiteral("1"));
        display->setEyeSeparation(separations[i]);
        setup.addWindow(QStringLiteral("n"), QString(), QStringLiteral("stereo"), display);
    }

    const List problems = zoHPCStereoChecks::unlikeEyeSeparations(setup.layout());
    const List notes = zoHPCStereoChecks::swappedEyes(setup.layout());

    const auto displaysOf = [&](const List& list) {
        QVector<int> displays;
        for (const zoHPCProblem& problem : list) {
            displays << setup.displays.indexOfTopLevelItem(problem.item);
            problem.fix();
        }
        return displays;
    };
    QCOMPARE(displaysOf(problems), told);
    QCOMPARE(displaysOf(notes), noted);
    QVERIFY(zoHPCStereoChecks::unlikeEyeSeparations(setup.layout()).empty());
    QVERIFY(zoHPCStereoChecks::swappedEyes(setup.layout()).empty());
}

void tst_zoHPCStereoChecks::usersMayHaveUnlikeEyes()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("a"), QString(), QStringLiteral("stereo"));
    zoHPCDisplayItem* const second = setup.addDisplay(QStringLiteral("2"));
    second->setEyeSeparation(-65.0);
    setup.addWindow(QStringLiteral("b"), QString(), QStringLiteral("stereo"), second);

    QVERIFY(zoHPCStereoChecks::unlikeEyeSeparations(setup.layout()).empty());
    second->setString(zoHPCDisplayItem::User, QStringLiteral("1"));
    QCOMPARE(zoHPCStereoChecks::unlikeEyeSeparations(setup.layout()).size(), size_t(1));
}

void tst_zoHPCStereoChecks::fewerTilesAreTold_data()
{
    QTest::addColumn<QStringList>("eyes"); // of the tiles of a row; empty for one that is not shown
    QTest::addColumn<QVector<int>>("told");

    QTest::newRow("all-stereo") << QStringList{"stereo", "stereo", "stereo"} << QVector<int>{};
    QTest::newRow("all-mono") << QStringList{"mono", "mono"} << QVector<int>{};
    QTest::newRow("one-mono") << QStringList{"stereo", "mono", "stereo"} << QVector<int>{2};
    QTest::newRow("one-stereo") << QStringList{"mono", "mono", "stereo"} << QVector<int>{3};
    QTest::newRow("one-of-two") << QStringList{"stereo", "mono"} << QVector<int>{2};
    QTest::newRow("dark-tiles-have-no-mode") << QStringList{"stereo", "", "stereo"} << QVector<int>{};
    QTest::newRow("one-eye-is-stereo") << QStringList{"left", "mono", "right"} << QVector<int>{2};
}

void tst_zoHPCStereoChecks::fewerTilesAreTold()
{
    QFETCH(QStringList, eyes);
    QFETCH(QVector<int>, told);
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, eyes.size());
    QStringList expected;
    for (int i = 0; i < eyes.size(); ++i) {
        const QString tile = QStringLiteral("wall row:1 col:%1").arg(i + 1);
        if (!eyes[i].isEmpty())
            setup.addWindow(QStringLiteral("n"), tile, eyes[i]);
        if (told.contains(i + 1))
            expected << tile;
    }

    QCOMPARE(names(zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout())), expected);
}

void tst_zoHPCStereoChecks::tileGetsTheModeOfTheOthers()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 3);
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall row:1 col:1"), QStringLiteral("stereo"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall row:1 col:2"), QStringLiteral("stereo"));
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("c"), QStringLiteral("wall row:1 col:3"));

    const List problems = zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QCOMPARE(problems[0].fixText, QStringLiteral("Set to \"Double Buffered\""));
    problems[0].fix();
    QCOMPARE(dynamic_cast<zoHPCViewportItem*>(window->child(0))->getString(zoHPCViewportItem::Eye),
             QStringLiteral("stereo"));
    QVERIFY(zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()).empty());
}

void tst_zoHPCStereoChecks::twoModesAreNoModel()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 3);
    setup.addWindow(QStringLiteral("a"), QStringLiteral("wall row:1 col:1"), QStringLiteral("stereo"));
    setup.addWindow(QStringLiteral("b"), QStringLiteral("wall row:1 col:2"), QStringLiteral("redcyan"));
    setup.addWindow(QStringLiteral("c"), QStringLiteral("wall row:1 col:3"));

    QVERIFY(!zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()).at(0).hasFix());
}

void tst_zoHPCStereoChecks::copyWithoutStereoIsNoTile()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    for (const char* tile : {"wall row:1 col:1", "wall row:1 col:2"}) {
        setup.addWindow(QStringLiteral("n"), QString::fromLatin1(tile), QStringLiteral("stereo"));
        setup.addWindow(QStringLiteral("desk"), QString::fromLatin1(tile));
    }

    QVERIFY(zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()).empty());
}

void tst_zoHPCStereoChecks::wholeWithoutStereoIsNoTile()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    for (const char* tile : {"wall row:1 col:1", "wall row:1 col:2"})
        setup.addWindow(QStringLiteral("n"), QString::fromLatin1(tile), QStringLiteral("stereo"));
    setup.addWindow(QStringLiteral("desk"), QStringLiteral("wall"));

    QVERIFY(zoHPCStereoChecks::monoTilesInStereoWalls(setup.layout()).empty());
}

ZO_TEST_MAIN(tst_zoHPCStereoChecks)
#include "tst_zoHPCStereoChecks.moc"
