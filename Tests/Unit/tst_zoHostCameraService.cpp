#include "zoTestCase.h"

#include <zoHostCameraService.h>
#include <zoHostNodeService.h>

#include <QApplication>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// The host's cameras.
class tst_zoHostCameraService final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void firstStartHasOneCamera();
    void addedCameraTakesTheFirstFreeName();
    void renamedCameraIsAnnouncedByItsNode();
    void equalNameIsNoChange();
    void emptyAndTakenNamesAreRefused();
    void removedCameraIsAnnounced();
    void indexOutsideTheListIsIgnored();
    void camerasOutliveTheProgram();
    void anEmptyListOutlivesTheProgramToo();
    void doubledAndEmptyEntriesOfTheSettingsAreDropped();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    zoHostNodeService m_nodes;
};

void tst_zoHostCameraService::init()
{
    m_settings.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
}

void tst_zoHostCameraService::firstStartHasOneCamera()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);

    QCOMPARE(cameras.cameraNames(), QStringList("Camera 1"));
}

void tst_zoHostCameraService::addedCameraTakesTheFirstFreeName()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    QSignalSpy changed(&cameras, &zoCameraService::camerasChanged);

    QCOMPARE(cameras.addCamera(), 1);
    QCOMPARE(cameras.addCamera(), 2);
    cameras.removeCamera(1);
    QCOMPARE(cameras.addCamera(), 2);

    QCOMPARE(cameras.cameraNames(), QStringList({"Camera 1", "Camera 3", "Camera 2"}));
    QCOMPARE(changed.count(), 4);
}

void tst_zoHostCameraService::renamedCameraIsAnnouncedByItsNode()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    cameras.addCamera();
    QSignalSpy renamed(&m_nodes, &zoNodeService::cameraNameChanged);
    QSignalSpy changed(&cameras, &zoCameraService::camerasChanged);
    QStringList seen;
    connect(&m_nodes, &zoNodeService::cameraNameChanged, &cameras, [&] { seen = cameras.cameraNames(); });

    QVERIFY(cameras.renameCamera(0, " Front "));
    QVERIFY(cameras.renameCamera(1, "Back"));

    QCOMPARE(renamed.count(), 2);
    QCOMPARE(renamed.at(0).at(1).toString(), QStringLiteral("Front"));
    QVERIFY(renamed.at(0).at(0).toUInt() != renamed.at(1).at(0).toUInt());
    QCOMPARE(seen, QStringList({"Front", "Back"}));
    QCOMPARE(changed.count(), 0);
}

void tst_zoHostCameraService::equalNameIsNoChange()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    QSignalSpy renamed(&m_nodes, &zoNodeService::cameraNameChanged);

    QVERIFY(cameras.renameCamera(0, "Camera 1"));

    QCOMPARE(renamed.count(), 0);
}

void tst_zoHostCameraService::emptyAndTakenNamesAreRefused()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    cameras.addCamera();
    QSignalSpy renamed(&m_nodes, &zoNodeService::cameraNameChanged);

    QVERIFY(!cameras.renameCamera(0, "  "));
    QVERIFY(!cameras.renameCamera(0, "Camera 2"));

    QCOMPARE(cameras.cameraNames(), QStringList({"Camera 1", "Camera 2"}));
    QCOMPARE(renamed.count(), 0);
}

void tst_zoHostCameraService::removedCameraIsAnnounced()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    QSignalSpy changed(&cameras, &zoCameraService::camerasChanged);

    cameras.removeCamera(0);

    QCOMPARE(cameras.cameraNames(), QStringList());
    QCOMPARE(changed.count(), 1);
}

void tst_zoHostCameraService::indexOutsideTheListIsIgnored()
{
    zoHostCameraService cameras(m_settings.get(), &m_nodes);
    QSignalSpy changed(&cameras, &zoCameraService::camerasChanged);

    cameras.removeCamera(-1);
    cameras.removeCamera(1);
    QVERIFY(!cameras.renameCamera(1, "x"));
    QVERIFY(!cameras.renameCamera(-1, "x"));

    QCOMPARE(changed.count(), 0);
    QCOMPARE(cameras.count(), 1);
}

void tst_zoHostCameraService::camerasOutliveTheProgram()
{
    {
        zoHostCameraService cameras(m_settings.get(), &m_nodes);
        cameras.addCamera();
        QVERIFY(cameras.renameCamera(0, "Left, upper"));
    }

    zoHostCameraService cameras(m_settings.get(), &m_nodes);

    QCOMPARE(cameras.cameraNames(), QStringList({"Left, upper", "Camera 2"}));
}

void tst_zoHostCameraService::anEmptyListOutlivesTheProgramToo()
{
    {
        zoHostCameraService cameras(m_settings.get(), &m_nodes);
        cameras.removeCamera(0);
    }
    const QString file = m_settings->fileName();
    m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);

    zoHostCameraService cameras(m_settings.get(), &m_nodes);

    QCOMPARE(cameras.cameraNames(), QStringList());
}

void tst_zoHostCameraService::doubledAndEmptyEntriesOfTheSettingsAreDropped()
{
    m_settings->setValue("Cameras", QStringList({"a", "", "a", " b "}));

    zoHostCameraService cameras(m_settings.get(), &m_nodes);

    QCOMPARE(cameras.cameraNames(), QStringList({"a", "b"}));
}

ZO_TEST_MAIN(tst_zoHostCameraService)
#include "tst_zoHostCameraService.moc"
