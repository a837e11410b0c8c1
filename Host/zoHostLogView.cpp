#include "zoHostLogView.h"

#include "zoHostTime.h"

#include "zoReadableColour.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>

#include <memory>

namespace
{
const QColor s_red(0xc0, 0x1c, 0x28);
const QColor s_amber(0xb0, 0x60, 0x00);

int gravityOf(int type)
{
    switch (type) {
    case QtCriticalMsg:
    case QtFatalMsg:
        return int(zoHostLogView::Level::Errors);
    case QtWarningMsg:
        return int(zoHostLogView::Level::Warnings);
    default:
        return int(zoHostLogView::Level::All);
    }
}
} // namespace

zoHostLogView::zoHostLogView(QWidget* parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    document()->setMaximumBlockCount(Limit);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setPlaceholderText(tr("Messages of the host and its modules appear here."));
    setAccessibleName(tr("Log"));
}

zoHostLogView::~zoHostLogView() = default;

void zoHostLogView::add(int type, const QString& text, const QDateTime& when)
{
    QScrollBar* bar = verticalScrollBar();
    const bool followsEnd = bar->value() == bar->maximum();
    const bool isAgain = !m_entries.empty() && m_entries.back().type == type &&
                         m_entries.back().text == text && m_entries.back().when.date() == when.date();
    if (isAgain) {
        m_entries.back().when = when;
        ++m_entries.back().count;
        if (m_isLastShown) {
            QTextCursor cursor(document()->lastBlock());
            cursor.select(QTextCursor::BlockUnderCursor);
            cursor.removeSelectedText();
        }
    } else {
        m_entries.push_back({when, type, text, 1});
        if (m_entries.size() > Limit)
            m_entries.pop_front();
    }
    m_isLastShown = isShown(m_entries.back());
    if (m_isLastShown)
        append(m_entries.back());
    // Someone who scrolled up to read is not pulled away.
    if (followsEnd)
        bar->setValue(bar->maximum());
}

void zoHostLogView::clearMessages()
{
    m_entries.clear();
    showAll();
}

void zoHostLogView::setLevel(Level level)
{
    if (m_level == level)
        return;
    m_level = level;
    showAll();
}

QString zoHostLogView::text() const
{
    QString lines;
    for (const Entry& entry : m_entries) {
        if (isShown(entry))
            lines += entry.when.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss  ")) + wordsOf(entry) +
                     QLatin1Char('\n');
    }
    return lines;
}

void zoHostLogView::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        showAll();
}

void zoHostLogView::contextMenuEvent(QContextMenuEvent* event)
{
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    menu->addSeparator();
    menu->addAction(tr("Clear log"), this, &zoHostLogView::clearRequested);
    menu->exec(event->globalPos());
}

bool zoHostLogView::isShown(const Entry& entry) const
{
    return gravityOf(entry.type) >= int(m_level);
}

QString zoHostLogView::markOf(int type)
{
    switch (gravityOf(type)) {
    case int(Level::Errors):
        return tr("Error: ");
    case int(Level::Warnings):
        return tr("Warning: ");
    default:
        return {};
    }
}

QString zoHostLogView::wordsOf(const Entry& entry)
{
    const QString words = markOf(entry.type) + entry.text.trimmed();
    return entry.count == 1 ? words : words + tr(" (%1 times)").arg(QString::number(entry.count));
}

QColor zoHostLogView::colourOf(int type) const
{
    const QColor base = palette().color(QPalette::Base);
    switch (gravityOf(type)) {
    case int(Level::Errors):
        return zoReadableColour::on(base, s_red);
    case int(Level::Warnings):
        return zoReadableColour::on(base, s_amber);
    default:
        return zoReadableColour::on(base, palette().color(QPalette::Text));
    }
}

void zoHostLogView::showAll()
{
    QScrollBar* bar = verticalScrollBar();
    clear();
    m_day = QDate();
    m_isLastShown = false;
    for (const Entry& entry : m_entries) {
        m_isLastShown = isShown(entry);
        if (m_isLastShown)
            append(entry);
    }
    bar->setValue(bar->maximum());
}

void zoHostLogView::startLine(QTextCursor& cursor, const QTextBlockFormat& format)
{
    if (document()->isEmpty())
        cursor.setBlockFormat(format);
    else
        cursor.insertBlock(format);
}

void zoHostLogView::append(const Entry& entry)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat format;
    if (entry.when.date() != m_day) {
        m_day = entry.when.date();
        format.setForeground(colourOf(QtInfoMsg));
        format.setFontWeight(QFont::Bold);
        startLine(cursor, QTextBlockFormat());
        cursor.insertText(zoHostTime::day(m_day), format);
    }
    const QString time = zoHostTime::clock(entry.when.time()) + QStringLiteral("  ");
    // Lines of one message and those that are wrapped stand under its text.
    QTextBlockFormat block;
    const int indent = fontMetrics().horizontalAdvance(time);
    block.setLeftMargin(indent);
    block.setTextIndent(-indent);
    startLine(cursor, block);
    format = QTextCharFormat();
    format.setForeground(colourOf(entry.type));
    QString words = wordsOf(entry);
    words.replace(QLatin1Char('\n'), QChar::LineSeparator);
    cursor.insertText(time + words, format);
}
