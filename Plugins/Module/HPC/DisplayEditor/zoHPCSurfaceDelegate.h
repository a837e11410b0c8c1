#pragma once

#include <QString>
#include <QStyledItemDelegate>

class QFontMetrics;

// Shows the rows of projections so that, where there is too little room, the numbers stay: those of a tile's row and
// column, and those in the names of nodes.
class zoHPCSurfaceDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // The column of the nodes; all others hold names.
    zoHPCSurfaceDelegate(int nodeColumn, QObject* parent);
    ~zoHPCSurfaceDelegate() override;

    // Names of nodes, separated by commas, in no more than the width: without their domains, then without what stands
    // before the number, and the first one alone with how many more there are.
    static QString shortened(const QString& nodes, const QFontMetrics& metrics, int width);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    int m_nodeColumn;
};
