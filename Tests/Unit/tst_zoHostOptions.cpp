#include "zoTestCase.h"

#include <zoHostOptions.h>

#include <QApplication>

// The command line of the host.
class tst_zoHostOptions final : public zoTestCase
{
    Q_OBJECT

private slots:
    void noArgumentsAskForNothing();
    void everyOptionIsRead();
    void fileMayStandAlone();
    void helpNamesEveryOption();
    void languageIsToldWithWhatIsPrinted();
    void languageMayNameACountry_data();
    void languageMayNameACountry();
    void versionIsOneLine();
    void wrongUseIsReported_data();
    void wrongUseIsReported();
};

void tst_zoHostOptions::noArgumentsAskForNothing()
{
    const zoHostOptions::Result result = zoHostOptions::parse({"zohost"});

    QVERIFY(result.run);
    QCOMPARE(result.options.configFile, QString());
    QCOMPARE(result.options.screenshotFile, QString());
    QCOMPARE(result.options.moduleFiles, QStringList());
    QVERIFY(!result.options.start);
    QVERIFY(!result.options.nonInteractive);
    QVERIFY(!result.options.exitAfterStop);
    QCOMPARE(result.options.engine, QString());
    QVERIFY(!result.options.rehearse);
}

void tst_zoHostOptions::everyOptionIsRead()
{
    const zoHostOptions::Result result = zoHostOptions::parse({"zohost",
                                                               "--config",
                                                               "a b.zhpc",
                                                               "--start",
                                                               "--non-interactive",
                                                               "--screenshot=s.png",
                                                               "--exit-after-stop",
                                                               "--module",
                                                               "one.so",
                                                               "--module",
                                                               "two.so",
                                                               "--language",
                                                               "de",
                                                               "--engine",
                                                               "nodes",
                                                               "--rehearse",
                                                               "--show",
                                                               "test-image",
                                                               "--wall-picture",
                                                               "w.png",
                                                               "--node-pictures",
                                                               "folder"});

    QVERIFY(result.run);
    QCOMPARE(result.options.configFile, QStringLiteral("a b.zhpc"));
    QCOMPARE(result.options.screenshotFile, QStringLiteral("s.png"));
    QCOMPARE(result.options.language, QStringLiteral("de"));
    QCOMPARE(result.options.moduleFiles, QStringList({"one.so", "two.so"}));
    QVERIFY(result.options.start);
    QVERIFY(result.options.nonInteractive);
    QVERIFY(result.options.exitAfterStop);
    QCOMPARE(result.options.engine, QStringLiteral("nodes"));
    QVERIFY(result.options.rehearse);
    QCOMPARE(result.options.shownPicture, QStringLiteral("test-image"));
    QCOMPARE(result.options.wallPictureFile, QStringLiteral("w.png"));
    QCOMPARE(result.options.nodePictureFolder, QStringLiteral("folder"));
}

// As desktops call programs for a file.
void tst_zoHostOptions::fileMayStandAlone()
{
    const zoHostOptions::Result result = zoHostOptions::parse({"zohost", "--start", "a b.zhpc"});

    QVERIFY(result.run);
    QCOMPARE(result.options.configFile, QStringLiteral("a b.zhpc"));
    QVERIFY(result.options.start);
}

void tst_zoHostOptions::helpNamesEveryOption()
{
    const zoHostOptions::Result result = zoHostOptions::parse({"zohost", "--help"});

    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.standardError, QString());
    for (const QString& option :
         QStringList({"--config <FILE>", "--start", "--non-interactive", "--screenshot <FILE.png>",
                      "--exit-after-stop", "--module <FILE>", "--language <LANGUAGE>", "--help", "--version",
                      "--engine <ENGINE>", "--rehearse", "--show <PICTURE>", "--wall-picture <FILE.png>",
                      "--node-pictures <FOLDER>", "[FILE]"}))
        QVERIFY2(result.standardOutput.contains(option), qPrintable(option));
}

void tst_zoHostOptions::languageIsToldWithWhatIsPrinted()
{
    for (const QString& other : {QStringLiteral("--help"), QStringLiteral("--nonsense")}) {
        const zoHostOptions::Result result = zoHostOptions::parse({"zohost", other, "--language", "de"});

        QVERIFY(!result.run);
        QCOMPARE(result.options.language, QStringLiteral("de"));
    }
}

void tst_zoHostOptions::languageMayNameACountry_data()
{
    QTest::addColumn<QString>("language");

    for (const char* language : {"de", "de_AT", "de-CH", "en", "en_GB", "C"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void tst_zoHostOptions::languageMayNameACountry()
{
    QFETCH(QString, language);

    const zoHostOptions::Result result = zoHostOptions::parse({"zohost", "--language", language});

    QVERIFY2(result.run, qPrintable(result.standardError));
    QCOMPARE(result.options.language, language);
}

void tst_zoHostOptions::versionIsOneLine()
{
    const zoHostOptions::Result result = zoHostOptions::parse({"zohost", "--version"});

    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.standardOutput, QStringLiteral("zohost " ZO_VERSION "\n"));
    QCOMPARE(result.standardError, QString());
}

void tst_zoHostOptions::wrongUseIsReported_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown-option") << QStringList({"--nonsense"}) << "nonsense";
    QTest::newRow("missing-value") << QStringList({"--config"}) << "config";
    QTest::newRow("empty-language") << QStringList({"--language", ""}) << "language";
    QTest::newRow("unknown-language")
        << QStringList({"--language", "xx"}) << "--language: \"xx\" is none of en, de";
    QTest::newRow("picture-without-a-session")
        << QStringList({"--non-interactive", "--wall-picture", "a.png"}) << "--wall-picture needs --start";
    QTest::newRow("pictures-without-a-session")
        << QStringList({"--node-pictures", "a"}) << "--node-pictures needs --start";
    QTest::newRow("shown-without-a-session") << QStringList({"--show", "tiles"}) << "--show needs --start";
    QTest::newRow("two-languages") << QStringList({"--language", "de", "--language", "en"}) << "language";
    QTest::newRow("value-for-a-switch") << QStringList({"--start=now"}) << "start";
    QTest::newRow("empty-file-name") << QStringList({"--config", ""}) << "--config needs a file name";
    QTest::newRow("empty-module-name") << QStringList({"--module="}) << "--module needs a file name";
    QTest::newRow("two-files") << QStringList({"a.zhpc", "b.zhpc"}) << "unexpected argument 'b.zhpc'";
    QTest::newRow("file-beside-the-option")
        << QStringList({"--config", "a.zhpc", "b.zhpc"}) << "unexpected argument 'b.zhpc'";
    QTest::newRow("empty-file-name") << QStringList({""}) << "a configuration needs a file name";
    QTest::newRow("placeholder-in-the-argument")
        << QStringList({"a.zhpc", "%1 %2"}) << "unexpected argument '%1 %2'";
    QTest::newRow("two-configurations")
        << QStringList({"--config", "a", "--config", "b"}) << "--config is given more than once";
    QTest::newRow("unknown-engine") << QStringList({"--engine", "steam"})
                                    << "\"steam\" is none of nodes, paraview, local";
    QTest::newRow("empty-engine") << QStringList({"--engine", ""}) << "--engine";
    QTest::newRow("two-engines") << QStringList({"--engine", "local", "--engine", "nodes"})
                                 << "more than once";
    QTest::newRow("unknown-picture") << QStringList({"--show", "cat"})
                                     << "\"cat\" is none of tiles, test-image";
    QTest::newRow("local-rehearsal") << QStringList({"--engine", "local", "--rehearse"})
                                     << "--rehearse needs";
    QTest::newRow("local-picture") << QStringList({"--engine", "local", "--show", "tiles"}) << "--show needs";
    QTest::newRow("local-wall-picture")
        << QStringList({"--engine", "local", "--wall-picture", "a.png"}) << "--wall-picture needs";
    QTest::newRow("empty-folder") << QStringList({"--node-pictures", ""}) << "--node-pictures needs";
    QTest::newRow("two-screenshots") << QStringList({"--screenshot", "a", "--screenshot", "b"})
                                     << "--screenshot is given more than once";
}

void tst_zoHostOptions::wrongUseIsReported()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);

    const zoHostOptions::Result result = zoHostOptions::parse(QStringList("zohost") + arguments);

    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.standardOutput, QString());
    QVERIFY2(result.standardError.startsWith(QStringLiteral("zohost: ")), qPrintable(result.standardError));
    QVERIFY2(result.standardError.contains(reason), qPrintable(result.standardError));
    QVERIFY2(result.standardError.endsWith(QStringLiteral("--help' for the options.\n")),
             qPrintable(result.standardError));
}

ZO_TEST_MAIN(tst_zoHostOptions)
#include "tst_zoHostOptions.moc"
