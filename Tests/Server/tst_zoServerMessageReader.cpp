#include "zoTestCase.h"

#include <zoServerHello.h>
#include <zoServerMessageReader.h>

#include <QApplication>

namespace
{
using Outcome = zoServerMessageReader::Outcome;
using Start = zoServerMessageReader::Start;

// All messages that a stream holds, as "VERB payload", and "broken" at its end when it broke.
QStringList wordsOf(zoServerMessageReader& reader)
{
    QStringList words;
    zoServerMessage message;
    Outcome outcome = Outcome::Incomplete;
    while ((outcome = reader.next(message)) == Outcome::Message)
        words << QString::fromUtf8(message.verb + ' ' + message.payload);
    if (outcome == Outcome::Broken)
        words << QStringLiteral("broken");
    return words;
}

const QByteArray Hello = "HELLO 14\n{\"protocol\":1}\n";
} // namespace

class tst_zoServerMessageReader final : public zoTestCase
{
    Q_OBJECT

private slots:
    void streams_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QStringList>("words");

        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("one") << QByteArray("BEAT 0\n\n") << QStringList("BEAT ");
        QTest::newRow("two") << QByteArray("SHOW 2\n{}\nBEAT 0\n\n") << QStringList({"SHOW {}", "BEAT "});
        QTest::newRow("payload-like-a-header")
            << QByteArray("LOG 6\nBEAT 0\nBEAT 0\n\n") << QStringList({"LOG BEAT 0", "BEAT "});
        QTest::newRow("end-is-still-missing") << QByteArray("LOG 6\nBEAT 0") << QStringList();
        QTest::newRow("small-letters") << QByteArray("beat 0\n\n") << QStringList("broken");
        QTest::newRow("no-size") << QByteArray("BEAT\n\n") << QStringList("broken");
        QTest::newRow("sign") << QByteArray("BEAT -1\n\n") << QStringList("broken");
        QTest::newRow("leading-zero") << QByteArray("SHOW 02\n{}\n") << QStringList("broken");
        QTest::newRow("two-blanks") << QByteArray("BEAT  0\n\n") << QStringList("broken");
        QTest::newRow("empty-line") << QByteArray("\nBEAT 0\n\n") << QStringList("broken");
        QTest::newRow("longer-than-it-says") << QByteArray("SHOW 1\n{}\n") << QStringList("broken");
        QTest::newRow("verb-of-16") << QByteArray("ABCDEFGHIJKLMNOP 0\n\n")
                                    << QStringList("ABCDEFGHIJKLMNOP ");
        QTest::newRow("verb-of-17") << QByteArray("ABCDEFGHIJKLMNOPQ 0\n\n") << QStringList("broken");
        QTest::newRow("at-the-limit") << QByteArray("DATA 67108864\n") << QStringList();
        QTest::newRow("above-the-limit") << QByteArray("DATA 67108865\n") << QStringList("broken");
        QTest::newRow("far-above") << QByteArray("DATA 99999999999999999999\n") << QStringList("broken");
        QTest::newRow("line-without-end") << QByteArray(100, 'A') << QStringList("broken");
        QTest::newRow("good-before-bad")
            << QByteArray("BEAT 0\n\nnonsense\n") << QStringList({"BEAT ", "broken"});
    }

    void streams()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QStringList, words);
        zoServerMessageReader reader;

        reader.feed(stream);

        QCOMPARE(wordsOf(reader), words);
    }

    void piecesOfAnySizeGiveTheSameMessages_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {1, 2, 3, 7, 64, 100000})
            QTest::addRow("%d", size) << size;
    }

    void piecesOfAnySizeGiveTheSameMessages()
    {
        QFETCH(int, size);
        QByteArray stream = "motd\n" + Hello;
        for (int i = 0; i < 300; ++i)
            stream += zoServerMessage{"LOG", QByteArray(i, '\n')}.encoded();
        zoServerMessageReader reader(Start::AfterNoise);

        int count = 0;
        for (int i = 0; i < stream.size(); i += size) {
            reader.feed(stream.mid(i, size));
            const QStringList words = wordsOf(reader);
            QVERIFY(!words.contains(QStringLiteral("broken")));
            count += words.size();
        }

        QCOMPARE(count, 301);
    }

    void noiseBeforeTheFirstHello_data()
    {
        QTest::addColumn<QByteArray>("noise");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("none") << QByteArray() << true;
        QTest::newRow("greeting") << QByteArray("Welcome to wall-1\nHELLO user\n\n") << true;
        QTest::newRow("looks-like-a-hello") << QByteArray("HELLO 5\nworld\n") << true;
        QTest::newRow("looks-like-a-long-hello") << QByteArray("HELLO 9999\nworld\n") << true;
        QTest::newRow("hello-of-something-else") << QByteArray("HELLO 2\n{}\n") << true;
        QTest::newRow("messages-too-early") << QByteArray("BEAT 0\n\n") << true;
        QTest::newRow("not-utf-8") << QByteArray("\xff\xfe\n") << true;
        QTest::newRow("one-long-line") << QByteArray(60000, 'x') + '\n' << true;
        QTest::newRow("limit-less-1") << QByteArray(65534, 'x') + '\n' << true;
        QTest::newRow("limit") << QByteArray(65535, 'x') + '\n' << true;
        QTest::newRow("limit-and-1") << QByteArray(65536, 'x') + '\n' << false;
        QTest::newRow("many-lines") << QByteArray("line\n").repeated(14000) << false;
    }

    void noiseBeforeTheFirstHello()
    {
        QFETCH(QByteArray, noise);
        QFETCH(bool, accepted);
        zoServerMessageReader reader(Start::AfterNoise);

        reader.feed(noise + Hello + "BEAT 0\n\n");

        if (accepted)
            QCOMPARE(wordsOf(reader), QStringList({"HELLO {\"protocol\":1}", "BEAT "}));
        else
            QCOMPARE(wordsOf(reader), QStringList("broken"));
    }

    void noiseWithoutAnEndIsRefused()
    {
        zoServerMessageReader reader(Start::AfterNoise);

        reader.feed(QByteArray(70000, 'x'));

        QCOMPARE(wordsOf(reader), QStringList("broken"));
    }

    void lastLineOfTheNoiseIsKept()
    {
        zoServerMessageReader reader(Start::AfterNoise);

        reader.feed("Last login: today\nbash: ZOKEClusterServer: command not found\n\n");

        QCOMPARE(wordsOf(reader), QStringList());
        QCOMPARE(reader.lastNoise(), QStringLiteral("bash: ZOKEClusterServer: command not found"));
    }

    void brokenStaysBroken()
    {
        zoServerMessageReader reader;
        reader.feed("nonsense\n");
        QCOMPARE(wordsOf(reader), QStringList("broken"));
        QVERIFY(!reader.errorString().isEmpty());

        reader.feed("BEAT 0\n\n");

        QCOMPARE(wordsOf(reader), QStringList("broken"));
    }
};

ZO_TEST_MAIN(tst_zoServerMessageReader)
#include "tst_zoServerMessageReader.moc"
