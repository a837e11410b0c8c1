#include "zoHPCProblemModel.h"

#include "zoText.h"

#include <QApplication>

QStyle::StandardPixmap zoHPCProblemModel::iconOf(zoHPCProblem::Severity severity)
{
    switch (severity) {
    case zoHPCProblem::Severity::Error:
        return QStyle::SP_MessageBoxCritical;
    case zoHPCProblem::Severity::Warning:
        return QStyle::SP_MessageBoxWarning;
    case zoHPCProblem::Severity::Note:
        break;
    }
    return QStyle::SP_MessageBoxInformation;
}

zoHPCProblemModel::zoHPCProblemModel(QObject* parent) : QAbstractTableModel(parent) {}

zoHPCProblemModel::~zoHPCProblemModel() = default;

void zoHPCProblemModel::setProblems(std::vector<zoHPCProblem> problems)
{
    if (problems.empty() && m_problems.empty())
        return;
    beginResetModel();
    m_problems = std::move(problems);
    endResetModel();
}

void zoHPCProblemModel::forgetItems()
{
    for (zoHPCProblem& problem : m_problems) {
        problem.item = nullptr;
        problem.other = nullptr;
        problem.fix = nullptr;
    }
}

int zoHPCProblemModel::find(zoHPCProblem::Kind kind, const QString& message) const
{
    for (size_t i = 0; i < m_problems.size(); ++i) {
        if (m_problems[i].kind == kind && m_problems[i].message == message)
            return static_cast<int>(i);
    }
    return -1;
}

int zoHPCProblemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_problems.size());
}

int zoHPCProblemModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant zoHPCProblemModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const zoHPCProblem& problem = m_problems[static_cast<size_t>(index.row())];
    const QString text = index.column() == Message ? problem.message : problem.fixText;
    if (role == Qt::DisplayRole)
        return text;
    // The code is what the manual and "zohpc check --explain" know the problem by.
    if (role == Qt::ToolTipRole && index.column() == Message)
        return zoText("<qt>%1<br/><small>%2</small></qt>")
            .arg(text.toHtmlEscaped(), zoHPCProblem::kindName(problem.kind));
    if (role == Qt::DecorationRole && index.column() == Message)
        return QApplication::style()->standardIcon(iconOf(problem.severity()));
    return QVariant();
}

QVariant zoHPCProblemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    return section == Message ? tr("Problem") : tr("Fix");
}
