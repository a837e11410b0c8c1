#include "zoHPCSurfaceDelegate.h"

#include <QApplication>
#include <QFontMetrics>
#include <QRegularExpression>
#include <QStyle>

namespace
{
// An address is not a name with a domain.
QString withoutDomain(const QString& node)
{
    const int dot = node.indexOf(QLatin1Char('.'));
    return dot > 0 && !node.at(0).isDigit() ? node.left(dot) : node;
}

// Up to the last number.
QString upToNumber(const QString& node)
{
    static const QRegularExpression s_rest(QString::fromLatin1("\\D{3,}$"));
    const int rest = node.indexOf(s_rest);
    return rest > 0 ? node.left(rest) + QChar(0x2026) : node;
}
} // namespace

zoHPCSurfaceDelegate::zoHPCSurfaceDelegate(int nodeColumn, QObject* parent)
    : QStyledItemDelegate(parent), m_nodeColumn(nodeColumn)
{
}

zoHPCSurfaceDelegate::~zoHPCSurfaceDelegate() = default;

QString zoHPCSurfaceDelegate::shortened(const QString& nodes, const QFontMetrics& metrics, int width)
{
    const auto fits = [&](const QString& text) { return metrics.horizontalAdvance(text) <= width; };
    if (fits(nodes))
        return nodes;
    QStringList names = nodes.split(QString::fromLatin1(", "));
    for (QString& name : names)
        name = withoutDomain(name);
    const QString all = names.join(QLatin1String(", "));
    if (fits(all))
        return all;
    const QString more = names.size() > 1 ? QString::fromLatin1(" +%1").arg(names.size() - 1) : QString();
    const int room = width - metrics.horizontalAdvance(more);
    const QString first = names.constFirst();
    if (metrics.horizontalAdvance(first) <= room)
        return first + more;
    return metrics.elidedText(upToNumber(first), Qt::ElideLeft, room) + more;
}

void zoHPCSurfaceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const QStyle* const style = shown.widget ? shown.widget->style() : QApplication::style();
    shown.textElideMode = Qt::ElideLeft;
    if (index.column() == m_nodeColumn) {
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &shown, shown.widget) + 1;
        const QRect room = style->subElementRect(QStyle::SE_ItemViewItemText, &shown, shown.widget);
        shown.text = shortened(shown.text, shown.fontMetrics, room.width() - 2 * margin);
    } else if (!index.parent().isValid()) {
        shown.textElideMode = Qt::ElideRight;
    }
    style->drawControl(QStyle::CE_ItemViewItem, &shown, painter, shown.widget);
}
