#include "zoDesktopInput.h"
#include "zoDesktopPerson.h"
#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDomDocument>
#include <QDrag>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QThread>
#include <QToolBar>
#include <QTreeWidget>
#include <QWindow>

#include <atomic>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

namespace
{
constexpr int LookMs = 5;

using Person = zoDesktopPerson;
using Spot = zoDesktopPerson::Spot;

Spot spotOf(QWidget* widget)
{
    return zoDesktopPerson::spotOf(widget);
}

// A window that files are dragged from; it would rather give them away than share them.
class FileManager final : public QLabel
{
public:
    explicit FileManager(QWidget* parent) : QLabel("files", parent, Qt::Dialog)
    {
        setAlignment(Qt::AlignCenter);
        resize(160, 80);
        qApp->installEventFilter(this);
    }

    bool isDragging() const { return m_dragging; }
    bool hasEntered() const { return m_entered; }        // the host's window
    Qt::DropAction offer() const { return m_offer; }     // what a drop would do now
    Qt::DropAction outcome() const { return m_outcome; } // of the last drag

    QString file;

protected:
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (m_dragging || !(event->buttons() & Qt::LeftButton))
            return;
        auto* urls = new QMimeData;
        urls->setUrls({QUrl::fromLocalFile(file)});
        auto* drag = new QDrag(this);
        drag->setMimeData(urls);
        connect(drag, &QDrag::actionChanged, this, [this](Qt::DropAction action) { m_offer = action; });
        m_dragging = true;
        m_entered = false;
        m_offer = Qt::IgnoreAction;
        m_outcome = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
        m_dragging = false;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::DragEnter && watched->isWindowType())
            m_entered = m_entered || watched == parentWidget()->windowHandle();
        return QLabel::eventFilter(watched, event);
    }

private:
    bool m_dragging = false;
    bool m_entered = false;
    Qt::DropAction m_offer = Qt::IgnoreAction;
    Qt::DropAction m_outcome = Qt::IgnoreAction;
};

zoHostMainWindow* hostWindow()
{
    auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
    return service == nullptr ? nullptr : qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
}

QMainWindow* clusterWindow()
{
    return qobject_cast<QMainWindow*>(hostWindow()->moduleWindows().value(0));
}

// A widget of the dialog that is open, or null.
template <class Widget>
Widget* inDialog(const char* name)
{
    const QWidget* dialog = QApplication::activeModalWidget();
    return dialog == nullptr ? nullptr : dialog->findChild<Widget*>(QLatin1String(name));
}

QWidget* dialogButton(QDialogButtonBox::StandardButton which)
{
    auto* box = inDialog<QDialogButtonBox>("m_buttonBox");
    return box == nullptr ? nullptr : box->button(which);
}

QWidget* toolButton(const char* text)
{
    auto* bar = clusterWindow()->findChild<QToolBar*>(QStringLiteral("toolBar"));
    return bar->widgetForAction(Person::actionOf(bar->actions(), QLatin1String(text)));
}

Spot rowOf(QTreeView* view, const QModelIndex& index)
{
    return view == nullptr ? Spot() : Spot{view->viewport(), view->visualRect(index)};
}

QTreeWidget* projections()
{
    return inDialog<QTreeWidget>("m_projectionTree");
}

QTreeWidget* outputs()
{
    return inDialog<QTreeWidget>("m_displayTree");
}

// The names of all rows of the host tree, from the top.
QStringList hosts()
{
    QStringList names;
    QTreeWidgetItemIterator it(clusterWindow()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget")));
    for (; *it; ++it)
        names << (*it)->text(0);
    return names;
}

// The names of all nodes, from the top.
QStringList nodeNames()
{
    QStringList names = hosts();
    names.removeAll(QStringLiteral("Options"));
    names.removeAll(QStringLiteral("Network"));
    return names;
}

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

// The whole way on a desktop: the host, the module from its file, a window manager, keys and mouse from
// outside.
class tst_zohostDesktop final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void wallIsBuiltSavedAndLoaded();
    void filesAreDroppedAndWorkIsAskedAbout();
    void startPageLeadsToASampleAndTheManual();
    void nodesAreDraggedToOtherNetworks();

private:
    // With the file, where there is one.
    void play(const std::function<void(const Person&)>& act, const QString& configFile = QString());
    void dragNodes(const Person& person) const;
    // Held over the middle of another row; whether the host tree would take them there.
    void dragRow(const Person& person, const QString& node, const QString& overName, bool isTaken) const;
    void dropFiles(const Person& person) const;
    void dropFile(const Person& person, const QString& fileName, bool isTaken) const;
    void buildWall(const Person& person) const;
    void beginWithASample(const Person& person) const;
    void editHosts(const Person& person) const;
    void makeWall(const Person& person) const;
    void makeWindow(const Person& person, int display, int window, const QString& node, int tile) const;
    void answerFileDialog(const Person& person, const QString& fileName) const;

    QTemporaryDir m_directory;
    zoDesktopInput m_input;
    const QStringList m_nodes{"wall1", "wall2", "wall3", "gate1", "deep1", "deep2"};
};

void tst_zohostDesktop::initTestCase()
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

void tst_zohostDesktop::init()
{
    QSettings().clear();
    // What these journeys begin with is the window of the module.
    QSettings().setValue("Preferences/Show start page", "false");
}

void tst_zohostDesktop::wallIsBuiltSavedAndLoaded()
{
    play([this](const Person& person) { buildWall(person); });
}

void tst_zohostDesktop::filesAreDroppedAndWorkIsAskedAbout()
{
    play([this](const Person& person) { dropFiles(person); });
}

void tst_zohostDesktop::startPageLeadsToASampleAndTheManual()
{
    QSettings().remove("Preferences/Show start page");

    play([this](const Person& person) { beginWithASample(person); });
}

void tst_zohostDesktop::nodesAreDraggedToOtherNetworks()
{
    const QString file = m_directory.filePath("nodes.zhpc");
    QFile hosts(file);
    QVERIFY(hosts.open(QIODevice::WriteOnly));
    hosts.write(
        "<cluster version=\"1\"><master><network><node name=\"a\"/><node name=\"b\"/><node name=\"gate\">"
        "<network><node name=\"c\"/></network></node></network></master></cluster>\n");
    hosts.close();

    play([this](const Person& person) { dragNodes(person); }, file);
}

// Runs the host, as the program does, until the person has closed it.
void tst_zohostDesktop::play(const std::function<void(const Person&)>& act, const QString& configFile)
{
    zoHostOptions options;
    options.configFile = configFile;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    zoHostApplication host(options);
    std::atomic<bool> hasLeft{false};
    std::string failure;

    std::thread thread([this, &act, &failure, &hasLeft] {
        const Person person(m_input);
        try {
            person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });
            act(person);
            person.waitFor("the host is closed", [] { return !hostWindow()->isVisible(); });
        } catch (const std::exception& exception) {
            failure = exception.what();
            person.keepPicture("desktop-failure");
            person.see([] {
                QCoreApplication::exit(1);
                return true;
            });
        }
        hasLeft = true;
    });
    const int exitCode = host.run();
    // The person may still be looking.
    while (!hasLeft)
        QCoreApplication::processEvents(QEventLoop::AllEvents, LookMs);
    thread.join();

    QVERIFY2(failure.empty(), failure.c_str());
    QCOMPARE(exitCode, 0);
}

void tst_zohostDesktop::buildWall(const Person& person) const
{
    editHosts(person);
    makeWall(person);
    person.waitFor("the title shows unsaved work", [] {
        return hostWindow()->windowHandle()->title() == QLatin1String("Untitled* - zohost");
    });
    person.keepPicture("desktop-built");

    QMenuBar* menus = person.see([] { return clusterWindow()->menuBar(); });
    const QString first = m_directory.filePath("wall.zhpc");
    person.chooseMenu(menus, "&File", "Save");
    answerFileDialog(person, first);
    person.waitFor("the title shows the file", [] {
        return hostWindow()->windowHandle()->title() == QLatin1String("wall.zhpc - zohost");
    });
    const QByteArray text = contentOf(first);

    person.chooseMenu(menus, "&File", "New");
    person.waitFor("the window is empty", [this] { return !hosts().contains(m_nodes.constFirst()); });
    person.waitFor("no file is open", [] { return clusterWindow()->windowFilePath().isEmpty(); });

    person.chooseMenu(menus, "&File", "Load...");
    answerFileDialog(person, first);
    person.waitFor("the wall is back", [this] { return hosts().contains(m_nodes.constLast()); });

    const QString second = m_directory.filePath("again.zhpc");
    person.chooseMenu(menus, "&File", "Save As...");
    answerFileDialog(person, second);
    person.waitFor("the second file is written", [second] { return QFile::exists(second); });
    if (contentOf(second) != text)
        throw std::runtime_error("read and written again, the text is another one:\n" +
                                 contentOf(second).toStdString() + "\ninstead of\n" + text.toStdString());

    // And it is the wall that was asked for.
    QDomDocument document;
    if (!document.setContent(text))
        throw std::runtime_error("the file is no document");
    QStringList shown;
    const QDomNodeList windows = document.elementsByTagName("window");
    for (int i = 0; i < windows.size(); ++i) {
        const QDomElement window = windows.at(i).toElement();
        shown << window.attribute("node") + " " +
                     window.firstChildElement("viewport").attribute("projection");
    }
    const QStringList expected{"wall1 Projection1 row:1 col:1", "wall2 Projection1 row:1 col:2",
                               "wall3 Projection1 row:1 col:3", "gate1 Projection1 row:2 col:1",
                               "deep1 Projection1 row:2 col:2", "deep2 Projection1 row:2 col:3"};
    if (shown != expected || document.elementsByTagName("display").size() != 2 ||
        document.elementsByTagName("network").size() != 2)
        throw std::runtime_error("another wall was built:\n" + text.toStdString());

    // Nothing is unsaved, so nothing is asked.
    person.pressControl('q');
    person.waitFor("the host is closed",
                   [] { return hostWindow() == nullptr || !hostWindow()->isVisible(); });
}

void tst_zohostDesktop::beginWithASample(const Person& person) const
{
    const auto samples = [] { return hostWindow()->findChild<QListWidget*>("StartSamples"); };
    const auto manual = [] { return hostWindow()->findChild<QWidget*>("ManualWindow"); };
    person.keepPicture("desktop-start");
    person.click("the sample", [samples] {
        const QList<QListWidgetItem*> found = samples() == nullptr
                                                  ? QList<QListWidgetItem*>()
                                                  : samples()->findItems("powerwall", Qt::MatchStartsWith);
        return found.isEmpty() ? Spot()
                               : Spot{samples()->viewport(), samples()->visualItemRect(found.constFirst())};
    });
    person.waitFor("its nodes are there", [] { return hosts().contains("wall-r1-c1"); });
    // It is nobody's file: Save would ask for a name, and nothing is unsaved yet.
    person.waitFor("the title shows no file",
                   [] { return hostWindow()->windowHandle()->title() == QLatin1String("zohost"); });

    person.press(zoDesktopInput::Key::F1);
    person.waitFor("the manual is active",
                   [manual] { return manual() != nullptr && manual()->isActiveWindow(); });
    person.keepPicture("desktop-manual");
    person.press(zoDesktopInput::Key::Escape);
    person.waitFor("the manual is closed", [manual] { return !manual()->isVisible(); });
    person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });

    person.pressControl('q');
    person.waitFor("the host is closed",
                   [] { return hostWindow() == nullptr || !hostWindow()->isVisible(); });
}

void tst_zohostDesktop::editHosts(const Person& person) const
{
    const QString text = "wall1 - wall3, gate1 { deep1 - deep2 }";
    person.click("Cluster config...", [] { return spotOf(toolButton("Cluster config...")); });
    person.fill(
        "the hosts text", [] { return inDialog<QPlainTextEdit>("m_textEdit"); }, text,
        [] { return inDialog<QPlainTextEdit>("m_textEdit")->toPlainText(); });
    person.click("OK", [] { return spotOf(dialogButton(QDialogButtonBox::Ok)); });
    person.waitFor("the six nodes in their networks", [this] {
        QStringList found = hosts();
        QStringList nodes;
        for (const QString& name : qAsConst(found)) {
            if (m_nodes.contains(name))
                nodes << name;
        }
        return nodes == m_nodes && !found.contains("localhost");
    });
}

void tst_zohostDesktop::makeWall(const Person& person) const
{
    person.click("Display Setup...", [] { return spotOf(toolButton("Display Setup...")); });
    person.click("Add Projection", [] { return spotOf(inDialog<QPushButton>("m_addProjectionButton")); });
    person.waitFor("one projection", [] { return projections()->topLevelItemCount() == 1; });
    person.choose(
        "Type", [] { return inDialog<QComboBox>("m_type"); }, "Power Wall");
    for (const auto& entry : {std::make_pair("m_columns", 3), std::make_pair("m_rows", 2)}) {
        const char* name = entry.first;
        const int value = entry.second;
        const auto field = [name] {
            auto* box = inDialog<QSpinBox>(name);
            return box == nullptr ? nullptr : box->findChild<QLineEdit*>();
        };
        person.fill(name, field, QString::number(value), [field] { return field()->text(); });
        person.press(zoDesktopInput::Key::Tab);
        person.waitFor(name, [name, value] { return inDialog<QSpinBox>(name)->value() == value; });
    }
    person.waitFor("six tiles", [] { return projections()->topLevelItem(0)->childCount() == 6; });

    // The display that a new configuration has takes the upper row of the wall, another one the lower row.
    for (int i = 0; i < 3; ++i)
        makeWindow(person, 0, i, m_nodes.at(i), i);
    person.click("Add Display", [] { return spotOf(inDialog<QPushButton>("m_addDisplayButton")); });
    person.waitFor("two displays", [] { return outputs()->topLevelItemCount() == 2; });
    for (int i = 0; i < 3; ++i)
        makeWindow(person, 1, i, m_nodes.at(3 + i), 3 + i);
    person.waitFor("everything would light up",
                   [] { return inDialog<QAbstractItemView>("m_problemList")->model()->rowCount() == 0; });
    person.keepPicture("desktop-setup");
    person.click("OK", [] { return spotOf(dialogButton(QDialogButtonBox::Ok)); });
    person.waitFor("the dialog is closed", [] { return QApplication::activeModalWidget() == nullptr; });
}

void tst_zohostDesktop::makeWindow(const Person& person, int display, int window, const QString& node,
                                   int tile) const
{
    person.click("the display",
                 [display] { return rowOf(outputs(), outputs()->model()->index(display, 0)); });
    person.waitFor("the display is current",
                   [display] { return outputs()->currentItem() == outputs()->topLevelItem(display); });
    person.click("Add Window", [] { return spotOf(inDialog<QPushButton>("m_addWindowButton")); });
    const auto windowItem = [display, window] { return outputs()->topLevelItem(display)->child(window); };
    person.waitFor("the viewport is current", [windowItem] {
        return windowItem() != nullptr && outputs()->currentItem() == windowItem()->child(0);
    });

    // The surface: the wall opens with a key, its tiles are rows.
    const auto planes = [] { return inDialog<QTreeView>("m_planeView"); };
    person.click("the wall", [planes] { return rowOf(planes(), planes()->model()->index(0, 0)); });
    person.waitFor("the wall is chosen", [planes] { return planes()->hasFocus(); });
    if (!person.see([planes] { return planes()->isExpanded(planes()->model()->index(0, 0)); }))
        person.press(zoDesktopInput::Key::Right);
    person.click("the tile", [planes, tile] {
        const QModelIndex wall = planes()->model()->index(0, 0);
        return rowOf(planes(), planes()->model()->index(tile, 0, wall));
    });

    person.click("the window", [windowItem] {
        const QModelIndex parent =
            outputs()->model()->index(outputs()->indexOfTopLevelItem(windowItem()->parent()), 0);
        return rowOf(outputs(), outputs()->model()->index(windowItem()->parent()->indexOfChild(windowItem()),
                                                          0, parent));
    });
    person.choose(
        "Render node", [] { return inDialog<QComboBox>("m_renderNode"); }, node);
}

void tst_zohostDesktop::answerFileDialog(const Person& person, const QString& fileName) const
{
    const auto field = [] { return inDialog<QLineEdit>("fileNameEdit"); };
    person.fill("the file name", field, fileName, [field] { return field()->text(); });
    person.press(zoDesktopInput::Key::Return);
    person.waitFor("the file dialog is closed", [] { return QApplication::activeModalWidget() == nullptr; });
}

void tst_zohostDesktop::dropFiles(const Person& person) const
{
    const QString wall = m_directory.filePath("dropped.zhpc");
    QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"), wall);
    const QString other = m_directory.filePath("dropped.xml");
    QFile::copy(wall, other);
    const auto title = [](const QString& text) {
        return [text] { return hostWindow()->windowHandle()->title() == text; };
    };

    dropFile(person, other, false);
    dropFile(person, wall, true);
    person.waitFor("the dropped file is open", title("dropped.zhpc - zohost"));

    // Work that New replaces comes back, and Recent has the file.
    QMenuBar* hostMenus = person.see([] { return hostWindow()->menuBar(); });
    QMenuBar* menus = person.see([] { return clusterWindow()->menuBar(); });
    person.chooseMenu(menus, "&Edit", "Add network");
    person.waitFor("the change is marked", title("dropped.zhpc* - zohost"));
    person.chooseMenu(menus, "&File", "New");
    person.waitFor("the window is empty", title("zohost"));
    person.chooseMenu(hostMenus, "Fi&le", "&Earlier configurations...");
    person.find("Bring back", [] { return spotOf(inDialog<QPushButton>("BringBack")); });
    person.keepPicture("desktop-earlier");
    person.click("Bring back", [] { return spotOf(inDialog<QPushButton>("BringBack")); });
    person.waitFor("it is back as work", title("Untitled* - zohost"));
    person.waitFor("its nodes are there", [] { return hosts().contains("wall-r1-c1"); });
    person.chooseMenu(hostMenus, "Fi&le", "&Recent");
    person.click("the recent file", [wall] {
        auto* menu = hostWindow()->findChild<QMenu*>("RecentMenu");
        QAction* first = menu->actions().constFirst();
        return first->data().toString() == wall ? Spot{menu, menu->actionGeometry(first)} : Spot();
    });
    person.waitFor("the file is open again", title("dropped.zhpc - zohost"));

    // Cancel stays, Save saves.
    person.chooseMenu(menus, "&Edit", "Add network");
    person.waitFor("the change is marked", title("dropped.zhpc* - zohost"));
    const auto answer = [](QMessageBox::StandardButton which) {
        return [which] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            return box == nullptr ? Spot() : spotOf(box->button(which));
        };
    };
    person.pressControl('q');
    person.click("Cancel", answer(QMessageBox::Cancel));
    person.waitFor("nobody asks", [] { return QApplication::activeModalWidget() == nullptr; });
    if (!person.see([] { return hostWindow()->isVisible(); }))
        throw std::runtime_error("the host closed in spite of Cancel");
    const QByteArray before = contentOf(wall);
    person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });
    person.pressControl('q');
    person.click("Save", answer(QMessageBox::Save));
    person.waitFor("the file is written", [wall, before] { return contentOf(wall) != before; });
}

void tst_zohostDesktop::dragNodes(const Person& person) const
{
    const auto are = [](const QStringList& names) { return [names] { return nodeNames() == names; }; };
    const QStringList before{"a", "b", "gate", "c"};
    person.waitFor("the nodes are there", are(before));
    person.keepPicture("desktop-nodes");

    // Over a node: below it, or above it, as the pointer is in its lower or upper half.
    dragRow(person, "b", "c", true);
    person.waitFor("b is behind the gateway", [] {
        const QStringList names = nodeNames();
        return names == QStringList{"a", "gate", "b", "c"} || names == QStringList{"a", "gate", "c", "b"};
    });
    person.pressControl('z');
    person.waitFor("b is back", are(before));

    // A gateway cannot come below itself.
    dragRow(person, "gate", "c", false);
    person.waitFor("nothing has moved", are(before));
    person.waitFor("the file is as it was loaded", [] {
        return hostWindow()->windowHandle()->title() == QLatin1String("nodes.zhpc - zohost");
    });
    person.pressControl('q');
}

void tst_zohostDesktop::dragRow(const Person& person, const QString& node, const QString& overName,
                                bool isTaken) const
{
    const auto tree = [] { return clusterWindow()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget")); };
    const auto spotOfRow = [tree](const QString& name) {
        return [tree, name] {
            const QList<QTreeWidgetItem*> rows =
                tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
            return rows.isEmpty() ? Spot()
                                  : Spot{tree()->viewport(), tree()->visualItemRect(rows.constFirst())};
        };
    };
    const auto says = [](Qt::CursorShape shape) {
        return [shape] {
            const QCursor* pointer = QApplication::overrideCursor();
            return pointer != nullptr && pointer->shape() == shape;
        };
    };
    const QPoint from = person.find(node, spotOfRow(node));
    const QPoint first = person.find("the first node", spotOfRow("a"));
    const QPoint to = person.find(overName, spotOfRow(overName));
    person.drag(from, first, [tree] { return tree()->findChild<QDrag*>() != nullptr; });
    person.waitFor("the pointer says that it would be taken", says(Qt::DragMoveCursor));
    person.carryTo(to);
    person.waitFor("the pointer says whether it is taken",
                   says(isTaken ? Qt::DragMoveCursor : Qt::ForbiddenCursor));
    person.letGo();
    person.waitFor("the drop", [tree] { return tree()->findChild<QDrag*>() == nullptr; });
}

void tst_zohostDesktop::dropFile(const Person& person, const QString& fileName, bool isTaken) const
{
    FileManager* files = person.see([fileName] {
        auto* window = new FileManager(hostWindow());
        window->file = fileName;
        window->show();
        return window;
    });
    const QPoint from = person.find("the file", [files] { return spotOf(files); });
    // Over a list of the module, which takes no drops itself.
    const QPoint to = person.find("the host tree", [] {
        const auto* tree = clusterWindow()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
        return Spot{tree->viewport(),
                    tree->viewport()->rect().adjusted(0, 0, 0, -tree->viewport()->height() / 2)};
    });
    person.drag(from, to, [files] { return files->isDragging(); });
    person.waitFor("the drag is over the host", [files] { return files->hasEntered(); });
    if (isTaken)
        person.waitFor("the host offers to open it", [files] { return files->offer() == Qt::CopyAction; });
    person.letGo();
    person.waitFor("the drop", [files] { return !files->isDragging(); });
    const Qt::DropAction outcome = person.see([files] { return files->outcome(); });
    if (outcome != (isTaken ? Qt::CopyAction : Qt::IgnoreAction))
        throw std::runtime_error("the drop of " + fileName.toStdString() + " did " + std::to_string(outcome));
    person.see([files] {
        delete files;
        return true;
    });
    person.waitFor("the host is active", [] { return hostWindow()->isActiveWindow(); });
}

// Dialogs of Qt's own: those of a desktop may lie in other processes.
int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QApplication application(argc, argv);
    tst_zohostDesktop test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_zohostDesktop.moc"
