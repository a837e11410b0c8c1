#include "zoCatalogue.h"
#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>

#include <QApplication>
#include <QDomDocument>
#include <QMap>

// The catalogue of set-ups before the checks, and the fixes that they offer.
class tst_zoHPCCatalogue final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void halfIsRightAndHalfIsWrong();
    void everyKindIsTold();
    void exactlyWhatIsWrongIsSaid_data();
    void exactlyWhatIsWrongIsSaid();
    void fixesMendAndLeaveNothingNew_data();
    void fixesMendAndLeaveNothingNew();

private:
    static void read(const zoCatalogue::Setup& setup, zoHPCConfiguration& configuration);
    static zoHPCProblems::List problemsOf(zoHPCConfiguration& configuration);
    static QMap<QString, int> countsOf(const zoHPCProblems::List& problems);

    QList<zoCatalogue::Setup> m_setups;
};

void tst_zoHPCCatalogue::initTestCase()
{
    zoTestCase::initTestCase();
    m_setups = zoCatalogue::setups();
}

void tst_zoHPCCatalogue::read(const zoCatalogue::Setup& setup, zoHPCConfiguration& configuration)
{
    QDomDocument document;
    QVERIFY2(zoHPCDocumentText::parse(QString::fromUtf8(setup.text), document), qPrintable(setup.path));
    configuration.read(document);
}

zoHPCProblems::List tst_zoHPCCatalogue::problemsOf(zoHPCConfiguration& configuration)
{
    return zoHPCProblems::find(zoHPCLayout(configuration.displays(), configuration.hosts().master()));
}

QMap<QString, int> tst_zoHPCCatalogue::countsOf(const zoHPCProblems::List& problems)
{
    QMap<QString, int> counts;
    for (const zoHPCProblem& problem : problems)
        ++counts[zoHPCProblem::kindName(problem.kind)];
    return counts;
}

void tst_zoHPCCatalogue::halfIsRightAndHalfIsWrong()
{
    int right = 0;
    for (const zoCatalogue::Setup& setup : qAsConst(m_setups)) {
        QVERIFY2(!setup.what.isEmpty(), qPrintable(setup.path));
        const bool isWrong = setup.name.startsWith(QLatin1String("wrong-"));
        QCOMPARE(isWrong || setup.name.startsWith(QLatin1String("noted-")), !setup.sayings.isEmpty());
        right += isWrong ? 0 : 1;
    }

    QVERIFY(m_setups.size() >= 120);
    QVERIFY(right >= 60);
    QVERIFY(m_setups.size() - right >= 60);
}

// Those of the items of a configuration; a file's text has kinds of its own.
void tst_zoHPCCatalogue::everyKindIsTold()
{
    QSet<QString> told;
    for (const zoCatalogue::Setup& setup : qAsConst(m_setups)) {
        for (const zoCatalogue::Saying& saying : setup.sayings)
            told.insert(saying.code);
    }
    QStringList missing;
#define ZO_KIND(kind, ...)                                                                                   \
    if (!told.contains(zoHPCProblem::kindName(zoHPCProblem::Kind::kind)))                                    \
        missing << zoHPCProblem::kindName(zoHPCProblem::Kind::kind);
    ZO_HPC_PROBLEM_KINDS(ZO_KIND)
#undef ZO_KIND

    QCOMPARE(missing, QStringList());
}

void tst_zoHPCCatalogue::exactlyWhatIsWrongIsSaid_data()
{
    zoCatalogue::addRows();
}

void tst_zoHPCCatalogue::exactlyWhatIsWrongIsSaid()
{
    QFETCH(int, index);
    const zoCatalogue::Setup& setup = m_setups.at(index);
    zoHPCConfiguration configuration;
    read(setup, configuration);

    QStringList said;
    QStringList messages;
    for (const zoHPCProblem& problem : problemsOf(configuration)) {
        said << zoHPCProblem::kindName(problem.kind);
        messages << problem.message;
    }

    QStringList expected;
    for (const zoCatalogue::Saying& saying : setup.sayings) {
        expected << saying.code;
        const bool isNamed = saying.name.isEmpty() || !messages.filter('"' + saying.name + '"').isEmpty();
        QVERIFY2(isNamed, qPrintable(messages.join('\n')));
    }
    said.sort();
    expected.sort();
    QVERIFY2(said == expected, qPrintable(setup.what + ":\n" + messages.join('\n')));
}

void tst_zoHPCCatalogue::fixesMendAndLeaveNothingNew_data()
{
    zoCatalogue::addRows();
}

// One fix after the other, as somebody does who clicks them from top to bottom.
void tst_zoHPCCatalogue::fixesMendAndLeaveNothingNew()
{
    QFETCH(int, index);
    zoHPCConfiguration configuration;
    read(m_setups.at(index), configuration);
    zoHPCProblems::List problems = problemsOf(configuration);
    const auto fixable = [&problems] {
        return std::find_if(problems.begin(), problems.end(),
                            [](const zoHPCProblem& problem) { return problem.hasFix(); });
    };
    const int most = int(problems.size());

    int fixes = 0;
    for (auto next = fixable(); next != problems.end(); next = fixable()) {
        const QString kind = zoHPCProblem::kindName(next->kind);
        const QString fixText = next->fixText;
        const QMap<QString, int> before = countsOf(problems);
        next->fix();
        problems = problemsOf(configuration);
        const QMap<QString, int> after = countsOf(problems);
        QVERIFY2(after.value(kind) < before.value(kind), qPrintable(kind + ": " + fixText));
        for (auto it = after.begin(); it != after.end(); ++it)
            QVERIFY2(it.value() <= before.value(it.key()), qPrintable(kind + " made " + it.key()));
        QVERIFY(++fixes <= most);
    }

    // What is mended is mended in the file too.
    QDomDocument document = configuration.document();
    zoHPCConfiguration reloaded;
    reloaded.read(document);
    QCOMPARE(countsOf(problemsOf(reloaded)), countsOf(problems));
}

ZO_TEST_MAIN(tst_zoHPCCatalogue)
#include "tst_zoHPCCatalogue.moc"
