#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class QStyleOptionButton;

// Paints a cell as a push button with its text, and nothing where there is no text: what stands before it may
// reach into the cell. Thousands of rows need no thousands of widgets that way.
class zoHPCFixDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit zoHPCFixDelegate(QObject* parent = nullptr);
    ~zoHPCFixDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

signals:
    void clicked(const QModelIndex& index);

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    static QStyleOptionButton button(const QStyleOptionViewItem& option, const QString& text);

    QPersistentModelIndex m_pressed;
};
