#include "zoDialogRobot.h"
#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCPreferencesGUII.h>

#include <zoPlatform.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>

namespace
{
const QString s_key = QStringLiteral("HPC Cluster default file");
} // namespace

// The module's page of the preferences.
class tst_zoHPCPreferencesGUII final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void textsAreThere();
    void pageRegistersItself();
    void pageWithoutServiceStandsAlone();
    void showFillsTheField_data();
    void showFillsTheField();
    void defaultsAreStoredAsEmpty();
    void savingStoresTheField_data();
    void savingStoresTheField();
    void showingWhatWasSavedIsTheSame();
    void browseButtonHasItsIconAndSize();
    void browsingOffersClusterConfigurations();
    void chosenFileGoesIntoTheField_data();
    void chosenFileGoesIntoTheField();
    void cancelledBrowsingLeavesTheField();
    void callbacksOfADestroyedPageDoNothing();

private:
    QLineEdit* field() const { return m_page->findChild<QLineEdit*>(QStringLiteral("m_defaultConfigFile")); }
    QToolButton* button() const { return m_page->findChild<QToolButton*>(QStringLiteral("m_browseButton")); }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<zoHPCPreferencesGUII> m_page;
};

void tst_zoHPCPreferencesGUII::initTestCase()
{
    zoTestCase::initTestCase();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void tst_zoHPCPreferencesGUII::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_data->path()).mkdir(QStringLiteral("cluster")));
    for (const char* name : {"cluster/wall.zhpc", "elsewhere.zhpc"}) {
        QFile file(m_data->filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    qputenv("ZOKE_DATA", QFile::encodeName(m_data->path()));
    m_host = std::make_unique<zoFakeHost>();
    m_page = std::make_unique<zoHPCPreferencesGUII>();
}

void tst_zoHPCPreferencesGUII::cleanup()
{
    if (m_page && qEnvironmentVariableIsSet("ZO_TEST_SCREENSHOTS"))
        m_page->grab().save(qEnvironmentVariable("ZO_TEST_SCREENSHOTS") +
                            QStringLiteral("/zoHPCPreferencesGUII-") +
                            QString::fromLatin1(QTest::currentTestFunction()) + QStringLiteral(".png"));
    m_page.reset();
    m_host.reset();
    m_data.reset();
    qunsetenv("ZOKE_DATA");
    zoTestCase::cleanup();
}

void tst_zoHPCPreferencesGUII::textsAreThere()
{
    const QLabel* const label = m_page->findChild<QLabel*>();

    QCOMPARE(label->text(), QStringLiteral("Default Config File"));
    QCOMPARE(label->buddy(), field());
}

void tst_zoHPCPreferencesGUII::pageRegistersItself()
{
    QCOMPARE(m_host->pages.size(), 1);
    QCOMPARE(m_host->pages.first().title, QStringLiteral("Cluster"));
    QCOMPARE(m_host->pages.first().page, m_page.get());
    QVERIFY(m_host->pages.first().setDefaults);
    QVERIFY(m_host->pages.first().saveChanges);
    QVERIFY(m_host->pages.first().show);
}

void tst_zoHPCPreferencesGUII::pageWithoutServiceStandsAlone()
{
    m_page.reset();
    m_host.reset();

    m_page = std::make_unique<zoHPCPreferencesGUII>();

    QVERIFY(field() != nullptr);
}

void tst_zoHPCPreferencesGUII::showFillsTheField_data()
{
    QTest::addColumn<QString>("stored");

    QTest::newRow("nothing") << "";
    QTest::newRow("variable-is-not-expanded") << "$ZOKE_DATA/cluster/wall.zhpc";
    QTest::newRow("any-path") << "/a b/%1.zhpc";
}

void tst_zoHPCPreferencesGUII::showFillsTheField()
{
    QFETCH(QString, stored);
    field()->setText(QStringLiteral("before"));
    if (!stored.isEmpty())
        m_host->preferences.insert(s_key, stored);

    m_host->pages.first().show();

    QCOMPARE(field()->text(), stored);
}

void tst_zoHPCPreferencesGUII::defaultsAreStoredAsEmpty()
{
    m_host->preferences.insert(s_key, QStringLiteral("/x.zhpc"));

    m_host->pages.first().setDefaults();

    QVERIFY(m_host->preferences.contains(s_key));
    QCOMPARE(m_host->preferences.value(s_key), QString());
    QCOMPARE(m_host->preferences.size(), 1);
}

void tst_zoHPCPreferencesGUII::savingStoresTheField_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("stored");

    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("elsewhere") << "/x/y.zhpc"
                               << "/x/y.zhpc";
    QTest::newRow("in-the-cluster-directory") << "DATA/cluster/wall.zhpc"
                                              << "$ZOKE_DATA/cluster/wall.zhpc";
    QTest::newRow("beside-the-cluster-directory") << "DATA/wall.zhpc"
                                                  << "DATA/wall.zhpc";
    QTest::newRow("somewhere-in-the-text") << "file:DATA/cluster/w.zhpc"
                                           << "file:$ZOKE_DATA/cluster/w.zhpc";
    QTest::newRow("other-case") << "DATA/Cluster/wall.zhpc"
                                << "DATA/Cluster/wall.zhpc";
    QTest::newRow("variable-already") << "$ZOKE_DATA/cluster/wall.zhpc"
                                      << "$ZOKE_DATA/cluster/wall.zhpc";
}

void tst_zoHPCPreferencesGUII::savingStoresTheField()
{
    QFETCH(QString, shown);
    QFETCH(QString, stored);
    shown.replace(QStringLiteral("DATA/"), m_data->path() + QLatin1Char('/'));
    if (!stored.contains(QLatin1Char('$')))
        stored.replace(QStringLiteral("DATA/"), m_data->path() + QLatin1Char('/'));
    if (QByteArray(QTest::currentDataTag()) == "variable-already")
        shown = stored;
    field()->setText(shown);

    m_host->pages.first().saveChanges();

    QCOMPARE(m_host->preferences.value(s_key), stored);
    QVERIFY(m_host->preferences.contains(s_key));
}

void tst_zoHPCPreferencesGUII::showingWhatWasSavedIsTheSame()
{
    field()->setText(m_data->filePath(QStringLiteral("cluster/wall.zhpc")));
    m_host->pages.first().saveChanges();

    m_host->pages.first().show();

    QCOMPARE(field()->text(), QStringLiteral("$ZOKE_DATA/cluster/wall.zhpc"));
}

void tst_zoHPCPreferencesGUII::browseButtonHasItsIconAndSize()
{
    const int icon = zoPlatform::getMediumIconSize();

    QVERIFY(!button()->icon().isNull());
    QCOMPARE(button()->iconSize(), QSize(icon, icon));
}

void tst_zoHPCPreferencesGUII::browsingOffersClusterConfigurations()
{
    QString title;
    QString directory;
    QStringList filters;
    zoDialogRobot robot([&](QDialog* dialog) {
        if (const QFileDialog* const files = qobject_cast<QFileDialog*>(dialog)) {
            title = files->windowTitle();
            directory = files->directory().canonicalPath();
            filters = files->nameFilters();
        }
        dialog->reject();
    });

    QTest::mouseClick(button(), Qt::LeftButton);

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(title, QStringLiteral("Load HPC Cluster Configuration"));
    QCOMPARE(directory, QDir(m_data->filePath(QStringLiteral("cluster"))).canonicalPath());
    QCOMPARE(filters, QStringList{QStringLiteral("*.zhpc")});
}

void tst_zoHPCPreferencesGUII::chosenFileGoesIntoTheField_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isInClusterDirectory");

    QTest::newRow("in-the-cluster-directory") << "cluster/wall.zhpc" << true;
    QTest::newRow("elsewhere") << "elsewhere.zhpc" << false;
}

void tst_zoHPCPreferencesGUII::chosenFileGoesIntoTheField()
{
    QFETCH(QString, file);
    QFETCH(bool, isInClusterDirectory);
    const QString path = m_data->filePath(file);
    zoDialogRobot robot([&path](QDialog* dialog) {
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });

    m_page->clickedBrowse();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(field()->text(), isInClusterDirectory ? QStringLiteral("$ZOKE_DATA/") + file : path);
    QVERIFY(m_host->preferences.isEmpty());
}

void tst_zoHPCPreferencesGUII::cancelledBrowsingLeavesTheField()
{
    field()->setText(QStringLiteral("/before"));
    zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    m_page->clickedBrowse();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(field()->text(), QStringLiteral("/before"));
}

void tst_zoHPCPreferencesGUII::callbacksOfADestroyedPageDoNothing()
{
    m_host->preferences.insert(s_key, QStringLiteral("/kept.zhpc"));
    m_page.reset();

    m_host->pages.first().show();
    m_host->pages.first().setDefaults();
    m_host->pages.first().saveChanges();

    QCOMPARE(m_host->preferences.value(s_key), QStringLiteral("/kept.zhpc"));
}

ZO_TEST_MAIN(tst_zoHPCPreferencesGUII)
#include "tst_zoHPCPreferencesGUII.moc"
