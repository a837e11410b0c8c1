#include "zoHPCLayoutPane.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureFile.h"
#include "zoHPCProblemsView.h"
#include "zoHPCReview.h"
#include "zoHPCRoomView.h"
#include "zoHPCScreensView.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCWindowItem.h"

#include <QApplication>
#include <QCheckBox>
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
} s_screenSizes[] = {{1280, 1024}, {1920, 1080}, {1920, 1200}, {2560, 1440},
                     {2560, 1600}, {3840, 2160}, {4096, 2160}};
} // namespace

zoHPCLayoutPane::zoHPCLayoutPane(QWidget* parent) : QWidget(parent)
{
    m_review = new zoHPCReview(this);
    m_room = new zoHPCRoomView;
    m_room->setObjectName(QString::fromLatin1("m_roomView"));
    m_screens = new zoHPCScreensView;
    m_screens->setObjectName(QString::fromLatin1("m_screensView"));
    m_problems = new zoHPCProblemsView;
    m_problems->setObjectName(QString::fromLatin1("m_problemsView"));
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QString::fromLatin1("m_layoutTabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(createRoomPage(), tr("Room"));
    m_tabs->addTab(createScreensPage(), tr("Screens"));

    auto* const upper = new QWidget;
    auto* const upperLayout = new QVBoxLayout(upper);
    upperLayout->setContentsMargins(0, 0, 0, 0);
    upperLayout->addWidget(m_tabs);
    upperLayout->addLayout(createTools());
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

    connect(m_review, &zoHPCReview::changed, this, &zoHPCLayoutPane::catchUpLater);
    connect(m_review, &zoHPCReview::itemsLeft, this, &zoHPCLayoutPane::forgetItems);
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        if (m_isPartial)
            settle();
    });
    connect(&m_debounce, &zoHPCDebounce::settled, this, [this] {
        if (isVisible())
            settle();
    });
    connectViews();
}

zoHPCLayoutPane::~zoHPCLayoutPane() = default;

QWidget* zoHPCLayoutPane::createScreensPage()
{
    m_screenSize = new QComboBox;
    m_screenSize->setObjectName(QString::fromLatin1("m_screenSize"));
    m_screenSize->setToolTip(tr("Size of the screens: windows that reach beyond it stand out. \"Automatic\" "
                                "takes what the windows need."));
    m_screenSize->addItem(tr("Automatic"), QSize());
    for (const auto& size : s_screenSizes)
        m_screenSize->addItem(tr("%1 x %2").arg(QString::number(size.width), QString::number(size.height)),
                              QSize(size.width, size.height));
    connect(m_screenSize, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_screens->setScreenSize(m_screenSize->currentData().toSize());
        m_room->setScreenSize(m_screenSize->currentData().toSize());
    });
    auto* const label = new QLabel(tr("Screen [pixel]"));
    label->setBuddy(m_screenSize);

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_screenSize);
    row->addStretch();
    layout->addWidget(m_screens);
    layout->addLayout(row);
    return page;
}

QLayout* zoHPCLayoutPane::createTools()
{
    auto* const fitButton = new QPushButton(tr("Fit"));
    fitButton->setObjectName(QString::fromLatin1("m_fitButton"));
    fitButton->setToolTip(tr("Takes everything into the picture"));
    fitButton->setAutoDefault(false);
    connect(fitButton, &QPushButton::clicked, this, [this] { shownView()->fit(); });
    auto* const saveButton = new QPushButton(tr("Save picture..."));
    saveButton->setObjectName(QString::fromLatin1("m_savePictureButton"));
    saveButton->setToolTip(tr("Writes the picture to a file: SVG, PNG or PDF"));
    saveButton->setAutoDefault(false);
    connect(saveButton, &QPushButton::clicked, this, &zoHPCLayoutPane::savePicture);

    auto* const tools = new QHBoxLayout;
    tools->setContentsMargins(0, 0, 0, 0);
    tools->addStretch();
    tools->addWidget(fitButton);
    tools->addWidget(saveButton);
    return tools;
}

QWidget* zoHPCLayoutPane::createRoomPage()
{
    auto* const front = new QPushButton(tr("Front"));
    front->setObjectName(QString::fromLatin1("m_frontButton"));
    front->setToolTip(tr("Looks at the room from the viewer's side"));
    connect(front, &QPushButton::clicked, m_room, &zoHPCRoomView::lookFromFront);
    auto* const top = new QPushButton(tr("Top"));
    top->setObjectName(QString::fromLatin1("m_topButton"));
    top->setToolTip(tr("Looks at the room from above"));
    connect(top, &QPushButton::clicked, m_room, &zoHPCRoomView::lookFromAbove);
    for (QPushButton* button : {front, top})
        button->setAutoDefault(false);
    auto* const dimensions = new QCheckBox(tr("Dimensions"));
    dimensions->setObjectName(QString::fromLatin1("m_dimensions"));
    dimensions->setToolTip(tr("Shows how wide and high each wall is"));
    connect(dimensions, &QCheckBox::toggled, m_room, &zoHPCRoomView::setHasDimensions);
    auto* const frames = new QCheckBox(tr("Windows"));
    frames->setObjectName(QString::fromLatin1("m_frames"));
    frames->setToolTip(tr("Shows where on each surface its window lies (a line) and the window's monitor "
                          "(dashes), where there is room"));
    connect(frames, &QCheckBox::toggled, m_room, &zoHPCRoomView::setHasFrames);
    frames->setChecked(true);
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->addWidget(front);
    row->addWidget(top);
    row->addWidget(dimensions);
    row->addWidget(frames);
    row->addStretch();
    layout->addWidget(m_room);
    layout->addLayout(row);
    return page;
}

void zoHPCLayoutPane::connectViews()
{
    connect(m_screens, &zoHPCPictureView::itemActivated, this, &zoHPCLayoutPane::itemActivated);
    connect(m_room, &zoHPCPictureView::itemActivated, this, [this](QTreeWidgetItem* item) {
        const bool selects = !m_takesSurfaces || (QApplication::keyboardModifiers() & Qt::ControlModifier);
        if (selects)
            emit itemActivated(item);
        else
            emit surfaceChosen(item);
    });
    connect(m_problems, &zoHPCProblemsView::itemActivated, this, &zoHPCLayoutPane::itemActivated);
    connect(m_screens, &zoHPCScreensView::windowChanged, this, [this] {
        m_review->noteChange();
        emit displayEdited();
    });
    connect(m_problems, &zoHPCProblemsView::aboutToFix, this, [this](bool hosts) {
        if (hosts)
            emit hostsAboutToBeEdited();
    });
    connect(m_problems, &zoHPCProblemsView::fixed, this, [this](bool hosts) {
        m_review->noteChange();
        if (hosts)
            emit hostsEdited();
        else
            emit displayEdited();
    });
}

int zoHPCLayoutPane::problemCount() const
{
    return m_count;
}

void zoHPCLayoutPane::setModel(QTreeWidget* projections, QTreeWidget* displays, zoHPCTreeGUIW* hosts)
{
    m_review->setTrees(projections, displays, hosts ? hosts->hosts() : nullptr);
}

void zoHPCLayoutPane::setCurrentItems(const zoHPCPicture::Rows& items)
{
    for (zoHPCPictureView* view : views())
        view->setCurrentItems(items);
}

void zoHPCLayoutPane::setTakesSurfaces(bool takes)
{
    m_takesSurfaces = takes;
    m_room->setTakesSurfaces(takes);
}

bool zoHPCLayoutPane::isSettled() const
{
    return !m_isStale && !m_isPartial;
}

void zoHPCLayoutPane::refresh()
{
    m_review->noteChange();
    showAll();
}

void zoHPCLayoutPane::showAll()
{
    m_isPartial = false;
    for (zoHPCPictureView* view : views())
        view->setIsChanging(false);
    showLayout(readLayout());
    m_problems->setProblems(m_review->problems());
    const int count = static_cast<int>(m_problems->problems().size());
    if (count == m_count)
        return;
    m_count = count;
    emit problemCountChanged(count);
}

std::shared_ptr<const zoHPCLayout> zoHPCLayoutPane::readLayout()
{
    // A setup of some hundred windows or some thousand tiles takes longer to check than a frame lasts.
    constexpr size_t Many = 1000;
    m_isStale = false;
    auto layout = m_review->layout();
    m_isLarge = layout->projections().size() + layout->windows().size() + layout->viewports().size() > Many;
    return layout;
}

void zoHPCLayoutPane::catchUp()
{
    m_debounce.note();
    if (!m_isLarge || !m_debounce.isQuick()) {
        showAll();
        return;
    }
    m_isPartial = true;
    m_problems->forgetItems();
    const auto layout = readLayout();
    for (zoHPCPictureView* view : views()) {
        view->setIsChanging(true);
        // The other one shows items that may be gone.
        view->showLayout(view == shownView() ? layout : nullptr);
    }
}

void zoHPCLayoutPane::settle()
{
    if (isSettled())
        return;
    m_debounce.settle();
    showAll();
    emit settled();
}

void zoHPCLayoutPane::savePicture()
{
    const QString fileName =
        QFileDialog::getSaveFileName(this, tr("Save picture"), QString(), zoHPCPictureFile::filter());
    if (fileName.isEmpty())
        return;
    settle();
    zoHPCPictureFile::save(shownView()->picture(), fileName, shownView()->size(), palette(), 2.0);
}

void zoHPCLayoutPane::showEvent(QShowEvent* event)
{
    if (!isSettled())
        showAll();
    QWidget::showEvent(event);
}

void zoHPCLayoutPane::forgetItems()
{
    showLayout(nullptr);
    m_problems->forgetItems();
}

void zoHPCLayoutPane::catchUpLater()
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

std::array<zoHPCPictureView*, 2> zoHPCLayoutPane::views() const
{
    return {m_room, m_screens};
}

zoHPCPictureView* zoHPCLayoutPane::shownView() const
{
    return views()[m_tabs->currentIndex() == 0 ? 0 : 1];
}

void zoHPCLayoutPane::showLayout(const std::shared_ptr<const zoHPCLayout>& layout)
{
    for (zoHPCPictureView* view : views())
        view->showLayout(layout);
}
