#include "zoTestCase.h"

#include <zoLog.h>

#include <QApplication>
#include <QLoggingCategory>

namespace
{
struct Message
{
    QtMsgType type = QtDebugMsg;
    QString category;
    QString text;
};

QList<Message> s_messages;

void remember(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    s_messages.append({type, QString::fromUtf8(context.category), text});
}

// What reaches the message handler while `action` runs.
template <typename Action>
QList<Message> messagesOf(const Action& action)
{
    s_messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(remember);
    action();
    qInstallMessageHandler(before);
    return s_messages;
}
} // namespace

// The host's log.
class tst_zoLog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void infoAndErrorKeepTheirKind();
    void messageStandsUnderTheCategoryOfTheHost();
    void textIsUtf8();
    void percentSignInAnArgumentIsNoFormat();
    void argumentsAreFormattedAsPrintfDoes();
    void textIsNotQuoted();
    void translatedTextIsTakenAsItIs();
    void longTextIsWhole();
    void categoryCanBeSilenced();
};

void tst_zoLog::infoAndErrorKeepTheirKind()
{
    const QList<Message> messages = messagesOf([] {
        zoLog::info("said");
        zoLog::error("failed");
    });

    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0).type, QtInfoMsg);
    QCOMPARE(messages.at(0).text, QStringLiteral("said"));
    QCOMPARE(messages.at(1).type, QtCriticalMsg);
    QCOMPARE(messages.at(1).text, QStringLiteral("failed"));
}

void tst_zoLog::messageStandsUnderTheCategoryOfTheHost()
{
    const QList<Message> messages = messagesOf([] {
        zoLog::info("x");
        zoLog::error("x");
    });

    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0).category, QStringLiteral("zo"));
    QCOMPARE(messages.at(1).category, QStringLiteral("zo"));
}

void tst_zoLog::textIsUtf8()
{
    const QString name = QString::fromUtf8("W\xc3\xa4nde \xe5\xa3\x81 \xf0\x9f\x96\xa5");

    const QList<Message> messages =
        messagesOf([&name] { zoLog::error("Unable to load %s", qUtf8Printable(name)); });

    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).text, QStringLiteral("Unable to load ") + name);
}

void tst_zoLog::percentSignInAnArgumentIsNoFormat()
{
    const QList<Message> messages = messagesOf([] { zoLog::info("file %s", "100%s %n %1 %%"); });

    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).text, QStringLiteral("file 100%s %n %1 %%"));
}

void tst_zoLog::argumentsAreFormattedAsPrintfDoes()
{
    const QList<Message> messages =
        messagesOf([] { zoLog::info("Network %d not found, %s, %.1f, 100%%", -7, "text", 2.5); });

    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).text, QStringLiteral("Network -7 not found, text, 2.5, 100%"));
}

void tst_zoLog::textIsNotQuoted()
{
    const QList<Message> messages = messagesOf([] { zoLog::info("a \"b\" c\nnext"); });

    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).text, QStringLiteral("a \"b\" c\nnext"));
}

void tst_zoLog::translatedTextIsTakenAsItIs()
{
    const QList<Message> messages = messagesOf([] {
        zoLog::info(QString::fromUtf8("100 %s geladen: \u00fc"));
        zoLog::error(QStringLiteral("%n"));
    });

    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.at(0).type, QtInfoMsg);
    QCOMPARE(messages.at(0).category, QStringLiteral("zo"));
    QCOMPARE(messages.at(0).text, QString::fromUtf8("100 %s geladen: \u00fc"));
    QCOMPARE(messages.at(1).type, QtCriticalMsg);
    QCOMPARE(messages.at(1).text, QStringLiteral("%n"));
}

void tst_zoLog::longTextIsWhole()
{
    // Around the sizes that buffers have.
    QList<int> sizes{0, 1, 100000};
    for (int power = 6; power <= 17; ++power) {
        for (int more = -2; more <= 2; ++more)
            sizes << (1 << power) + more;
    }
    for (const int size : qAsConst(sizes)) {
        const QByteArray text(size, 'x');
        const QString umlauts(size, QChar(0xfc));

        const QList<Message> messages = messagesOf([&text, &umlauts] {
            zoLog::info("%s|", text.constData());
            zoLog::error("%s|", qUtf8Printable(umlauts));
        });

        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages.at(0).text, QString::fromLatin1(text) + QLatin1Char('|'));
        QCOMPARE(messages.at(1).text, umlauts + QLatin1Char('|'));
    }
}

void tst_zoLog::categoryCanBeSilenced()
{
    QLoggingCategory::setFilterRules(QStringLiteral("zo.info=false"));
    const QList<Message> messages = messagesOf([] {
        zoLog::info("unheard");
        zoLog::error("heard");
    });
    QLoggingCategory::setFilterRules(QString());

    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).text, QStringLiteral("heard"));
}

ZO_TEST_MAIN(tst_zoLog)
#include "tst_zoLog.moc"
