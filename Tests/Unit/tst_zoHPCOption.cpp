#include "zoTestCase.h"

#include <zoHPC.h>

#include <QApplication>

// The keys of the option maps.
class tst_zoHPCOption final : public zoTestCase
{
    Q_OBJECT

private slots:
    void keyHasItsText_data();
    void keyHasItsText();
    void keysAreLowerCaseWithoutBlanks_data() { keyHasItsText_data(); }
    void keysAreLowerCaseWithoutBlanks();
};

void tst_zoHPCOption::keyHasItsText_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");

    QTest::newRow("Enabled") << zoHPCOption::Enabled << "enabled";
    QTest::newRow("RenderNode") << zoHPCOption::RenderNode << "rendernode";
    QTest::newRow("NetworkType") << zoHPCOption::NetworkType << "network";
    QTest::newRow("LinkSpeed") << zoHPCOption::LinkSpeed << "speed";
    QTest::newRow("SceneCompression") << zoHPCOption::SceneCompression << "scenecompression";
    QTest::newRow("ImageCompression") << zoHPCOption::ImageCompression << "imagecompression";
    QTest::newRow("Description") << zoHPCOption::Description << "description";
    QTest::newRow("IbDevice") << zoHPCOption::IbDevice << "ibdevice";
    QTest::newRow("IbPort") << zoHPCOption::IbPort << "ibport";
    QTest::newRow("ServicePort") << zoHPCOption::ServicePort << "serviceport";
    QTest::newRow("PixelFormat") << zoHPCOption::PixelFormat << "pixelformat";
    QTest::newRow("StartStopAction") << zoHPCOption::StartStopAction << "startstopaction";
    QTest::newRow("ParallelFrames") << zoHPCOption::ParallelFrames << "parallelframes";
    QTest::newRow("FramePipelineLength") << zoHPCOption::FramePipelineLength << "framequeuelength";
    QTest::newRow("StillFrameSupersampling")
        << zoHPCOption::StillFrameSupersampling << "stillframesupersampling";
    QTest::newRow("NodesFile") << zoHPCOption::NodesFile << "nodesfile";
    QTest::newRow("Encrypted") << zoHPCOption::Encrypted << "encrypted";
    QTest::newRow("Homogeneous") << zoHPCOption::Homogeneous << "homogeneous";
}

void tst_zoHPCOption::keyHasItsText()
{
    QFETCH(QString, key);
    QFETCH(QString, text);

    QCOMPARE(key, text);
}

void tst_zoHPCOption::keysAreLowerCaseWithoutBlanks()
{
    QFETCH(QString, key);

    QCOMPARE(key, key.toLower());
    QVERIFY(!key.contains(QLatin1Char(' ')));
    QVERIFY(!key.isEmpty());
}

ZO_TEST_MAIN(tst_zoHPCOption)
#include "tst_zoHPCOption.moc"
