#include "zoHPCTreeFilter.h"

#include "zoText.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTreeWidget>

#include <algorithm>
#include <vector>

namespace
{
// Each word is a bit.
constexpr int s_mostWords = 30;

struct Row
{
    QTreeWidgetItem* item;
    int parent;
    unsigned words; // found in it or above it
    bool isShown;
    bool isWay; // to a row that is shown
};

// Each row after the one above it, without a stack: trees may be deep.
std::vector<Row> rowsOf(const QTreeWidget& tree)
{
    std::vector<Row> rows;
    const auto addChildren = [&rows](const QTreeWidgetItem* item, int parent) {
        for (int i = 0; i < item->childCount(); ++i)
            rows.push_back({item->child(i), parent, 0, false, false});
    };
    addChildren(tree.invisibleRootItem(), -1);
    for (std::size_t i = 0; i < rows.size(); ++i)
        addChildren(rows[i].item, int(i));
    return rows;
}
} // namespace

zoHPCTreeFilter::zoHPCTreeFilter(QTreeWidget* tree, const Text& text, QWidget* parent)
    : QWidget(parent), m_tree(tree), m_text(text), m_field(new QLineEdit(this)), m_count(new QLabel(this))
{
    m_field->setPlaceholderText(tr("Filter"));
    m_field->setClearButtonEnabled(true);
    m_field->setToolTip(tr("Shows only rows in which all of these words are found (Ctrl+F)"));
    m_field->setObjectName(zoText("m_filter"));
    m_field->setAccessibleName(tr("Filter"));
    m_field->setProperty("keepsOwnUndo", true); // what is typed here is no part of the configuration
    m_field->installEventFilter(this);
    m_count->setObjectName(zoText("m_filterCount"));
    m_count->hide();
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_field);
    layout->addWidget(m_count);
    connect(m_field, &QLineEdit::textChanged, this, &zoHPCTreeFilter::changeWords);
    m_again.setSingleShot(true);
    m_again.setInterval(0);
    connect(&m_again, &QTimer::timeout, this, &zoHPCTreeFilter::keepRows);
    const auto againLater = [this] {
        if (isOn())
            m_again.start();
    };
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, againLater);
    connect(tree->model(), &QAbstractItemModel::rowsRemoved, this, againLater);
    connect(tree->model(), &QAbstractItemModel::modelReset, this, againLater);
    // A column may get its text after its row came.
    connect(tree->model(), &QAbstractItemModel::dataChanged, this,
            [againLater](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                if (roles.isEmpty() || roles.contains(Qt::DisplayRole))
                    againLater();
            });
}

zoHPCTreeFilter::~zoHPCTreeFilter() = default;

void zoHPCTreeFilter::changeWords()
{
    static const QRegularExpression s_blanks(QString::fromLatin1("\\s+"));
    m_words = m_field->text().split(s_blanks, Qt::SkipEmptyParts).mid(0, s_mostWords);
    apply();
    // Where a person is stays in sight, however many rows come back above it.
    if (m_tree->currentItem())
        m_tree->scrollToItem(m_tree->currentItem());
}

void zoHPCTreeFilter::keepRows()
{
    m_keepsCurrent = true;
    apply();
    m_keepsCurrent = false;
}

void zoHPCTreeFilter::apply()
{
    m_again.stop();
    std::vector<Row> rows = rowsOf(*m_tree);
    const unsigned all = (1U << unsigned(m_words.size())) - 1U;
    const QTreeWidgetItem* const kept = m_keepsCurrent ? m_tree->currentItem() : nullptr;
    for (Row& row : rows) {
        row.words = row.parent < 0 ? 0U : rows[std::size_t(row.parent)].words;
        if (row.words != all) {
            const QString text = m_text(*row.item);
            for (int word = 0; word < m_words.size(); ++word) {
                if (hasWord(*row.item, text, m_words.at(word)))
                    row.words |= 1U << unsigned(word);
            }
        }
        row.isShown = row.words == all || row.item == kept;
    }
    const auto isFound = [this, all](const Row& row) { return row.words == all && isCounted(*row.item); };
    const auto first = std::find_if(rows.begin(), rows.end(), isFound);
    const auto count = [&rows](auto claim) { return int(std::count_if(rows.begin(), rows.end(), claim)); };
    const int found = count([this](const Row& row) { return row.isShown && isCounted(*row.item); });
    if (m_keepsCurrentRow && isOn() && !rows.empty()) {
        rows.front().isWay = true;
        const auto isCurrent = [this](const Row& row) { return row.item == m_tree->currentItem(); };
        const auto current = std::find_if(rows.begin(), rows.end(), isCurrent);
        if (current == rows.end() || !current->isShown)
            m_tree->setCurrentItem(first == rows.end() ? rows.front().item : first->item, 0,
                                   QItemSelectionModel::ClearAndSelect);
    }
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if ((row->isShown || row->isWay) && row->parent >= 0)
            rows[std::size_t(row->parent)].isWay = true;
    }
    for (const Row& row : rows) {
        const bool isHidden = !row.isShown && !row.isWay;
        if (row.item->isHidden() != isHidden)
            row.item->setHidden(isHidden);
        if (isOn() && row.isWay && row.words != all && !row.item->isExpanded())
            row.item->setExpanded(true);
    }
    letGoOfHiddenRows();
    showCount(found, count([this](const Row& row) { return isCounted(*row.item); }));
}

bool zoHPCTreeFilter::hasWord(const QTreeWidgetItem& row, const QString& text, const QString& word) const
{
    return text.contains(word, Qt::CaseInsensitive) || (m_match && m_match(row, word));
}

// What nobody sees must not be changed with what is selected.
void zoHPCTreeFilter::letGoOfHiddenRows()
{
    if (!isOn())
        return;
    QItemSelection hidden;
    const QItemSelection selected = m_tree->selectionModel()->selection();
    for (const QItemSelectionRange& range : selected) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (m_tree->isRowHidden(row, range.parent())) {
                const QModelIndex index = range.model()->index(row, 0, range.parent());
                hidden.append(QItemSelectionRange(index));
            }
        }
    }
    if (!hidden.isEmpty())
        m_tree->selectionModel()->select(hidden, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    for (const QTreeWidgetItem* item = m_tree->currentItem(); item; item = item->parent()) {
        if (item->isHidden()) {
            m_tree->setCurrentItem(nullptr);
            break;
        }
    }
}

void zoHPCTreeFilter::showCount(int shown, int all)
{
    m_count->setVisible(isOn());
    m_count->setText(tr("%1 of %2").arg(QString::number(shown), QString::number(all)));
}

bool zoHPCTreeFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    // The first Esc belongs to the words, the next one to the window.
    if (key == Qt::Key_Escape && !m_field->text().isEmpty()) {
        m_field->clear();
        if (m_keepsCurrentRow)
            m_tree->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (key == Qt::Key_Down || (m_keepsCurrentRow && (key == Qt::Key_Return || key == Qt::Key_Enter))) {
        m_tree->setFocus(Qt::OtherFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
