#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <memory>

namespace
{
constexpr int ProcessTimeoutMs = 60000;

// The menus of host and module as a person finds them who starts the host in that language.
const char GermanModuleMenus[] =
    "Dia&gnose | Kacheln anzeigen | Testbild anzeigen | Netzwerkgeschwindigkeit messen...\n";
const char EnglishModuleMenus[] = "&Diagnostics | Show tiles | Show test image | Run network speed test...\n";
} // namespace

// The languages of the host program, as its environment and its options ask for them.
class tst_zohostLanguages final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void menusAreInTheLanguage_data();
    void menusAreInTheLanguage();
    void mnemonicsAreUnique_data();
    void mnemonicsAreUnique();
    void helpIsInTheLanguage();
    void stepsForScriptsAreEnglish();
    void otherDataDirectoryKeepsTheTranslations();

private:
    void run(const QStringList& variables, const QStringList& arguments);

    std::unique_ptr<QTemporaryDir> m_directory;
    int m_exitCode = -1;
    QByteArray m_output;
    QByteArray m_errors;
};

void tst_zohostLanguages::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

// `variables` are "NAME=value", with none of the caller's languages beside them.
void tst_zohostLanguages::run(const QStringList& variables, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names) {
        if (name.startsWith("LC_") || name.startsWith("LANG") || name == QLatin1String("ZOKE_DATA"))
            environment.remove(name);
    }
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", m_directory->path());
    environment.insert("XDG_RUNTIME_DIR", m_directory->path());
    for (const QString& variable : variables)
        environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_directory->path());
    process.start(ZO_HOST_FILE, arguments);
    QVERIFY(process.waitForFinished(ProcessTimeoutMs));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    m_exitCode = process.exitCode();
    m_output = process.readAllStandardOutput();
    m_errors = process.readAllStandardError();
}

void tst_zohostLanguages::menusAreInTheLanguage_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("german");

    const QStringList none;
    QTest::newRow("no-language") << none << none << false;
    QTest::newRow("LANG") << QStringList("LANG=de_DE.UTF-8") << none << true;
    QTest::newRow("LC_ALL-over-LANG")
        << QStringList({"LANG=en_US.UTF-8", "LC_ALL=de_AT.UTF-8"}) << none << true;
    QTest::newRow("LC_MESSAGES") << QStringList({"LANG=en_US.UTF-8", "LC_MESSAGES=de_CH.UTF-8"}) << none
                                 << true;
    QTest::newRow("LANGUAGE-falls-back-to-German")
        << QStringList({"LANG=fr_FR.UTF-8", "LANGUAGE=fr:de"}) << none << true;
    QTest::newRow("LANGUAGE-prefers-English")
        << QStringList({"LANG=de_DE.UTF-8", "LANGUAGE=en:de"}) << none << false;
    QTest::newRow("unknown-language") << QStringList("LANG=fr_FR.UTF-8") << none << false;
    QTest::newRow("option") << none << QStringList({"--language", "de"}) << true;
    QTest::newRow("option-over-LANG")
        << QStringList("LANG=de_DE.UTF-8") << QStringList({"--language", "en"}) << false;
}

void tst_zohostLanguages::menusAreInTheLanguage()
{
    QFETCH(QStringList, variables);
    QFETCH(QStringList, options);
    QFETCH(bool, german);

    run(variables, options + QStringList({"--module", ZO_MODULE_FILE, "--module",
                                          ZO_FIXTURE_DIR "/libzoMenuModule.so"}));

    QCOMPARE(m_exitCode, 0);
    const QByteArray said = m_output + m_errors;
    QVERIFY2(m_output.contains(german ? GermanModuleMenus : EnglishModuleMenus), said.constData());
    QVERIFY2(!m_output.contains(german ? EnglishModuleMenus : GermanModuleMenus), said.constData());
    QVERIFY2(m_output.contains(german ? "&Ansicht | " : "&View | "), said.constData());
}

void tst_zohostLanguages::mnemonicsAreUnique_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("en") << "en";
    QTest::newRow("de") << "de";
}

void tst_zohostLanguages::mnemonicsAreUnique()
{
    QFETCH(QString, language);

    run({}, {"--language", language, "--module", ZO_MODULE_FILE, "--module",
             ZO_FIXTURE_DIR "/libzoMenuModule.so"});

    const QStringList bars = QString::fromUtf8(m_output).split("menu bar\n", Qt::SkipEmptyParts);
    QCOMPARE(bars.size(), 2);
    QStringList groups; // what is seen together
    for (const QString& bar : bars) {
        const QStringList menus = bar.split('\n', Qt::SkipEmptyParts);
        QStringList titles;
        for (const QString& menu : menus) {
            titles << menu.section(" | ", 0, 0);
            groups << menu.section(" | ", 1);
        }
        QVERIFY(titles.size() > 2);
        for (const QString& title : qAsConst(titles))
            QVERIFY2(title.contains('&'), qPrintable(title));
        groups << titles.join(" | ");
    }
    for (const QString& group : qAsConst(groups)) {
        QSet<QChar> letters;
        for (int at = group.indexOf('&'); at >= 0; at = group.indexOf('&', at + 1)) {
            const QChar letter = group.at(at + 1).toLower();
            QVERIFY2(!letters.contains(letter), qPrintable(group));
            letters.insert(letter);
        }
    }
}

void tst_zohostLanguages::helpIsInTheLanguage()
{
    run({"LANG=de_DE.UTF-8"}, {"--help"});
    QVERIFY2(m_output.contains("Zeigt Konfigurationen von Renderclustern"), m_output.constData());

    run({"LANG=de_DE.UTF-8"}, {"--help", "--language", "en"});
    QVERIFY2(m_output.contains("Shows and runs render cluster configurations."), m_output.constData());

    run({}, {"--language=de", "--frobnicate"});
    QCOMPARE(m_exitCode, 2);
    QVERIFY2(m_errors.contains("Die Optionen nennt 'zohost --help'."), m_errors.constData());
}

void tst_zohostLanguages::stepsForScriptsAreEnglish()
{
    run({"LANG=de_DE.UTF-8"},
        {"--module", ZO_FIXTURE_DIR "/libzoGoodModule.so", "--engine", "local", "--start",
         "--non-interactive", "--exit-after-stop", "--screenshot", "shot.png"});

    QCOMPARE(m_exitCode, 0);
    for (const char* step : {"configuration: default\n", "nodes: localhost\n", "running: localhost\n",
                             "speed test: sent ", "screenshot: shot.png\n", "stopped\n"})
        QVERIFY2(m_output.contains(step), m_output.constData());
}

void tst_zohostLanguages::otherDataDirectoryKeepsTheTranslations()
{
    run({"LANG=de_DE.UTF-8", "ZOKE_DATA=" + m_directory->path()},
        {"--module", ZO_FIXTURE_DIR "/libzoMenuModule.so"});

    QVERIFY2(m_output.contains("Date&i"), m_output.constData());
}

ZO_TEST_MAIN(tst_zohostLanguages)
#include "tst_zohostLanguages.moc"
