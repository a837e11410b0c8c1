#include "zoTestCase.h"

#include <zoSetupLibrary.h>
#include <zoWallSetup.h>

#include <QApplication>
#include <QTemporaryDir>

// The component that reads configurations, where it is missing: the program goes on, and says which file it is.
class tst_zoSetupLibrary final : public zoTestCase
{
    Q_OBJECT

private slots:
    void missingComponentIsNamed_data();
    void missingComponentIsNamed();
};

void tst_zoSetupLibrary::missingComponentIsNamed_data()
{
    QTest::addColumn<QString>("what");

    QTest::newRow("windows of nodes") << "windows";
    QTest::newRow("displays of ParaView") << "displays";
    QTest::newRow("scene") << "scene";
}

void tst_zoSetupLibrary::missingComponentIsNamed()
{
    QFETCH(QString, what);
    static const QTemporaryDir folder; // the component is looked for once
    zoSetupLibrary::setFolder(folder.path());
    const QString document = QStringLiteral("<cluster version=\"1\"/>");
    QString reason;
    bool isRead = true;
    if (what == QLatin1String("windows")) {
        zoWallSetup setup;
        isRead = zoSetupLibrary::read(document, setup, reason);
    } else if (what == QLatin1String("displays")) {
        zoParaViewSetup setup;
        isRead = zoSetupLibrary::read(document, zoParaViewSetup::Request(), setup, reason);
    } else {
        QByteArray scene;
        isRead = zoSetupLibrary::writeScene(document, QStringLiteral("image"), scene, reason);
    }

    QVERIFY(!isRead);
    QVERIFY2(reason.contains(folder.path() + QStringLiteral("/libzoServerSetup.so")), qPrintable(reason));
}

ZO_TEST_MAIN(tst_zoSetupLibrary)
#include "tst_zoSetupLibrary.moc"
