#include "zoTestCase.h"

#include <zoParaViewPicture.h>

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>

// The client that shows the check picture, with a program that plays it.
class tst_zoParaViewPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void isToldWhatToShow_data();
    void isToldWhatToShow();
    void endTakesItOff_data();
    void endTakesItOff();
    void makesWayForAClient();
    void isGoneWithItsServer();
    void isGoneWhenItIsKilled();
    void tellsWhyNothingIsShown_data();
    void tellsWhyNothingIsShown();
    void hungIsGivenUp();
    void missingProgramIsNamed();
    void missingDisplayIsNamed();
    void secondTakesThePlaceOfTheFirst();
    void mayGoInItsOwnSignal();
};

namespace
{
const QUrl s_server(QStringLiteral("cs://wall-1:11117"));

bool isAlive(qint64 process)
{
    return process > 0 && kill(pid_t(process), 0) == 0;
}

void play(const char* row)
{
    qputenv("FAKE_PVPYTHON", row);
}
} // namespace

void tst_zoParaViewPicture::init()
{
    qunsetenv("FAKE_PVPYTHON_REQUEST");
    qputenv("DISPLAY", ":77");
}

void tst_zoParaViewPicture::isToldWhatToShow_data()
{
    QTest::addColumn<bool>("isTiles");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("display");

    QTest::newRow("test-image") << false << QStringLiteral("test-image") << QString();
    QTest::newRow("tiles") << true << QStringLiteral("tiles") << QStringLiteral(":5.1");
}

void tst_zoParaViewPicture::isToldWhatToShow()
{
    QFETCH(bool, isTiles);
    QFETCH(QString, content);
    QFETCH(QString, display);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("request"));
    qputenv("FAKE_PVPYTHON_REQUEST", file.toLocal8Bit());
    play("shown");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    picture.setDisplay(display);
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);

    // Larger than what a pipe takes at once.
    const QByteArray scene = "{\"tiles\":[],\"more\":\"" + QByteArray(300000, 'x') + "\"}";
    picture.show(isTiles ? zoParaViewPicture::Content::Tiles : zoParaViewPicture::Content::TestImage,
                 s_server, 2147483647U, scene);
    QVERIFY(!picture.isShown());
    QVERIFY(shown.wait(60000));

    QVERIFY(picture.isShown());
    QFile request(file);
    QVERIFY(request.open(QIODevice::ReadOnly));
    const QJsonObject object = QJsonDocument::fromJson(request.readAll()).object();
    QCOMPARE(object.value(QLatin1String("host")).toString(), QStringLiteral("wall-1"));
    QCOMPARE(object.value(QLatin1String("port")).toInt(), 11117);
    QCOMPARE(object.value(QLatin1String("connectId")).toDouble(), 2147483647.0);
    const QJsonObject sent = object.value(QLatin1String("scene")).toObject();
    QCOMPARE(sent.value(QLatin1String("content")).toString(), content);
    QCOMPARE(sent.value(QLatin1String("more")).toString().size(), 300000);
    QFile arguments(file + QStringLiteral(".arguments"));
    QVERIFY(arguments.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromLocal8Bit(arguments.readAll()).split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), display.isEmpty() ? QStringLiteral(":77") : display);
    QCOMPARE(lines.value(1), QStringLiteral("--force-offscreen-rendering"));
    // A script that is there.
    QVERIFY2(lines.value(2).endsWith(QLatin1String("/paraview/check-picture.py")),
             qPrintable(lines.value(2)));
    QVERIFY(QFile::exists(lines.value(2)));
}

void tst_zoParaViewPicture::endTakesItOff_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::newRow("at-once") << QByteArray("shown");
    QTest::newRow("by-force") << QByteArray("stubborn");
}

void tst_zoParaViewPicture::endTakesItOff()
{
    QFETCH(QByteArray, row);
    play(row.constData());
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);
    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    QVERIFY(shown.wait(60000));
    const qint64 process = picture.processId();
    QVERIFY(isAlive(process));

    picture.end();
    picture.end();

    QVERIFY(!isAlive(process));
    QVERIFY(!picture.isShown());
    QVERIFY(!picture.isRunning());
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCOMPARE(ended.count() + failed.count(), 0);
}

void tst_zoParaViewPicture::makesWayForAClient()
{
    play("wanted");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);

    picture.show(zoParaViewPicture::Content::TestImage, s_server, 1, "{}");
    QVERIFY(ended.wait(60000));

    QCOMPARE(shown.count(), 1);
    QVERIFY(!picture.isShown());
    QVERIFY(messages().join(QLatin1Char('\n')).contains(QLatin1String("makes way")));
}

void tst_zoParaViewPicture::isGoneWithItsServer()
{
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("the server is gone")));
    play("lost");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::TestImage, s_server, 1, "{}");
    QVERIFY(ended.wait(60000));

    QCOMPARE(failed.count(), 0);
    QVERIFY(!picture.isRunning());
}

void tst_zoParaViewPicture::isGoneWhenItIsKilled()
{
    play("shown");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);
    picture.show(zoParaViewPicture::Content::TestImage, s_server, 1, "{}");
    QVERIFY(shown.wait(60000));

    kill(pid_t(picture.processId()), SIGKILL);
    QVERIFY(ended.wait(60000));

    QVERIFY(!picture.isShown());
}

void tst_zoParaViewPicture::tellsWhyNothingIsShown_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("reason");

    QTest::newRow("failed") << QByteArray("failed") << QStringLiteral("no answer");
    QTest::newRow("died") << QByteArray("died") << QStringLiteral("something broke");
    QTest::newRow("noise") << QByteArray("noise") << QStringLiteral("a line that is no message");
    QTest::newRow("nothing") << QByteArray("nothing") << QStringLiteral("exit status 0");
}

void tst_zoParaViewPicture::tellsWhyNothingIsShown()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, reason);
    play(row.constData());
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    QVERIFY(failed.wait(60000));

    QVERIFY2(failed.first().first().toString().contains(reason),
             qPrintable(failed.first().first().toString()));
    QCOMPARE(failed.count(), 1);
    QCOMPARE(shown.count(), 0);
    QVERIFY(!picture.isRunning());
}

void tst_zoParaViewPicture::hungIsGivenUp()
{
    play("hung");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    picture.setLimit(500);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    const qint64 process = picture.processId();
    QVERIFY(failed.wait(60000));

    QCOMPARE(failed.first().first().toString(), QStringLiteral("nothing was shown within 0.5 s"));
    QVERIFY(!isAlive(process));
}

void tst_zoParaViewPicture::missingProgramIsNamed()
{
    zoParaViewPicture picture(QStringLiteral("no-such-pvpython"));
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    QCOMPARE(failed.count(), 0); // not before show() returns
    QVERIFY(failed.wait(60000));

    QCOMPARE(failed.first().first().toString(),
             QStringLiteral("no-such-pvpython is not installed on this machine"));
}

void tst_zoParaViewPicture::missingDisplayIsNamed()
{
    qunsetenv("DISPLAY");
    play("died");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    QVERIFY(failed.wait(60000));

    QVERIFY(failed.first().first().toString().contains(QLatin1String("has no X display")));
}

void tst_zoParaViewPicture::secondTakesThePlaceOfTheFirst()
{
    play("shown");
    zoParaViewPicture picture(QStringLiteral(ZO_FAKE_PVPYTHON));
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);
    picture.show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");
    QVERIFY(shown.wait(60000));
    const qint64 first = picture.processId();

    picture.show(zoParaViewPicture::Content::TestImage, s_server, 1, "{}");
    QVERIFY(!isAlive(first));
    QVERIFY(!picture.isShown());
    QVERIFY(shown.wait(60000));

    QVERIFY(picture.isShown());
    QCOMPARE(ended.count(), 0);
}

void tst_zoParaViewPicture::mayGoInItsOwnSignal()
{
    play("shown");
    auto* const picture = new zoParaViewPicture(QStringLiteral(ZO_FAKE_PVPYTHON));
    const QPointer<zoParaViewPicture> watched(picture);
    connect(picture, &zoParaViewPicture::shown, this, [picture] { delete picture; });

    picture->show(zoParaViewPicture::Content::Tiles, s_server, 1, "{}");

    QTRY_VERIFY_WITH_TIMEOUT(watched.isNull(), 60000);
}

ZO_TEST_MAIN(tst_zoParaViewPicture)
#include "tst_zoParaViewPicture.moc"
