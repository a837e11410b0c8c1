#include "zoAssistantSurveyTable.h"

#include "zoText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

zoAssistantSurveyTable::zoAssistantSurveyTable(QWidget* parent) : QTableWidget(0, ColumnCount, parent)
{
    setHorizontalHeaderLabels({tr("Measurement"), tr("Residual"), tr("Checked")});
    horizontalHeaderItem(Residual)->setToolTip(tr("What was measured too much, in millimetres"));
    horizontalHeaderItem(Checked)->setToolTip(
        tr("How much the other measurements say of it; with 0 % a mistake in it would not be seen"));
    horizontalHeader()->setSectionResizeMode(Measurement, QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(Residual, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(Checked, QHeaderView::ResizeToContents);
    verticalHeader()->setDefaultSectionSize(verticalHeader()->minimumSectionSize());
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed | SelectedClicked);
    setAccessibleName(tr("Measurements"));
    connect(this, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
        if (m_isFilling || item->column() != Measurement)
            return;
        keepEmptyRow();
        emit edited();
    });
}

zoAssistantSurveyTable::~zoAssistantSurveyTable() = default;

QString zoAssistantSurveyTable::text() const
{
    QString text;
    for (int row = 0; row + 1 < rowCount(); ++row)
        text += item(row, Measurement)->text() + QLatin1Char('\n');
    return text;
}

void zoAssistantSurveyTable::setText(const QString& text)
{
    m_isFilling = true;
    setRowCount(0);
    QStringList lines = text.split(QLatin1Char('\n'));
    while (!lines.isEmpty() && lines.constLast().trimmed().isEmpty())
        lines.removeLast();
    for (const QString& line : qAsConst(lines))
        insertLine(rowCount(), line.trimmed());
    m_isFilling = false;
    keepEmptyRow();
    setCurrentCell(rowCount() - 1, Measurement);
    emit edited();
}

void zoAssistantSurveyTable::insertLine(int row, const QString& line)
{
    insertRow(row);
    setItem(row, Measurement, new QTableWidgetItem(line));
    for (const int column : {Residual, Checked}) {
        auto* cell = new QTableWidgetItem;
        cell->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        cell->setTextAlignment(int(Qt::AlignRight | Qt::AlignVCenter));
        setItem(row, column, cell);
    }
}

void zoAssistantSurveyTable::keepEmptyRow()
{
    m_isFilling = true;
    const int last = rowCount() - 1;
    if (last < 0 || !item(last, Measurement)->text().isEmpty())
        insertLine(last + 1, QString());
    m_isFilling = false;
}

void zoAssistantSurveyTable::addLine(const QString& line)
{
    const int row = currentRow() < 0 ? rowCount() - 1 : std::min(currentRow() + 1, rowCount() - 1);
    m_isFilling = true;
    insertLine(row, line);
    m_isFilling = false;
    setCurrentCell(row, Measurement);
    emit edited();
    beginToEdit(row);
}

void zoAssistantSurveyTable::removeSelectedLines()
{
    QList<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& index : selected) {
        if (index.row() + 1 < rowCount())
            rows << index.row();
    }
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty())
        return;
    while (!rows.isEmpty())
        removeRow(rows.takeLast());
    keepEmptyRow();
    emit edited();
}

void zoAssistantSurveyTable::paste()
{
    const QStringList lines =
        QGuiApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    int row = currentRow() < 0 ? rowCount() - 1 : currentRow();
    m_isFilling = true;
    for (const QString& line : lines)
        insertLine(row++, line.trimmed());
    m_isFilling = false;
    if (!lines.isEmpty())
        emit edited();
}

void zoAssistantSurveyTable::setVerdict(int row, const Verdict& verdict)
{
    m_isFilling = true;
    // Both on light and on dark: the cell's own colour shines through.
    const QBrush mistake(QColor(220, 40, 40, 70));
    const QBrush worst(QColor(255, 160, 0, 90));
    const QString texts[] = {QString(), verdict.residual, verdict.checked};
    for (int column = 0; column < ColumnCount; ++column) {
        QTableWidgetItem* cell = item(row, column);
        if (column != Measurement)
            cell->setText(texts[column]);
        cell->setToolTip(verdict.toolTip);
        cell->setBackground(verdict.isMistake ? mistake : verdict.isWorst ? worst : QBrush());
        QFont font = this->font();
        font.setBold(verdict.isWorst);
        cell->setFont(font);
    }
    m_isFilling = false;
}

// Without a word in the log where it is edited already.
void zoAssistantSurveyTable::beginToEdit(int row)
{
    edit(model()->index(row, Measurement), QAbstractItemView::AllEditTriggers, nullptr);
}

void zoAssistantSurveyTable::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const int row = currentRow();
    QTableWidget::closeEditor(editor, hint);
    // Return ends a line: what is typed next is the next one.
    if (hint == QAbstractItemDelegate::SubmitModelCache && row >= 0 && row + 1 < rowCount())
        setCurrentCell(row + 1, Measurement);
}

// A verdict comes while the next line is typed. The view would put what the cell held before into its field.
void zoAssistantSurveyTable::dataChanged(const QModelIndex& first, const QModelIndex& last,
                                         const QVector<int>& roles)
{
    const bool isText = roles.isEmpty() || roles.contains(Qt::EditRole) || roles.contains(Qt::DisplayRole);
    if (isText || first != last)
        QTableWidget::dataChanged(first, last, roles);
    else
        update(first);
}

void zoAssistantSurveyTable::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->key() == Qt::Key_Delete) {
        removeSelectedLines();
    } else if (isReturn && state() == EditingState) {
        // The field has it too, and closeEditor() goes on.
    } else if (isReturn && currentRow() >= 0) {
        // A dialog would take it for OK.
        if (currentRow() + 1 < rowCount())
            setCurrentCell(currentRow() + 1, Measurement);
        beginToEdit(currentRow());
    } else {
        QTableWidget::keyPressEvent(event);
    }
}
