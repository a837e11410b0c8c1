// A main window of the toolkit alone, in a process that has the libraries that it is told to load: "empty", the least that a
// window takes, or with the "words" that zohost shows first, in widgets of the same kinds.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cstdio>
#include <cstring>

#include <dlfcn.h>

namespace
{
QIcon icon(int size)
{
    QPixmap picture(size, size);
    picture.fill(Qt::darkBlue);
    return picture;
}

QFont bold()
{
    QFont font;
    font.setBold(true);
    return font;
}

void addMenus(QMainWindow& window, const QStringList& names)
{
    constexpr int actions = 6;
    for (const QString& name : names) {
        QMenu* const menu = window.menuBar()->addMenu(name);
        for (int i = 0; i < actions; ++i)
            menu->addAction(QStringLiteral("Action %1").arg(i));
    }
}

void addToolBar(QMainWindow& window, Qt::ToolBarArea area, const QStringList& names)
{
    auto* bar = new QToolBar(names.first());
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const QString& name : names)
        bar->addAction(icon(24), name);
    window.addToolBar(area, bar);
}

void addDock(QMainWindow& window, const char* title, Qt::DockWidgetArea area, QWidget* content)
{
    auto* dock = new QDockWidget(QString::fromLatin1(title));
    dock->setWidget(content);
    window.addDockWidget(area, dock);
}

QLayout* buttons(const QStringList& names)
{
    auto* row = new QHBoxLayout;
    for (const QString& name : names) {
        auto* button = new QToolButton;
        button->setText(name);
        button->setAutoRaise(true);
        row->addWidget(button);
    }
    return row;
}

QTreeWidget* newTree()
{
    auto* tree = new QTreeWidget;
    tree->setHeaderHidden(true);
    return tree;
}

QWidget* modules()
{
    QTreeWidget* const tree = newTree();
    auto* category = new QTreeWidgetItem(tree, {QStringLiteral("Rendering")});
    category->setFont(0, bold());
    for (const char* name : {"Cluster", "Assistant"})
        (new QTreeWidgetItem(category, {QString::fromLatin1(name)}))->setIcon(0, icon(24));
    tree->expandAll();
    return tree;
}

QWidget* cameras()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* list = new QListWidget;
    list->addItem(QStringLiteral("Camera 1"));
    layout->addWidget(list);
    layout->addLayout(buttons({QStringLiteral("Add"), QStringLiteral("Rename"), QStringLiteral("Remove")}));
    return page;
}

QWidget* log()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* row = new QHBoxLayout;
    auto* kinds = new QComboBox;
    kinds->addItem(QStringLiteral("All messages"));
    row->addWidget(kinds);
    auto* find = new QLineEdit;
    find->setPlaceholderText(QStringLiteral("Find"));
    row->addWidget(find);
    row->addLayout(buttons({QStringLiteral("Copy"), QStringLiteral("Save..."), QStringLiteral("Clear")}));
    layout->addLayout(row);
    auto* list = new QListWidget;
    (new QListWidgetItem(QStringLiteral("11/20/26"), list))->setFont(bold());
    for (const char* name : {"HPC", "Assistant"})
        list->addItem(
            QStringLiteral("9:00:00 AM  Module /opt/zo/libzo%1.so loaded").arg(QLatin1String(name)));
    layout->addWidget(list);
    return page;
}

QWidget* nodes()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* filter = new QLineEdit;
    filter->setPlaceholderText(QStringLiteral("Filter networks and compute nodes"));
    layout->addWidget(filter);
    QTreeWidget* const tree = newTree();
    auto* options = new QTreeWidgetItem(tree, {QStringLiteral("Options")});
    auto* network = new QTreeWidgetItem(options, {QStringLiteral("Network (Projector nodes)")});
    for (const char* name : {"wall-r1-c1", "wall-r1-c2", "wall-r2-c1", "wall-r2-c2"})
        (new QTreeWidgetItem(network, {QString::fromLatin1(name)}))->setIcon(0, icon(16));
    tree->expandAll();
    layout->addWidget(tree);
    return page;
}

QWidget* options()
{
    auto* page = new QWidget;
    auto* layout = new QFormLayout(page);
    const auto addTitle = [layout](const char* text) {
        auto* title = new QLabel(QString::fromLatin1(text));
        title->setFont(bold());
        layout->addRow(title);
    };
    addTitle("Options");
    for (const char* name :
         {"Data compression", "Image compression", "Start/Stop action", "Still supersampling"}) {
        auto* choices = new QComboBox;
        choices->addItems({QStringLiteral("High"), QStringLiteral("Low (Lossless)"), QStringLiteral("Off")});
        layout->addRow(QString::fromLatin1(name), choices);
    }
    addTitle("Advanced");
    return page;
}

void addWords(QMainWindow& window)
{
    addMenus(window, {QStringLiteral("&File"), QStringLiteral("&Edit"), QStringLiteral("&View"),
                      QStringLiteral("&Help")});
    addToolBar(window, Qt::TopToolBarArea, {QStringLiteral("Cluster"), QStringLiteral("New wall")});
    addDock(window, "Modules", Qt::LeftDockWidgetArea, modules());
    addDock(window, "Cameras", Qt::LeftDockWidgetArea, cameras());
    addDock(window, "Log", Qt::BottomDockWidgetArea, log());

    auto* inner = new QMainWindow;
    inner->setWindowFlags(Qt::Widget);
    addMenus(*inner, {QStringLiteral("&File"), QStringLiteral("&Edit"), QStringLiteral("&Diagnostics")});
    addToolBar(*inner, Qt::TopToolBarArea,
               {QStringLiteral("Cluster config"), QStringLiteral("Display Setup")});
    addToolBar(*inner, Qt::BottomToolBarArea, {QStringLiteral("Start"), QStringLiteral("Stop")});
    auto* splitter = new QSplitter;
    splitter->addWidget(nodes());
    splitter->addWidget(options());
    inner->setCentralWidget(splitter);
    window.setCentralWidget(inner);
    for (const char* text : {"powerwall-2x2.zhpc", "4 nodes", "1 display", "No problems"})
        window.statusBar()->addPermanentWidget(new QLabel(QString::fromLatin1(text)));
}
} // namespace

int main(int argc, char** argv)
{
    const bool hasWords = argc > 1 && std::strcmp(argv[1], "words") == 0;
    for (int i = 2; i < argc; ++i) {
        if (dlopen(argv[i], RTLD_NOW) == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
    }
    int count = 1;
    const QApplication application(count, argv);
    QMainWindow window;
    window.resize(1180, 700);
    if (hasWords)
        addWords(window);
    window.show();
    return QApplication::exec();
}
