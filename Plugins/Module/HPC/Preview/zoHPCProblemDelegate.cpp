#include "zoHPCProblemDelegate.h"

#include "zoHPCProblemModel.h"

#include <QAbstractItemView>

zoHPCProblemDelegate::zoHPCProblemDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

zoHPCProblemDelegate::~zoHPCProblemDelegate() = default;

void zoHPCProblemDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QModelIndex fix = index.siblingAtColumn(zoHPCProblemModel::Fix);
    const auto* const view = qobject_cast<const QAbstractItemView*>(option->widget);
    if (view && fix.data().toString().isEmpty())
        option->rect |= view->visualRect(fix);
}
