#include "zoTestCase.h"

#include <zoPlatform.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>

// Where the host keeps its data.
class tst_zoPlatform final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("ZOKE_DATA"); }
    void cleanupTestCase() { qunsetenv("ZOKE_DATA"); }
    void environmentChoosesTheDataDirectory();
    void environmentMayHoldAnyBytes();
    void slashesAtTheEndAreNotPartOfTheName();
    void environmentIsReadAtEachCall();
    void emptyEnvironmentCountsAsNone();
    void builtTreeHasItsData();
    void iconsHaveTheirSizes();
};

void tst_zoPlatform::environmentChoosesTheDataDirectory()
{
    qputenv("ZOKE_DATA", "/somewhere/data");

    QCOMPARE(zoPlatform::getDataDir(), std::string("/somewhere/data"));
}

void tst_zoPlatform::environmentMayHoldAnyBytes()
{
    qputenv("ZOKE_DATA", "/W\xc3\xa4nde/\xff 100%s");

    QCOMPARE(zoPlatform::getDataDir(), std::string("/W\xc3\xa4nde/\xff 100%s"));
}

void tst_zoPlatform::slashesAtTheEndAreNotPartOfTheName()
{
    qputenv("ZOKE_DATA", "/somewhere/data//");
    QCOMPARE(zoPlatform::getDataDir(), std::string("/somewhere/data"));

    qputenv("ZOKE_DATA", "/");
    QCOMPARE(zoPlatform::getDataDir(), std::string("/"));
}

void tst_zoPlatform::environmentIsReadAtEachCall()
{
    qputenv("ZOKE_DATA", "/first");
    QCOMPARE(zoPlatform::getDataDir(), std::string("/first"));

    qputenv("ZOKE_DATA", "/second");

    QCOMPARE(zoPlatform::getDataDir(), std::string("/second"));
}

void tst_zoPlatform::emptyEnvironmentCountsAsNone()
{
    const std::string without = zoPlatform::getDataDir();

    qputenv("ZOKE_DATA", "");

    QCOMPARE(zoPlatform::getDataDir(), without);
    QVERIFY(!without.empty());
}

void tst_zoPlatform::builtTreeHasItsData()
{
    const QString directory = QString::fromStdString(zoPlatform::getDataDir());

    QVERIFY(QFileInfo(directory).isAbsolute());
    QVERIFY(!directory.endsWith(QLatin1Char('/')));
    QVERIFY(QFileInfo(directory + QStringLiteral("/cluster")).isDir());
    QCOMPARE(QFileInfo(directory).canonicalFilePath(),
             QFileInfo(QStringLiteral(ZO_DATA_DIR)).canonicalFilePath());
}

void tst_zoPlatform::iconsHaveTheirSizes()
{
    QCOMPARE(zoPlatform::getSmallIconSize(), 16);
    QCOMPARE(zoPlatform::getMediumIconSize(), 24);
}

ZO_TEST_MAIN(tst_zoPlatform)
#include "tst_zoPlatform.moc"
