#include "zoTestCase.h"

#include <zoHPCReportSheets.h>

#include <QApplication>
#include <QTest>

#include <functional>

using Sheets = zoHPCReportSheets;

Q_DECLARE_METATYPE(std::function<void(Sheets&)>)

// The most pages that sheets may have; what stands on them is read back from reports.
class tst_zoHPCReportSheets final : public zoTestCase
{
    Q_OBJECT

private slots:
    void pagesEndWithTheMost_data();
    void pagesEndWithTheMost();
};

void tst_zoHPCReportSheets::pagesEndWithTheMost_data()
{
    QTest::addColumn<std::function<void(Sheets&)>>("add");

    const auto row = [](const char* name, const std::function<void(Sheets&)>& add) {
        QTest::newRow(name) << add;
    };
    row("pages", [](Sheets& sheets) { sheets.beginPage(); });
    row("pictures", [](Sheets& sheets) { sheets.addPicture(0.6 * sheets.height(), {}); });
    row("texts", [](Sheets& sheets) {
        const int pages = sheets.pageCount();
        while (sheets.pageCount() == pages)
            sheets.addText(QStringLiteral("text"));
    });
    row("tables", [](Sheets& sheets) {
        const int pages = sheets.pageCount();
        while (sheets.pageCount() == pages)
            sheets.addTable({{QStringLiteral("A"), 1}, {QStringLiteral("B"), 2}},
                            {{QStringLiteral("1"), QStringLiteral("2")}});
    });
}

void tst_zoHPCReportSheets::pagesEndWithTheMost()
{
    QFETCH(const std::function<void(Sheets&)>, add);
    Sheets sheets(QSizeF(8000.0, 6000.0), 3);
    if (qstrcmp(QTest::currentDataTag(), "pictures") == 0)
        add(sheets); // the first page has room

    for (int page = 2; page <= 3; ++page) {
        add(sheets);
        QCOMPARE(sheets.pageCount(), page);
        QVERIFY(!sheets.isFull());
    }
    add(sheets);
    QVERIFY(sheets.isFull());
    sheets.beginPage();
    sheets.addText(QStringLiteral("text"));
    sheets.addTable({{QStringLiteral("A"), 1}}, std::vector<QStringList>(1000, {QStringLiteral("1")}));

    QCOMPARE(sheets.pageCount(), 4);
}

ZO_TEST_MAIN(tst_zoHPCReportSheets)
#include "tst_zoHPCReportSheets.moc"
