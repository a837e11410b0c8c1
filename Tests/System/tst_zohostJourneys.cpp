#include "zoDesktopInput.h"
#include "zoDesktopPerson.h"
#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCWallBuilder.h>
#include <zoHostApplication.h>
#include <zoHostDocument.h>
#include <zoKernelServiceFactory.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDomDocument>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>

namespace
{
constexpr int LookMs = 5;

using Person = zoDesktopPerson;

zoHostMainWindow* hostWindow()
{
    auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
    return service == nullptr ? nullptr : qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
}

QWidget* clusterWindow()
{
    return hostWindow()->moduleWindows().value(0);
}

// A widget of the dialog that is open, or null.
template <class Widget>
Widget* inDialog(const char* name)
{
    const QWidget* dialog = QApplication::activeModalWidget();
    return dialog == nullptr ? nullptr : dialog->findChild<Widget*>(QLatin1String(name));
}

QWidget* okButton()
{
    auto* box = inDialog<QDialogButtonBox>("m_buttonBox");
    return box == nullptr ? nullptr : box->button(QDialogButtonBox::Ok);
}

QWidget* toolButton(const char* action)
{
    QToolBar* bar = hostWindow()->moduleToolBar();
    for (QAction* candidate : bar->actions()) {
        if (candidate->objectName() == QLatin1String(action))
            return bar->widgetForAction(candidate);
    }
    return nullptr;
}

QWidget* taskButton(const char* name)
{
    return hostWindow()->findChild<QCommandLinkButton*>(QLatin1String(name));
}

Person::Spot rowOf(const QTreeWidget* tree, const QTreeWidgetItem* item)
{
    return tree == nullptr || item == nullptr ? Person::Spot()
                                              : Person::Spot{tree->viewport(), tree->visualItemRect(item)};
}

// A configuration as New wall makes it.
QString built(int rows, int columns, const char* hosts)
{
    zoHPCWallPlan plan = zoHPCWallPlan::of(zoHPCWallPlan::Kind::Power);
    plan.rows = rows;
    plan.columns = columns;
    plan.size = {columns * 1200.0, rows * 675.0};
    plan.hosts = QLatin1String(hosts);
    return zoHPCWallBuilder::build(plan).text;
}

void openAssistant(const Person& person)
{
    person.click("Assistant", [] {
        auto* list = hostWindow()->findChild<QTreeWidget*>("ModuleList");
        const QList<QTreeWidgetItem*> found =
            list->findItems("Assistant", Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? Person::Spot() : rowOf(list, found.constFirst());
    });
}

void openDisplaySetup(const Person& person)
{
    person.click("Display Setup", [] {
        auto* bar = clusterWindow()->findChild<QToolBar*>("toolBar");
        return Person::spotOf(bar->widgetForAction(Person::actionOf(bar->actions(), "Display Setup...")));
    });
    person.waitFor("the dialog", [] { return inDialog<QTreeWidget>("m_displayTree") != nullptr; });
}

// In the host tree and the fields beside it.
void disableNode(const Person& person, const char* node)
{
    const auto tree = [] { return clusterWindow()->findChild<QTreeWidget*>("m_treeWidget"); };
    const auto box = [] { return clusterWindow()->findChild<QCheckBox*>("m_hostEnabled"); };
    person.click(node, [tree, node] {
        const QList<QTreeWidgetItem*> found =
            tree()->findItems(QLatin1String(node), Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() || found.constFirst()->isHidden() ? Person::Spot()
                                                                 : rowOf(tree(), found.constFirst());
    });
    person.waitFor("its fields", [box, node] {
        const auto* name = clusterWindow()->findChild<QLineEdit*>("m_hostName");
        return box()->isVisible() && box()->isChecked() && name->text() == QLatin1String(node);
    });
    person.click("Enabled", [box] {
        return Person::Spot{box(), QRect(0, 0, box()->height(), box()->height())};
    });
    person.waitFor("it is disabled", [box] { return !box()->isChecked(); });
}

void openNewWall(const Person& person)
{
    person.click("New wall", [] { return Person::spotOf(toolButton("NewWall")); });
    person.waitFor("the dialog", [] { return inDialog<QLineEdit>("m_hosts") != nullptr; });
}

void chooseKind(const Person& person, const char* kind)
{
    person.click(kind, [kind] { return Person::spotOf(inDialog<QToolButton>(kind)); });
    person.waitFor(QLatin1String(kind) + QStringLiteral(" is chosen"),
                   [kind] { return inDialog<QToolButton>(kind)->isChecked(); });
}

// A click selects the number that is there.
void typeNumber(const Person& person, const char* name, int number)
{
    person.click(name,
                 [name] { return Person::spotOf(inDialog<QDoubleSpinBox>(name)->findChild<QLineEdit*>()); });
    person.waitFor(QLatin1String(name) + QStringLiteral(" has the keys"), [name] {
        return inDialog<QDoubleSpinBox>(name)->hasFocus() &&
               inDialog<QDoubleSpinBox>(name)->findChild<QLineEdit*>()->hasSelectedText();
    });
    person.type(QString::number(number));
    person.waitFor(QLatin1String(name) + QStringLiteral(" shows it"),
                   [name, number] { return int(inDialog<QDoubleSpinBox>(name)->value()) == number; });
}

void typeNodes(const Person& person, const QString& nodes)
{
    person.click("the names of the nodes", [] { return Person::spotOf(inDialog<QLineEdit>("m_hosts")); });
    person.waitFor("the names have the keys", [] { return inDialog<QLineEdit>("m_hosts")->hasFocus(); });
    person.type(nodes);
    person.waitFor("the names", [nodes] { return inDialog<QLineEdit>("m_hosts")->text() == nodes; });
}

void finish(const Person& person)
{
    person.click("OK", [] { return Person::spotOf(okButton()); });
    person.waitFor("the dialog is closed", [] { return QApplication::activeModalWidget() == nullptr; });
    person.waitFor("the step has its name",
                   [] { return zoHostDocument::undoStep(clusterWindow()) == QLatin1String("New wall"); });
}
} // namespace

// Ways of a person through the host on a desktop, in clicks and keys. With ZO_JOURNEYS in the environment they are written
// into that file, see dev/journeys.
class tst_zohostJourneys final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void powerWallOverSixNodes();
    void tiledWallBehindAGateway();
    void stereoCaveOverEightNodes();
    void measuredRoom();
    void deletedProjectionComesBack();
    void windowIsDuplicatedToTheNextNode();
    void spareTakesTheTileOfAFailedNode();
    void reportIsSaved();
    void nodeOfFiveHundredIsDisabled();

private:
    struct Wall
    {
        QString type;
        int tiles = 0;
        int windows = 0;
        int nodes = 0;
        int problems = -1;
    };

    // With a configuration that is open from the beginning; "" is the host's own.
    void play(const std::function<void(const Person&)>& act, const QString& configuration = QString());
    void count(const char* journey, int mostClicks);
    Wall wall(const Person& person) const;

    QTemporaryDir m_directory;
    zoDesktopInput m_input;
};

void tst_zohostJourneys::initTestCase()
{
    zoTestCase::initTestCase();
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    QVERIFY(m_directory.isValid());
    QVERIFY(m_input.isUsable());
    QTRY_VERIFY(m_input.hasWindowManager());
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "HOME"})
        qputenv(variable, QFile::encodeName(m_directory.path()));
    qunsetenv("ZOKE_DATA");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QCoreApplication::setOrganizationName("zo");
}

void tst_zohostJourneys::init()
{
    QSettings().clear();
}

// Runs the host, as the program does, until the person has gone the way.
void tst_zohostJourneys::play(const std::function<void(const Person&)>& act, const QString& configuration)
{
    zoHostOptions options;
    options.moduleFiles = QStringList{QStringLiteral(ZO_MODULE_FILE), QStringLiteral(ZO_ASSISTANT_FILE)};
    if (!configuration.isEmpty()) {
        options.configFile = m_directory.filePath("journey.zhpc");
        QFile file(options.configFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(configuration.toUtf8()) > 0);
    }
    zoHostApplication host(options);
    std::atomic<bool> hasLeft{false};
    std::string failure;

    std::thread thread([this, &act, &failure, &hasLeft] {
        const Person person(m_input);
        try {
            person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });
            m_input.resetCounts();
            act(person);
        } catch (const std::exception& exception) {
            failure = exception.what();
            person.keepPicture("journey-failure");
        }
        person.see([] {
            QCoreApplication::exit(0);
            return true;
        });
        hasLeft = true;
    });
    host.run();
    while (!hasLeft)
        QCoreApplication::processEvents(QEventLoop::AllEvents, LookMs);
    thread.join();

    QVERIFY2(failure.empty(), failure.c_str());
}

// Called at the end of the way; what is looked at afterwards does not count.
void tst_zohostJourneys::count(const char* journey, int mostClicks)
{
    const int clicks = m_input.clickCount();
    const int keys = m_input.keyCount();
    const QString file = qEnvironmentVariable("ZO_JOURNEYS");
    if (!file.isEmpty()) {
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Append))
            throw std::runtime_error("unable to write " + file.toStdString());
        out.write(QStringLiteral("%1\t%2\t%3\n").arg(QLatin1String(journey)).arg(clicks).arg(keys).toUtf8());
    }
    if (clicks > mostClicks)
        throw std::runtime_error(std::to_string(clicks) + " clicks instead of " + std::to_string(mostClicks));
}

// What the host would save now.
tst_zohostJourneys::Wall tst_zohostJourneys::wall(const Person& person) const
{
    const QString text = person.see([] { return clusterWindow()->property("configuration").toString(); });
    zoHPCConfiguration configuration;
    if (!configuration.readText(text))
        throw std::runtime_error("no configuration");
    const zoHPCLayout layout(configuration.displays(), configuration.hosts().master());
    Wall wall;
    for (const zoHPCLayout::Projection& projection : layout.projections()) {
        if (projection.parent == zoHPCLayout::None)
            wall.type = projection.item->getString(zoHPCProjectionItem::Type);
        wall.tiles += projection.isTile ? 1 : 0;
    }
    wall.windows = int(layout.windows().size());
    wall.nodes = int(layout.nodes().size());
    wall.problems = int(zoHPCProblems::find(layout).size());
    return wall;
}

void tst_zohostJourneys::powerWallOverSixNodes()
{
    Wall made;
    play([this, &made](const Person& person) {
        openNewWall(person);
        chooseKind(person, "m_power");
        typeNumber(person, "m_width", 4140);
        typeNumber(person, "m_height", 1560);
        person.choose(
            "what is between tiles", [] { return inDialog<QComboBox>("m_gap"); }, "Overlap, blended");
        typeNodes(person, "node[1-6]");
        person.keepPicture("journey-new-wall");
        finish(person);
        count("A 3 x 2 power wall over six nodes", 10);
        made = wall(person);
        // Keys that come before the window manager has given them back go nowhere.
        person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });
        person.pressControl('z');
        person.waitFor("undo brings the one before back",
                       [] { return zoHostDocument::undoStep(clusterWindow()).isEmpty(); });
    });

    QCOMPARE(made.type, QStringLiteral("powerwall"));
    QCOMPARE(made.tiles, 6);
    QCOMPARE(made.windows, 6);
    QCOMPARE(made.nodes, 6);
    QCOMPARE(made.problems, 0);
}

void tst_zohostJourneys::tiledWallBehindAGateway()
{
    Wall made;
    play([this, &made](const Person& person) {
        openNewWall(person);
        typeNumber(person, "m_columns", 4);
        typeNumber(person, "m_rows", 6);
        typeNodes(person, "gate { n[01-24] }");
        finish(person);
        count("A 4 x 6 tiled wall behind a gateway", 12);
        made = wall(person);
    });

    QCOMPARE(made.type, QStringLiteral("wall"));
    QCOMPARE(made.tiles, 24);
    QCOMPARE(made.windows, 24);
    QCOMPARE(made.nodes, 25);
    QCOMPARE(made.problems, 0);
}

void tst_zohostJourneys::stereoCaveOverEightNodes()
{
    Wall made;
    play([this, &made](const Person& person) {
        openNewWall(person);
        chooseKind(person, "m_cave");
        person.choose(
            "stereo", [] { return inDialog<QComboBox>("m_stereo"); }, "A window for each eye");
        typeNodes(person, "cave[1-8]");
        finish(person);
        count("A stereo cave over eight nodes", 10);
        made = wall(person);
    });

    QCOMPARE(made.type, QStringLiteral("cave"));
    QCOMPARE(made.tiles, 4);
    QCOMPARE(made.windows, 8);
    QCOMPARE(made.nodes, 8);
    QCOMPARE(made.problems, 0);
}

// A front wall is there to begin with; the left one is typed.
void tst_zohostJourneys::measuredRoom()
{
    int planes = 0;
    play([this, &planes](const Person& person) {
        openAssistant(person);
        person.click("Measured room", [] { return Person::spotOf(taskButton("m_measuredRoom")); });
        const auto table = [] { return inDialog<QTableWidget>("m_table"); };
        person.waitFor("the table has the keys",
                       [table] { return table() != nullptr && table()->hasFocus(); });
        int row = person.see([table] { return table()->currentRow(); });
        for (const char* line :
             {"wall Left size 2 m x 2 m", "join Front.left Left.right", "angle Front Left 90"}) {
            person.waitFor("the line is current",
                           [table, row] { return table()->currentRow() == row && table()->hasFocus(); });
            person.type(QLatin1String(line));
            person.press(zoDesktopInput::Key::Return);
            person.waitFor("the line is taken", [table, row, line] {
                return table()->item(row, 0)->text() == QLatin1String(line);
            });
            ++row;
        }
        person.keepPicture("journey-measured-room");
        person.click("OK", [] { return Person::spotOf(okButton()); });
        person.waitFor("the dialog is closed", [] { return QApplication::activeModalWidget() == nullptr; });
        count("A room of two walls from a tape measure", 5);
        planes = wall(person).tiles;
    });

    QCOMPARE(planes, 2);
}

void tst_zohostJourneys::deletedProjectionComesBack()
{
    Wall after;
    play(
        [this, &after](const Person& person) {
            openDisplaySetup(person);
            const auto tree = [] { return inDialog<QTreeWidget>("m_projectionTree"); };
            person.click("the projection", [tree] { return rowOf(tree(), tree()->topLevelItem(0)); });
            person.waitFor("the tree has the keys", [tree] { return tree()->hasFocus(); });
            person.press(zoDesktopInput::Key::Delete);
            person.waitFor("it is gone", [tree] { return tree()->topLevelItemCount() == 0; });
            person.click("Undo", [] { return Person::spotOf(inDialog<QPushButton>("m_undoButton")); });
            person.waitFor("it is back", [tree] { return tree()->topLevelItemCount() == 1; });
            person.click("OK", [] { return Person::spotOf(okButton()); });
            person.waitFor("the dialog is closed",
                           [] { return QApplication::activeModalWidget() == nullptr; });
            count("A projection deleted, and brought back with its viewports", 5);
            after = wall(person);
        },
        built(2, 3, "n[1-6]"));

    QCOMPARE(after.tiles, 6);
    QCOMPARE(after.problems, 0);
}

// Desktops may have the key of Duplicate for Delete, too.
void tst_zohostJourneys::windowIsDuplicatedToTheNextNode()
{
    Wall after;
    play(
        [this, &after](const Person& person) {
            openDisplaySetup(person);
            const auto tree = [] { return inDialog<QTreeWidget>("m_displayTree"); };
            const auto windows = [tree] { return tree()->topLevelItem(0)->childCount(); };
            person.click("the last window",
                         [tree] { return rowOf(tree(), tree()->topLevelItem(0)->child(1)); });
            person.waitFor("the tree has the keys", [tree] { return tree()->hasFocus(); });
            person.press(zoDesktopInput::Key::Delete);
            person.waitFor("it is gone", [windows] { return windows() == 1; });
            person.click("the first window",
                         [tree] { return rowOf(tree(), tree()->topLevelItem(0)->child(0)); });
            person.pressControl('d');
            person.waitFor("there are two again", [windows] { return windows() == 2; });
            person.click("OK", [] { return Person::spotOf(okButton()); });
            person.waitFor("the dialog is closed",
                           [] { return QApplication::activeModalWidget() == nullptr; });
            count("A window deleted, and made again from the one before it", 4);
            after = wall(person);
        },
        built(1, 2, "n[1-2]"));

    QCOMPARE(after.windows, 2);
    QCOMPARE(after.problems, 0);
}

void tst_zohostJourneys::spareTakesTheTileOfAFailedNode()
{
    Wall after;
    QString text;
    play(
        [this, &after, &text](const Person& person) {
            disableNode(person, "n5");
            openDisplaySetup(person);
            const auto tree = [] { return inDialog<QTreeWidget>("m_displayTree"); };
            person.click("its window", [tree] { return rowOf(tree(), tree()->topLevelItem(0)->child(4)); });
            person.choose(
                "Render node", [] { return inDialog<QComboBox>("m_renderNode"); }, "spare");
            person.click("OK", [] { return Person::spotOf(okButton()); });
            person.waitFor("the dialog is closed",
                           [] { return QApplication::activeModalWidget() == nullptr; });
            count("A failed node replaced by a spare one", 8);
            after = wall(person);
            text = person.see([] { return clusterWindow()->property("configuration").toString(); });
        },
        built(2, 3, "n[1-6] spare"));

    QCOMPARE(after.windows, 6);
    QCOMPARE(after.problems, 0);
    QVERIFY(text.contains("node=\"spare\""));
    QVERIFY(!text.contains("node=\"n5\""));
}

void tst_zohostJourneys::reportIsSaved()
{
    const QString file = m_directory.filePath("journey.pdf");
    play(
        [this, file](const Person& person) {
            openAssistant(person);
            person.click("Report", [] { return Person::spotOf(taskButton("m_report")); });
            person.click("Save as PDF", [] { return Person::spotOf(inDialog<QPushButton>("m_save")); });
            // The name of the configuration stands there, in its folder.
            person.waitFor("the name has the keys", [] {
                auto* field = inDialog<QLineEdit>("fileNameEdit");
                return field != nullptr && field->hasFocus();
            });
            person.press(zoDesktopInput::Key::Return);
            person.waitFor("the report is there", [file] { return QFile::exists(file); });
            count("The report as PDF", 4);
            person.waitFor("the report is told", [file] {
                auto* message = inDialog<QLabel>("m_message");
                return message != nullptr && message->text().contains(file);
            });
            person.keepPicture("journey-report");
            person.press(zoDesktopInput::Key::Escape);
            person.waitFor("the dialog is closed",
                           [] { return QApplication::activeModalWidget() == nullptr; });
        },
        built(2, 3, "n[1-6]"));

    QFile pdf(file);
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    QVERIFY(pdf.readAll().startsWith("%PDF-"));
}

void tst_zohostJourneys::nodeOfFiveHundredIsDisabled()
{
    QString text;
    play(
        [this, &text](const Person& person) {
            const auto filter = [] { return clusterWindow()->findChild<QLineEdit*>("m_filter"); };
            person.click("the filter", [filter] { return Person::spotOf(filter()); });
            person.waitFor("the filter has the keys", [filter] { return filter()->hasFocus(); });
            person.type("317");
            disableNode(person, "node317");
            count("One node of 500 found and disabled", 4);
            text = person.see([] { return clusterWindow()->property("configuration").toString(); });
        },
        built(20, 25, "node[001-500]"));

    QDomDocument document;
    QVERIFY(document.setContent(text));
    QStringList disabled;
    const QDomNodeList nodes = document.elementsByTagName("node");
    QCOMPARE(nodes.size(), 500);
    for (int i = 0; i < nodes.size(); ++i) {
        if (nodes.at(i).toElement().attribute("enabled") == QLatin1String("false"))
            disabled << nodes.at(i).toElement().attribute("name");
    }
    QCOMPARE(disabled, QStringList("node317"));
}

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QApplication application(argc, argv);
    tst_zohostJourneys test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_zohostJourneys.moc"
