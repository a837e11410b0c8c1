#include "zoTestCase.h"

#include <zoHPCProjectionItem.h>
#include <zoHPCProjectionType.h>

#include <QCoreApplication>

#include <algorithm>

using Kind = zoHPCProjectionType::Kind;

// The table of projection types.
class tst_zoHPCProjectionType final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wordsAndKindsBelongTogether_data();
    void wordsAndKindsBelongTogether();
    void unknownWordIsOther_data();
    void unknownWordIsOther();
    void otherSavesWhatAllTypesSave();
    void lengthsAndSizesAreSaved();
    void onlyTiledWallsAndTilesAreInPixels();
    void itemTellsItsKind();
};

void tst_zoHPCProjectionType::wordsAndKindsBelongTogether_data()
{
    QTest::addColumn<int>("kind");

    QTest::newRow("wall") << int(Kind::Wall);
    QTest::newRow("powerwall") << int(Kind::PowerWall);
    QTest::newRow("cave") << int(Kind::Cave);
    QTest::newRow("plane") << int(Kind::Plane);
    QTest::newRow("tile") << int(Kind::Tile);
}

void tst_zoHPCProjectionType::wordsAndKindsBelongTogether()
{
    QFETCH(int, kind);
    const QString word = QString::fromLatin1(QTest::currentDataTag());

    QCOMPARE(int(zoHPCProjectionType::of(word).kind), kind);
    QCOMPARE(zoHPCProjectionType::word(Kind(kind)), word);
    QCOMPARE(int(zoHPCProjectionType::all().size()), 5);
}

void tst_zoHPCProjectionType::unknownWordIsOther_data()
{
    QTest::addColumn<QString>("word");

    QTest::newRow("empty") << QString();
    QTest::newRow("other-case") << QStringLiteral("Wall");
    QTest::newRow("unknown") << QStringLiteral("sphere");
}

void tst_zoHPCProjectionType::unknownWordIsOther()
{
    QFETCH(QString, word);

    QVERIFY(zoHPCProjectionType::of(word).kind == Kind::Other);
    QVERIFY(zoHPCProjectionType::of(word).icon == nullptr);
}

void tst_zoHPCProjectionType::otherSavesWhatAllTypesSave()
{
    const std::vector<int>& all = zoHPCProjectionType::of(Kind::Other).columns;

    QCOMPARE(int(all.size()), int(zoHPCProjectionItem::ColumnCount) - 1); // all but the identifier
    QVERIFY(std::is_sorted(all.begin(), all.end()));
    QVERIFY(std::find(all.begin(), all.end(), int(zoHPCProjectionItem::Identifier)) == all.end());
}

void tst_zoHPCProjectionType::lengthsAndSizesAreSaved()
{
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all()) {
        const auto isSaved = [&type](int column) {
            return std::find(type.columns.begin(), type.columns.end(), column) != type.columns.end();
        };
        QVERIFY2(std::all_of(type.lengths.begin(), type.lengths.end(), isSaved), type.value);
        QVERIFY2(std::all_of(type.sizes.begin(), type.sizes.end(), isSaved), type.value);
    }
}

void tst_zoHPCProjectionType::onlyTiledWallsAndTilesAreInPixels()
{
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all())
        QCOMPARE(type.isInPixels, type.kind == Kind::Wall || type.kind == Kind::Tile);
}

void tst_zoHPCProjectionType::itemTellsItsKind()
{
    zoHPCProjectionItem item(QStringLiteral("p"), Kind::Cave);
    QCOMPARE(item.projectionType(), QStringLiteral("cave"));

    item.setProjectionType(QStringLiteral("powerwall"));

    QVERIFY(item.kind() == Kind::PowerWall);
}

QTEST_GUILESS_MAIN(tst_zoHPCProjectionType)
#include "tst_zoHPCProjectionType.moc"
