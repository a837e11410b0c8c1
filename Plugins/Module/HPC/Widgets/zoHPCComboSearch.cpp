#include "zoHPCComboSearch.h"

#include "zoText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>

zoHPCComboSearch::zoHPCComboSearch(QComboBox* combo) : QObject(combo), m_shown(new QLabel(combo->view()))
{
    m_shown->setObjectName(zoText("m_comboSearch"));
    m_shown->setAutoFillBackground(true);
    m_shown->setBackgroundRole(QPalette::ToolTipBase);
    m_shown->setForegroundRole(QPalette::ToolTipText);
    m_shown->setFrameShape(QFrame::Box);
    m_shown->hide();
    combo->view()->installEventFilter(this);
}

bool zoHPCComboSearch::eventFilter(QObject* watched, QEvent* event)
{
    // Events also come while the combo box and its list are being destroyed.
    auto* const list = qobject_cast<QListView*>(watched);
    if (list == nullptr)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::Hide && !event->spontaneous())
        search(list, QString());
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    QString text = m_text;
    const bool isBack = key->key() == Qt::Key_Backspace;
    const bool isEnd = key->key() == Qt::Key_Escape && !m_text.isEmpty();
    const bool hasModifier = (key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0;
    if (isBack)
        text.chop(1);
    else if (isEnd)
        text.clear();
    else if (!hasModifier && !key->text().isEmpty() && key->text().at(0).isPrint())
        text += key->text();
    else
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        search(list, text);
    event->accept();
    return true;
}

void zoHPCComboSearch::search(QListView* list, const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    int first = -1;
    const QAbstractItemModel* const model = list->model();
    const auto place = [&](int row) { return model->index(row, list->modelColumn(), list->rootIndex()); };
    for (int row = 0; row < model->rowCount(list->rootIndex()); ++row) {
        const bool isFound = place(row).data(Qt::DisplayRole).toString().contains(text, Qt::CaseInsensitive);
        list->setRowHidden(row, !isFound);
        if (isFound && first < 0)
            first = row;
    }
    const QModelIndex current = list->currentIndex();
    if (first >= 0 && !text.isEmpty() && (!current.isValid() || list->isRowHidden(current.row())))
        list->setCurrentIndex(place(first));
    m_shown->setText(text.isEmpty() ? QString() : tr("Search: %1").arg(text));
    m_shown->adjustSize();
    m_shown->move(list->width() - m_shown->width() - 4, 2);
    m_shown->setVisible(!text.isEmpty());
}
