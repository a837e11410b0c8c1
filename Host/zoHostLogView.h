#pragma once

#include <QDateTime>
#include <QTextEdit>

#include <deque>

// The messages of the log as a person reads them: under the day, one line each with its time, warnings and errors
// marked by word and colour, wrapped lines under the text. A message that comes again at once is counted.
class zoHostLogView final : public QTextEdit
{
    Q_OBJECT

public:
    // Enough to look back over a long session without holding on to all of it.
    static constexpr int Limit = 5000;

    enum class Level { All, Warnings, Errors };

    explicit zoHostLogView(QWidget* parent = nullptr);
    ~zoHostLogView() override;

    // `type` is a QtMsgType.
    void add(int type, const QString& text, const QDateTime& when);
    void clearMessages();
    // Shows what is at least as grave.
    void setLevel(Level level);
    // What is shown, a line each with date and time, as files hold it.
    QString text() const;

signals:
    void clearRequested();

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Entry
    {
        QDateTime when; // of the last time
        int type;
        QString text;
        int count = 1;
    };

    bool isShown(const Entry& entry) const;
    static QString markOf(int type);
    static QString wordsOf(const Entry& entry);
    QColor colourOf(int type) const;
    void showAll();
    void append(const Entry& entry);
    void startLine(QTextCursor& cursor, const QTextBlockFormat& format);

    std::deque<Entry> m_entries;
    Level m_level = Level::All;
    QDate m_day;                // of the last line that is shown
    bool m_isLastShown = false; // of the last entry, in the last line
};
