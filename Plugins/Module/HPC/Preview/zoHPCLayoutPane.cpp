#include "zoHPCLayoutPane.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureFile.h"
#include "zoHPCProblems.h"
#include "zoHPCProblemsView.h"
#include "zoHPCRoomView.h"
#include "zoHPCScreensView.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCWindowItem.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
// Sizes that a person may call those of the screens; without one, the windows tell.
constexpr struct
{
    int width;
    int height;
} SCREEN_SIZES[] = {{1280, 1024}, {1920, 1080}, {1920, 1200}, {2560, 1440},
                    {2560, 1600}, {3840, 2160}, {4096, 2160}};
} // namespace

zoHPCLayoutPane::zoHPCLayoutPane(QWidget* parent) : QWidget(parent)
{
    m_room = new zoHPCRoomView;
    m_room->setObjectName(QString::fromLatin1("m_roomView"));
    m_screens = new zoHPCScreensView;
    m_screens->setObjectName(QString::fromLatin1("m_screensView"));
    m_problems = new zoHPCProblemsView;
    m_problems->setObjectName(QString::fromLatin1("m_problemsView"));

    m_screenSize = new QComboBox;
    m_screenSize->setObjectName(QString::fromLatin1("m_screenSize"));
    m_screenSize->setToolTip(tr("Size of the screens: windows that reach beyond it stand out. \"Automatic\" "
                                "takes what the windows need."));
    m_screenSize->addItem(tr("Automatic"), QSize());
    for (const auto& size : SCREEN_SIZES)
        m_screenSize->addItem(tr("%1 x %2").arg(QString::number(size.width), QString::number(size.height)),
                              QSize(size.width, size.height));
    auto* const screenSizeLabel = new QLabel(tr("Screen [pixel]"));
    screenSizeLabel->setBuddy(m_screenSize);
    auto* const screensPage = new QWidget;
    auto* const screensLayout = new QVBoxLayout(screensPage);
    screensLayout->setContentsMargins(0, 0, 0, 0);
    auto* const screenSizeRow = new QHBoxLayout;
    screenSizeRow->addWidget(screenSizeLabel);
    screenSizeRow->addWidget(m_screenSize);
    screenSizeRow->addStretch();
    screensLayout->addWidget(m_screens);
    screensLayout->addLayout(screenSizeRow);
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QString::fromLatin1("m_layoutTabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_room, tr("Room"));
    m_tabs->addTab(screensPage, tr("Screens"));
    auto* const fitButton = new QPushButton(tr("Fit"));
    fitButton->setObjectName(QString::fromLatin1("m_fitButton"));
    fitButton->setToolTip(tr("Takes everything into the picture"));
    fitButton->setAutoDefault(false);
    auto* const saveButton = new QPushButton(tr("Save picture..."));
    saveButton->setObjectName(QString::fromLatin1("m_savePictureButton"));
    saveButton->setToolTip(tr("Writes the picture to a file: SVG, PNG or PDF"));
    saveButton->setAutoDefault(false);

    auto* const tools = new QHBoxLayout;
    tools->setContentsMargins(0, 0, 0, 0);
    tools->addStretch();
    tools->addWidget(fitButton);
    tools->addWidget(saveButton);

    auto* const upper = new QWidget;
    auto* const upperLayout = new QVBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->addWidget(m_tabs);
    upperLayout->addLayout(tools);
    auto* const splitter = new QSplitter(Qt::Vertical);
    splitter->setObjectName(QString::fromLatin1("m_layoutSplitter"));
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(upper);
    splitter->addWidget(m_problems);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({420, 180});
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    connect(m_screenSize, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { m_screens->setScreenSize(m_screenSize->currentData().toSize()); });
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        if (m_isPartial)
            settle();
    });
    connect(&m_settling, &zoHPCSettling::settled, this, [this] {
        if (isVisible())
            settle();
    });
    connect(fitButton, &QPushButton::clicked, this, [this] {
        if (isScreensShown())
            m_screens->fit();
        else
            m_room->fit();
    });
    connect(saveButton, &QPushButton::clicked, this, &zoHPCLayoutPane::savePicture);
    connect(m_room, &zoHPCRoomView::itemActivated, this, &zoHPCLayoutPane::itemActivated);
    connect(m_screens, &zoHPCScreensView::itemActivated, this, &zoHPCLayoutPane::itemActivated);
    connect(m_problems, &zoHPCProblemsView::itemActivated, this, &zoHPCLayoutPane::itemActivated);
    connect(m_screens, &zoHPCScreensView::windowChanged, this, [this] {
        refreshLater();
        emit displayEdited();
    });
    connect(m_problems, &zoHPCProblemsView::aboutToFix, this, [this](bool hosts) {
        if (hosts)
            emit hostsAboutToBeEdited();
    });
    connect(m_problems, &zoHPCProblemsView::fixed, this, [this](bool hosts) {
        refreshLater();
        if (hosts)
            emit hostsEdited();
        else
            emit displayEdited();
    });
}

zoHPCLayoutPane::~zoHPCLayoutPane()
{
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
}

int zoHPCLayoutPane::problemCount() const
{
    return m_count;
}

void zoHPCLayoutPane::setModel(QTreeWidget* projections, QTreeWidget* displays, zoHPCTreeGUIW* hosts)
{
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_projections = projections;
    m_displays = displays;
    m_hosts = hosts;
    invalidate();
    follow(projections);
    follow(displays);
    if (hosts) {
        follow(hosts->findChild<QTreeWidget*>(QString::fromLatin1("m_treeWidget")));
        m_connections.push_back(
            connect(hosts, &zoHPCTreeGUIW::hostsChanged, this, &zoHPCLayoutPane::refreshLater));
    }
}

void zoHPCLayoutPane::setCurrentItem(const QTreeWidgetItem* item)
{
    m_room->setCurrentItem(item);
    m_screens->setCurrentItem(item);
}

bool zoHPCLayoutPane::isSettled() const
{
    return !m_isStale && !m_isPartial;
}

void zoHPCLayoutPane::refresh()
{
    m_isPartial = false;
    m_room->setIsChanging(false);
    m_screens->setIsChanging(false);
    const auto layout = readLayout();
    showLayout(layout);
    m_problems->setProblems(zoHPCProblems::find(*layout));
    const int count = static_cast<int>(m_problems->problems().size());
    if (count == m_count)
        return;
    m_count = count;
    emit problemCountChanged(count);
}

std::shared_ptr<const zoHPCLayout> zoHPCLayoutPane::readLayout()
{
    // A setup of some hundred windows or some thousand tiles takes longer to check than a frame lasts.
    constexpr size_t MANY = 1000;
    m_isStale = false;
    auto layout = std::make_shared<const zoHPCLayout>(m_projections.data(), m_displays.data(),
                                                      m_hosts ? m_hosts->master() : nullptr);
    m_isLarge = layout->projections().size() + layout->windows().size() + layout->viewports().size() > MANY;
    return layout;
}

void zoHPCLayoutPane::catchUp()
{
    m_settling.note();
    if (!m_isLarge || !m_settling.isQuick()) {
        refresh();
        return;
    }
    m_isPartial = true;
    m_problems->forgetItems();
    const auto layout = readLayout();
    m_showsItems = true;
    m_room->setIsChanging(true);
    m_screens->setIsChanging(true);
    // The other one shows items that may be gone.
    m_room->showLayout(isScreensShown() ? nullptr : layout);
    m_screens->showLayout(isScreensShown() ? layout : nullptr);
}

void zoHPCLayoutPane::settle()
{
    if (isSettled())
        return;
    m_settling.settle();
    refresh();
    emit settled();
}

void zoHPCLayoutPane::savePicture()
{
    const QString fileName =
        QFileDialog::getSaveFileName(this, tr("Save picture"), QString(), zoHPCPictureFile::filter());
    if (fileName.isEmpty())
        return;
    settle();
    if (isScreensShown())
        zoHPCPictureFile::save(m_screens->picture(), fileName, m_screens->size(), palette(), 2.0);
    else
        zoHPCPictureFile::save(m_room->picture(), fileName, m_room->size(), palette(), 2.0);
}

void zoHPCLayoutPane::showEvent(QShowEvent* event)
{
    if (!isSettled())
        refresh();
    QWidget::showEvent(event);
}

void zoHPCLayoutPane::follow(QTreeWidget* tree)
{
    if (!tree)
        return;
    const QAbstractItemModel* const model = tree->model();
    // Before rows go, nothing may point to their items any more.
    m_connections.push_back(
        connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &zoHPCLayoutPane::invalidate));
    m_connections.push_back(
        connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &zoHPCLayoutPane::invalidate));
    m_connections.push_back(connect(tree, &QObject::destroyed, this, &zoHPCLayoutPane::invalidate));
    m_connections.push_back(
        connect(model, &QAbstractItemModel::rowsInserted, this, &zoHPCLayoutPane::refreshLater));
    m_connections.push_back(
        connect(model, &QAbstractItemModel::rowsMoved, this, &zoHPCLayoutPane::refreshLater));
    m_connections.push_back(
        connect(model, &QAbstractItemModel::layoutChanged, this, &zoHPCLayoutPane::refreshLater));
    m_connections.push_back(
        connect(model, &QAbstractItemModel::dataChanged, this, &zoHPCLayoutPane::refreshLater));
}

void zoHPCLayoutPane::invalidate()
{
    refreshLater();
    // Trees announce the removal of their rows one by one.
    if (!m_showsItems)
        return;
    showLayout(nullptr);
    m_problems->forgetItems();
}

void zoHPCLayoutPane::refreshLater()
{
    m_isStale = true;
    if (m_isScheduled || !isVisible())
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            if (m_isStale && isVisible())
                catchUp();
        },
        Qt::QueuedConnection);
}

bool zoHPCLayoutPane::isScreensShown() const
{
    return m_tabs->currentIndex() == m_tabs->indexOf(m_screens->parentWidget());
}

void zoHPCLayoutPane::showLayout(const std::shared_ptr<const zoHPCLayout>& layout)
{
    m_showsItems = layout != nullptr;
    m_room->showLayout(layout);
    m_screens->showLayout(layout);
}
