#include "zoTestCase.h"

#include <zoClusterIds.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QSet>

// The ids of the rows of a host tree.
class tst_zoClusterIds final : public zoTestCase
{
    Q_OBJECT

private slots:
    void idIsTheNameOrThePlace();
    void laterOnesGetSuffixes();
    void namesLikePlacesMeetNetworks_data();
    void namesLikePlacesMeetNetworks();
    void idsEqualThoseThatAreFormedAsText();
    void sameIdIsFoundInAnotherTable();
    void tenThousandEqualIdsGetTheirSuffixes();
    void deepPlacesAreWrittenFromTheTop();
};

void tst_zoClusterIds::idIsTheNameOrThePlace()
{
    zoClusterPlaces places;
    zoClusterIds ids(places);
    const int network = places.child(places.child(zoClusterPlaces::Top, 3), 1);

    QCOMPARE(ids.id(ids.addName("gw 1")), QString("gw 1"));
    QCOMPARE(ids.id(ids.addNetwork(network)), QString("Network:/3/1/"));
    QCOMPARE(ids.id(ids.addName("")), QString());

    QCOMPARE(ids.find("gw 1"), 0);
    QCOMPARE(ids.find("Network:/3/1/"), 1);
    QCOMPARE(ids.find(""), 2);
    QCOMPARE(ids.find("Network:/3/"), zoClusterIds::None);
    QCOMPARE(ids.find("Network:/9/9/"), zoClusterIds::None);
    QCOMPARE(ids.find("gw"), zoClusterIds::None);
}

void tst_zoClusterIds::laterOnesGetSuffixes()
{
    zoClusterPlaces places;
    zoClusterIds ids(places);
    QStringList given;

    for (const char* name : {"a", "a_2", "a_4", "a", "a_2", "a", "a_3"})
        given << ids.id(ids.addName(name));

    QCOMPARE(given, (QStringList{"a", "a_2", "a_4", "a_3", "a_2_2", "a_5", "a_3_2"}));
}

void tst_zoClusterIds::namesLikePlacesMeetNetworks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("id"); // after a network at row 0 and two at row 1 of it

    QTest::newRow("the-network") << "Network:/0/"
                                 << "Network:/0/_2";
    QTest::newRow("its-child") << "Network:/0/1/"
                               << "Network:/0/1/_3";
    QTest::newRow("the-second-of-a-place") << "Network:/0/1/_2"
                                           << "Network:/0/1/_2_2";
    QTest::newRow("no-such-place") << "Network:/7/"
                                   << "Network:/7/";
    QTest::newRow("leading-zero") << "Network:/00/"
                                  << "Network:/00/";
    QTest::newRow("without-its-end") << "Network:/0"
                                     << "Network:/0";
    QTest::newRow("prefix-alone") << "Network:/"
                                  << "Network:/";
    QTest::newRow("row-that-does-not-fit") << "Network:/99999999999/"
                                           << "Network:/99999999999/";
    QTest::newRow("other-case") << "network:/0/"
                                << "network:/0/";
}

void tst_zoClusterIds::namesLikePlacesMeetNetworks()
{
    QFETCH(QString, name);
    QFETCH(QString, id);
    zoClusterPlaces places;
    zoClusterIds ids(places);
    const int top = places.child(zoClusterPlaces::Top, 0);
    ids.addNetwork(top);
    ids.addNetwork(places.child(top, 1));
    ids.addNetwork(places.child(top, 1));

    const int entry = ids.addName(name);

    QCOMPARE(ids.id(entry), id);
    QCOMPARE(ids.find(id), entry);
}

void tst_zoClusterIds::idsEqualThoseThatAreFormedAsText()
{
    const QStringList names{"a",           "a_2",         "a_3",           "",   "_2",
                            "Network:/0/", "Network:/1/", "Network:/0/_2", "b_", "Network:/0/1/"};
    QRandomGenerator random(7);
    for (int round = 0; round < 300; ++round) {
        zoClusterPlaces places;
        zoClusterIds ids(places);
        QSet<QString> taken;
        for (int i = 0; i < 40; ++i) {
            const int row = random.bounded(2);
            const bool isNetwork = random.bounded(3) == 0;
            const QString name =
                isNetwork ? QString("Network:/%1/").arg(row) : names.at(random.bounded(names.size()));
            QString expected = name;
            for (int suffix = 2; taken.contains(expected); ++suffix)
                expected = name + '_' + QString::number(suffix);
            taken.insert(expected);

            const int entry =
                isNetwork ? ids.addNetwork(places.child(zoClusterPlaces::Top, row)) : ids.addName(name);

            QCOMPARE(entry, i);
            QCOMPARE(ids.id(entry), expected);
            QCOMPARE(ids.find(expected), entry);
        }
    }
}

void tst_zoClusterIds::sameIdIsFoundInAnotherTable()
{
    zoClusterPlaces places;
    zoClusterIds first(places);
    zoClusterIds second(places);
    first.addName("x");
    const int network = first.addNetwork(places.child(zoClusterPlaces::Top, 0));
    first.addName("a");
    const int again = first.addName("a");

    QCOMPARE(first.findSame(second, second.addName("a_2")), again);
    QCOMPARE(first.findSame(second, second.addName("Network:/0/")), network);
    QCOMPARE(first.findSame(second, second.addName("b")), zoClusterIds::None);
}

void tst_zoClusterIds::tenThousandEqualIdsGetTheirSuffixes()
{
    zoClusterPlaces places;
    zoClusterIds ids(places);
    const int place = places.child(zoClusterPlaces::Top, 0);
    int node = 0;
    int network = 0;

    for (int i = 0; i < 10000; ++i) {
        node = ids.addName("n");
        network = ids.addNetwork(place);
    }

    QCOMPARE(ids.id(node), QString("n_10000"));
    QCOMPARE(ids.id(network), QString("Network:/0/_10000"));
}

void tst_zoClusterIds::deepPlacesAreWrittenFromTheTop()
{
    zoClusterPlaces places;
    int place = zoClusterPlaces::Top;
    QString text = "Network:/";
    for (int row = 0; row < 1000; ++row) {
        place = places.child(place, row);
        text += QString::number(row) + '/';
    }

    QCOMPARE(places.text(place), text);
    zoClusterIds ids(places);
    QCOMPARE(ids.find(text), zoClusterIds::None);
    const int entry = ids.addNetwork(place);
    QCOMPARE(ids.find(text), entry);
}

ZO_TEST_MAIN(tst_zoClusterIds)
#include "tst_zoClusterIds.moc"
