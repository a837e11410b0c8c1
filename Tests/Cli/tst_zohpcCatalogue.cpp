#include "zoCatalogue.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// The catalogue of set-ups before "zohpc check" as a whole process: codes, lines, names, exit code.
class tst_zohpcCatalogue final : public zoTestCase
{
    Q_OBJECT

private slots:
    void exactlyWhatIsWrongIsSaid_data();
    void exactlyWhatIsWrongIsSaid();
};

void tst_zohpcCatalogue::exactlyWhatIsWrongIsSaid_data()
{
    zoCatalogue::addRows();
}

void tst_zohpcCatalogue::exactlyWhatIsWrongIsSaid()
{
    QFETCH(int, index);
    const zoCatalogue::Setup setup = zoCatalogue::setups().at(index);

    const zoCommandRun run = zoCommandRun::zohpc({"check", "--json", setup.path});

    QCOMPARE(run.errors, QByteArray());
    QStringList said;
    QStringList texts;
    for (const QJsonValue& value : QJsonDocument::fromJson(run.output).array()) {
        const QJsonObject problem = value.toObject();
        texts << problem.value("text").toString();
        said << QStringLiteral("%1: %2")
                    .arg(problem.value("line").toInt())
                    .arg(problem.value("code").toString());
    }
    QStringList expected;
    for (const zoCatalogue::Saying& saying : setup.sayings) {
        expected << QStringLiteral("%1: %2").arg(saying.line).arg(saying.textCode);
        const bool isNamed = saying.name.isEmpty() || !texts.filter('"' + saying.name + '"').isEmpty();
        QVERIFY2(isNamed, qPrintable(texts.join('\n')));
    }
    said.sort();
    expected.sort();
    QVERIFY2(said == expected, qPrintable(setup.what + ":\n" + said.join('\n') + '\n' + texts.join('\n')));
    // What is right and only noted is no mistake.
    QCOMPARE(run.exitCode, setup.name.startsWith(QLatin1String("wrong-")) ? 1 : 0);
}

ZO_TEST_MAIN(tst_zohpcCatalogue)
#include "tst_zohpcCatalogue.moc"
