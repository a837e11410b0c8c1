#include "zoTestCase.h"

#include <zoHPCProblemModel.h>
#include <zoHPCProblemsView.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTreeView>
#include <QTreeWidgetItem>

#include <memory>

namespace
{
using Kind = zoHPCProblem::Kind;
} // namespace

Q_DECLARE_METATYPE(QTreeWidgetItem*)

// The list of problems.
class tst_zoHPCProblemsView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void modelKeepsTheRules();
    void summaryCounts();
    void clickSelectsTheItem();
    void returnSelectsTheItem();
    void buttonMendsTheProblem();
    void buttonThatIsLeftAgainMendsNothing();
    void problemWithoutFixHasNoButton();
    void messageWithoutFixHasTheWholeRow();
    void longMessagesAreWrapped();
    void spaceMendsTheProblem();
    void fixMayReplaceTheList();
    void problemThatWentMeanwhileIsNotMended();
    void fixTellsWhatItChanged_data();
    void fixTellsWhatItChanged();
    void currentRowStaysWithItsProblem();
    void ampersandInAFixIsShown();
    void manualPageIsThatOfTheProblem();

private:
    std::vector<zoHPCProblem> sample();
    QPoint placeOf(int row, int column) const;

    std::unique_ptr<zoHPCProblemsView> m_view;
    QTreeView* m_list = nullptr;
    QTreeWidgetItem m_items[3];
    int m_fixes = 0;
};

void tst_zoHPCProblemsView::init()
{
    // What signal spies record.
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*");
    m_fixes = 0;
    m_view = std::make_unique<zoHPCProblemsView>();
    m_list = m_view->findChild<QTreeView*>();
    QVERIFY(m_list);
    m_view->resize(700, 300);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->setProblems(sample());
}

void tst_zoHPCProblemsView::cleanup()
{
    m_view.reset();
    zoTestCase::cleanup();
}

std::vector<zoHPCProblem> tst_zoHPCProblemsView::sample()
{
    std::vector<zoHPCProblem> problems;
    problems.emplace_back(Kind::WindowWithoutNode, &m_items[0], QStringLiteral("first"));
    problems.back().fixText = QStringLiteral("Use n1");
    problems.back().fix = [this] { ++m_fixes; };
    problems.emplace_back(Kind::TileShownNowhere, &m_items[1], QStringLiteral("second"));
    problems.emplace_back(Kind::NetworkWithoutEnabledNode, &m_items[2], QStringLiteral("third"));
    problems.back().fixText = QStringLiteral("Enable its nodes");
    problems.back().fix = [this] { m_fixes += 100; };
    return problems;
}

QPoint tst_zoHPCProblemsView::placeOf(int row, int column) const
{
    return m_list->visualRect(m_list->model()->index(row, column)).center();
}

void tst_zoHPCProblemsView::modelKeepsTheRules()
{
    zoHPCProblemModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);

    model.setProblems(sample());
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.index(0, zoHPCProblemModel::Fix).data().toString(), QStringLiteral("Use n1"));
    QCOMPARE(model.find(Kind::TileShownNowhere, QStringLiteral("second")), 1);
    QCOMPARE(model.find(Kind::TileShownNowhere, QStringLiteral("first")), -1);
    model.setProblems({});
    QCOMPARE(model.rowCount(), 0);
}

void tst_zoHPCProblemsView::summaryCounts()
{
    const QLabel* const summary = m_view->findChild<QLabel*>(QStringLiteral("m_problemSummary"));

    QCOMPARE(summary->text(), QStringLiteral("3 problems"));
    std::vector<zoHPCProblem> one = sample();
    one.resize(1, one.front());
    m_view->setProblems(one);
    QCOMPARE(summary->text(), QStringLiteral("1 problem"));
    m_view->setProblems({});
    QCOMPARE(summary->text(), QStringLiteral("No problems"));
}

void tst_zoHPCProblemsView::clickSelectsTheItem()
{
    QSignalSpy activated(m_view.get(), &zoHPCProblemsView::itemActivated);

    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(1, 0));

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), &m_items[1]);
    QCOMPARE(m_fixes, 0);
}

void tst_zoHPCProblemsView::returnSelectsTheItem()
{
    QSignalSpy activated(m_view.get(), &zoHPCProblemsView::itemActivated);
    m_list->setCurrentIndex(m_list->model()->index(2, 0));

    QTest::keyClick(m_list, Qt::Key_Return);

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), &m_items[2]);
}

void tst_zoHPCProblemsView::buttonMendsTheProblem()
{
    QSignalSpy fixed(m_view.get(), &zoHPCProblemsView::fixed);
    QSignalSpy activated(m_view.get(), &zoHPCProblemsView::itemActivated);

    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 1));

    QTRY_COMPARE(fixed.size(), 1);
    QCOMPARE(m_fixes, 1);
    QCOMPARE(activated.size(), 0);
}

void tst_zoHPCProblemsView::buttonThatIsLeftAgainMendsNothing()
{
    QTest::mousePress(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 1));
    QTest::mouseRelease(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(2, 1));
    QCoreApplication::processEvents();

    QCOMPARE(m_fixes, 0);
}

void tst_zoHPCProblemsView::problemWithoutFixHasNoButton()
{
    QSignalSpy fixed(m_view.get(), &zoHPCProblemsView::fixed);

    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(1, 1));
    QCoreApplication::processEvents();

    QCOMPARE(fixed.size(), 0);
    QCOMPARE(m_list->model()->index(1, 1).data().toString(), QString());
}

void tst_zoHPCProblemsView::messageWithoutFixHasTheWholeRow()
{
    // How a row looks beside another one with a fix.
    const auto lookOfTheFirst = [this](const QString& message, const QString& fixText) {
        std::vector<zoHPCProblem> problems;
        problems.emplace_back(Kind::TileShownNowhere, &m_items[0], message);
        problems.emplace_back(Kind::WindowWithoutNode, &m_items[1], QStringLiteral("x"));
        problems.back().fixText = fixText;
        problems.back().fix = [] {};
        m_view->setProblems(problems);
        QCoreApplication::processEvents();
        const QRect row = m_list->visualRect(m_list->model()->index(0, 0)) |
                          m_list->visualRect(m_list->model()->index(0, 1));
        return m_list->viewport()->grab(row).toImage();
    };
    // Fills two thirds of the row, and is cut where half of that is for buttons.
    QString message;
    while (m_list->fontMetrics().horizontalAdvance(message) < 2 * m_list->viewport()->width() / 3)
        message += QStringLiteral("m ");
    QString longFix;
    while (m_list->fontMetrics().horizontalAdvance(longFix) < m_list->viewport()->width() / 2)
        longFix += QStringLiteral("f");

    const QImage beside = lookOfTheFirst(message, longFix);

    QVERIFY(m_list->columnWidth(0) < m_list->fontMetrics().horizontalAdvance(message));
    QCOMPARE(beside, lookOfTheFirst(message, QStringLiteral("f")));
    QVERIFY(beside != lookOfTheFirst(QString(), QStringLiteral("f")));
    QSignalSpy activated(m_view.get(), &zoHPCProblemsView::itemActivated);
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 1));
    QCOMPARE(activated.size(), 1);
}

// Each line of them is seen, at any width, and buttons beside them stay buttons.
void tst_zoHPCProblemsView::longMessagesAreWrapped()
{
    QString message;
    for (int word = 0; word < 40; ++word)
        message += QStringLiteral("word%1 ").arg(word);
    std::vector<zoHPCProblem> problems;
    problems.emplace_back(Kind::WindowWithoutNode, &m_items[0], message);
    problems.emplace_back(Kind::WindowWithoutNode, &m_items[1], message + QStringLiteral("end"));
    problems[1].setFix(QStringLiteral("Mend"), [this] { ++m_fixes; });
    problems.emplace_back(Kind::WindowWithoutNode, &m_items[2], QStringLiteral("short"));
    m_view->setProblems(std::move(problems));
    const auto row = [this](int number) { return m_list->visualRect(m_list->model()->index(number, 0)); };
    const int line = m_list->fontMetrics().lineSpacing();
    const int words = m_list->fontMetrics().horizontalAdvance(message);

    for (const int width : {500, 300, 700}) {
        m_view->resize(width, 900);
        QTRY_VERIFY(row(0).height() >= words / m_list->viewport()->width() * line);
        QTRY_VERIFY(row(0).height() <= (2 * words / m_list->viewport()->width() + 2) * line);
        QVERIFY(row(1).height() >= row(0).height());
        QVERIFY(row(2).height() < 2 * line);
    }
    // The middle of the row is the button, its lower rim is not.
    const QRect cell = m_list->visualRect(m_list->model()->index(1, 1));
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(cell.center().x(), cell.bottom() - 2));
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTRY_COMPARE(m_fixes, 1);
}

void tst_zoHPCProblemsView::spaceMendsTheProblem()
{
    QSignalSpy fixed(m_view.get(), &zoHPCProblemsView::fixed);

    m_list->setCurrentIndex(m_list->model()->index(1, 0));
    QTest::keyClick(m_list, Qt::Key_Space);
    QCOMPARE(fixed.size(), 0);
    m_list->setCurrentIndex(m_list->model()->index(2, 0));
    QTest::keyClick(m_list, Qt::Key_Space);

    QCOMPARE(fixed.size(), 1);
    QCOMPARE(m_fixes, 100);
}

void tst_zoHPCProblemsView::fixMayReplaceTheList()
{
    std::vector<zoHPCProblem> problems = sample();
    const std::vector<int> captured(100, 7);
    int sum = 0;
    problems[0].fix = [this, captured, &sum] {
        m_view->setProblems({});
        for (const int value : captured)
            sum += value;
    };
    m_view->setProblems(problems);
    problems.clear();

    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 1));

    QTRY_COMPARE(sum, 700);
    QVERIFY(m_view->problems().empty());
}

void tst_zoHPCProblemsView::problemThatWentMeanwhileIsNotMended()
{
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 1));
    std::vector<zoHPCProblem> problems = sample();
    problems.erase(problems.begin());
    m_view->setProblems(problems);

    QCoreApplication::processEvents();

    QCOMPARE(m_fixes, 0);
}

void tst_zoHPCProblemsView::fixTellsWhatItChanged_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("hosts");

    QTest::newRow("window") << int(Kind::WindowWithoutNode) << false;
    QTest::newRow("plane") << int(Kind::SkewedPlane) << false;
    QTest::newRow("disabled-node") << int(Kind::WindowWithDisabledNode) << true;
    QTest::newRow("network") << int(Kind::NetworkWithoutEnabledNode) << true;
}

void tst_zoHPCProblemsView::fixTellsWhatItChanged()
{
    QFETCH(int, kind);
    QFETCH(bool, hosts);
    std::vector<zoHPCProblem> problems;
    problems.emplace_back(static_cast<Kind>(kind), &m_items[0], QStringLiteral("it"));
    problems.back().fix = [] {};
    m_view->setProblems(problems);
    QSignalSpy fixed(m_view.get(), &zoHPCProblemsView::fixed);

    m_list->setCurrentIndex(m_list->model()->index(0, 0));
    QTest::keyClick(m_list, Qt::Key_Space);

    QCOMPARE(fixed.size(), 1);
    QCOMPARE(fixed[0][0].toBool(), hosts);
}

void tst_zoHPCProblemsView::currentRowStaysWithItsProblem()
{
    m_list->setCurrentIndex(m_list->model()->index(2, 0));
    std::vector<zoHPCProblem> problems = sample();
    problems.erase(problems.begin());

    m_view->setProblems(problems);
    QCOMPARE(m_list->currentIndex().row(), 1);
    problems.pop_back();
    m_view->setProblems(problems);
    QVERIFY(m_list->currentIndex().row() <= 0);
}

void tst_zoHPCProblemsView::ampersandInAFixIsShown()
{
    std::vector<zoHPCProblem> problems = sample();
    m_view->setProblems(problems);
    const QImage without = m_list->grab().toImage();
    problems[0].fixText = QStringLiteral("Use &n1");
    m_view->setProblems(problems);

    QVERIFY(m_list->grab().toImage() != without);
}

// Hosts open it by a key.
void tst_zoHPCProblemsView::manualPageIsThatOfTheProblem()
{
    m_list->setCurrentIndex(QModelIndex());
    QCOMPARE(m_list->property("manualPage").toString(), QStringLiteral("problems"));

    m_list->setCurrentIndex(m_list->model()->index(1, 0));
    QCOMPARE(m_list->property("manualPage").toString(),
             QStringLiteral("problems#") + zoHPCProblem::kindName(m_view->problems()[1].kind));

    m_view->setProblems({});
    QCOMPARE(m_list->property("manualPage").toString(), QStringLiteral("problems"));
}

ZO_TEST_MAIN(tst_zoHPCProblemsView)

#include "tst_zoHPCProblemsView.moc"
