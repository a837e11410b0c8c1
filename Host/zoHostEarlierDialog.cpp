#include "zoHostEarlierDialog.h"

#include "zoClusterDocument.h"
#include "zoConfigurationCounts.h"
#include "zoHostTime.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr char s_geometryKey[] = "EarlierDialog/Geometry";
constexpr char s_splitterKey[] = "EarlierDialog/Splitter";

enum Column { Replaced, File, Nodes, Displays, ColumnCount };
} // namespace

zoHostEarlierDialog::zoHostEarlierDialog(zoHostEarlierConfigurations* configurations, QSettings* settings,
                                         QWidget* parent)
    : QDialog(parent)
    , m_configurations(configurations)
    , m_settings(settings)
    , m_splitter(new QSplitter(Qt::Vertical, this))
    , m_list(new QTreeWidget)
    , m_summary(new QLabel)
    , m_preview(new QPlainTextEdit)
    , m_hint(new QLabel(this))
{
    setObjectName(QStringLiteral("EarlierDialog"));
    setWindowTitle(tr("Earlier Configurations"));
    resize(760, 560);

    setUpList();
    setUpPreview();
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setSizes({200, 300});
    m_hint->setObjectName(QStringLiteral("EarlierHint"));
    m_hint->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    m_bringBack = buttons->addButton(tr("&Bring back"), QDialogButtonBox::ActionRole);
    m_bringBack->setObjectName(QStringLiteral("BringBack"));
    m_bringBack->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(m_hint);
    layout->addWidget(buttons);

    restoreGeometry(m_settings->value(QLatin1String(s_geometryKey)).toByteArray());
    m_splitter->restoreState(m_settings->value(QLatin1String(s_splitterKey)).toByteArray());

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_bringBack, &QPushButton::clicked, this, &zoHostEarlierDialog::bringBack);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &zoHostEarlierDialog::bringBack);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &zoHostEarlierDialog::showCurrent);
    connect(m_configurations, &zoHostEarlierConfigurations::changed, this, &zoHostEarlierDialog::fill);
    fill();
}

zoHostEarlierDialog::~zoHostEarlierDialog() = default;

void zoHostEarlierDialog::setUpList()
{
    m_list->setObjectName(QStringLiteral("EarlierList"));
    m_list->setAccessibleName(tr("Earlier configurations"));
    m_list->setColumnCount(ColumnCount);
    m_list->setHeaderLabels({tr("Replaced"), tr("File"), tr("Nodes"), tr("Displays")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(File, QHeaderView::Stretch);
    m_splitter->addWidget(m_list);
}

void zoHostEarlierDialog::setUpPreview()
{
    m_summary->setObjectName(QStringLiteral("EarlierSummary"));
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_summary->setWordWrap(true);
    m_preview->setObjectName(QStringLiteral("EarlierPreview"));
    m_preview->setAccessibleName(tr("Text of the configuration"));
    m_preview->setReadOnly(true);
    m_preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_preview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    auto* look = new QWidget;
    auto* lookLayout = new QVBoxLayout(look);
    lookLayout->setContentsMargins(0, 0, 0, 0);
    lookLayout->addWidget(m_summary);
    lookLayout->addWidget(m_preview, 1);
    m_splitter->addWidget(look);
}

void zoHostEarlierDialog::setRunning(bool running)
{
    m_running = running;
    updateButton();
}

void zoHostEarlierDialog::done(int result)
{
    m_settings->setValue(QLatin1String(s_geometryKey), saveGeometry());
    m_settings->setValue(QLatin1String(s_splitterKey), m_splitter->saveState());
    QDialog::done(result);
}

void zoHostEarlierDialog::fill()
{
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    m_entries = m_configurations->entries();
    for (const zoHostEarlierConfigurations::Entry& entry : qAsConst(m_entries)) {
        const zoConfigurationCounts counts(m_configurations->textOf(entry));
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(Replaced, zoHostTime::text(entry.replaced));
        item->setText(File, entry.originFile.isEmpty() ? tr("(never saved)")
                                                       : QFileInfo(entry.originFile).fileName());
        item->setToolTip(File, QDir::toNativeSeparators(entry.originFile));
        item->setText(Nodes, QLocale().toString(counts.nodes));
        item->setText(Displays, QLocale().toString(counts.displays));
        for (int column : {Nodes, Displays})
            item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    if (m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0));
    showCurrent();
}

void zoHostEarlierDialog::showCurrent()
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    m_flaw.clear();
    if (row < 0) {
        m_summary->setText(
            tr("A configuration that New, Load, Import or the cluster replaces is kept here."));
        m_preview->clear();
    } else {
        const zoHostEarlierConfigurations::Entry& entry = m_entries.at(row);
        const QString text = m_configurations->textOf(entry);
        const zoConfigurationCounts counts(text);
        const QString origin =
            entry.originFile.isEmpty() ? tr("It had no file.") : QDir::toNativeSeparators(entry.originFile);
        m_summary->setText(
            origin + QLatin1Char('\n') +
            tr("Networks: %1   Nodes: %2   Projections: %3   Displays: %4   Windows: %5   Viewports: %6")
                .arg(counts.networks)
                .arg(counts.nodes)
                .arg(counts.projections)
                .arg(counts.displays)
                .arg(counts.windows)
                .arg(counts.viewports));
        if (text.isEmpty())
            m_flaw = tr("nothing of it can be read");
        else
            zoClusterDocument().parse(text, m_flaw);
        m_preview->setPlainText(text);
    }
    updateButton();
}

void zoHostEarlierDialog::updateButton()
{
    m_bringBack->setEnabled(!m_running && m_list->currentItem() != nullptr && m_flaw.isEmpty());
    if (m_running)
        m_hint->setText(tr("A session is running. Stop it to bring a configuration back."));
    else if (!m_flaw.isEmpty())
        m_hint->setText(tr("It is no configuration that could be brought back: %1").arg(m_flaw));
    else
        m_hint->setText(tr("The configuration that is open now is kept here when you bring another back."));
}

void zoHostEarlierDialog::bringBack()
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    if (row < 0 || !m_bringBack->isEnabled())
        return;
    const zoHostEarlierConfigurations::Entry entry = m_entries.at(row);
    const QString text = m_configurations->textOf(entry);
    // A file that cannot be read must not empty the document; the log says why nothing happened.
    if (text.isEmpty())
        return;
    // Before it is closed, which may be taken for an answer.
    const QVector<zoHostEarlierConfigurations::Entry> works = m_configurations->unfinished();
    const bool isWork = std::any_of(works.cbegin(), works.cend(),
                                    [&entry](const auto& work) { return work.fileName == entry.fileName; });
    accept();
    if (isWork)
        emit workRequested(entry, text);
    else
        emit bringBackRequested(text, entry.originFile);
}
