#include "zoTestCase.h"

#include <zoNodeReasonText.h>

#include <QApplication>
#include <QTranslator>

namespace
{
// A language in which each known text stands in brackets.
class Brackets final : public QTranslator
{
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "zoNodeReasonText") == 0 ? QStringLiteral("[%1]").arg(QString::fromUtf8(text))
                                                         : QString();
    }
};
} // namespace

// Reasons in the language of the person; what other programs say stays as it is.
class tst_zoNodeReasonText final : public zoTestCase
{
    Q_OBJECT

private slots:
    void reasonIsTranslated_data();
    void reasonIsTranslated();
};

void tst_zoNodeReasonText::reasonIsTranslated_data()
{
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("detail");
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << "silent"
                          << ""
                          << "[it stopped answering]";
    QTest::newRow("another program's")
        << "ended"
        << "ssh: connect to host n1 port 22: Connection refused"
        << "[its server ended]: ssh: connect to host n1 port 22: Connection refused";
    QTest::newRow("of ours") << "ended"
                             << "exit status 3"
                             << "[its server ended]: [exit status 3]";
    QTest::newRow("almost of ours") << "ended"
                                    << "my exit status 3"
                                    << "[its server ended]: my exit status 3";
    QTest::newRow("several places")
        << "version"
        << "its program is version 9.8 with protocol 99, this one is version 1.0 with protocol 1"
        << "[its program is version 9.8 with protocol 99, this one is version 1.0 with protocol 1]";
    QTest::newRow("place in a place") << "host-name"
                                      << "\"%2\" cannot be the name of a host"
                                      << "[\"%2\" cannot be the name of a host]";
    QTest::newRow("windows") << "window"
                             << "window n-1: screen 3 is missing, the machine has 2; window n-2: odd"
                             << "[window n-1: [screen 3 is missing, the machine has 2]]; [window n-2: odd]";
    QTest::newRow("unknown word") << "later"
                                  << "why"
                                  << "why";
}

void tst_zoNodeReasonText::reasonIsTranslated()
{
    QFETCH(QString, reason);
    QFETCH(QString, detail);
    QFETCH(QString, text);
    Brackets brackets;
    QVERIFY(QCoreApplication::installTranslator(&brackets));

    QCOMPARE(zoNodeReasonText::of(reason, detail), text);
}

ZO_TEST_MAIN(tst_zoNodeReasonText)
#include "tst_zoNodeReasonText.moc"
