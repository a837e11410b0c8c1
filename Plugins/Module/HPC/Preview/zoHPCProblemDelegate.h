#pragma once

#include <QStyledItemDelegate>

class QTreeView;

// Paints the message of a problem in as many lines as it needs, across the row where no fix stands beside it.
class zoHPCProblemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit zoHPCProblemDelegate(QTreeView* view);
    ~zoHPCProblemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QTreeView& m_view;
};
