#pragma once

#include "zoHPCNumberExpression.h"

#include <QStyledItemDelegate>

// Edits numbers of a table in fields that take sums and units, and shows them without separated groups of digits.
class zoAssistantPlaneDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // A column of a table: what its numbers are, in which range.
    struct Column
    {
        zoHPCNumberExpression::Unit unit;
        double minimum;
        double maximum;
        int decimals;
    };

    explicit zoAssistantPlaneDelegate(const Column& column, QObject* parent = nullptr);
    ~zoAssistantPlaneDelegate() override;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    QString displayText(const QVariant& value, const QLocale& locale) const override;

private:
    const Column m_column;
};
