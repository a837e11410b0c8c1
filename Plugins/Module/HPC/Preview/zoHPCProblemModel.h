#pragma once

#include "zoHPCProblem.h"

#include <QAbstractTableModel>
#include <QStyle>

#include <vector>

// The problems as rows: what is wrong, and what the fix would do.
class zoHPCProblemModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Message, Fix, ColumnCount };

    // What stands before problems of that severity.
    static QStyle::StandardPixmap iconOf(zoHPCProblem::Severity severity);

    explicit zoHPCProblemModel(QObject* parent = nullptr);
    ~zoHPCProblemModel() override;

    const std::vector<zoHPCProblem>& problems() const { return m_problems; }
    void setProblems(std::vector<zoHPCProblem> problems);
    // The texts stay until the next setProblems(), the items and fixes are forgotten.
    void forgetItems();
    // Row of a problem of this kind with this message; -1 when there is none.
    int find(zoHPCProblem::Kind kind, const QString& message) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<zoHPCProblem> m_problems;
};
