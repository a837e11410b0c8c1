#include "zoTestCase.h"

#include <zoHPCDocumentWriter.h>
#include <zoHPCLegacyHosts.h>
#include <zoHPCLegacyParameters.h>
#include <zoHPCLegacyRemarks.h>

namespace
{
QString key(const char* name, const char* value)
{
    return QStringLiteral("<key name=\"%1\">%2</key>\n").arg(QLatin1String(name), QLatin1String(value));
}

QString legacy(const QString& keys)
{
    return QStringLiteral("<legacy>\n") + keys + QStringLiteral("</legacy>\n");
}
} // namespace

// What the conversion of a legacy configuration reads: parameters, hosts, and the remarks on both.
class tst_zoHPCLegacyParameters final : public zoTestCase
{
    Q_OBJECT

private slots:
    void readingTakesThePlaceOfWhatWasThere();
    void switchIsOnForOneOnly();
    void pipesEndAtAGap();
    void entryIsNamedByTheLayout_data();
    void entryIsNamedByTheLayout();
    void lastOneOfANameIsItsPlace();
    void invalidNumbersReadAsZero();
    void invalidFieldsAreCountedForOneRemark();
    void hostsKeepTheirOrderAndPositions();
    void hostBeyondTheListIsEmpty();
};

void tst_zoHPCLegacyParameters::readingTakesThePlaceOfWhatWasThere()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("a", "1") + key("b", "2")));
    QCOMPARE(parameters.count(), 2);

    parameters.read(legacy(key("b", "3")));

    QCOMPARE(parameters.count(), 1);
    QCOMPARE(parameters.value("a", "none"), QStringLiteral("none"));
    QCOMPARE(parameters.value("b", "none"), QStringLiteral("3"));
}

void tst_zoHPCLegacyParameters::switchIsOnForOneOnly()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("on", "1") + key("off", "0") + key("word", "true")));

    QVERIFY(parameters.isOn("on"));
    QVERIFY(!parameters.isOn("off"));
    QVERIFY(!parameters.isOn("word"));
    QVERIFY(!parameters.isOn("missing"));
}

void tst_zoHPCLegacyParameters::pipesEndAtAGap()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("zoClusterPipe0", "a") + key("zoClusterPipe1", "") +
                           key("zoClusterPipe3", "d") + key("zoClusterPipe10", "k")));

    QCOMPARE(parameters.pipes(), (QStringList{QStringLiteral("a"), QString()}));
    QCOMPARE(parameters.pipeNamesFrom(2),
             (QStringList{QStringLiteral("zoClusterPipe3"), QStringLiteral("zoClusterPipe10")}));
}

void tst_zoHPCLegacyParameters::entryIsNamedByTheLayout_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("raytracing") << QStringLiteral("Raytracing")
                                << QStringLiteral("zoClusterSortFirstServers");
    QTest::newRow("wall") << QStringLiteral("Powerwall") << QStringLiteral("zoClusterPWServers");
    QTest::newRow("custom") << QStringLiteral("Custom") << QStringLiteral("zoClusterPipe4");
    QTest::newRow("old") << QString() << QStringLiteral("zoClusterHosts");
}

void tst_zoHPCLegacyParameters::entryIsNamedByTheLayout()
{
    QFETCH(QString, type);
    QFETCH(QString, name);
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("zoClusterProjectionType", qPrintable(type)) + key("zoClusterHosts", "h")));

    QCOMPARE(parameters.entryName(4), name);
}

void tst_zoHPCLegacyParameters::lastOneOfANameIsItsPlace()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("a", "1") + key("b", "2") + QStringLiteral("  ") + key("a", "3")));

    const auto places = parameters.placesOf({QStringLiteral("a"), QStringLiteral("none")});

    QCOMPARE(places.value(QStringLiteral("a")).line, 4);
    QCOMPARE(places.value(QStringLiteral("a")).column, 3);
    QCOMPARE(places.value(QStringLiteral("none")).line, 1);
}

void tst_zoHPCLegacyParameters::invalidNumbersReadAsZero()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("good", "7") + key("bad", "seven")));
    zoHPCLegacyRemarks remarks(parameters);

    QCOMPARE(remarks.intParameter("good", "0"), 7);
    QCOMPARE(remarks.intParameter("missing", "5"), 5);
    QVERIFY(remarks.withPlaces().isEmpty());
    QCOMPARE(remarks.intParameter("bad", "5"), 0);
    QCOMPARE(remarks.doubleParameter("bad", "5"), 0.0);

    const QList<zoHPCLegacyRemark> list = remarks.withPlaces();
    QCOMPARE(list.size(), 2);
    QVERIFY(list.first().kind == zoHPCLegacyRemark::Kind::UnreadNumber);
    QCOMPARE(list.first().parameter, QStringLiteral("bad"));
    QCOMPARE(list.first().line, 3);
}

void tst_zoHPCLegacyParameters::invalidFieldsAreCountedForOneRemark()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("zoClusterPipe0", "a") + key("zoClusterPipe1", "b")));
    zoHPCLegacyRemarks remarks(parameters);
    remarks.addUnreadFields();
    QVERIFY(remarks.withPlaces().isEmpty());

    remarks.setEntry(1);
    QCOMPARE(remarks.intField(QStringLiteral("x")), 0);
    remarks.setEntry(0);
    QCOMPARE(remarks.doubleField(QString()), 0.0);
    QCOMPARE(remarks.doubleField(QStringLiteral("0.5")), 0.5);
    remarks.addUnreadFields();

    const QList<zoHPCLegacyRemark> list = remarks.withPlaces();
    QCOMPARE(list.size(), 1);
    QVERIFY(list.first().text.startsWith(QLatin1String("2 ")));
    QCOMPARE(list.first().parameter, QStringLiteral("zoClusterPipe1"));
}

void tst_zoHPCLegacyParameters::hostsKeepTheirOrderAndPositions()
{
    zoHPCLegacyParameters parameters;
    parameters.read(legacy(key("zoClusterProjectionType", "Powerwall") +
                           key("zoClusterPWServers", "a[xpos=10,ypos=20] b[xpos=30]")));
    zoHPCLegacyRemarks remarks(parameters);
    zoHPCLegacyHosts hosts(parameters, remarks);

    hosts.convert();
    zoHPCDocumentWriter writer;
    hosts.writeNodes(writer);

    QCOMPARE(hosts.count(), 2);
    QCOMPARE(hosts.name(1), QStringLiteral("b"));
    QCOMPARE(QPoint(hosts.xPosition(0), hosts.yPosition(0)), QPoint(10, 20));
    QCOMPARE(QPoint(hosts.xPosition(1), hosts.yPosition(1)), QPoint(30, 0));
    QCOMPARE(writer.takeText(), QStringLiteral("<node name=\"a\"/>\n<node name=\"b\"/>\n"));
}

void tst_zoHPCLegacyParameters::hostBeyondTheListIsEmpty()
{
    const zoHPCLegacyParameters parameters;
    zoHPCLegacyRemarks remarks(parameters);
    const zoHPCLegacyHosts hosts(parameters, remarks);

    QCOMPARE(hosts.name(3), QString());
    QCOMPARE(hosts.xPosition(3), 0);
    QCOMPARE(hosts.yPosition(3), 0);
}

ZO_TEST_MAIN(tst_zoHPCLegacyParameters)

#include "tst_zoHPCLegacyParameters.moc"
