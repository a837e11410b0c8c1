#include "zoTestCase.h"

#include <zoHPCAreaOverlaps.h>

#include <QApplication>
#include <QRandomGenerator>

using Pair = zoHPCAreaOverlaps::Pair;

// Rectangles that share area.
class tst_zoHPCAreaOverlaps final : public zoTestCase
{
    Q_OBJECT

private slots:
    void foundAsByComparingAll();
    void edgesDoNotCount();
    void claimDecides();
    void manyInRowsAreNoWork();
};

void tst_zoHPCAreaOverlaps::foundAsByComparingAll()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<QRectF> areas;
        for (int i = 0; i < 12; ++i)
            areas.emplace_back(random.bounded(20), random.bounded(20), random.bounded(6), random.bounded(6));

        QSet<int> expected;
        for (size_t later = 0; later < areas.size(); ++later) {
            for (size_t earlier = 0; earlier < later; ++earlier) {
                if (areas[later].intersects(areas[earlier]))
                    expected.insert(int(later));
            }
        }

        // A copy stands for the first one at its place, so pairs may name another partner: who overlaps is the same.
        QSet<int> found;
        for (const Pair& pair : zoHPCAreaOverlaps::find(areas)) {
            QVERIFY(pair.second < pair.first);
            QVERIFY(areas[pair.first].intersects(areas[pair.second]));
            QVERIFY(!found.contains(int(pair.first)));
            found.insert(int(pair.first));
        }
        QCOMPARE(found - expected, QSet<int>());
        const QSet<int> missed = expected - found;
        for (const int later : missed) {
            // Only met by a copy, whose first one comes later than this: the first one is told instead.
            QVERIFY(std::count(areas.begin(), areas.end(), areas[size_t(later)]) > 1);
        }
    }
}

void tst_zoHPCAreaOverlaps::edgesDoNotCount()
{
    const std::vector<QRectF> areas{{0, 0, 10, 10}, {10, 0, 10, 10}, {0, 10, 10, 10}, {5, 5, 0, 0}};

    QVERIFY(zoHPCAreaOverlaps::find(areas).empty());
}

void tst_zoHPCAreaOverlaps::claimDecides()
{
    const std::vector<QRectF> areas{{0, 0, 10, 10}, {0, 0, 10, 10}, {5, 5, 10, 10}};

    const auto pairs = zoHPCAreaOverlaps::find(areas, [](size_t later, size_t) { return later == 2; });

    QCOMPARE(pairs.size(), size_t(1));
    QCOMPARE(pairs[0].first, size_t(2));
}

// Counts, not times: what grows out of proportion runs into the time limit.
void tst_zoHPCAreaOverlaps::manyInRowsAreNoWork()
{
    std::vector<QRectF> areas;
    for (int i = 0; i < 40000; ++i)
        areas.emplace_back(i % 200, i / 200, 1, 1);
    areas.push_back(areas.back());

    QCOMPARE(zoHPCAreaOverlaps::find(areas).size(), size_t(1));
}

ZO_TEST_MAIN(tst_zoHPCAreaOverlaps)
#include "tst_zoHPCAreaOverlaps.moc"
