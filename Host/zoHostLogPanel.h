#pragma once

#include "zoHostLogView.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;

// The host's log with what people do with it: choose how grave, find, copy, save.
class zoHostLogPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostLogPanel(QWidget* parent = nullptr);
    ~zoHostLogPanel() override;

    zoHostLogView* view() const { return m_view; }
    QString toPlainText() const; // what is shown

public slots:
    // `type` is a QtMsgType.
    void addMessage(int type, const QString& text);
    // What is selected, else all that is shown, with date and time.
    void copy();
    // Asks for a file and writes what is shown.
    void save();
    void findNext();
    void findPrevious();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the field to find in

private:
    void createBar();
    void markFound();
    void find(bool backwards);
    bool saveTo(const QString& fileName);

    zoHostLogView* m_view;
    QComboBox* m_level;
    QLineEdit* m_find;
    QLabel* m_found;
};
