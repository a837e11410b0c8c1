#include "zoTestCase.h"

#include <zoHostPreferencesService.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

// Named texts and registered pages.
class tst_zoHostPreferencesService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void missingTextIsTheDefault();
    void storedTextOutlivesTheProgram_data();
    void storedTextOutlivesTheProgram();
    void emptyTextIsNoDefault();
    void textsAreCopied();
    void pagesKeepTheirOrder();
    void destroyedPageIsForgotten();
    void callbacksGoWithThePage();
    void nullPageIsIgnored();
    void clearedPagesMayBeDestroyedLater();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostPreferencesService> m_service;
};

void tst_zoHostPreferencesService::init()
{
    m_service.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_service = std::make_unique<zoHostPreferencesService>(m_settings.get());
}

void tst_zoHostPreferencesService::missingTextIsTheDefault()
{
    QCOMPARE(m_service->getString("HPC Cluster default file", "nothing"), QStringLiteral("nothing"));
}

void tst_zoHostPreferencesService::storedTextOutlivesTheProgram_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("plain") << "/data/wall.zhpc";
    QTest::newRow("variable") << "$ZOKE_DATA/cluster/wall.zhpc";
    QTest::newRow("commas-are-no-list") << "a, b, c";
    QTest::newRow("quotes-and-backslash") << "\"a\\b\"";
    QTest::newRow("at-sign") << "@Invalid()";
    QTest::newRow("percent") << "100%1";
    QTest::newRow("not-ascii") << QString::fromUtf8("W\xc3\xa4nde \xf0\x9f\x96\xa5");
    QTest::newRow("two-lines") << "a\nb";
}

void tst_zoHostPreferencesService::storedTextOutlivesTheProgram()
{
    QFETCH(QString, text);

    m_service->setString("HPC Cluster default file", text);
    m_service.reset();
    const QString file = m_settings->fileName();
    m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
    m_service = std::make_unique<zoHostPreferencesService>(m_settings.get());

    QCOMPARE(m_service->getString("HPC Cluster default file", QString()), text);
}

void tst_zoHostPreferencesService::emptyTextIsNoDefault()
{
    m_service->setString("key", QString());

    QCOMPARE(m_service->getString("key", "default"), QString());
}

void tst_zoHostPreferencesService::textsAreCopied()
{
    QString text = "text";
    m_service->setString("key", QString::fromRawData(text.constData(), text.size()));
    text.fill(QLatin1Char('x'));

    QCOMPARE(m_service->getString("key", QString()), QStringLiteral("text"));
}

void tst_zoHostPreferencesService::pagesKeepTheirOrder()
{
    QWidget first;
    QWidget second;

    m_service->registerPage("b", &first, nullptr, nullptr, nullptr);
    m_service->registerPage("a", &second, nullptr, nullptr, nullptr);

    QCOMPARE(m_service->pages().size(), size_t(2));
    QCOMPARE(m_service->pages().at(0).title, QStringLiteral("b"));
    QCOMPARE(m_service->pages().at(1).widget.data(), &second);
}

void tst_zoHostPreferencesService::destroyedPageIsForgotten()
{
    auto first = std::make_unique<QWidget>();
    QWidget second;
    m_service->registerPage("a", first.get(), nullptr, nullptr, nullptr);
    m_service->registerPage("b", &second, nullptr, nullptr, nullptr);

    first.reset();

    QCOMPARE(m_service->pages().size(), size_t(1));
    QCOMPARE(m_service->pages().front().title, QStringLiteral("b"));
}

void tst_zoHostPreferencesService::callbacksGoWithThePage()
{
    const auto token = std::make_shared<int>(0);
    auto page = std::make_unique<QWidget>();
    m_service->registerPage(
        "a", page.get(), [token] {}, [token] {}, [token] {});
    QCOMPARE(token.use_count(), 4L);

    page.reset();

    QCOMPARE(token.use_count(), 1L);
}

void tst_zoHostPreferencesService::nullPageIsIgnored()
{
    m_service->registerPage("a", nullptr, nullptr, nullptr, nullptr);

    QVERIFY(m_service->pages().empty());
}

void tst_zoHostPreferencesService::clearedPagesMayBeDestroyedLater()
{
    auto page = std::make_unique<QWidget>();
    m_service->registerPage("a", page.get(), nullptr, nullptr, nullptr);

    m_service->clearPages();
    page.reset();

    QVERIFY(m_service->pages().empty());
}

ZO_TEST_MAIN(tst_zoHostPreferencesService)
#include "tst_zoHostPreferencesService.moc"
