#pragma once

#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

// A field that shows only those rows of a tree in which all of its words are found, upper and lower case alike: each
// word in the row itself or in a row above it. Rows above one that is shown are shown and expanded. A row that is hidden
// is neither selected nor current; one that comes and is current is shown until the words change. Linear in the rows.
class zoHPCTreeFilter final : public QWidget
{
    Q_OBJECT

public:
    // What a row is found by.
    using Text = std::function<QString(const QTreeWidgetItem& row)>;

    // The tree is not owned and outlives the filter.
    zoHPCTreeFilter(QTreeWidget* tree, const Text& text, QWidget* parent = nullptr);
    ~zoHPCTreeFilter() override;

    // What else a row is found by: whether it has the word.
    using Match = std::function<bool(const QTreeWidgetItem& row, const QString& word)>;
    void setMatch(const Match& match) { m_match = match; }
    // Which rows are counted; all without it.
    using Counts = std::function<bool(const QTreeWidgetItem& row)>;
    void setCounts(const Counts& counts) { m_counts = counts; }
    // For a tree that always has a current row: the first counted row that is found becomes current where the current
    // one is not, or the top row, which is never hidden; and Return goes to the tree, as Esc does.
    void setKeepsCurrentRow(bool keeps) { m_keepsCurrentRow = keeps; }

    QLineEdit* field() const { return m_field; }
    bool isOn() const { return !m_words.isEmpty(); }

public slots:
    // Chooses rows anew, as after changes of what they are found by.
    void apply();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void changeWords();
    void keepRows();
    bool isCounted(const QTreeWidgetItem& row) const { return !m_counts || m_counts(row); }
    bool hasWord(const QTreeWidgetItem& row, const QString& text, const QString& word) const;
    void letGoOfHiddenRows();
    void showCount(int shown, int all);

    QTreeWidget* m_tree; // not owned
    Text m_text;
    Match m_match;
    Counts m_counts;
    bool m_keepsCurrentRow = false;
    QStringList m_words;
    QLineEdit* m_field;
    QLabel* m_count;
    QTimer m_again{this}; // rows came: once per turn of the event loop
    bool m_keepsCurrent = false;
};
