#include "zoHostStartPage.h"

#include "zoConfigurationCounts.h"
#include "zoHostLinkButton.h"
#include "zoHostRecentFiles.h"

#include <zoFileReader.h>
#include <zoIconManager.h>
#include <zoPlatform.h>

#include <QAction>
#include <QCheckBox>
#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace
{
constexpr int s_iconSize = 48;  // pixels
constexpr int s_width = 860;    // of the page's content, pixels
constexpr int s_columnGap = 28; // pixels
constexpr char s_emptySample[] = "default.zhpc";

QLabel* heading(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setBuddy(buddy);
    return label;
}

QString contentOf(const QString& fileName)
{
    QByteArray bytes;
    zoFileReader::read(fileName, bytes);
    const zoConfigurationCounts counts(QString::fromUtf8(bytes));
    return zoHostStartPage::tr("%1 nodes, %2 windows")
        .arg(QString::number(counts.nodes), QString::number(counts.windows));
}

QListWidget* fileList(const char* name, const QString& accessibleName)
{
    auto* list = new QListWidget;
    list->setObjectName(QLatin1String(name));
    list->setAccessibleName(accessibleName);
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return list;
}

void addFile(QListWidget* list, const QString& fileName, const QString& more)
{
    const QFileInfo file(fileName);
    auto* item = new QListWidgetItem(zoIconManager::getIcon(QStringLiteral("FileOpen"), QString()),
                                     file.completeBaseName() + QLatin1Char('\n') + more, list);
    item->setData(Qt::UserRole, fileName);
    item->setToolTip(QDir::toNativeSeparators(fileName));
}
} // namespace

zoHostStartPage::zoHostStartPage(zoHostRecentFiles* recent, QWidget* parent)
    : QWidget(parent)
    , m_recentFiles(recent)
    , m_shownAtStart(new QCheckBox(tr("&Show this page at the start"), this))
{
    setObjectName(QStringLiteral("StartPage"));
    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("StartIcon"));
    icon->setPixmap(QIcon(QStringLiteral(":/host/zohost.svg")).pixmap(s_iconSize));
    auto* title = new QLabel(tr("<h2>Light up a wall</h2>"), this);
    auto* manual = new QLabel(
        tr("<a href=\"manual\">What walls, tiles and nodes are</a> is in the manual: F1 opens it anywhere."),
        this);
    manual->setObjectName(QStringLiteral("StartManual"));
    manual->setWordWrap(true);
    manual->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(manual, &QLabel::linkActivated, this, &zoHostStartPage::manualRequested);
    m_shownAtStart->setObjectName(QStringLiteral("ShownAtStart"));
    connect(m_shownAtStart, &QCheckBox::clicked, this, &zoHostStartPage::shownAtStartChanged);

    m_body = new QWidget(this);
    auto* body = new QHBoxLayout(m_body);
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(s_columnGap);
    body->addWidget(createActions(), 5);
    body->addWidget(createLists(), 6);

    auto* content = new QWidget(this);
    content->setMaximumWidth(s_width);
    auto* layout = new QGridLayout(content);
    layout->addWidget(icon, 0, 0, Qt::AlignVCenter);
    layout->addWidget(title, 0, 1, Qt::AlignVCenter);
    layout->addWidget(m_body, 1, 0, 1, 2);
    layout->addWidget(manual, 2, 0, 1, 2);
    layout->addWidget(m_shownAtStart, 3, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
    auto* outer = new QHBoxLayout(this);
    outer->addStretch(1);
    outer->addWidget(content, 100);
    outer->addStretch(1);

    // As a person reads the page.
    const QWidgetList order{m_newWall, m_open, m_empty, m_recent, m_samples, manual, m_shownAtStart};
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
    connect(m_recentFiles, &zoHostRecentFiles::changed, this, &zoHostStartPage::fillRecent);
    fillSamples();
    fillRecent();
}

zoHostStartPage::~zoHostStartPage() = default;

QWidget* zoHostStartPage::createActions()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [layout](const QString& text, const QString& more, const char* name, const char* icon) {
        auto* button = new zoHostLinkButton(text, more);
        button->setObjectName(QLatin1String(name));
        button->setIcon(zoIconManager::getIcon(QLatin1String(icon), QString()));
        layout->addWidget(button);
        return button;
    };
    m_newWall =
        add(tr("&New wall..."), tr("Kind, size, pixels and nodes on one page"), "StartNewWall", "Display");
    m_newWall->hide();
    connect(m_newWall, &QCommandLinkButton::clicked, this, &zoHostStartPage::newWallRequested);
    m_open = add(tr("&Open..."), tr("A configuration from a file"), "StartOpen", "FileOpen");
    connect(m_open, &QCommandLinkButton::clicked, this, &zoHostStartPage::openRequested);
    m_empty = add(tr("&Begin with one node"), tr("A new configuration, to be filled by hand"), "StartEmpty",
                  "FileNew");
    connect(m_empty, &QCommandLinkButton::clicked, this, &zoHostStartPage::emptyRequested);
    layout->addStretch(1);
    return page;
}

QWidget* zoHostStartPage::createLists()
{
    m_recent = fileList("StartRecent", tr("Recent configurations"));
    m_samples = fileList("StartSamples", tr("Samples"));
    m_samples->setToolTip(tr("Opens as a copy without a name"));
    for (QListWidget* list : {m_recent, m_samples}) {
        const auto choose = [this, list](const QListWidgetItem* item) {
            const QString fileName = item->data(Qt::UserRole).toString();
            if (fileName.isEmpty())
                return;
            if (list == m_samples)
                emit sampleChosen(fileName);
            else
                emit recentChosen(fileName);
        };
        connect(list, &QListWidget::itemClicked, this, choose);
        auto* key = new QAction(list);
        key->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
        key->setShortcutContext(Qt::WidgetShortcut);
        connect(key, &QAction::triggered, list, [list, choose] {
            if (list->currentItem() != nullptr)
                choose(list->currentItem());
        });
        list->addAction(key);
    }
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading(tr("&Recent"), m_recent));
    layout->addWidget(m_recent, 3);
    layout->addWidget(heading(tr("S&amples"), m_samples));
    layout->addWidget(m_samples, 2);
    return page;
}

void zoHostStartPage::setOffersNewWall(bool on)
{
    m_newWall->setVisible(on);
}

void zoHostStartPage::setShownAtStart(bool on)
{
    m_shownAtStart->setChecked(on);
}

void zoHostStartPage::focusFirst()
{
    (m_newWall->isHidden() ? m_open : m_newWall)->setFocus(Qt::TabFocusReason);
}

void zoHostStartPage::setOpenEnabled(bool enabled)
{
    m_body->setEnabled(enabled);
}

void zoHostStartPage::fillSamples()
{
    const QDir folder(QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/cluster"));
    const QStringList names = folder.entryList({QStringLiteral("*.zhpc")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (name != QLatin1String(s_emptySample))
            addFile(m_samples, folder.filePath(name), contentOf(folder.filePath(name)));
    }
}

void zoHostStartPage::fillRecent()
{
    m_recent->clear();
    const QStringList files = m_recentFiles->files();
    for (const QString& name : files)
        addFile(m_recent, name, QDir::toNativeSeparators(QFileInfo(name).absolutePath()));
    if (files.isEmpty()) {
        auto* item = new QListWidgetItem(tr("No files yet"), m_recent);
        item->setFlags(Qt::NoItemFlags);
    }
}
