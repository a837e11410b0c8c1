#include "zoTestCase.h"

#include <zoHPCUniqueNames.h>

#include <QApplication>

// What nodes are called where each has a name of its own.
class tst_zoHPCUniqueNames final : public zoTestCase
{
    Q_OBJECT

private slots:
    void equalNamesAreNumbered_data();
    void equalNamesAreNumbered();
    void findsTheFirstNodeOfAHostName();
};

void tst_zoHPCUniqueNames::equalNamesAreNumbered_data()
{
    QTest::addColumn<QStringList>("hostNames");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("hasNumbered");

    QTest::newRow("none") << QStringList() << QStringList() << false;
    QTest::newRow("different") << QStringList{"a", "b", "A"} << QStringList{"a", "b", "A"} << false;
    QTest::newRow("two") << QStringList{"a", "b", "a"} << QStringList{"a 1", "b", "a 2"} << true;
    QTest::newRow("two-groups") << QStringList{"a", "b", "b", "a", "b"}
                                << QStringList{"a 1", "b 1", "b 2", "a 2", "b 3"} << true;
    QTest::newRow("empty") << QStringList{"", ""} << QStringList{" 1", " 2"} << true;
    QTest::newRow("placeholder") << QStringList{"%1 %2", "%1 %2"} << QStringList{"%1 %2 1", "%1 %2 2"}
                                 << true;
    QTest::newRow("like-a-number") << QStringList{"a", "a", "a 1"} << QStringList{"a 1", "a 2", "a 1"}
                                   << true;
}

void tst_zoHPCUniqueNames::equalNamesAreNumbered()
{
    QFETCH(QStringList, hostNames);
    QFETCH(QStringList, names);
    QFETCH(bool, hasNumbered);
    std::vector<const QString*> pointers;
    for (const QString& name : qAsConst(hostNames))
        pointers.push_back(&name);

    const zoHPCUniqueNames unique(pointers);

    QStringList given;
    for (std::size_t i = 0; i < unique.count(); ++i) {
        given << unique.name(i);
        QCOMPARE(unique.isNumbered(i), hostNames.count(hostNames.at(int(i))) > 1);
    }
    QCOMPARE(given, names);
    QCOMPARE(unique.hasNumbered(), hasNumbered);
}

void tst_zoHPCUniqueNames::findsTheFirstNodeOfAHostName()
{
    QStringList hostNames;
    for (int i = 0; i < 1000; ++i)
        hostNames << QString::number(i % 500);
    std::vector<const QString*> pointers;
    for (const QString& name : qAsConst(hostNames))
        pointers.push_back(&name);
    const zoHPCUniqueNames unique(pointers);

    for (int i = 0; i < 500; ++i)
        QCOMPARE(int(unique.find(QString::number(i))), i);
    QCOMPARE(unique.find("500"), unique.count());
    QCOMPARE(unique.find("1 1"), unique.count());
}

ZO_TEST_MAIN(tst_zoHPCUniqueNames)
#include "tst_zoHPCUniqueNames.moc"
