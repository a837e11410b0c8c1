#include "zoTestCase.h"

#include <zoHostOptions.h>
#include <zoHostTranslations.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{
QString menuText()
{
    return QCoreApplication::translate("zoHostMainWindow", "Fi&le");
}

QString moduleText()
{
    return QCoreApplication::translate("zoHPCGUIW", "Show test image");
}

QString qtText()
{
    return QCoreApplication::translate("QPlatformTheme", "Cancel");
}
} // namespace

// The translations of a running host.
class tst_zoHostTranslations final : public zoTestCase
{
    Q_OBJECT

private slots:
    void cleanup();

    void textsAreThereWhileTheObjectLives();
    void moduleBringsItsOwnTexts();
    void moduleWithoutTextsStaysEnglish();
    void language_data();
    void language();
    void numbersFollowAChosenLanguage();
    void numbersAreLeftToTheLocaleOtherwise();
    void dataDirectoryComesFirst();
    void languageWithoutAFileIsEnglishInSilence();
};

void tst_zoHostTranslations::cleanup()
{
    qunsetenv("ZOKE_DATA");
    zoTestCase::cleanup();
}

void tst_zoHostTranslations::textsAreThereWhileTheObjectLives()
{
    QCOMPARE(menuText(), QStringLiteral("Fi&le"));
    {
        const zoHostTranslations german("de");

        QCOMPARE(menuText(), QStringLiteral("Date&i"));
        QCOMPARE(qtText(), QStringLiteral("Abbrechen"));
    }
    QCOMPARE(menuText(), QStringLiteral("Fi&le"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
}

void tst_zoHostTranslations::moduleBringsItsOwnTexts()
{
    {
        zoHostTranslations german("de");
        QCOMPARE(moduleText(), QStringLiteral("Show test image"));

        QVERIFY(german.addModule("/any/where/libzoHPC.so"));

        QCOMPARE(moduleText(), QStringLiteral("Testbild anzeigen"));
    }
    QCOMPARE(moduleText(), QStringLiteral("Show test image"));
}

void tst_zoHostTranslations::moduleWithoutTextsStaysEnglish()
{
    zoHostTranslations german("de");

    QVERIFY(!german.addModule("/any/where/libzoNowhere.so"));
    QVERIFY(!german.addModule(QString()));
}

void tst_zoHostTranslations::language_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("spoken");
    QTest::addColumn<QString>("text");

    QTest::newRow("language") << "de"
                              << "de"
                              << "Date&i";
    QTest::newRow("language-and-country") << "de_AT"
                                          << "de_AT"
                                          << "Date&i";
    QTest::newRow("as-in-the-web") << "de-CH"
                                   << "de_CH"
                                   << "Date&i";
    QTest::newRow("english") << "en"
                             << "en"
                             << "Fi&le";
    QTest::newRow("english-of-a-country") << "en_GB"
                                          << "en"
                                          << "Fi&le";
    QTest::newRow("no-language-of-this-host") << "fr"
                                              << "en"
                                              << "Fi&le";
    QTest::newRow("none") << "C"
                          << "en"
                          << "Fi&le";
    QTest::newRow("nonsense") << "../../de"
                              << "en"
                              << "Fi&le";
}

void tst_zoHostTranslations::language()
{
    QFETCH(QString, wanted);
    QFETCH(QString, spoken);
    QFETCH(QString, text);

    const zoHostTranslations translations(wanted);

    QCOMPARE(translations.language(), spoken);
    QCOMPARE(menuText(), text);
}

void tst_zoHostTranslations::numbersFollowAChosenLanguage()
{
    const QLocale before;
    {
        const zoHostTranslations german("de");

        QCOMPARE(QLocale().decimalPoint(), QChar(','));
    }
    QCOMPARE(QLocale(), before);
}

void tst_zoHostTranslations::numbersAreLeftToTheLocaleOtherwise()
{
    const QLocale before;

    const zoHostTranslations translations;

    QCOMPARE(QLocale(), before);
    QCOMPARE(translations.language(), QStringLiteral("en"));
}

// A site can bring a translation of its own.
void tst_zoHostTranslations::dataDirectoryComesFirst()
{
    const QTemporaryDir data;
    QVERIFY(QDir(data.path()).mkdir("translations"));
    QVERIFY(QFile::copy(ZO_TRANSLATION_DIR "/zohost_de.qm", data.filePath("translations/zohost_nl.qm")));
    qputenv("ZOKE_DATA", data.path().toUtf8());

    const zoHostTranslations dutch("nl");

    QCOMPARE(zoHostTranslations::folders().constFirst(), data.filePath("translations"));
    QCOMPARE(dutch.language(), QStringLiteral("nl"));
    QCOMPARE(menuText(), QStringLiteral("Date&i"));
}

void tst_zoHostTranslations::languageWithoutAFileIsEnglishInSilence()
{
    const zoHostTranslations french("fr");

    QCOMPARE(menuText(), QStringLiteral("Fi&le"));
    QCOMPARE(qtText(), QStringLiteral("Cancel"));
    QCOMPARE(messages(), QStringList());
}

ZO_TEST_MAIN(tst_zoHostTranslations)
#include "tst_zoHostTranslations.moc"
