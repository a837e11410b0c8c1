#include "zoTestCase.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>

// The program that runs on nodes.
class tst_zoServerProgram final : public zoTestCase
{
    Q_OBJECT

private slots:
    void needsNoWidgets();
    void probeTellsWhatAMachineHas();
    void lostOutputIsAFailure_data();
    void lostOutputIsAFailure();
    void localeOfANodeIsNoMatter_data();
    void localeOfANodeIsNoMatter();
    void displayThatCannotBeUsedIsNamed();
    void serverWithoutItsStarterEndsInOrder();
    void headThatLaunchedNobodyEndsAtOnce();
};

namespace
{
QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

// Names of the libraries that the loader wants for a file.
QStringList neededBy(const QString& file)
{
    static const QRegularExpression line(QStringLiteral("\\(NEEDED\\).*\\[(.*)\\]"));
    QStringList names;
    QRegularExpressionMatchIterator matches = line.globalMatch(
        QString::fromUtf8(outputOf(QStringLiteral(ZO_READELF), {QStringLiteral("-d"), file})));
    while (matches.hasNext())
        names << matches.next().captured(1);
    return names;
}
} // namespace

// Nodes have QtCore, QtGui and what these bring; widgets and MPI come with components where they are loaded.
void tst_zoServerProgram::needsNoWidgets()
{
    const QStringList program = neededBy(QStringLiteral(ZO_SERVER));
    const QStringList setup = neededBy(QStringLiteral(ZO_SERVER_SETUP));

    const QString library = QStringLiteral("libQt%1%2.so.%1").arg(QT_VERSION_MAJOR);
    QVERIFY2(program.contains(library.arg(QStringLiteral("Gui"))),
             qPrintable(program.join(QLatin1Char(' '))));
    for (const QString& name : program) {
        for (const char* other : {"Widgets", "mpi", "zo", "Network", "Svg"})
            QVERIFY2(!name.contains(QLatin1String(other)), qPrintable(name));
    }
    // Where it would be found.
    QVERIFY(setup.contains(library.arg(QStringLiteral("Widgets"))));
}

void tst_zoServerProgram::probeTellsWhatAMachineHas()
{
    const QByteArray output = outputOf(QStringLiteral(ZO_SERVER), {QStringLiteral("--probe")});

    for (const char* line : {"version: ", "platform: offscreen", "screens: ", "gl: none", "stereo: none",
                             "swap group: no", "mpi: ", "memory: "})
        QVERIFY2(output.contains(line), output.constData());
}

void tst_zoServerProgram::lostOutputIsAFailure_data()
{
    QTest::addColumn<QString>("option");
    for (const char* option : {"--probe", "--version", "--help"})
        QTest::newRow(option) << QString::fromLatin1(option);
}

void tst_zoServerProgram::lostOutputIsAFailure()
{
    QFETCH(QString, option);
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(ZO_SERVER), {option});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().endsWith("standard output: No space left on device\n"));
}

void tst_zoServerProgram::localeOfANodeIsNoMatter_data()
{
    QTest::addColumn<QString>("variable");

    QTest::newRow("none") << "LANG=";
    QTest::newRow("C") << "LC_ALL=C";
    QTest::newRow("one-that-is-not-there") << "LC_ALL=xx_XX.UTF-8";
}

// A host tells what the programs of its nodes say on standard error.
void tst_zoServerProgram::localeOfANodeIsNoMatter()
{
    QFETCH(QString, variable);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* other : {"LC_ALL", "LC_CTYPE", "LANG", "LANGUAGE"})
        environment.remove(QLatin1String(other));
    environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    QProcess server;
    server.setProcessEnvironment(environment);
    server.start(QStringLiteral(ZO_SERVER), {QStringLiteral("--probe")});
    QVERIFY(server.waitForFinished(60000));

    QCOMPARE(server.exitCode(), 0);
    QCOMPARE(server.readAllStandardError(), QByteArray());
    QVERIFY(server.readAllStandardOutput().contains("platform: offscreen\n"));
}

// The last line is what the host tells.
void tst_zoServerProgram::displayThatCannotBeUsedIsNamed()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":97531"));
    QProcess server;
    server.setProcessEnvironment(environment);
    server.start(QStringLiteral(ZO_SERVER), {QStringLiteral("server")});
    QVERIFY(server.waitForFinished(60000));

    QCOMPARE(server.exitCode(), 1);
    const QList<QByteArray> lines = server.readAllStandardError().trimmed().split('\n');
    QVERIFY2(lines.last().startsWith("the display :97531 cannot be used: "), lines.last().constData());
}

// Its locks are given back, and nothing has to end it by force.
void tst_zoServerProgram::serverWithoutItsStarterEndsInOrder()
{
    QProcess server;
    server.start(QStringLiteral(ZO_SERVER), {QStringLiteral("server")});
    QVERIFY(server.waitForReadyRead(60000)); // it is there and reads
    server.closeWriteChannel();
    QVERIFY(server.waitForFinished(60000));

    QCOMPARE(server.exitStatus(), QProcess::NormalExit);
    QCOMPARE(server.exitCode(), 0);
}

void tst_zoServerProgram::headThatLaunchedNobodyEndsAtOnce()
{
    QProcess head;
    head.start(QStringLiteral(ZO_SERVER), {QStringLiteral("head")});
    QVERIFY(head.waitForReadyRead(60000)); // it is there and reads

    head.write("QUIT 0\n\n");

    // Its input stays open.
    QVERIFY(head.waitForFinished(60000));
    QVERIFY(head.readAllStandardOutput().contains("BYE 0\n"));
    QCOMPARE(head.exitStatus(), QProcess::NormalExit);
    QCOMPARE(head.exitCode(), 0);
}

ZO_TEST_MAIN(tst_zoServerProgram)
#include "tst_zoServerProgram.moc"
