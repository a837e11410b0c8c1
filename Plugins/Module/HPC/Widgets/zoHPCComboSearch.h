#pragma once

#include <QObject>
#include <QString>

class QComboBox;
class QLabel;
class QListView;

// What is typed into the open list of a combo box shows those of its rows that hold it anywhere, upper and lower case
// alike; the first one of them is current. Backspace takes a character back, Esc all of them before it closes the list.
class zoHPCComboSearch final : public QObject
{
    Q_OBJECT

public:
    // The combo box, which is not editable, becomes the parent.
    explicit zoHPCComboSearch(QComboBox* combo);

    const QString& text() const { return m_text; } // for tests

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void search(QListView* list, const QString& text);

    QLabel* m_shown; // what was typed, over the list
    QString m_text;
};
