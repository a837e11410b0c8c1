#include "zoHPCProblem.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QMap>
#include <QTest>

// The table of problems and the page of the manual about them tell the same.
class tst_zoHPCProblemManual final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyKindHasItsSection_data();
    void everyKindHasItsSection();
    void everySectionHasItsKind();

private:
    static QString page();

    QMap<QString, QString> m_sections; // by heading
    QStringList m_headings;
};

void tst_zoHPCProblemManual::initTestCase()
{
    zoTestCase::initTestCase();
    QString heading;
    const QStringList lines = page().split('\n');
    for (const QString& line : lines) {
        if (line.startsWith('#')) {
            heading = line.startsWith(QLatin1String("### ")) ? line.mid(4) : QString();
            if (!heading.isEmpty())
                m_headings << heading;
        } else if (!heading.isEmpty()) {
            m_sections[heading] += line + '\n';
        }
    }
}

QString tst_zoHPCProblemManual::page()
{
    QFile file(QStringLiteral(ZO_MANUAL_DIR "/problems.md"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void tst_zoHPCProblemManual::everyKindHasItsSection_data()
{
    QTest::addColumn<int>("kind");

    for (int kind = 0; kind < zoHPCProblem::kindCount(); ++kind)
        QTest::newRow(qPrintable(zoHPCProblem::kindName(zoHPCProblem::Kind(kind)))) << kind;
}

void tst_zoHPCProblemManual::everyKindHasItsSection()
{
    QFETCH(int, kind);
    const auto row = zoHPCProblem::Kind(kind);
    const QString section = m_sections.value(zoHPCProblem::kindName(row)).trimmed();
    const QString words = section.simplified();

    QString severity = zoHPCProblem::severityName(zoHPCProblem::severityOf(row));
    severity[0] = severity.at(0).toUpper();
    const QString first = section.section('\n', 0, 0);
    QCOMPARE(first, QStringLiteral("**%1.** %2.").arg(severity, zoHPCProblem::titleOf(row)));
    QVERIFY2(words.contains(QLatin1String("On the wall: ")), qPrintable(section));
    // What is right needs no mending.
    if (zoHPCProblem::severityOf(row) != zoHPCProblem::Severity::Note)
        QVERIFY2(words.contains(QLatin1String("Mend it: ")), qPrintable(section));
}

void tst_zoHPCProblemManual::everySectionHasItsKind()
{
    QStringList codes;
    for (int kind = 0; kind < zoHPCProblem::kindCount(); ++kind)
        codes << zoHPCProblem::kindName(zoHPCProblem::Kind(kind));

    QStringList headings = m_headings;
    headings.sort();
    codes.sort();
    QCOMPARE(headings, codes);
}

ZO_TEST_MAIN(tst_zoHPCProblemManual)
#include "tst_zoHPCProblemManual.moc"
