#include "zoHPCWindowTest.h"

#include <zoHPCConfigEditGUIW.h>
#include <zoHPCConnectGUIW.h>
#include <zoHPCManualPages.h>
#include <zoHPCPreferencesGUII.h>

#include <QRegularExpression>
#include <QTest>

// Pages of the manual for parts of the windows.
class tst_zoHPCManualPages final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void windowHandsThemToItsHost();
    void partIsThere_data();
    void partIsThere();
    void pageHasTheHeading_data();
    void pageHasTheHeading();

private:
    static void rows();
};

void tst_zoHPCManualPages::windowHandsThemToItsHost()
{
    QCOMPARE(m_window->property("manualPages").toMap(), zoHPCManualPages::byObjectName());
}

void tst_zoHPCManualPages::rows()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("page");

    const QVariantMap pages = zoHPCManualPages::byObjectName();
    QVERIFY(!pages.isEmpty());
    for (auto row = pages.constBegin(); row != pages.constEnd(); ++row)
        QTest::newRow(qPrintable(row.key())) << row.key() << row.value().toString();
}

void tst_zoHPCManualPages::partIsThere_data()
{
    rows();
}

void tst_zoHPCManualPages::partIsThere()
{
    QFETCH(QString, name);
    const zoHPCConfigEditGUIW hosts;
    const zoHPCConnectGUIW connecting(nullptr, QString());
    const zoHPCPreferencesGUII preferences;

    const QObject* const windows[] = {m_window.get(), &hosts, &connecting, &preferences};
    const bool isThere = std::any_of(std::begin(windows), std::end(windows), [&name](const QObject* window) {
        return window->objectName() == name || window->findChild<QWidget*>(name) != nullptr;
    });
    QVERIFY(isThere);
}

void tst_zoHPCManualPages::pageHasTheHeading_data()
{
    rows();
}

void tst_zoHPCManualPages::pageHasTheHeading()
{
    QFETCH(QString, page);
    const QString text =
        QString::fromUtf8(contentOf(QStringLiteral(ZO_MANUAL_DIR "/%1.md").arg(page.section('#', 0, 0))));
    QVERIFY(!text.isEmpty());
    if (!page.contains('#'))
        return;

    const QString words = page.section('#', 1).replace('-', ' ');
    const QRegularExpression heading(QStringLiteral("^#+ %1$").arg(words),
                                     QRegularExpression::MultilineOption |
                                         QRegularExpression::CaseInsensitiveOption);
    QVERIFY(heading.match(text).hasMatch());
}

ZO_TEST_MAIN(tst_zoHPCManualPages)
#include "tst_zoHPCManualPages.moc"
