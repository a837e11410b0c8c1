#include "zoFakeConfigurationService.h"
#include "zoTestCase.h"

#include <zoAssistantRoomView.h>
#include <zoAssistantSurveyDialog.h>
#include <zoAssistantSurveyTable.h>
#include <zoFileReader.h>
#include <zoFileWriter.h>
#include <zoHPCConfiguration.h>
#include <zoHPCProjectionItem.h>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QTemporaryDir>

#include <memory>

namespace
{
using Table = zoAssistantSurveyTable;

const char* const s_open =
    "<cluster version=\"1\"><master><network><node name=\"n1\"/></network></master>"
    "<projection name=\"Front\" type=\"plane\" x1=\"0\" y1=\"0\" z1=\"0\" x2=\"1\" y2=\"0\" z2=\"0\" "
    "x3=\"1\" y3=\"1\" "
    "z3=\"0\"/>"
    "<display><window node=\"n1\"><viewport projection=\"Front\"/></window></display></cluster>";
} // namespace

// The dialog for a measured room, as a person works with it.
class tst_zoAssistantSurveyDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatStandsThereIsARoom();
    void typedLineChangesTheRoom();
    void residualsStandBesideTheirLines();
    void columnsOfFiguresExplainThemselves();
    void worstIsHighlighted();
    void mistakeIsMarkedAndToldAndBlocksOk();
    void whatIsOpenBlocksOk();
    void okReplacesThePlaneAndKeepsTheWindow();
    void refusalIsToldAndTheDialogStays();
    void obstacleDisablesOk();
    void hostWithoutTheServiceTakesNothing();
    void linesAreTypedOneAfterTheOther();
    void returnInALineGoesToTheNextOne();
    void whatIsTypedStaysWhenTheRoomIsFound();
    void menuAddsLines();
    void linesAreRemovedAndPasted();
    void fileIsLoadedWithItsPointList();
    void pointListHasTheResidualsOfItsPoints();
    void savedFileIsTheSame();
    void textIsThereNextTime();
    void fitsSmallScreens();

private:
    template <class Widget>
    Widget* find(const char* name) const
    {
        auto* widget = m_dialog->findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr)
            qFatal("no widget %s", name);
        return widget;
    }
    Table* table() const { return find<Table>("m_table"); }
    QPushButton* ok() const { return find<QDialogButtonBox>("m_buttonBox")->button(QDialogButtonBox::Ok); }
    QString message() const { return find<QLabel>("m_message")->text(); }
    QString cell(int row, int column) const { return table()->item(row, column)->text(); }
    void type(int row, const QString& line) { table()->item(row, Table::Measurement)->setText(line); }
    int lastRow() const { return table()->rowCount() - 1; }
    void open(zoConfigurationService* service)
    {
        m_dialog = std::make_unique<zoAssistantSurveyDialog>(service, &m_text);
        m_dialog->show();
    }

    std::unique_ptr<zoFakeConfigurationService> m_service;
    std::unique_ptr<zoAssistantSurveyDialog> m_dialog;
    QString m_text;
};

void tst_zoAssistantSurveyDialog::init()
{
    m_text.clear();
    m_service = std::make_unique<zoFakeConfigurationService>();
    m_service->held = QLatin1String(s_open);
    open(m_service.get());
}

void tst_zoAssistantSurveyDialog::cleanup()
{
    m_dialog.reset();
    m_service.reset();
    zoTestCase::cleanup();
}

void tst_zoAssistantSurveyDialog::whatStandsThereIsARoom()
{
    QVERIFY(ok()->isEnabled());
    QCOMPARE(m_dialog->solution().planes.size(), std::size_t(1));
    QCOMPARE(cell(lastRow(), Table::Measurement), QString());
}

void tst_zoAssistantSurveyDialog::typedLineChangesTheRoom()
{
    type(0, QStringLiteral("wall Front size 2 m x 1 m"));

    QTRY_VERIFY(std::abs(m_dialog->solution().planes.at(0).width() - 2000.0) < 1e-6);
}

void tst_zoAssistantSurveyDialog::residualsStandBesideTheirLines()
{
    type(lastRow(), QStringLiteral("floor Front.bottom 830"));

    QTRY_COMPARE(cell(4, Table::Residual), QLocale().toString(15.0, 'f', 1));
    QCOMPARE(cell(2, Table::Residual), QLocale().toString(-15.0, 'f', 1));
    QCOMPARE(cell(4, Table::Checked), QStringLiteral("50 %"));
    QCOMPARE(cell(3, Table::Checked), QStringLiteral("0 %"));
    QCOMPARE(cell(lastRow(), Table::Residual), QString());
}

void tst_zoAssistantSurveyDialog::columnsOfFiguresExplainThemselves()
{
    QVERIFY(table()->horizontalHeaderItem(Table::Residual)->toolTip().contains("millimetres"));
    QVERIFY(table()->horizontalHeaderItem(Table::Checked)->toolTip().contains("0 %"));
}

void tst_zoAssistantSurveyDialog::worstIsHighlighted()
{
    type(lastRow(), QStringLiteral("distance Front.left Front.right 3650"));
    type(lastRow(), QStringLiteral("distance Front.ll Front.ur 4118.3"));
    type(lastRow(), QStringLiteral("distance Front.lr Front.ul 4118.3"));

    QTRY_VERIFY(table()->item(4, Table::Residual)->font().bold());
    QVERIFY(!table()->item(5, Table::Residual)->font().bold());
    QVERIFY(table()->item(4, Table::Residual)->background() !=
            table()->item(5, Table::Residual)->background());
    QVERIFY2(find<QLabel>("m_verdict")
                 ->text()
                 .startsWith(QStringLiteral("Most likely a mistake: distance Front.left Front.right, about")),
             qPrintable(find<QLabel>("m_verdict")->text()));
    QVERIFY(ok()->isEnabled());
}

void tst_zoAssistantSurveyDialog::mistakeIsMarkedAndToldAndBlocksOk()
{
    type(lastRow(), QStringLiteral("flor Front.bottom 830"));

    QTRY_COMPARE(message(), QStringLiteral("Line 5: \"flor\" begins no line; did you mean \"floor\"?"));
    QCOMPARE(cell(4, Table::Residual), QStringLiteral("?"));
    QVERIFY(!ok()->isEnabled());
    // The sign does not touch the text.
    const auto* const sign = find<QLabel>("m_sign");
    QVERIFY(sign->isVisible());
    const int signWidth = m_dialog->style()->pixelMetric(QStyle::PM_SmallIconSize);
    QTRY_VERIFY(find<QLabel>("m_message")->x() >= sign->x() + signWidth + 6);
}

void tst_zoAssistantSurveyDialog::whatIsOpenBlocksOk()
{
    type(lastRow(), QStringLiteral("wall Left size 2 m x 2 m"));

    QTRY_VERIFY(!ok()->isEnabled());
    QVERIFY2(message().startsWith(QStringLiteral("Wall \"Left\": where it is")), qPrintable(message()));
}

void tst_zoAssistantSurveyDialog::okReplacesThePlaneAndKeepsTheWindow()
{
    type(0, QStringLiteral("wall Front size 3 m x 2 m"));

    m_dialog->accept();

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_service->steps, QStringList{QStringLiteral("Measured room")});
    zoHPCConfiguration configuration;
    QVERIFY(configuration.readText(m_service->text()));
    const QList<zoHPCProjectionItem*> planes = configuration.displays().getProjectionItems();
    QCOMPARE(planes.size(), 1);
    QCOMPARE(planes.at(0)->plane().lowerLeft.x, -1500.0);
    QCOMPARE(planes.at(0)->plane().lowerLeft.y, 800.0 - 1650.0);
    QCOMPARE(planes.at(0)->plane().upperRight.z, -2500.0);
    QVERIFY(configuration.displays().isShown(*planes.at(0)));
}

void tst_zoAssistantSurveyDialog::refusalIsToldAndTheDialogStays()
{
    m_service->nextRefusal = QStringLiteral("not now");

    m_dialog->accept();

    QVERIFY(m_dialog->isVisible());
    QCOMPARE(message(), QStringLiteral("not now"));
}

void tst_zoAssistantSurveyDialog::obstacleDisablesOk()
{
    m_service->hindrance = QStringLiteral("A session runs");
    open(m_service.get());

    QVERIFY(!ok()->isEnabled());
    QCOMPARE(message(), QStringLiteral("A session runs."));
}

void tst_zoAssistantSurveyDialog::hostWithoutTheServiceTakesNothing()
{
    open(nullptr);

    QVERIFY(!ok()->isEnabled());
    QCOMPARE(message(), QStringLiteral("This host lets no module change the configuration."));
}

void tst_zoAssistantSurveyDialog::linesAreTypedOneAfterTheOther()
{
    QApplication::setActiveWindow(m_dialog.get());
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    table()->setText(QString());
    table()->setFocus();

    for (const char* const line : {"wall A size 2000 x 1000", "floor A.bottom 500", "viewer distance 900"}) {
        QTest::keyClicks(table(), QString::fromLatin1(line).left(1));
        auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        QTest::keyClicks(editor, QString::fromLatin1(line).mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), table());
    }

    QCOMPARE(table()->text(),
             QStringLiteral("wall A size 2000 x 1000\nfloor A.bottom 500\nviewer distance 900\n"));
    QCOMPARE(table()->currentRow(), 3);
    QVERIFY(m_dialog->isVisible());
}

void tst_zoAssistantSurveyDialog::returnInALineGoesToTheNextOne()
{
    QApplication::setActiveWindow(m_dialog.get());
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    table()->setText(QStringLiteral(
        "wall A size 2000 x 1000\nupright A\nlevel A\nfloor A.bottom 500\nviewer distance 900"));
    table()->setFocus();
    table()->setCurrentCell(0, Table::Measurement);
    QTest::keyClick(table(), Qt::Key_F2);
    auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->end(false);
    QTest::keyClicks(editor, QStringLiteral("0"));

    QTest::keyClick(editor, Qt::Key_Return);

    QTRY_COMPARE(QApplication::focusWidget(), table());
    QCOMPARE(cell(0, Table::Measurement), QStringLiteral("wall A size 2000 x 10000"));
    QCOMPARE(table()->currentRow(), 1);
    QVERIFY(m_dialog->isVisible());
}

void tst_zoAssistantSurveyDialog::whatIsTypedStaysWhenTheRoomIsFound()
{
    QApplication::setActiveWindow(m_dialog.get());
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    table()->setFocus();
    table()->setText(QStringLiteral("wall Front size 2 m x 1 m\nupright Front\nfloor Front.bottom "
                                    "800\nviewer distance 2500 height 1650"));

    QTest::keyClicks(table(), QStringLiteral("f"));
    auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("loor"));
    QTRY_VERIFY(std::abs(m_dialog->solution().planes.at(0).width() - 2000.0) < 1e-6);

    QCOMPARE(QApplication::focusWidget(), editor);
    QCOMPARE(editor->text(), QStringLiteral("floor"));
}

void tst_zoAssistantSurveyDialog::menuAddsLines()
{
    const QMenu* const menu = find<QPushButton>("m_add")->menu();
    QVERIFY(menu->actions().size() > 8);
    const int rows = table()->rowCount();
    table()->setCurrentCell(0, 0);

    menu->actions().at(3)->trigger();

    QCOMPARE(table()->rowCount(), rows + 1);
    QCOMPARE(cell(1, Table::Measurement), QStringLiteral("floor Front.bottom 800"));
}

void tst_zoAssistantSurveyDialog::linesAreRemovedAndPasted()
{
    const QString before = table()->text();
    table()->selectAll();
    QTest::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(table()->text(), QString());
    QCOMPARE(table()->rowCount(), 1);
    QGuiApplication::clipboard()->setText(before);
    const QSignalSpy edited(table(), &Table::edited);

    QTest::keySequence(table(), QKeySequence::Paste);

    QCOMPARE(table()->text(), before);
    QCOMPARE(edited.size(), 1);
}

void tst_zoAssistantSurveyDialog::fileIsLoadedWithItsPointList()
{
    const QString folder = QStringLiteral(ZO_MANUAL_DIR "/examples/");

    QVERIFY(m_dialog->loadFile(folder + QStringLiteral("station.txt")));

    QVERIFY2(ok()->isEnabled(), qPrintable(message()));
    QCOMPARE(m_dialog->solution().planes.size(), std::size_t(2));
    QCOMPARE(cell(1, Table::Measurement), QStringLiteral("points station.csv unit m +-0.5"));
    QVERIFY(!cell(1, Table::Residual).isEmpty());
    QVERIFY(!m_dialog->loadFile(folder + QStringLiteral("none.txt")));
    QVERIFY(message().contains(QStringLiteral("none.txt cannot be read")));
}

// However its line is written, and beside another one whose name begins like its own.
void tst_zoAssistantSurveyDialog::pointListHasTheResidualsOfItsPoints()
{
    const QString examples = QStringLiteral(ZO_MANUAL_DIR "/examples/");
    const QTemporaryDir folder;
    const auto write = [&](const char* name, const QByteArray& text) {
        return zoFileWriter::write(folder.filePath(QLatin1String(name)), text) ==
               zoFileWriter::Result::Written;
    };
    QByteArray text;
    QByteArray points;
    QCOMPARE(zoFileReader::read(examples + QStringLiteral("station.txt"), text), zoFileReader::Result::Read);
    QCOMPARE(zoFileReader::read(examples + QStringLiteral("station.csv"), points),
             zoFileReader::Result::Read);
    text.replace("points station.csv", "points station.csv.old\nPOINTS \t station.csv");
    QVERIFY(write("room.txt", text) && write("station.csv", points) &&
            write("station.csv.old", "nobody 1 2 3\n"));

    QVERIFY(m_dialog->loadFile(folder.filePath(QStringLiteral("room.txt"))));

    QVERIFY2(m_dialog->solution().isDetermined(), qPrintable(message()));
    QCOMPARE(cell(1, Table::Residual), QString());
    QVERIFY(!cell(2, Table::Residual).isEmpty());
}

void tst_zoAssistantSurveyDialog::savedFileIsTheSame()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("room.txt"));
    type(lastRow(), QStringLiteral("# by Ann"));
    const QString text = table()->text();

    QVERIFY(m_dialog->saveFile(name));
    table()->setText(QString());
    QVERIFY(m_dialog->loadFile(name));

    QCOMPARE(table()->text(), text);
}

void tst_zoAssistantSurveyDialog::textIsThereNextTime()
{
    type(lastRow(), QStringLiteral("# by Ann"));
    m_dialog->reject();

    open(m_service.get());

    QCOMPARE(cell(4, Table::Measurement), QStringLiteral("# by Ann"));
}

void tst_zoAssistantSurveyDialog::fitsSmallScreens()
{
    QVERIFY(m_dialog->sizeHint().width() <= 1280);
    QVERIFY(m_dialog->sizeHint().height() <= 700);
    const QString folder = qEnvironmentVariable("ZO_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    m_dialog->loadFile(QStringLiteral(ZO_MANUAL_DIR "/examples/cave.txt"));
    m_dialog->grab().save(folder + QStringLiteral("/measured-room.png"));
}

ZO_TEST_MAIN(tst_zoAssistantSurveyDialog)
#include "tst_zoAssistantSurveyDialog.moc"
