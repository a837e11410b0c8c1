#include "zoTestCase.h"

#include <zoHostEarlierConfigurations.h>
#include <zoHostEarlierDialog.h>

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <memory>

namespace
{
const char OneNode[] = "<cluster><master><network><node/></network></master><display/></cluster>";
const char TwoNodes[] = "<cluster><master><network><node/><node/></network></master></cluster>";
} // namespace

// The dialog that brings earlier configurations back.
class tst_zoHostEarlierDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void listShowsTimeFileAndCounts();
    void newestIsCurrentAndShown();
    void previewFollowsTheList();
    void bringBackTellsTheTextAndClosesTheDialog();
    void doubleClickBringsBack();
    void nothingIsBroughtBackWhileASessionRuns();
    void emptyListOffersNothing();
    void unreadableFileIsNotBroughtBack();
    void damagedOneIsShownAndNotBroughtBack();
    void listFollowsWhatIsKept();
    void sizeAndSplitterAreRemembered();

private:
    void createDialog();
    QTreeWidget* list() const { return m_dialog->findChild<QTreeWidget*>("EarlierList"); }
    QPushButton* button() const { return m_dialog->findChild<QPushButton*>("BringBack"); }
    QString preview() const { return m_dialog->findChild<QPlainTextEdit*>("EarlierPreview")->toPlainText(); }
    QString summary() const { return m_dialog->findChild<QLabel*>("EarlierSummary")->text(); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostEarlierConfigurations> m_earlier;
    std::unique_ptr<zoHostEarlierDialog> m_dialog;
};

void tst_zoHostEarlierDialog::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_earlier = std::make_unique<zoHostEarlierConfigurations>(m_directory->filePath("earlier"));
    m_earlier->keep(OneNode, QString());
    m_earlier->keep(TwoNodes, "/walls/50% %2.zhpc");
    createDialog();
}

void tst_zoHostEarlierDialog::cleanup()
{
    m_dialog.reset();
    zoTestCase::cleanup();
}

void tst_zoHostEarlierDialog::createDialog()
{
    m_dialog = std::make_unique<zoHostEarlierDialog>(m_earlier.get(), m_settings.get());
    m_dialog->open();
}

void tst_zoHostEarlierDialog::listShowsTimeFileAndCounts()
{
    QCOMPARE(list()->topLevelItemCount(), 2);
    const QTreeWidgetItem* newest = list()->topLevelItem(0);
    const QDateTime time = m_earlier->entries().constFirst().replaced.toLocalTime();
    QCOMPARE(newest->text(0), QLocale().toString(time, QLocale::ShortFormat));
    QCOMPARE(newest->text(1), QStringLiteral("50% %2.zhpc"));
    QCOMPARE(newest->toolTip(1), QStringLiteral("/walls/50% %2.zhpc"));
    QCOMPARE(newest->text(2), QStringLiteral("2"));
    QCOMPARE(newest->text(3), QStringLiteral("0"));
    const QTreeWidgetItem* oldest = list()->topLevelItem(1);
    QCOMPARE(oldest->text(1), QStringLiteral("(never saved)"));
    QCOMPARE(oldest->text(2), QStringLiteral("1"));
    QCOMPARE(oldest->text(3), QStringLiteral("1"));
}

void tst_zoHostEarlierDialog::newestIsCurrentAndShown()
{
    QCOMPARE(list()->currentItem(), list()->topLevelItem(0));
    QCOMPARE(preview(), QString(TwoNodes));
    QVERIFY2(summary().startsWith("/walls/50% %2.zhpc\nNetworks: 1   Nodes: 2   "), qPrintable(summary()));
    QVERIFY(button()->isEnabled());
}

void tst_zoHostEarlierDialog::previewFollowsTheList()
{
    list()->setCurrentItem(list()->topLevelItem(1));

    QCOMPARE(preview(), QString(OneNode));
    QVERIFY2(summary().contains("Nodes: 1"), qPrintable(summary()));
}

void tst_zoHostEarlierDialog::bringBackTellsTheTextAndClosesTheDialog()
{
    QSignalSpy requested(m_dialog.get(), &zoHostEarlierDialog::bringBackRequested);

    QTest::mouseClick(button(), Qt::LeftButton);

    QCOMPARE(requested.count(), 1);
    QCOMPARE(requested.constFirst().at(0).toString(), QString(TwoNodes));
    QCOMPARE(requested.constFirst().at(1).toString(), QStringLiteral("/walls/50% %2.zhpc"));
    QVERIFY(!m_dialog->isVisible());
}

void tst_zoHostEarlierDialog::doubleClickBringsBack()
{
    QSignalSpy requested(m_dialog.get(), &zoHostEarlierDialog::bringBackRequested);
    const QPoint second = list()->visualItemRect(list()->topLevelItem(1)).center();

    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, second);

    QCOMPARE(requested.count(), 1);
    QCOMPARE(requested.constFirst().at(0).toString(), QString(OneNode));
}

void tst_zoHostEarlierDialog::nothingIsBroughtBackWhileASessionRuns()
{
    QSignalSpy requested(m_dialog.get(), &zoHostEarlierDialog::bringBackRequested);
    const QString hint = m_dialog->findChild<QLabel*>("EarlierHint")->text();

    m_dialog->setRunning(true);
    emit list()->itemDoubleClicked(list()->topLevelItem(0), 0);

    QVERIFY(!button()->isEnabled());
    QVERIFY(m_dialog->findChild<QLabel*>("EarlierHint")->text() != hint);
    QCOMPARE(requested.count(), 0);
    QVERIFY(m_dialog->isVisible());

    m_dialog->setRunning(false);
    QVERIFY(button()->isEnabled());
}

void tst_zoHostEarlierDialog::emptyListOffersNothing()
{
    zoHostEarlierConfigurations none(m_directory->filePath("none"));

    m_dialog = std::make_unique<zoHostEarlierDialog>(&none, m_settings.get());

    QCOMPARE(list()->topLevelItemCount(), 0);
    QVERIFY(!button()->isEnabled());
    QVERIFY(!summary().isEmpty());
    m_dialog.reset();
}

void tst_zoHostEarlierDialog::damagedOneIsShownAndNotBroughtBack()
{
    QSignalSpy requested(m_dialog.get(), &zoHostEarlierDialog::bringBackRequested);
    m_earlier->keep("<cluster><master>", "/walls/cut.zhpc");

    QCOMPARE(preview(), QStringLiteral("<cluster><master>"));
    QVERIFY(!button()->isEnabled());
    const QString hint = m_dialog->findChild<QLabel*>("EarlierHint")->text();
    QVERIFY2(hint.contains("line 1, column"), qPrintable(hint));
    emit list()->itemDoubleClicked(list()->topLevelItem(0), 0);
    QCOMPARE(requested.count(), 0);
    list()->setCurrentItem(list()->topLevelItem(1));
    QVERIFY(button()->isEnabled());
}

void tst_zoHostEarlierDialog::unreadableFileIsNotBroughtBack()
{
    QSignalSpy requested(m_dialog.get(), &zoHostEarlierDialog::bringBackRequested);
    QVERIFY(QFile::remove(m_earlier->entries().constFirst().fileName));
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to read earlier configuration"));

    button()->click();

    QCOMPARE(requested.count(), 0);
    QVERIFY(m_dialog->isVisible());
}

void tst_zoHostEarlierDialog::listFollowsWhatIsKept()
{
    m_earlier->keep("<three/>", QString());

    QCOMPARE(list()->topLevelItemCount(), 3);
    QCOMPARE(preview(), QStringLiteral("<three/>"));
}

void tst_zoHostEarlierDialog::sizeAndSplitterAreRemembered()
{
    auto* splitter = m_dialog->findChild<QSplitter*>();
    m_dialog->resize(640, 480);
    splitter->setSizes({150, 200});
    QTRY_COMPARE(m_dialog->size(), QSize(640, 480));
    const QList<int> sizes = splitter->sizes();
    m_dialog->reject();

    createDialog();

    QCOMPARE(m_dialog->size(), QSize(640, 480));
    QCOMPARE(m_dialog->findChild<QSplitter*>()->sizes(), sizes);
}

ZO_TEST_MAIN(tst_zoHostEarlierDialog)
#include "tst_zoHostEarlierDialog.moc"
