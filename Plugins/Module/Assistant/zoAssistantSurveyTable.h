#pragma once

#include <QTableWidget>

// Lines of a measured room as a table: what was measured, what remains of it, and how much others check it. An empty row
// at the end takes the next line. Return goes on with the line below, Delete takes rows out, and lines can be pasted.
class zoAssistantSurveyTable final : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { Measurement, Residual, Checked, ColumnCount };

    // What is shown of a line besides its text.
    struct Verdict
    {
        QString residual;
        QString checked;
        QString toolTip;
        bool isMistake = false; // of the text
        bool isWorst = false;   // of what was measured
    };

    explicit zoAssistantSurveyTable(QWidget* parent = nullptr);
    ~zoAssistantSurveyTable() override;

    // Without the empty row at the end.
    QString text() const;
    void setText(const QString& text);
    // Puts a line below the one where the cursor is, and the cursor into it.
    void addLine(const QString& line);
    void removeSelectedLines();

    // Of a row, from 0.
    void setVerdict(int row, const Verdict& verdict);

signals:
    void edited();

protected:
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void insertLine(int row, const QString& line);
    void beginToEdit(int row);
    void paste();
    void keepEmptyRow();

    bool m_isFilling = false;
};
