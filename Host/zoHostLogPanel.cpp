#include "zoHostLogPanel.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QScrollBar>
#include <QTextCharFormat>
#include <QTime>

#include <memory>

namespace
{
// Enough to look back over a long session without holding on to all of it.
constexpr int s_maximumLines = 5000;
} // namespace

zoHostLogPanel::zoHostLogPanel(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setMaximumBlockCount(s_maximumLines);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setPlaceholderText(tr("Messages of the host and its modules appear here."));
    setAccessibleName(tr("Log"));
}

zoHostLogPanel::~zoHostLogPanel() = default;

void zoHostLogPanel::addMessage(int type, const QString& text)
{
    QTextCharFormat format;
    QString mark;
    switch (type) {
    case QtCriticalMsg:
    case QtFatalMsg:
        format.setForeground(QColor(0xc0, 0x1c, 0x28));
        mark = tr("Error: ");
        break;
    case QtWarningMsg:
        format.setForeground(QColor(0xb0, 0x60, 0x00));
        mark = tr("Warning: ");
        break;
    default:
        format.setForeground(palette().text());
        break;
    }

    QScrollBar* bar = verticalScrollBar();
    const bool followsEnd = bar->value() == bar->maximum();
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    if (!document()->isEmpty())
        cursor.insertBlock();
    cursor.insertText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + mark + text, format);
    // Someone who scrolled up to read is not pulled away.
    if (followsEnd)
        bar->setValue(bar->maximum());
}

void zoHostLogPanel::contextMenuEvent(QContextMenuEvent* event)
{
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    menu->addSeparator();
    menu->addAction(tr("Clear log"), this, &QPlainTextEdit::clear);
    menu->exec(event->globalPos());
}
