#include "zoTestCase.h"

#include <zoHostLog.h>
#include <zoLog.h>

#include <QApplication>
#include <QSignalSpy>

#include <cstdio>
#include <unistd.h>

namespace
{
// What `action` prints on standard error.
template <class Action>
QByteArray standardErrorOf(Action action)
{
    std::FILE* file = std::tmpfile();
    std::fflush(stderr);
    const int saved = dup(STDERR_FILENO);
    dup2(fileno(file), STDERR_FILENO);
    action();
    std::fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    std::rewind(file);
    QByteArray text(4096, '\0');
    text.resize(int(std::fread(text.data(), 1, size_t(text.size()), file)));
    std::fclose(file);
    return text;
}
} // namespace

// The host's tap on the messages of the process.
class tst_zoHostLog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void messageIsPrintedAndAnnounced();
    void wordsOfTheToolkitArePrintedAlone();
    void noiseOfThePlatformIsDropped();
    void handlerOfBeforeComesBack();
};

void tst_zoHostLog::messageIsPrintedAndAnnounced()
{
    zoHostLog log;
    QSignalSpy logged(&log, &zoHostLog::messageLogged);

    const QByteArray printed = standardErrorOf([] { zoLog::error("No wall %s", "\xc3\xa4 100%1"); });

    QCOMPARE(printed, QByteArray("zo: No wall \xc3\xa4 100%1\n"));
    QCOMPARE(logged.count(), 1);
    QCOMPARE(logged.at(0).at(0).toInt(), int(QtCriticalMsg));
    QCOMPARE(logged.at(0).at(1).toString(), QString::fromUtf8("No wall \xc3\xa4 100%1"));
}

void tst_zoHostLog::wordsOfTheToolkitArePrintedAlone()
{
    zoHostLog log;
    QSignalSpy logged(&log, &zoHostLog::messageLogged);

    const QByteArray printed = standardErrorOf([] {
        qWarning("QXcbConnection: XCB error: 3 (BadWindow)");
        QMessageLogger(nullptr, 0, nullptr, "qt.qpa.xcb").warning("could not connect");
        zoHostLog::warn("Ours");
    });

    QVERIFY2(printed.contains("QXcbConnection") && printed.contains("could not connect"),
             printed.constData());
    QCOMPARE(logged.count(), 1);
    QCOMPARE(logged.at(0).at(0).toInt(), int(QtWarningMsg));
    QCOMPARE(logged.at(0).at(1).toString(), QStringLiteral("Ours"));
}

void tst_zoHostLog::noiseOfThePlatformIsDropped()
{
    zoHostLog log;
    QSignalSpy logged(&log, &zoHostLog::messageLogged);

    const QByteArray printed =
        standardErrorOf([] { qWarning("This plugin does not support propagateSizeHints()"); });

    QCOMPARE(printed, QByteArray());
    QCOMPARE(logged.count(), 0);
}

void tst_zoHostLog::handlerOfBeforeComesBack()
{
    {
        const zoHostLog log;
    }

    zoLog::info("heard by the test again");

    QCOMPARE(messages(), QStringList("heard by the test again"));
}

ZO_TEST_MAIN(tst_zoHostLog)
#include "tst_zoHostLog.moc"
