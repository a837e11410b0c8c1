#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostAutosave.h>
#include <zoHostChoices.h>
#include <zoHostGeneralPage.h>
#include <zoLengthUnit.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QSpinBox>

#include <memory>

// The host's general preferences.
class tst_zoHostGeneralPage final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void defaultsAreShown();
    void choicesAreStoredWithTheDialog();
    void cancelledChoicesAreNot();
    void defaultsComeBack();
    void unknownLanguageIsThatOfTheDesktop_data();
    void unknownLanguageIsThatOfTheDesktop();
    void unitIsUsedAtOnceAndAtTheNextStart();
    void autosaveIsAnnouncedWhenItChanges();

private:
    const zoHostPreferencesService::Page& page() const { return m_parts->preferences.pages().front(); }
    template <class Widget>
    Widget* field(const char* name) const
    {
        return m_page->findChild<Widget*>(QLatin1String(name));
    }

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostGeneralPage> m_page;
};

void tst_zoHostGeneralPage::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_page = std::make_unique<zoHostGeneralPage>(&m_parts->preferences);
    page().show();
}

void tst_zoHostGeneralPage::cleanup()
{
    m_page.reset();
    m_parts.reset();
    zoLengthUnit::setShown(zoLengthUnit::of("mm"));
    zoTestCase::cleanup();
}

void tst_zoHostGeneralPage::defaultsAreShown()
{
    QCOMPARE(field<QComboBox>("Language")->currentData().toString(), QString());
    QVERIFY(!field<QCheckBox>("ReopensLast")->isChecked());
    QVERIFY(field<QCheckBox>("ShowsStartPage")->isChecked());
    QCOMPARE(field<QSpinBox>("AutosaveSeconds")->value(), int(zoHostAutosave::DefaultSeconds));
    QCOMPARE(field<QComboBox>("LengthUnit")->currentText(), QStringLiteral("mm"));
}

void tst_zoHostGeneralPage::choicesAreStoredWithTheDialog()
{
    field<QComboBox>("Language")->setCurrentIndex(field<QComboBox>("Language")->findData("de"));
    field<QCheckBox>("ReopensLast")->setChecked(true);
    field<QCheckBox>("ShowsStartPage")->setChecked(false);
    field<QSpinBox>("AutosaveSeconds")->setValue(0);
    field<QComboBox>("LengthUnit")->setCurrentText("in");

    page().saveChanges();
    page().show();

    QCOMPARE(zoHostChoices::language(m_parts->settings), QStringLiteral("de"));
    QVERIFY(zoHostChoices::reopensLast(&m_parts->preferences));
    QVERIFY(!zoHostChoices::showsStartPage(&m_parts->preferences));
    QCOMPARE(zoHostAutosave::storedSeconds(&m_parts->preferences), 0);
    QCOMPARE(field<QComboBox>("Language")->currentText(), QStringLiteral("Deutsch"));
    QCOMPARE(field<QComboBox>("LengthUnit")->currentText(), QStringLiteral("in"));
}

void tst_zoHostGeneralPage::cancelledChoicesAreNot()
{
    field<QCheckBox>("ReopensLast")->setChecked(true);

    page().show();

    QVERIFY(!field<QCheckBox>("ReopensLast")->isChecked());
    QVERIFY(!zoHostChoices::reopensLast(&m_parts->preferences));
}

void tst_zoHostGeneralPage::defaultsComeBack()
{
    field<QCheckBox>("ReopensLast")->setChecked(true);
    field<QComboBox>("LengthUnit")->setCurrentText("ft");
    field<QSpinBox>("AutosaveSeconds")->setValue(5);
    page().saveChanges();

    page().setDefaults();
    page().show();

    defaultsAreShown();
}

void tst_zoHostGeneralPage::unknownLanguageIsThatOfTheDesktop_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("language");

    QTest::newRow("none") << QString() << QString();
    QTest::newRow("english") << "en"
                             << "en";
    QTest::newRow("unknown") << "xx" << QString();
}

void tst_zoHostGeneralPage::unknownLanguageIsThatOfTheDesktop()
{
    QFETCH(QString, stored);
    QFETCH(QString, language);
    m_parts->preferences.setString("Language", stored);

    QCOMPARE(zoHostChoices::language(m_parts->settings), language);
}

void tst_zoHostGeneralPage::unitIsUsedAtOnceAndAtTheNextStart()
{
    field<QComboBox>("LengthUnit")->setCurrentText("m");
    page().saveChanges();
    QCOMPARE(zoLengthUnit::shown().symbol(), QStringLiteral("m"));

    m_page.reset();
    zoLengthUnit::setShown(zoLengthUnit::of("mm"));
    m_page = std::make_unique<zoHostGeneralPage>(&m_parts->preferences);

    QCOMPARE(zoLengthUnit::shown().symbol(), QStringLiteral("m"));
}

void tst_zoHostGeneralPage::autosaveIsAnnouncedWhenItChanges()
{
    const QSignalSpy changed(m_page.get(), &zoHostGeneralPage::autosaveSecondsChanged);

    page().saveChanges();
    QCOMPARE(changed.count(), 0);

    field<QSpinBox>("AutosaveSeconds")->setValue(7);
    page().saveChanges();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), 7);
}

ZO_TEST_MAIN(tst_zoHostGeneralPage)
#include "tst_zoHostGeneralPage.moc"
