#include "zoHPCDocumentText.h"
#include "zoHPCSchema.h"
#include "zoHPCTextCheck.h"
#include "zoRandomConfiguration.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// The published schema: the files are those of the grammar, both syntaxes say the same, and validators take and refuse
// what the check of the program takes and refuses. With ZO_WRITE_SCHEMA in the environment the files are written.
class tst_zoHPCSchema final : public zoTestCase
{
    Q_OBJECT

private slots:
    void filesAreThoseOfTheGrammar_data();
    void filesAreThoseOfTheGrammar();
    void bothSyntaxesAreOneSchema();
    void validatorsAgreeWithTheCheck_data();
    void validatorsAgreeWithTheCheck();
    void typedMistakesAreRefused();
    void documentsOfTheProgramAreValid();
    void emacsFindsTheSchema_data();
    void emacsFindsTheSchema();

private:
    static QString schema(const QString& suffix) { return QStringLiteral(ZO_SCHEMA_DIR "/zhpc.") + suffix; }
    static QByteArray contents(const QString& fileName);
    static bool write(const QString& fileName, const QByteArray& bytes);
    // The names of the files that are not valid, in the order in which they were given.
    static QStringList refused(const QString& validator, const QStringList& files);
    static bool isAccepted(const QString& text);
};

QByteArray tst_zoHPCSchema::contents(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool tst_zoHPCSchema::write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QStringList tst_zoHPCSchema::refused(const QString& validator, const QStringList& files)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (validator == QLatin1String("xmllint"))
        process.start(validator, QStringList{"--noout", "--nonet", "--relaxng", schema("rng")} + files);
    else
        process.start(validator, QStringList{"-c", schema("rnc")} + files);
    if (!process.waitForFinished(-1))
        return {process.errorString()};
    const QString output = QString::fromUtf8(process.readAll());
    QSet<QString> bad;
    static const QRegularExpression s_xmllint(QStringLiteral("^(.*) fails to validate$"),
                                              QRegularExpression::MultilineOption);
    static const QRegularExpression s_jing(QStringLiteral("^(/[^:]*):\\d+:\\d+: (error|fatal)"),
                                           QRegularExpression::MultilineOption);
    static const QRegularExpression s_malformed(QStringLiteral("^(/[^:]*):\\d+: parser error"),
                                                QRegularExpression::MultilineOption);
    for (const QRegularExpression& pattern : {s_xmllint, s_jing, s_malformed}) {
        auto matches = pattern.globalMatch(output);
        while (matches.hasNext())
            bad.insert(matches.next().captured(1));
    }
    if (process.exitCode() != 0 && bad.isEmpty())
        return {output};
    QStringList result;
    for (const QString& file : files) {
        if (bad.contains(file))
            result << file;
    }
    return result;
}

// What the grammar says of a text; what only the other items or the machine can tell is left out.
bool tst_zoHPCSchema::isAccepted(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(text, document, refusal))
        return false;
    return zoHPCTextCheck(text).findings().empty();
}

void tst_zoHPCSchema::filesAreThoseOfTheGrammar_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("rnc") << zoHPCSchema::compact().toUtf8();
    QTest::newRow("rng") << zoHPCSchema::xml().toUtf8();
}

void tst_zoHPCSchema::filesAreThoseOfTheGrammar()
{
    QFETCH(QByteArray, text);
    const QString file = schema(QString::fromLatin1(QTest::currentDataTag()));
    if (qEnvironmentVariableIsSet("ZO_WRITE_SCHEMA"))
        QVERIFY(write(file, text));

    QVERIFY2(contents(file) == text, "the grammar has changed: dev/schema writes the files anew");
}

void tst_zoHPCSchema::bothSyntaxesAreOneSchema()
{
    if (QStandardPaths::findExecutable(QStringLiteral("trang")).isEmpty())
        QSKIP("trang is not installed");
    QTemporaryDir folder;
    QList<QByteArray> results;
    for (const char* syntax : {"rnc", "rng"}) {
        const QString result = folder.filePath(QStringLiteral("from-%1.rng").arg(syntax));
        QCOMPARE(QProcess::execute(QStringLiteral("trang"), {schema(syntax), result}), 0);
        QByteArray lines;
        // Names without a namespace are told as such in one of the two, and remarks stand elsewhere.
        const QList<QByteArray> written = contents(result).replace(" ns=\"\"", "").split('\n');
        for (const QByteArray& line : written) {
            if (!line.contains("<!--"))
                lines += line + '\n';
        }
        results << lines;
    }

    QVERIFY(results.first().size() > 1000);
    QCOMPARE(results.first(), results.last());
}

void tst_zoHPCSchema::validatorsAgreeWithTheCheck_data()
{
    QTest::addColumn<QString>("validator");

    QTest::newRow("xmllint") << QStringLiteral("xmllint");
    QTest::newRow("jing") << QStringLiteral("jing");
}

void tst_zoHPCSchema::validatorsAgreeWithTheCheck()
{
    QFETCH(QString, validator);
    if (QStandardPaths::findExecutable(validator).isEmpty())
        QSKIP(qPrintable(validator + QStringLiteral(" is not installed")));
    QStringList files;
    QStringList expected;
    for (const char* folder :
         {ZO_DATA_DIR "/cluster", ZO_CORPUS_DIR "/Legacy", ZO_CORPUS_DIR "/Fuzz/Document"}) {
        QDirIterator iterator(QString::fromUtf8(folder), QDir::Files);
        while (iterator.hasNext())
            files << iterator.next();
    }
    files.sort();
    QStringList wellFormed;
    for (const QString& file : qAsConst(files)) {
        const QByteArray bytes = contents(file);
        const QString text = QString::fromUtf8(bytes);
        // Validators and the program read other bytes and other document types, and refuse other malformed texts.
        if (bytes.contains('\0') || text.contains(QLatin1String("<!DOCTYPE")) || text.toUtf8() != bytes ||
            text.contains(QLatin1String("xmlns")))
            continue;
        QDomDocument document;
        zoHPCDocumentText::Refusal refusal;
        if (!zoHPCDocumentText::parse(text, document, refusal))
            continue;
        wellFormed << file;
        if (!isAccepted(text))
            expected << file;
    }

    QVERIFY(wellFormed.size() > 40);
    QVERIFY(expected.size() < wellFormed.size() - 20);
    QCOMPARE(refused(validator, wellFormed), expected);
}

// One mistake each, all over a document that is right: what the check tells the schema refuses, and the other way round.
void tst_zoHPCSchema::typedMistakesAreRefused()
{
    if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())
        QSKIP("xmllint is not installed");
    QTemporaryDir folder;
    QStringList files;
    QStringList expected;
    for (const char* sample : {"powerwall-2x2", "cave-4-sided", "tiledwall-3x5-gateway"}) {
        const QString text =
            QString::fromUtf8(contents(QStringLiteral(ZO_DATA_DIR "/cluster/%1.zhpc").arg(sample)));
        QVERIFY(!text.isEmpty());
        // A letter more in the n-th word of the text: a tag, the name of an attribute or a value.
        static const QRegularExpression s_word(QStringLiteral("[a-z0-9.]+(?=[=\"])|<[a-z]+"));
        auto words = s_word.globalMatch(text);
        for (int i = 0; words.hasNext(); ++i) {
            const QRegularExpressionMatch word = words.next();
            if (i % 17 != 0 || word.captured().startsWith(QLatin1Char('<')))
                continue;
            QString wrong = text;
            wrong.insert(word.capturedEnd(), QLatin1Char(i % 2 ? 'x' : '7'));
            const QString file = folder.filePath(QStringLiteral("%1-%2.zhpc").arg(sample).arg(i));
            QVERIFY(write(file, wrong.toUtf8()));
            files << file;
            if (!isAccepted(wrong))
                expected << file;
        }
    }

    QVERIFY2(expected.size() > 30, qPrintable(QString::number(expected.size())));
    QVERIFY(expected.size() < files.size());
    QCOMPARE(refused(QStringLiteral("xmllint"), files), expected);
}

// A thousand configurations as the dialogs could have made them, with whatever a value of its kind can be.
void tst_zoHPCSchema::documentsOfTheProgramAreValid()
{
    QTemporaryDir folder;
    QStringList files;
    for (int seed = 0; seed < 1000; ++seed) {
        const QString text = zoRandomConfiguration(quint32(seed)).text();
        const zoHPCTextCheck check(text);
        QVERIFY2(check.findings().empty(),
                 check.findings().empty() ? "" : qPrintable(check.findings().front().message + '\n' + text));
        files << folder.filePath(QStringLiteral("%1.zhpc").arg(seed));
        QVERIFY(write(files.constLast(), text.toUtf8()));
    }

    if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())
        QSKIP("xmllint is not installed");
    QCOMPARE(refused(QStringLiteral("xmllint"), files), QStringList());
}

void tst_zoHPCSchema::emacsFindsTheSchema_data()
{
    QTest::addColumn<QByteArray>("wrong");
    QTest::addColumn<QByteArray>("result");

    QTest::newRow("right") << QByteArray("eyeseparation=") << QByteArray("zhpc.rnc 0");
    QTest::newRow("attribute") << QByteArray("eyeseperation=") << QByteArray("zhpc.rnc 1");
}

// The association that the manual tells, in the XML mode of Emacs: which schema it found, and how many mistakes.
void tst_zoHPCSchema::emacsFindsTheSchema()
{
    QFETCH(QByteArray, wrong);
    QFETCH(QByteArray, result);
    if (QStandardPaths::findExecutable(QStringLiteral("emacs")).isEmpty())
        QSKIP("emacs is not installed");
    const QString manual =
        QString::fromUtf8(contents(QStringLiteral(ZO_SCHEMA_DIR "/../../Docs/manual/schema.md")));
    QString setUp = manual.section(QLatin1String("```elisp\n"), 1).section(QLatin1String("```"), 0, 0);
    QVERIFY(setUp.contains(QLatin1String("/usr/local/share/zo/schema/schemas.xml")));
    setUp.replace(QLatin1String("/usr/local/share/zo/schema"), QStringLiteral(ZO_SCHEMA_DIR));
    QTemporaryDir folder;
    const QString init = folder.filePath(QStringLiteral("init.el"));
    const QString file = folder.filePath(QStringLiteral("wall.zhpc"));
    QVERIFY(write(init, setUp.toUtf8()));
    QVERIFY(write(file, contents(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"))
                            .replace("eyeseparation=", wrong)));

    QProcess emacs;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), folder.path());
    emacs.setProcessEnvironment(environment);
    const QString validate = QStringLiteral(
        "(progn (rng-validate-mode 1) (while (rng-do-some-validation (lambda () t)))"
        " (princ (format \"%s %d\" (file-name-nondirectory rng-current-schema-file-name) rng-error-count)))");
    emacs.start(QStringLiteral("emacs"), {"--batch", "--quick", "--load", init, file, "--eval", validate});
    QVERIFY(emacs.waitForFinished(-1));

    QCOMPARE(emacs.readAllStandardOutput(), result);
}

ZO_TEST_MAIN(tst_zoHPCSchema)
#include "tst_zoHPCSchema.moc"
