#include "zoDialogRobot.h"
#include "zoShownTexts.h"
#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoHostTime.h>
#include <zoKernelServiceFactory.h>
#include <zoLocalClusterService.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDomDocument>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <memory>

namespace
{
// One of everything that has texts of its own, with all that can be wrong. Its names are numbers, so that
// letters are texts.
const char Configuration[] = R"(<cluster version="1">
 <master>
  <network description="5"><node name="1"/><node name="2" enabled="false"/><node name="2"/></network>
  <network/>
 </master>
 <projection name="10" type="wall" rows="2" columns="2" distance="1500"/>
 <projection name="20" type="powerwall" rows="1" columns="2" overlapx="100" width="3000" height="2000"
  distance="1500" edgeblending="true"/>
 <projection name="30" type="cave" rows="1" columns="1" cavewidth="2000" caveheight="2000" cavedepth="2000"
  left="true" right="true" top="true" bottom="true" front="true" back="true"/>
 <projection name="40" type="plane" x1="1000" y1="0" z1="-900" x2="-1000" y2="0" z2="-900"
  x3="-1000" y3="900" z3="-900"/>
 <projection name="50" type="plane" x1="0" y1="0" z1="-900" x2="900" y2="0" z2="-900"
  x3="1500" y3="900" z3="-900"/>
 <projection name="60" type="plane" x1="-1" y1="-1" z1="-1" x2="1" y2="-1" z2="-1" x3="1" y3="1" z3="-1"/>
 <projection name="70" type="plane" x1="0" y1="0" z1="-900" x2="0" y2="0" z2="-900" x3="0" y3="900" z3="-900"/>
 <projection name="80" type="plane" x1="-900" y1="0" z1="-900" x2="0" y2="0" z2="-900" x3="0" y3="900" z3="-900"
  edgeblending="true" leftedge="0.4" rightedge="0" topedge="0" bottomedge="0"/>
 <projection name="90" type="tile" rows="1" columns="1"/>
 <display eyeseparation="65" user="1">
  <window node="1" screen="0" x="0" y="0" width="800" height="600" fullscreen="false">
   <viewport projection="40" position="left" x1="0" y1="0" x2="0.5" y2="1" flipx="true" eye="left"/></window>
  <window node="1" screen="0" x="100" y="0" width="800" height="600" fullscreen="false">
   <viewport projection="50" position="fill" eye="right"/></window>
  <window node="2 1" screen="-1" x="0" y="0" width="800" height="600" fullscreen="true">
   <viewport projection="60" position="fill" eye="redcyan"/></window>
  <window node="1" screen="-2" x="0" y="0" width="800" height="600" fullscreen="true"><viewport/></window>
  <window screen="0" x="0" y="0" width="800" height="600"><viewport projection="60" position="fill" eye="redcyan"/></window>
 </display>
 <display user="2">
  <window node="1" screen="2" x="0" y="0" width="800" height="600" fullscreen="true">
   <viewport projection="60" position="fill" eye="left"/></window>
 </display>
</cluster>)";

// What is no text although it has letters: names that documents hold, and names of programs and files.
bool isName(const QString& text)
{
    static const QRegularExpression names(QStringLiteral(
        "^((\\d+\\[\\*\\] - )?zohost( \\(\\))?"    // the program, and what its session is
        "|Camera \\d+"                             // scenes and documents know cameras by name
        "|\\d+ (Left|Right|Top|Bottom|Front|Back)" // generated planes, by which viewports find them
        "|(\\d+ )?row:\\d+ col:\\d+"
        "|\\d+ (Left|Right|Top|Bottom|Front|Back) row:\\d+ col:\\d+"
        "|localhost:?"
        "|([\\d.]+ )?(mm|cm|m|in|ft)" // units
        "|English|Deutsch"            // languages, each in its own
        "|Eigen|Qt|GNU C(\\+\\+)? Library|Open MPI|(lib)?zo\\w+(\\.so)?|/\\S+"
        "|[A-Z]+[a-z]*-[\\d.]+(-[\\w-]+)?( WITH \\S+)?" // licences
        "|Apache License\\s[\\s\\S]*"
        "|(cave|powerwall|tiledwall)-[\\w-]+" // samples
        "|[a-z]+(-[a-z]+)+"                   // codes of problems, the same in all languages
        "|x|y|z|X|Y|Z"
        "|\\*\\.\\w+)$")); // a pattern of file names
    return names.match(text).hasMatch();
}

bool hasLetters(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetter(); });
}

// Without what only lays out rich text.
QString withoutMarkup(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("</?(qt|br|p|b|i|html|head|body|small)\\s*/?>")));
}
} // namespace

// Everything that a person can read in the windows of host and module went through the translation.
class tst_zohostTexts final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void unmarkedTextIsFound();
    void mainWindow();
    void problemsInTheStatusBar();
    void propertiesOfEachRow();
    void contextMenus();
    void displaySetup();
    void picturesOfRoomAndScreens();
    void hostsDialog();
    void documentDialog();
    void fileDialogs_data();
    void fileDialogs();
    void importOfAFileWithoutParameters();
    void session();
    void questionsBeforeAStart();
    void preferences();
    void about();
    void startPage();
    void earlierConfigurations();
    void questionBeforeClosing();
    void lostFile();
    void failures();

private:
    zoHostMainWindow* window() const;
    QWidget* module() const { return window()->moduleWindows().constFirst(); }
    zoClusterService* cluster() const { return zoKernelServiceFactory::getService<zoClusterService>(); }
    QAction* action(const QString& text) const;
    QString write(const QString& name, const QByteArray& text) const;
    void load();
    void read(QWidget* shown);
    void readText(const QString& place, const QString& text);
    void readLog();
    void readMenuOf(QWidget* widget, const QPoint& position);
    void readDialogOf(const std::function<void()>& trigger, const std::function<void(QDialog*)>& inside = {});
    void readQuestionOf(const std::function<void()>& trigger);
    QString takeUnmarked();

    std::unique_ptr<QTemporaryDir> m_directory;
    zoMarkingTranslator m_translator;
    std::unique_ptr<zoHostApplication> m_host;
    QStringList m_read;
    QStringList m_unmarked;
};

void tst_zohostTexts::initTestCase()
{
    zoTestCase::initTestCase();
    qunsetenv("ZOKE_DATA");
    QCoreApplication::setOrganizationName("zo");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void tst_zohostTexts::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, QFile::encodeName(m_directory->path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory->path());
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
    zoHostOptions options;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    QCOMPARE(window()->moduleWindows().size(), 1);
    window()->show();
    m_read.clear();
    m_unmarked.clear();
}

void tst_zohostTexts::cleanup()
{
    m_host.reset();
    QCoreApplication::removeTranslator(&m_translator);
    zoTestCase::cleanup();
}

zoHostMainWindow* tst_zohostTexts::window() const
{
    return qobject_cast<zoHostMainWindow*>(
        zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget());
}

// By its text in English.
QAction* tst_zohostTexts::action(const QString& text) const
{
    const QList<QAction*> actions = window()->findChildren<QAction*>();
    for (QAction* candidate : actions) {
        if (candidate->text() == QChar(0x27e6) + text + QChar(0x27e7))
            return candidate;
    }
    qFatal("no action %s", qPrintable(text));
    return nullptr;
}

QString tst_zohostTexts::write(const QString& name, const QByteArray& text) const
{
    QFile file(m_directory->filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
    return file.fileName();
}

void tst_zohostTexts::load()
{
    const QByteArray name = write("1", Configuration).toLatin1();
    QObject* object = window()->moduleObject("loadConfig(const char*)");
    QVERIFY(QMetaObject::invokeMethod(object, "loadConfig", Q_ARG(const char*, name.constData())));
    QCoreApplication::processEvents();
}

void tst_zohostTexts::read(QWidget* shown)
{
    const QVector<zoShownTexts::Text> texts = zoShownTexts::of(shown);
    for (const zoShownTexts::Text& text : texts)
        readText(text.place, text.text);
}

void tst_zohostTexts::readText(const QString& place, const QString& text)
{
    m_read << text;
    const QString rest = withoutMarkup(zoMarkingTranslator::unmarked(text)).trimmed();
    if (hasLetters(rest) && !isName(rest) && !rest.startsWith(m_directory->path()))
        m_unmarked << QStringLiteral("%1: %2").arg(place, text);
}

void tst_zohostTexts::readLog()
{
    const auto* log = window()->findChild<QTextEdit*>("LogView");
    QVERIFY(log != nullptr);
    // Names of months are the toolkit's.
    readText("log", log->toPlainText().remove(zoHostTime::day(QDate::currentDate())));
}

void tst_zohostTexts::readMenuOf(QWidget* widget, const QPoint& position)
{
    bool seen = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        QWidget* popup = QApplication::activePopupWidget();
        if (popup == nullptr)
            return;
        read(popup);
        seen = true;
        popup->close();
    });
    timer.start(1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, widget->mapToGlobal(position));
    QApplication::sendEvent(widget, &event);
    QVERIFY(seen);
}

// Reads the modal dialog that the trigger runs, and cancels it.
void tst_zohostTexts::readDialogOf(const std::function<void()>& trigger,
                                   const std::function<void(QDialog*)>& inside)
{
    const zoDialogRobot robot([&](QDialog* dialog) {
        read(dialog);
        if (inside)
            inside(dialog);
        dialog->reject();
    });
    trigger();
    QCOMPARE(robot.handled(), 1);
}

// Other than the dialog robot it waits for a message box, past the overlay of a start.
void tst_zohostTexts::readQuestionOf(const std::function<void()>& trigger)
{
    int seen = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible())
            return;
        read(box);
        ++seen;
        box->reject();
    });
    timer.start(1);
    trigger();
    QCOMPARE(seen, 1);
}

QString tst_zohostTexts::takeUnmarked()
{
    m_unmarked.removeDuplicates();
    QString unmarked;
    for (const QString& text : qAsConst(m_unmarked))
        unmarked += text + QLatin1Char('\n');
    m_unmarked.clear();
    return unmarked;
}

void tst_zohostTexts::unmarkedTextIsFound()
{
    QDialog dialog;
    dialog.setWindowTitle(tr("Marked %1").arg(7));
    new QLabel(tr("Marked") + ": rest", &dialog);
    auto* combo = new QComboBox(&dialog);
    combo->addItems({"Entry", "12"});
    auto* button = new QPushButton("Button", &dialog);
    button->setToolTip("Tip");

    read(&dialog);

    QCOMPARE(takeUnmarked().count(QLatin1Char('\n')), 4);
}

void tst_zohostTexts::mainWindow()
{
    load();

    read(window());
    readLog();

    QCOMPARE(takeUnmarked(), QString());
    // Host and module, menus, trees, panels and the status bar were among what was read.
    for (const char* text : {"Fi&le", "&Earlier configurations...", "Data compression", "Auto", "Show tiles",
                             "Network (5)", "Rendering", "QuickActions"})
        QVERIFY2(m_read.contains(QChar(0x27e6) + QLatin1String(text) + QChar(0x27e7)), text);
    QVERIFY(m_read.size() > 150);
}

void tst_zohostTexts::problemsInTheStatusBar()
{
    load();
    QTRY_VERIFY(!m_read.filter("problems").isEmpty() || (read(module()), false));
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::propertiesOfEachRow()
{
    load();
    auto* tree = module()->findChild<QTreeWidget*>("m_treeWidget");
    QVERIFY(tree != nullptr);
    for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
        tree->setCurrentItem(*it);
        read(module());
    }
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::contextMenus()
{
    load();
    auto* hosts = module()->findChild<QTreeWidget*>("m_treeWidget");
    QVERIFY(hosts != nullptr);
    readMenuOf(hosts->viewport(), hosts->visualItemRect(hosts->topLevelItem(0)).center());
    auto* log = window()->findChild<QTextEdit*>("LogView");
    readMenuOf(log->viewport(), QPoint(5, 5));
    action("Display Setup...")->trigger();
    auto* setup = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QVERIFY(setup != nullptr);
    const QList<QTreeWidget*> both = setup->findChildren<QTreeWidget*>();
    QCOMPARE(both.size(), 2);
    for (QTreeWidget* tree : both) {
        tree->setCurrentItem(tree->topLevelItem(0));
        readMenuOf(tree->viewport(), tree->visualItemRect(tree->topLevelItem(0)).center());
    }
    setup->reject();

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::displaySetup()
{
    load();
    action("Display Setup...")->trigger();
    auto* setup = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QVERIFY(setup != nullptr);
    // The rows of the problems come with a turn of the event loop.
    QTRY_VERIFY(!m_read.filter("has no area").isEmpty() || (read(setup), false));
    const QList<QTreeWidget*> trees = setup->findChildren<QTreeWidget*>();
    for (QTreeWidget* tree : trees) {
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
            tree->setCurrentItem(*it);
            QCoreApplication::processEvents();
            read(setup);
        }
    }
    setup->reject();

    QCOMPARE(takeUnmarked(), QString());
    for (const char* text :
         {"shows no projection", "has no render node", "which is disabled", "overlap on one screen",
          "No viewport shows", "More than one viewport", "to the left eye", "degrees off", "faces away",
          "measured in metres", "are called", "holds no node"})
        QVERIFY2(!m_read.filter(text).isEmpty(), text);
}

// Painted, so read from the files that they are saved as.
void tst_zohostTexts::picturesOfRoomAndScreens()
{
    load();
    action("Display Setup...")->trigger();
    auto* setup = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QVERIFY(setup != nullptr);
    setup->resize(1900, 1200); // room for the texts
    QPushButton* save = nullptr;
    const QList<QPushButton*> buttons = setup->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text().contains("Save picture..."))
            save = button;
    }
    QVERIFY(save != nullptr);
    QTabWidget* tabs = nullptr;
    for (QWidget* parent = save->parentWidget(); parent != nullptr && tabs == nullptr;
         parent = parent->parentWidget())
        tabs = parent->findChild<QTabWidget*>();
    QVERIFY(tabs != nullptr);
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        const QString file = m_directory->filePath(QStringLiteral("%1.svg").arg(tab));
        const zoDialogRobot robot([&](QDialog* dialog) {
            read(dialog);
            auto* files = qobject_cast<QFileDialog*>(dialog);
            QVERIFY(files != nullptr);
            files->selectFile(file);
            files->findChild<QLineEdit*>("fileNameEdit")->setText(file);
            static_cast<QDialog*>(files)->accept();
        });
        save->click();
        QCOMPARE(robot.handled(), 1);
        QFile written(file);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QDomDocument svg;
        QVERIFY(svg.setContent(&written));
        const QDomNodeList texts = svg.elementsByTagName("text");
        QVERIFY(texts.count() > 5);
        for (int i = 0; i < texts.count(); ++i)
            readText(QStringLiteral("picture %1").arg(tab), texts.at(i).toElement().text());
    }
    setup->reject();

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::hostsDialog()
{
    readDialogOf([this] { action("Cluster config...")->trigger(); },
                 [this](QDialog* dialog) {
                     readDialogOf(
                         [dialog] { dialog->findChild<QAbstractButton*>("m_browseButton")->click(); });
                 });
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::documentDialog()
{
    QVERIFY(QMetaObject::invokeMethod(window()->moduleObject("setAdvanced(bool)"), "setAdvanced",
                                      Q_ARG(bool, true)));

    readDialogOf([this] { action("Edit configuration...")->trigger(); });

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::fileDialogs_data()
{
    QTest::addColumn<QString>("entry");

    QTest::newRow("load") << "Load...";
    QTest::newRow("save-as") << "Save As...";
    QTest::newRow("import") << "Import legacy...";
}

void tst_zohostTexts::fileDialogs()
{
    QFETCH(QString, entry);

    readDialogOf([&] { action(entry)->trigger(); });

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::importOfAFileWithoutParameters()
{
    const QString file = write("1.xml", "<none/>");
    const zoDialogRobot robot([&](QDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
        dialog->accept();
    });

    action("Import legacy...")->trigger();
    read(window());

    QVERIFY(!m_read.filter("holds no parameters").isEmpty());
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::session()
{
    connect(cluster(), &zoClusterService::progressChanged, m_host.get(), [this](const QString& text) {
        readText("progress", text);
        const QList<QDialog*> dialogs = window()->findChildren<QDialog*>();
        for (QDialog* dialog : dialogs) {
            if (dialog->isVisible())
                read(dialog);
        }
    });
    action("Start")->trigger();
    QVERIFY(cluster()->isRunning());
    action("Show tiles")->trigger();
    action("Show test image")->trigger();
    readDialogOf([this] { action("Run network speed test...")->trigger(); });
    read(window());
    action("Stop")->trigger();
    readLog();

    QVERIFY(!m_read.filter("Connecting to").isEmpty());
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::questionsBeforeAStart()
{
    zoLocalClusterService other;
    other.applyConfig(cluster()->currentConfig());
    QVERIFY(other.start());

    readQuestionOf([this] { action("Start")->trigger(); });
    other.stop();
    static_cast<zoLocalClusterService*>(cluster())->setAvailableMemory([] { return 0; });
    readQuestionOf([this] { action("Start")->trigger(); });
    readLog();

    QVERIFY(!m_read.filter("performance problems").isEmpty());
    QVERIFY(!m_read.filter("server instability").isEmpty());

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::preferences()
{
    window()->showPreferences();
    auto* dialog = window()->findChild<QDialog*>("PreferencesDialog");
    QVERIFY(dialog != nullptr);
    read(dialog);
    readDialogOf([dialog] { dialog->findChild<QAbstractButton*>("m_browseButton")->click(); });
    dialog->reject();

    QVERIFY(!m_read.filter("Default Config File").isEmpty());
    QVERIFY(!m_read.filter("Memory per node").isEmpty());
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::about()
{
    window()->showAbout();
    auto* dialog = window()->findChild<QDialog*>("AboutDialog");
    QVERIFY(dialog != nullptr);
    read(dialog);
    dialog->reject();

    QVERIFY(!m_read.filter("LGPL").isEmpty());
    // The name that the module's file tells.
    QCOMPARE(takeUnmarked(), QStringLiteral("HostMainWindow/AboutDialog/AboutTabs/qt_tabwidget_stackedwidget/"
                                            "AboutPrograms row: Cluster\n"));
}

void tst_zohostTexts::startPage()
{
    window()->showStartPage();
    auto* page = window()->findChild<QWidget*>("StartPage");
    QVERIFY(page != nullptr);
    read(page);
    window()->showDocument();

    QVERIFY(!m_read.filter("Begin with one node").isEmpty());
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::earlierConfigurations()
{
    window()->showEarlierConfigurations();
    auto* empty = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QVERIFY(empty != nullptr);
    read(empty);
    empty->reject();

    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::questionBeforeClosing()
{
    action("Add network")->trigger();
    action("Add compute node")->trigger();

    readDialogOf([this] { window()->close(); });

    QVERIFY(window()->isVisible());
    QCOMPARE(takeUnmarked(), QString());
}

void tst_zohostTexts::lostFile()
{

    readDialogOf([this] { window()->openConfiguration(m_directory->filePath("1")); });
    readLog();

    QCOMPARE(takeUnmarked(), QString());
}

// What only the log tells.
void tst_zohostTexts::failures()
{
    QObject* object = window()->moduleObject("loadConfig(const char*)");
    QVERIFY(QMetaObject::invokeMethod(object, "loadConfig", Q_ARG(const char*, "/1")));
    QVERIFY(QMetaObject::invokeMethod(object, "setNetworkOption", Q_ARG(int, 77), Q_ARG(QString, "1"),
                                      Q_ARG(QString, "1")));
    readLog();

    // Two lines that scripts look for are the same in every language; the rest is marked as translated.
    QString rest = takeUnmarked();
    for (const char* line : {"Unable to load cluster config /1", "Network 77 not found."}) {
        QVERIFY2(rest.contains(QLatin1String(line)), line);
        rest.remove(QLatin1String(line));
    }
    rest.remove(QStringLiteral("log: "));
    rest.remove(QRegularExpression(QStringLiteral("\\d\\d:\\d\\d:\\d\\d|\\x{27e6}[^\\x{27e7}]*\\x{27e7}")));
    QCOMPARE(rest.trimmed(), QString());
}

ZO_TEST_MAIN(tst_zohostTexts)
#include "tst_zohostTexts.moc"
