#include "zoHPCProblemsView.h"

#include "zoHPCFixDelegate.h"
#include "zoHPCProblemDelegate.h"
#include "zoHPCProblemModel.h"
#include "zoText.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

zoHPCProblemsView::zoHPCProblemsView(QWidget* parent) : QWidget(parent)
{
    m_summary = new QLabel(this);
    m_summary->setObjectName(QString::fromLatin1("m_problemSummary"));
    m_list = new QTreeView(this);
    m_list->setObjectName(QString::fromLatin1("m_problemList"));
    m_list->setAccessibleName(tr("Problems"));
    m_summary->setBuddy(m_list);
    m_model = new zoHPCProblemModel(this);
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setWordWrap(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideRight); // of a word that is wider than the list
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(zoHPCProblemModel::Message, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(zoHPCProblemModel::Fix, QHeaderView::ResizeToContents);
    m_list->setHeaderHidden(true);
    m_list->installEventFilter(this);
    auto* const delegate = new zoHPCFixDelegate(m_list);
    m_list->setItemDelegateForColumn(zoHPCProblemModel::Fix, delegate);
    m_list->setItemDelegateForColumn(zoHPCProblemModel::Message, new zoHPCProblemDelegate(m_list));

    // Other widths, other lines. Not at once: the view resizes its columns while it lays out its rows.
    connect(
        m_list->header(), &QHeaderView::sectionResized, m_list, [this] { m_list->doItemsLayout(); },
        Qt::QueuedConnection);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_summary);
    layout->addWidget(m_list);

    connect(m_list, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        // Where there is no button the whole row is the message.
        if (index.column() == zoHPCProblemModel::Message || index.data().toString().isEmpty())
            activate(index.row());
    });
    connect(m_list, &QTreeView::activated, this, [this](const QModelIndex& index) { activate(index.row()); });
    connect(delegate, &zoHPCFixDelegate::clicked, this, &zoHPCProblemsView::fixLater);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &zoHPCProblemsView::nameManualPage);
    setProblems({});
    m_summary->setText(tr("No problems"));
}

zoHPCProblemsView::~zoHPCProblemsView() = default;

void zoHPCProblemsView::setProblems(std::vector<zoHPCProblem> problems)
{
    const int row = m_list->currentIndex().row();
    const bool hadCurrent = row >= 0 && row < m_model->rowCount();
    QString message;
    zoHPCProblem::Kind kind = zoHPCProblem::Kind::ViewportWithoutProjection;
    if (hadCurrent) {
        kind = m_model->problems()[static_cast<size_t>(row)].kind;
        message = m_model->problems()[static_cast<size_t>(row)].message;
    }
    for (zoHPCProblem& problem : problems) {
        if (problem.addsRows && !m_rowsMayCome)
            problem.setFix(QString(), nullptr);
    }
    m_model->setProblems(std::move(problems));
    if (hadCurrent) {
        const int again = m_model->find(kind, message);
        if (again >= 0)
            m_list->setCurrentIndex(m_model->index(again, zoHPCProblemModel::Message));
    }
    nameManualPage(m_list->currentIndex()); // a new list tells of no change
    const int count = m_model->rowCount();
    m_summary->setText(count == 0   ? tr("No problems")
                       : count == 1 ? tr("1 problem")
                                    : tr("%1 problems").arg(QString::number(count)));
}

// See zoHPCManualPages.
void zoHPCProblemsView::nameManualPage(const QModelIndex& current)
{
    QString page = zoText("problems");
    if (current.isValid() && current.row() < m_model->rowCount())
        page +=
            QLatin1Char('#') + zoHPCProblem::kindName(problems()[static_cast<size_t>(current.row())].kind);
    m_list->setProperty("manualPage", page);
}

const std::vector<zoHPCProblem>& zoHPCProblemsView::problems() const
{
    return m_model->problems();
}

void zoHPCProblemsView::forgetItems()
{
    m_model->forgetItems();
}

bool zoHPCProblemsView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space && m_list->currentIndex().isValid()) {
        fix(m_list->currentIndex().row());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void zoHPCProblemsView::activate(int row)
{
    if (row < 0 || row >= m_model->rowCount())
        return;
    if (QTreeWidgetItem* const item = m_model->problems()[static_cast<size_t>(row)].item)
        emit itemActivated(item);
}

void zoHPCProblemsView::fixLater(const QModelIndex& index)
{
    if (!index.isValid() || index.row() >= m_model->rowCount())
        return;
    // The fix replaces the rows, which must not happen while the view handles the mouse in them; by then the
    // problem may stand in another row, or be gone.
    const zoHPCProblem& problem = m_model->problems()[static_cast<size_t>(index.row())];
    QMetaObject::invokeMethod(
        this, [this, kind = problem.kind, message = problem.message] { fix(m_model->find(kind, message)); },
        Qt::QueuedConnection);
}

void zoHPCProblemsView::fix(int row)
{
    if (row < 0 || row >= m_model->rowCount())
        return;
    // A copy: what the fix changes may replace the list while it runs.
    const zoHPCProblem problem = m_model->problems()[static_cast<size_t>(row)];
    if (!problem.hasFix())
        return;
    const bool hosts = problem.fixesHosts();
    emit aboutToFix(hosts);
    problem.fix();
    emit fixed(hosts);
}
