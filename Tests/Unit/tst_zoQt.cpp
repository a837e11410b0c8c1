#include "zoTestCase.h"

#include <zoQt.h>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>

#include <sys/stat.h>

// What Qt 5 and Qt 6 do differently, and programs do alike.
class tst_zoQt final : public zoTestCase
{
    Q_OBJECT

private slots:
    void scaleOfAScreenIsWhole();
    void childIsPreparedBeforeItsProgramRuns();
};

// The screen has one and a half times the usual dots per inch, see below.
void tst_zoQt::scaleOfAScreenIsWhole()
{
    QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 2.0);
}

void tst_zoQt::childIsPreparedBeforeItsProgramRuns()
{
    zoQt::ChildProcess process([] { umask(0135); });

    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("umask")});
    QVERIFY(process.waitForFinished());

    QCOMPARE(process.readAllStandardOutput(), QByteArray("0135\n"));
}

int main(int argc, char** argv)
{
    qputenv("QT_FONT_DPI", "144");
    zoQt::scaleToScreens();
    const QGuiApplication application(argc, argv);
    tst_zoQt test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoQt.moc"
