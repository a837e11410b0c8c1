#include "zoHostLogPanel.h"

#include <zoFileWriter.h>
#include <zoLog.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTextBlock>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
// More would take longer to mark than a person looks for.
constexpr int s_mostMarked = 1000;
constexpr int s_findWidth = 22; // characters
constexpr int s_levelWidth = 8; // at least

QToolButton* button(const QString& text, const QString& toolTip, const char* name, QWidget* parent)
{
    auto* made = new QToolButton(parent);
    made->setObjectName(QLatin1String(name));
    made->setText(text);
    made->setToolTip(toolTip);
    made->setAutoRaise(true);
    made->setFocusPolicy(Qt::TabFocus);
    return made;
}
} // namespace

zoHostLogPanel::zoHostLogPanel(QWidget* parent)
    : QWidget(parent)
    , m_view(new zoHostLogView(this))
    , m_level(new QComboBox(this))
    , m_find(new QLineEdit(this))
    , m_found(new QLabel(this))
{
    m_view->setObjectName(QStringLiteral("LogView"));
    createBar();
    setFocusProxy(m_view);
    connect(m_view, &zoHostLogView::clearRequested, m_view, &zoHostLogView::clearMessages);
    connect(m_level, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int row) {
        m_view->setLevel(zoHostLogView::Level(row));
        markFound();
    });
    connect(m_find, &QLineEdit::textChanged, this, [this] {
        // What is being typed is looked for from where it was found last.
        QTextCursor cursor = m_view->textCursor();
        cursor.setPosition(cursor.selectionStart());
        m_view->setTextCursor(cursor);
        find(false);
    });
    connect(m_find, &QLineEdit::returnPressed, this, &zoHostLogPanel::findNext);
    m_find->installEventFilter(this);

    const struct
    {
        QKeySequence keys;
        void (zoHostLogPanel::*slot)();
    } keys[] = {{QKeySequence::FindNext, &zoHostLogPanel::findNext},
                {QKeySequence::FindPrevious, &zoHostLogPanel::findPrevious},
                {QKeySequence::Find, nullptr}};
    for (const auto& key : keys) {
        auto* action = new QAction(this);
        action->setShortcut(key.keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        if (key.slot != nullptr)
            connect(action, &QAction::triggered, this, key.slot);
        else
            connect(action, &QAction::triggered, m_find, [this] {
                m_find->setFocus(Qt::ShortcutFocusReason);
                m_find->selectAll();
            });
        addAction(action);
    }
}

zoHostLogPanel::~zoHostLogPanel() = default;

void zoHostLogPanel::createBar()
{
    m_level->setObjectName(QStringLiteral("LogLevel"));
    m_level->setAccessibleName(tr("Level of messages"));
    m_level->addItems({tr("All messages"), tr("Warnings and errors"), tr("Errors only")});
    // In a narrow window the messages matter more.
    m_level->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_level->setMinimumWidth(fontMetrics().averageCharWidth() * s_levelWidth);
    m_level->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_find->setMinimumWidth(fontMetrics().averageCharWidth() * s_levelWidth);
    m_level->setToolTip(tr("How grave a message is that is shown"));
    m_find->setObjectName(QStringLiteral("LogFind"));
    m_find->setPlaceholderText(tr("Find"));
    m_find->setAccessibleName(tr("Find in the log"));
    m_find->setToolTip(tr("Return: the next place, Shift+Return: the one before, Esc: back to the log"));
    m_find->setClearButtonEnabled(true);
    m_find->setMaximumWidth(fontMetrics().averageCharWidth() * s_findWidth);
    m_found->setObjectName(QStringLiteral("LogFound"));
    auto* copying =
        button(tr("Copy"), tr("Copies what is selected, else all that is shown"), "LogCopy", this);
    connect(copying, &QToolButton::clicked, this, &zoHostLogPanel::copy);
    auto* saving = button(tr("Save..."), tr("Writes what is shown to a file"), "LogSave", this);
    connect(saving, &QToolButton::clicked, this, &zoHostLogPanel::save);
    auto* clearing = button(tr("Clear"), tr("Forgets all messages"), "LogClear", this);
    connect(clearing, &QToolButton::clicked, m_view, &zoHostLogView::clearMessages);

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(2, 0, 2, 0);
    bar->addWidget(m_level);
    bar->addWidget(m_find, 1);
    bar->addWidget(m_found);
    bar->addStretch(1);
    for (QWidget* one : {copying, saving, clearing})
        bar->addWidget(one);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(bar);
    layout->addWidget(m_view);
}

QString zoHostLogPanel::toPlainText() const
{
    return m_view->toPlainText();
}

void zoHostLogPanel::addMessage(int type, const QString& text)
{
    m_view->add(type, text, QDateTime::currentDateTime());
    if (!m_find->text().isEmpty())
        markFound();
}

void zoHostLogPanel::copy()
{
    if (m_view->textCursor().hasSelection())
        m_view->copy();
    else
        QApplication::clipboard()->setText(m_view->text());
}

void zoHostLogPanel::save()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString name = QStringLiteral("zohost-%1.log").arg(QDate::currentDate().toString(Qt::ISODate));
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save Log"), QDir(folder).filePath(name),
                                                          tr("Log (*.log *.txt)"));
    if (!fileName.isEmpty())
        saveTo(fileName);
}

bool zoHostLogPanel::saveTo(const QString& fileName)
{
    QString reason;
    if (zoFileWriter::write(fileName, m_view->text().toUtf8(), &reason) == zoFileWriter::Result::Written)
        return true;
    zoLog::error(tr("Unable to save the log as %1: %2").arg(QDir::toNativeSeparators(fileName), reason));
    return false;
}

void zoHostLogPanel::findNext()
{
    find(false);
}

void zoHostLogPanel::findPrevious()
{
    find(true);
}

void zoHostLogPanel::find(bool backwards)
{
    const QString wanted = m_find->text();
    if (!wanted.isEmpty()) {
        const QTextDocument::FindFlags flags =
            backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
        if (!m_view->find(wanted, flags)) {
            // On from the other end.
            const QTextCursor before = m_view->textCursor();
            m_view->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
            if (!m_view->find(wanted, flags))
                m_view->setTextCursor(before);
        }
    }
    markFound();
}

void zoHostLogPanel::markFound()
{
    QList<QTextEdit::ExtraSelection> marks;
    const QString wanted = m_find->text();
    const int current = m_view->textCursor().selectionStart();
    int number = 0;
    QTextCursor place(m_view->document());
    while (!wanted.isEmpty() && marks.size() < s_mostMarked) {
        place = m_view->document()->find(wanted, place);
        if (place.isNull())
            break;
        QTextEdit::ExtraSelection mark;
        mark.cursor = place;
        mark.format.setBackground(palette().color(QPalette::Highlight));
        mark.format.setForeground(palette().color(QPalette::HighlightedText));
        marks << mark;
        if (place.selectionStart() == current && m_view->textCursor().hasSelection())
            number = marks.size();
    }
    m_view->setExtraSelections(marks);
    if (wanted.isEmpty())
        m_found->clear();
    else
        m_found->setText(marks.isEmpty()
                             ? tr("Not found")
                             : tr("%1 of %2").arg(QString::number(number), QString::number(marks.size())));
}

bool zoHostLogPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_find && event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        const bool isReturn = press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter;
        if (isReturn && (press->modifiers() & Qt::ShiftModifier) != 0) {
            findPrevious();
            return true;
        }
        if (press->key() == Qt::Key_Escape) {
            m_find->clear();
            m_view->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
