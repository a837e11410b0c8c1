#include "zoHPCProblemDelegate.h"

#include "zoHPCProblemModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QStyle>
#include <QTreeView>

zoHPCProblemDelegate::zoHPCProblemDelegate(QTreeView* view) : QStyledItemDelegate(view), m_view(*view) {}

zoHPCProblemDelegate::~zoHPCProblemDelegate() = default;

void zoHPCProblemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    QStyleOptionViewItem shown(option);
    const QModelIndex fix = index.siblingAtColumn(zoHPCProblemModel::Fix);
    if (fix.data().toString().isEmpty())
        shown.rect |= m_view.visualRect(fix);
    QStyledItemDelegate::paint(painter, shown, index);
}

// The view asks before it has laid out its rows: the width is that of the columns.
QSize zoHPCProblemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem shown(option);
    initStyleOption(&shown, index);
    const QModelIndex fix = index.siblingAtColumn(zoHPCProblemModel::Fix);
    int width = m_view.header()->sectionSize(zoHPCProblemModel::Message);
    if (fix.data().toString().isEmpty())
        width += m_view.header()->sectionSize(zoHPCProblemModel::Fix);
    shown.rect = QRect(0, 0, qMax(width, 1), QWIDGETSIZE_MAX);
    const QStyle* const style = shown.widget ? shown.widget->style() : QApplication::style();
    // So that messages of several lines are told apart.
    constexpr int Gap = 6; // pixels
    return style->sizeFromContents(QStyle::CT_ItemViewItem, &shown, QSize(), shown.widget) + QSize(0, Gap);
}
