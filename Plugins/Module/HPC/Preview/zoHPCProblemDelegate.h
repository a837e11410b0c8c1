#pragma once

#include <QStyledItemDelegate>

// Paints the message of a problem across the row where no fix stands beside it.
class zoHPCProblemDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit zoHPCProblemDelegate(QObject* parent = nullptr);
    ~zoHPCProblemDelegate() override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
