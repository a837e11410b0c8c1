#include "zoFakeConfigurationService.h"
#include "zoTestCase.h"

#include <zoAssistantNumberField.h>
#include <zoAssistantRoomView.h>
#include <zoAssistantWallDialog.h>
#include <zoHPCConfiguration.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>

#include <memory>

namespace
{
using Plan = zoHPCWallPlan;

const char* const s_open = "<cluster version=\"1\"><master><network><node name=\"gate\"><network><node "
                           "name=\"n1\"/><node name=\"n2\"/>"
                           "</network></node></network></master></cluster>";
} // namespace

// The dialog for a new wall, as a person works with it.
class tst_zoAssistantWallDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void exampleHasAsManyNodesAsItTakes();
    void namesOfNodesAreEnough_data();
    void namesOfNodesAreEnough();
    void takenConfigurationIsTheOneOfTheFields();
    void gatewayShowsNothing();
    void okWaitsForWhatIsMissing();
    void nodesThatAreThereStandInTheField();
    void nodeThatStandsForNoneIsNotOffered();
    void gapInPixelsShowsMillimetres();
    void gapInMillimetresShowsPixels();
    void framesLieBetweenTiles();
    void gapWithoutPixelSizeIsInPixels();
    void radiusAndAngleFollowEachOther();
    void kindKeepsWhatIsNotItsOwn();
    void planesAreAddedAndRemoved();
    void placeInThePictureMovesTheViewer();
    void eachEyeHasItsWindows();
    void countTellsNodesAndNotes();
    void fieldsTakeSumsAndUnits_data();
    void fieldsTakeSumsAndUnits();
    void fractionIsNoWholeNumber();
    void cellsOfPlanesTakeSumsAndUnits();
    void doubtIsToldAndOkStays_data();
    void doubtIsToldAndOkStays();
    void unevenSpreadIsTold();
    void buttonsOfKindsStayWhereTheyAre();
    void measuresSeparateNoGroups();
    void picturePlaceIsAskedFor();
    void pixelsAreReadInAnyForm_data();
    void pixelsAreReadInAnyForm();
    void refusalIsToldAndTheDialogStays();
    void obstacleDisablesOk();
    void hostWithoutTheServiceTakesNothing();
    void everyKindFitsSmallScreens_data();
    void everyKindFitsSmallScreens();
    void clickSelectsTheNumber();

private:
    template <class Widget>
    Widget* find(const char* name) const
    {
        auto* widget = m_dialog->findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr)
            qFatal("no widget %s", name);
        return widget;
    }
    void choose(const char* kind) const
    {
        find<QToolButton>(kind)->click();
        QCoreApplication::processEvents();
    }
    void type(const QString& hosts) const
    {
        find<QLineEdit>("m_hosts")->setText(hosts);
        QCoreApplication::processEvents();
    }
    void set(const char* name, double value) const
    {
        find<zoAssistantNumberField>(name)->setValue(value);
        QCoreApplication::processEvents();
    }
    double value(const char* name) const { return find<zoAssistantNumberField>(name)->value(); }
    void chooseGap(int index) const
    {
        auto* gap = find<QComboBox>("m_gap");
        gap->setCurrentIndex(index);
        emit gap->activated(index);
        QCoreApplication::processEvents();
    }
    QPushButton* ok() const { return find<QDialogButtonBox>("m_buttonBox")->button(QDialogButtonBox::Ok); }
    void open();

    std::unique_ptr<zoFakeConfigurationService> m_service;
    std::unique_ptr<zoAssistantWallDialog> m_dialog;
};

void tst_zoAssistantWallDialog::init()
{
    m_service = std::make_unique<zoFakeConfigurationService>();
    open();
}

void tst_zoAssistantWallDialog::cleanup()
{
    m_dialog.reset();
    m_service.reset();
    zoTestCase::cleanup();
}

void tst_zoAssistantWallDialog::open()
{
    m_dialog = std::make_unique<zoAssistantWallDialog>(m_service.get());
    m_dialog->show();
    QApplication::setActiveWindow(m_dialog.get());
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void tst_zoAssistantWallDialog::exampleHasAsManyNodesAsItTakes()
{
    const auto* hosts = find<QLineEdit>("m_hosts");
    QCOMPARE(hosts->placeholderText(), QStringLiteral("node[1-6]"));

    choose("m_cave");
    QCOMPARE(hosts->placeholderText(), QStringLiteral("node[1-4]"));

    choose("m_power");
    set("m_columns", 1);
    set("m_rows", 1);
    QCOMPARE(hosts->placeholderText(), QStringLiteral("node1"));
    QVERIFY(find<QLabel>("m_message")->text().endsWith("such as node1."));
}

void tst_zoAssistantWallDialog::namesOfNodesAreEnough_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<int>("windows");
    QTest::newRow("tiled") << "m_tiled"
                           << "node[1-6]" << 6;
    QTest::newRow("power") << "m_power"
                           << "n1 - n6" << 6;
    QTest::newRow("cave") << "m_cave"
                          << "a b c d" << 4;
    QTest::newRow("curved") << "m_curved"
                            << "arc[01-24]" << 24;
    QTest::newRow("planes") << "m_planes"
                            << "p1,p2,p3" << 3;
}

// What a person did not say is what most walls have.
void tst_zoAssistantWallDialog::namesOfNodesAreEnough()
{
    QFETCH(QString, kind);
    QFETCH(QString, hosts);
    QFETCH(int, windows);

    choose(qPrintable(kind));
    QVERIFY(!ok()->isEnabled());
    type(hosts);
    QVERIFY(ok()->isEnabled());
    ok()->click();

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_service->steps, QStringList("New wall"));
    zoHPCConfiguration configuration;
    QVERIFY(configuration.readText(m_service->held));
    const zoHPCLayout layout(configuration.displays(), configuration.hosts().master());
    QCOMPARE(int(layout.windows().size()), windows);
    QVERIFY(zoHPCProblems::find(layout).empty());
}

void tst_zoAssistantWallDialog::takenConfigurationIsTheOneOfTheFields()
{
    choose("m_power");
    set("m_columns", 4);
    set("m_rows", 3);
    find<QComboBox>("m_pixels")->setEditText("3840 x 2160");
    set("m_width", 5000);
    set("m_height", 2200);
    set("m_distance", 2500);
    find<QLineEdit>("m_name")->setText("Front");
    set("m_perNode", 2);
    type("n[1-6]");

    QVERIFY(ok()->isEnabled());
    ok()->click();

    Plan plan = Plan::of(Plan::Kind::Power);
    plan.columns = 4;
    plan.rows = 3;
    plan.tilePixels = {3840, 2160};
    plan.size = {5000, 2200};
    plan.viewer.z = 2500;
    plan.name = "Front";
    plan.windowsPerNode = 2;
    plan.hosts = "n[1-6]";
    QVERIFY(m_dialog->plan() == plan);
    QCOMPARE(m_service->held, zoHPCWallBuilder::build(plan).text);
}

void tst_zoAssistantWallDialog::gatewayShowsNothing()
{
    set("m_columns", 4);
    set("m_rows", 6);
    type("gate { n[01-24] }");
    ok()->click();

    zoHPCConfiguration configuration;
    QVERIFY(configuration.readText(m_service->held));
    const zoHPCLayout layout(configuration.displays(), configuration.hosts().master());
    QCOMPARE(int(layout.nodes().size()), 25);
    QCOMPARE(int(layout.windows().size()), 24);
    for (const zoHPCLayout::Window& window : layout.windows())
        QVERIFY(window.node != QLatin1String("gate"));
}

void tst_zoAssistantWallDialog::okWaitsForWhatIsMissing()
{
    auto* message = find<QLabel>("m_message");
    QVERIFY(!ok()->isEnabled());
    QVERIFY2(message->text().contains("node[1-6]"), qPrintable(message->text()));

    type("a a");
    QVERIFY(!ok()->isEnabled());
    QVERIFY2(message->text().startsWith("Nodes: "), qPrintable(message->text()));

    type("a b c");
    QVERIFY(ok()->isEnabled());
    find<QComboBox>("m_pixels")->setEditText("wide");
    QCoreApplication::processEvents();
    QVERIFY(!ok()->isEnabled());
    QVERIFY2(message->text().startsWith("Pixels of a tile: "), qPrintable(message->text()));
    // Return does no more than the button.
    m_dialog->accept();
    QVERIFY(m_dialog->isVisible());
    QVERIFY(m_service->steps.isEmpty());
}

void tst_zoAssistantWallDialog::nodesThatAreThereStandInTheField()
{
    m_service->held = QLatin1String(s_open);
    open();

    const Plan plan = m_dialog->plan();
    const zoHPCWallBuilder::Hosts hosts = zoHPCWallBuilder::readHosts(plan.hosts);
    QCOMPARE(hosts.drivers, (QStringList{"n1", "n2"}));
    QCOMPARE(hosts.gateways, 1);
    auto* field = find<QLineEdit>("m_hosts");
    QVERIFY(field->hasFocus());
    // Typing replaces them.
    QTest::keyClicks(QApplication::focusWidget(), "a");
    QCOMPARE(field->text(), QStringLiteral("a"));
}

void tst_zoAssistantWallDialog::nodeThatStandsForNoneIsNotOffered()
{
    m_service->held =
        "<cluster version=\"1\"><master><network><node name=\"localhost\"/></network></master></cluster>";
    open();

    QVERIFY(m_dialog->plan().hosts.isEmpty());
}

void tst_zoAssistantWallDialog::gapInPixelsShowsMillimetres()
{
    choose("m_power");
    set("m_width", 3480); // 3 tiles of 1200 mm that share 60 mm
    chooseGap(1);
    set("m_acrossPixels", 96);
    set("m_downPixels", 0);

    QCOMPARE(m_dialog->plan().overlapUnit, Plan::Unit::Pixels);
    QCOMPARE(m_dialog->plan().overlap.across, 96.0);
    QCOMPARE(value("m_acrossMillimetres"), 60.0);
    QCOMPARE(value("m_downMillimetres"), 0.0);
}

void tst_zoAssistantWallDialog::gapInMillimetresShowsPixels()
{
    choose("m_power");
    set("m_width", 3480);
    chooseGap(1);
    set("m_acrossMillimetres", 60);

    QCOMPARE(m_dialog->plan().overlapUnit, Plan::Unit::Millimetres);
    QCOMPARE(m_dialog->plan().overlap.across, 60.0);
    QCOMPARE(value("m_acrossPixels"), 96.0);
}

void tst_zoAssistantWallDialog::framesLieBetweenTiles()
{
    choose("m_curved");
    chooseGap(2);
    set("m_acrossMillimetres", 3.5);

    QCOMPARE(m_dialog->plan().overlap.across, -3.5);
    chooseGap(0);
    QCOMPARE(m_dialog->plan().overlap.across, 0.0);
}

void tst_zoAssistantWallDialog::gapWithoutPixelSizeIsInPixels()
{
    chooseGap(1);
    QVERIFY(find<zoAssistantNumberField>("m_acrossPixels")->isEnabled());
    QVERIFY(!find<zoAssistantNumberField>("m_acrossMillimetres")->isEnabled());

    set("m_pitch", 0.5);

    QVERIFY(find<zoAssistantNumberField>("m_acrossMillimetres")->isEnabled());
    QCOMPARE(value("m_acrossMillimetres"), value("m_acrossPixels") / 2);
    QVERIFY(value("m_acrossPixels") > 0);
}

void tst_zoAssistantWallDialog::radiusAndAngleFollowEachOther()
{
    choose("m_curved");
    set("m_radius", 4000);
    const double angle = value("m_angle");
    QVERIFY(angle > 0.0);
    QCOMPARE(m_dialog->plan().curvature, Plan::Curvature::Radius);

    set("m_angle", angle / 2);

    QCOMPARE(m_dialog->plan().curvature, Plan::Curvature::Angle);
    QVERIFY(value("m_radius") > 7900.0);
    QCOMPARE(value("m_angle"), m_dialog->plan().columnAngle);
}

void tst_zoAssistantWallDialog::kindKeepsWhatIsNotItsOwn()
{
    set("m_columns", 5);
    chooseGap(1);
    set("m_acrossPixels", 100);
    type("n[1-10]");

    choose("m_power");
    QCOMPARE(m_dialog->plan().columns, 5);
    QCOMPARE(m_dialog->plan().overlap.across, 100.0);
    QCOMPARE(m_dialog->plan().hosts, QStringLiteral("n[1-10]"));

    choose("m_cave");
    QCOMPARE(m_dialog->plan().columns, 1);
    QCOMPARE(m_dialog->plan().hosts, QStringLiteral("n[1-10]"));
    QCOMPARE(int(m_dialog->plan().kind), int(Plan::Kind::Cave));
}

void tst_zoAssistantWallDialog::planesAreAddedAndRemoved()
{
    choose("m_planes");
    auto* table = m_dialog->findChild<QTableWidget*>("m_planes");
    QCOMPARE(table->rowCount(), 3);

    find<QPushButton>("m_addPlane")->click();
    QCOMPARE(int(m_dialog->plan().planes.size()), 4);
    QCOMPARE(m_dialog->plan().planes[3].center.x, 2400.0);
    table->item(3, 6)->setData(Qt::EditRole, -30.0);
    QCOMPARE(m_dialog->plan().planes[3].yaw, -30.0);
    QCOMPARE(m_dialog->plan().planes[3].name, QString());
    table->item(3, 0)->setText("Floor");
    QCOMPARE(m_dialog->plan().planes[3].name, QString("Floor"));
    // The next one has the size and a name of its own.
    find<QPushButton>("m_addPlane")->click();
    QCOMPARE(m_dialog->plan().planes[3].name, QString("Floor"));
    QCOMPARE(m_dialog->plan().planes[4].name, QString());
    QCOMPARE(m_dialog->plan().planes[4].size.width(), m_dialog->plan().planes[3].size.width());

    table->setCurrentCell(0, 1);
    for (int left = 4; left > 0; --left)
        find<QPushButton>("m_removePlane")->click();
    QCOMPARE(int(m_dialog->plan().planes.size()), 1);
    QVERIFY(!find<QPushButton>("m_removePlane")->isEnabled());
}

void tst_zoAssistantWallDialog::placeInThePictureMovesTheViewer()
{
    choose("m_power");
    auto* room = find<zoAssistantRoomView>("m_room");
    auto* standing = find<QPushButton>("m_standHere");
    const Point3 before = m_dialog->plan().viewer;
    standing->click();
    QVERIFY(room->picksPlace());

    // From above the lower right of the picture is to the right of the viewer, and behind him.
    for (int turn = 0; turn < 8; ++turn)
        QTest::keyClick(room, Qt::Key_Up);
    QTest::mouseClick(room, Qt::LeftButton, {}, QPoint(room->width() * 3 / 4, room->height() * 19 / 20));
    QCoreApplication::processEvents();

    QVERIFY(!room->picksPlace());
    QVERIFY(!standing->isChecked());
    QVERIFY(m_dialog->plan().viewer.z > before.z);
    QCOMPARE(value("m_distance"), m_dialog->plan().viewer.z);
    QVERIFY(m_dialog->plan().viewer.x != before.x);
    QCOMPARE(m_dialog->plan().viewer.y, before.y);
}

void tst_zoAssistantWallDialog::eachEyeHasItsWindows()
{
    choose("m_cave");
    auto* stereo = find<QComboBox>("m_stereo");
    QVERIFY(!find<QComboBox>("m_eyeOrder")->isVisible());

    stereo->setCurrentIndex(stereo->findData(int(Plan::Stereo::LeftRight)));
    type("cave[1-8]");

    QVERIFY(find<QComboBox>("m_eyeOrder")->isVisible());
    QCOMPARE(m_dialog->plan().windowCount(), 8);
    QVERIFY(ok()->isEnabled());
}

void tst_zoAssistantWallDialog::countTellsNodesAndNotes()
{
    auto* count = find<QLabel>("m_count");
    QCOMPARE(count->text(), QStringLiteral("For 6 windows"));
    type("gate { n[1-6] }");
    QCOMPARE(count->text(), QStringLiteral("7 nodes, 1 of them a gateway; 6 windows"));
    type("n");
    QCOMPARE(count->text(), QStringLiteral("1 node; 6 windows"));

    type("n1 n_2");
    QVERIFY2(count->text().contains("At character "), qPrintable(count->text()));
}

void tst_zoAssistantWallDialog::fieldsTakeSumsAndUnits_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("shown");

    QTest::newRow("metres") << "en_US"
                            << "m_width"
                            << "3.2m" << 3200.0 << "3200 mm";
    QTest::newRow("quotient") << "en_US"
                              << "m_width"
                              << "5520/3" << 1840.0 << "1840 mm";
    QTest::newRow("inches") << "en_US"
                            << "m_height"
                            << "12in" << 304.8 << "304.8 mm";
    QTest::newRow("german") << "de_DE"
                            << "m_height"
                            << "3,2m+5cm" << 3250.0 << "3250 mm";
    QTest::newRow("comma-is-a-decimal-mark") << "en_US"
                                             << "m_height"
                                             << "2,000" << 2.0 << "2 mm";
    QTest::newRow("point-in-german") << "de_DE"
                                     << "m_height"
                                     << "2.5" << 2.5 << "2,5 mm";
    QTest::newRow("below-zero") << "en_US"
                                << "m_right"
                                << "-1.5m" << -1500.0 << "-1500 mm";
    QTest::newRow("pixels") << "en_US"
                            << "m_acrossPixels"
                            << "2*60px" << 120.0 << "120 px";
    QTest::newRow("count") << "en_US"
                           << "m_columns"
                           << "12/3" << 4.0 << "4";
    QTest::newRow("arabic") << "ar_EG"
                            << "m_height" << QStringLiteral("\u0663\u066b\u0665m") << 3500.0 << QString();
}

void tst_zoAssistantWallDialog::fieldsTakeSumsAndUnits()
{
    QFETCH(QString, locale);
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(double, value);
    QFETCH(QString, shown);
    choose("m_power");
    chooseGap(1);
    auto* number = find<QDoubleSpinBox>(field.toLatin1().constData());
    number->setLocale(QLocale(locale));
    number->setFocus();
    number->selectAll();

    // No keyboard of the test has digits of other scripts.
    if (typed == QString::fromLatin1(typed.toLatin1()))
        QTest::keyClicks(number, typed);
    else
        number->findChild<QLineEdit*>()->insert(typed);
    QCOMPARE(number->value(), value); // while it is typed
    QTest::keyClick(number, Qt::Key_Tab);

    QCOMPARE(number->value(), value);
    if (!shown.isNull())
        QCOMPARE(number->text(), shown);
}

// "2.5" columns are none, and never 25.
void tst_zoAssistantWallDialog::fractionIsNoWholeNumber()
{
    auto* columns = find<QDoubleSpinBox>("m_columns");
    columns->setFocus();
    columns->selectAll();

    QTest::keyClicks(columns, "2.5");
    QTest::keyClick(columns, Qt::Key_Tab);

    QCOMPARE(columns->value(), 2.0);
    QCOMPARE(m_dialog->plan().columns, 2);
}

void tst_zoAssistantWallDialog::cellsOfPlanesTakeSumsAndUnits()
{
    choose("m_planes");
    auto* table = find<QTableWidget>("m_planes");
    table->setCurrentCell(0, 1);
    table->editItem(table->item(0, 1));
    auto* field = table->findChild<QDoubleSpinBox*>();
    QVERIFY(field);
    field->selectAll();

    QTest::keyClicks(field, "2.4m/2");
    QTest::keyClick(field, Qt::Key_Return);

    QTRY_COMPARE(m_dialog->plan().planes[0].size.width(), 1200.0);
    QCOMPARE(table->item(0, 1)->data(Qt::EditRole).toDouble(), 1200.0);
}

void tst_zoAssistantWallDialog::doubtIsToldAndOkStays_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("field");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("message");

    QTest::newRow("outside-the-cave")
        << "m_cave"
        << "m_right" << -1600.0
        << "Viewer: the viewer is outside the cave, behind its wall \"left\": inside he is less than 1500 mm "
           "from the middle of the cave toward it";
    QTest::newRow("size-of-a-tile") << "m_power"
                                    << "m_width" << 2400.0
                                    << "Size: pictures would be 50 % too high; is it the size of one tile?";
}

void tst_zoAssistantWallDialog::doubtIsToldAndOkStays()
{
    QFETCH(QString, kind);
    QFETCH(QString, field);
    QFETCH(double, value);
    QFETCH(QString, message);
    choose(qPrintable(kind));
    type("n[1-8]");

    set(qPrintable(field), value);

    QTRY_COMPARE(find<QLabel>("m_message")->text(), message);
    QVERIFY(ok()->isEnabled());
}

void tst_zoAssistantWallDialog::unevenSpreadIsTold()
{
    type("n[1-4]");

    QCOMPARE(find<QLabel>("m_count")->text(),
             QStringLiteral("4 nodes; 6 windows: 2 windows on each of the first 2 nodes, 1 on the others"));
    QTRY_VERIFY(ok()->isEnabled());
}

void tst_zoAssistantWallDialog::buttonsOfKindsStayWhereTheyAre()
{
    const char* const kinds[] = {"m_tiled", "m_power", "m_cave", "m_curved", "m_planes"};
    const auto places = [&] {
        QList<QRect> list;
        for (const char* kind : kinds) {
            const auto* button = find<QToolButton>(kind);
            list << QRect(button->mapTo(m_dialog.get(), QPoint()), button->size());
        }
        return list;
    };
    const QList<QRect> before = places();

    for (const char* kind : kinds) {
        choose(kind);
        QCoreApplication::processEvents();
        QCOMPARE(places(), before);
    }
}

// In the fields "5,760" is less than six.
void tst_zoAssistantWallDialog::measuresSeparateNoGroups()
{
    const QString text = find<QLabel>("m_measures")->text();

    QVERIFY2(text.startsWith("5760 x 2160 pixels"), qPrintable(text));
}

void tst_zoAssistantWallDialog::picturePlaceIsAskedFor()
{
    auto* button = find<QPushButton>("m_standHere");
    QVERIFY(button->toolTip().contains("click in the picture"));

    button->click();
    QCOMPARE(find<QLabel>("m_message")->text(),
             QStringLiteral("Click in the picture where the viewer stands."));
    button->click();

    QVERIFY(find<QLabel>("m_message")->text().contains("node["));
}

void tst_zoAssistantWallDialog::pixelsAreReadInAnyForm_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("words") << "1920 x 1080" << QSize(1920, 1080);
    QTest::newRow("tight") << "3840x2160" << QSize(3840, 2160);
    QTest::newRow("star") << "3840*2160" << QSize(3840, 2160);
    QTest::newRow("blank") << " 10 20 px" << QSize(10, 20);
    QTest::newRow("one") << "1920" << QSize();
    QTest::newRow("none") << "" << QSize();
    QTest::newRow("sums") << "2*1920 x 3240/3" << QSize(3840, 1080);
    QTest::newRow("pixels-of-each") << "1920 px x 1080 px" << QSize(1920, 1080);
    QTest::newRow("negative") << "-1920 x 1080" << QSize();
}

void tst_zoAssistantWallDialog::pixelsAreReadInAnyForm()
{
    QFETCH(QString, text);
    QFETCH(QSize, pixels);

    find<QComboBox>("m_pixels")->setEditText(text);

    QCOMPARE(m_dialog->plan().tilePixels, pixels);
    QCOMPARE(find<QComboBox>("m_pixels")->currentText(), text);
}

void tst_zoAssistantWallDialog::refusalIsToldAndTheDialogStays()
{
    type("n[1-6]");
    m_service->nextRefusal = "No room on this disk";

    ok()->click();

    QVERIFY(m_dialog->isVisible());
    QCOMPARE(find<QLabel>("m_message")->text(), m_service->nextRefusal);
    m_service->nextRefusal.clear();
    ok()->click();
    QVERIFY(!m_dialog->isVisible());
}

void tst_zoAssistantWallDialog::obstacleDisablesOk()
{
    m_service->hindrance = "A session runs";
    type("n[1-6]");

    QVERIFY(!ok()->isEnabled());
    QCOMPARE(find<QLabel>("m_message")->text(), QStringLiteral("A session runs."));
    // It may be over before the dialog is.
    m_service->hindrance.clear();
    emit m_service->changed();
    QTRY_VERIFY(ok()->isEnabled());
}

void tst_zoAssistantWallDialog::hostWithoutTheServiceTakesNothing()
{
    m_dialog = std::make_unique<zoAssistantWallDialog>(nullptr);
    type("n[1-6]");

    QVERIFY(!ok()->isEnabled());
    m_dialog->accept();
    QVERIFY(!find<QLabel>("m_message")->text().isEmpty());
}

void tst_zoAssistantWallDialog::everyKindFitsSmallScreens_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"m_tiled", "m_power", "m_cave", "m_curved", "m_planes"})
        QTest::newRow(kind) << kind;
}

void tst_zoAssistantWallDialog::everyKindFitsSmallScreens()
{
    QFETCH(QString, kind);

    choose(qPrintable(kind));
    auto* stereo = find<QComboBox>("m_stereo");
    stereo->setCurrentIndex(stereo->findData(int(Plan::Stereo::LeftRight)));
    QCoreApplication::processEvents();

    // With the frame of a window manager and a panel of the desktop.
    QVERIFY2(m_dialog->height() <= 768 - 60, qPrintable(QString::number(m_dialog->height())));
    QVERIFY(m_dialog->width() <= 1366 - 10);
}

void tst_zoAssistantWallDialog::clickSelectsTheNumber()
{
    auto* columns = find<zoAssistantNumberField>("m_columns");
    auto* line = columns->findChild<QLineEdit*>();

    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(10, line->height() / 2));
    QTest::keyClicks(columns, "4");

    QCOMPARE(m_dialog->plan().columns, 4);
    // A second click places the cursor, as in other fields.
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(line->width() - 4, line->height() / 2));
    QTest::keyClicks(columns, "2");
    QCOMPARE(m_dialog->plan().columns, 42);
}

ZO_TEST_MAIN(tst_zoAssistantWallDialog)
#include "tst_zoAssistantWallDialog.moc"
