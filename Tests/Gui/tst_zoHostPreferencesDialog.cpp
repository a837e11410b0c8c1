#include "zoTestCase.h"

#include <zoHostPreferencesDialog.h>
#include <zoHostPreferencesService.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <memory>

// Edit > Preferences.
class tst_zoHostPreferencesDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pagesAreShownAndFilled();
    void titleSelectsItsPage();
    void okSavesAllPages();
    void applySavesAndStaysOpen();
    void cancelSavesNothing();
    void defaultsAreThoseOfTheSeenPage();
    void pagesOutliveTheDialog();
    void destroyedPageLeavesTheDialog();
    void missingCallbacksDoNoHarm();
    void nothingIsCutOff();
    void noPagesAreSaidSo();

private:
    void click(QDialogButtonBox::StandardButton button);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostPreferencesService> m_service;
    std::unique_ptr<QWidget> m_first;
    std::unique_ptr<QWidget> m_second;
    std::unique_ptr<zoHostPreferencesDialog> m_dialog;
    QStringList m_calls;
};

void tst_zoHostPreferencesDialog::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_service = std::make_unique<zoHostPreferencesService>(m_settings.get());
    m_first = std::make_unique<QWidget>();
    m_second = std::make_unique<QWidget>();
    m_calls.clear();
    m_service->registerPage(
        "First", m_first.get(), [this] { m_calls << "defaults 1"; }, [this] { m_calls << "save 1"; },
        [this] { m_calls << "show 1"; });
    m_service->registerPage(
        "Second", m_second.get(), [this] { m_calls << "defaults 2"; }, [this] { m_calls << "save 2"; },
        [this] { m_calls << "show 2"; });
    m_dialog = std::make_unique<zoHostPreferencesDialog>(m_service.get(), nullptr);
    m_dialog->show();
}

void tst_zoHostPreferencesDialog::cleanup()
{
    m_dialog.reset();
    zoTestCase::cleanup();
}

void tst_zoHostPreferencesDialog::click(QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(m_dialog->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

void tst_zoHostPreferencesDialog::pagesAreShownAndFilled()
{
    QCOMPARE(m_calls, QStringList({"show 1", "show 2"}));
    QVERIFY(m_first->isVisible());
    QVERIFY(!m_second->isVisible());
}

void tst_zoHostPreferencesDialog::titleSelectsItsPage()
{
    m_dialog->findChild<QListWidget*>()->setCurrentRow(1);

    QVERIFY(!m_first->isVisible());
    QVERIFY(m_second->isVisible());
}

void tst_zoHostPreferencesDialog::okSavesAllPages()
{
    m_calls.clear();

    click(QDialogButtonBox::Ok);

    QCOMPARE(m_calls, QStringList({"save 1", "save 2"}));
    QVERIFY(!m_dialog->isVisible());
}

void tst_zoHostPreferencesDialog::applySavesAndStaysOpen()
{
    m_calls.clear();

    click(QDialogButtonBox::Apply);

    QCOMPARE(m_calls, QStringList({"save 1", "save 2"}));
    QVERIFY(m_dialog->isVisible());
}

void tst_zoHostPreferencesDialog::cancelSavesNothing()
{
    m_calls.clear();

    click(QDialogButtonBox::Cancel);

    QCOMPARE(m_calls, QStringList());
    QVERIFY(!m_dialog->isVisible());
}

void tst_zoHostPreferencesDialog::defaultsAreThoseOfTheSeenPage()
{
    m_dialog->findChild<QListWidget*>()->setCurrentRow(1);
    m_calls.clear();

    click(QDialogButtonBox::RestoreDefaults);

    QCOMPARE(m_calls, QStringList({"defaults 2", "show 2"}));
}

void tst_zoHostPreferencesDialog::pagesOutliveTheDialog()
{
    QPointer<QWidget> first = m_first.get();

    m_dialog.reset();

    QVERIFY(first);
    QVERIFY(first->parent() == nullptr);
    QVERIFY(!first->isVisible());
    QCOMPARE(m_service->pages().size(), size_t(2));
}

void tst_zoHostPreferencesDialog::destroyedPageLeavesTheDialog()
{
    auto* titles = m_dialog->findChild<QListWidget*>();

    m_first.reset();

    QCOMPARE(titles->count(), 1);
    QCOMPARE(titles->item(0)->text(), QStringLiteral("Second"));
    QVERIFY(m_second->isVisible());
    m_calls.clear();
    click(QDialogButtonBox::Ok);
    QCOMPARE(m_calls, QStringList("save 2"));
}

void tst_zoHostPreferencesDialog::missingCallbacksDoNoHarm()
{
    m_dialog.reset();
    QWidget bare;
    m_service->clearPages();
    m_service->registerPage("Bare", &bare, nullptr, nullptr, nullptr);
    m_dialog = std::make_unique<zoHostPreferencesDialog>(m_service.get(), nullptr);
    m_dialog->show();

    click(QDialogButtonBox::RestoreDefaults);
    click(QDialogButtonBox::Ok);

    QVERIFY(!m_dialog->isVisible());
    m_dialog.reset();
}

void tst_zoHostPreferencesDialog::nothingIsCutOff()
{
    m_dialog.reset();
    const auto large = std::make_unique<QWidget>();
    large->setMinimumSize(900, 600);
    const QString title = QStringLiteral("A page with a title of some length");
    m_service->registerPage(title, large.get(), nullptr, nullptr, nullptr);
    m_dialog = std::make_unique<zoHostPreferencesDialog>(m_service.get(), nullptr);
    m_dialog->show();
    auto* titles = m_dialog->findChild<QListWidget*>();

    titles->setCurrentRow(2);

    QVERIFY(m_dialog->width() > 900 + titles->width());
    QVERIFY(m_dialog->height() > 600);
    QVERIFY(titles->viewport()->width() > titles->fontMetrics().horizontalAdvance(title));
    m_dialog.reset();
}

void tst_zoHostPreferencesDialog::noPagesAreSaidSo()
{
    m_dialog.reset();
    m_service->clearPages();
    m_dialog = std::make_unique<zoHostPreferencesDialog>(m_service.get(), nullptr);
    m_dialog->show();

    auto* label = m_dialog->findChild<QStackedWidget*>()->findChild<QLabel*>();

    QVERIFY(label != nullptr && label->isVisible());
    click(QDialogButtonBox::Ok);
    QVERIFY(!m_dialog->isVisible());
}

ZO_TEST_MAIN(tst_zoHostPreferencesDialog)
#include "tst_zoHostPreferencesDialog.moc"
