#include "zoHPCConfigEditGUIW.h"

#include "zoHPCButtonKeys.h"
#include "zoText.h"

#include "ui_zoHPCConfigEditGUIW.h"

#include <zoFileReader.h>
#include <zoIconManager.h>
#include <zoPlatform.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QKeyEvent>

namespace
{
constexpr int LongText = 50000; // characters
constexpr int LongDelay = 300;  // ms
constexpr int ShownNotes = 4;
constexpr int MarkedNotes = 200;
} // namespace

zoHPCConfigEditGUIW::zoHPCConfigEditGUIW(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui_zoHPCConfigEditGUIW>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    zoHPCButtonKeys::addTo(*m_ui->m_buttonBox);
    m_ui->m_textEdit->installEventFilter(this);
    m_ui->m_textEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    const int iconSize = zoPlatform::getSmallIconSize();
    m_ui->m_browseButton->setIcon(zoIconManager::getIcon(zoText("FileOpen"), QString()));
    m_ui->m_browseButton->setIconSize(QSize(iconSize, iconSize));
    m_ui->m_browseButton->setMinimumSize(iconSize + 2, iconSize + 2);
    m_ui->m_browseButton->setMaximumSize(iconSize + 2, iconSize + 2);

    connect(m_ui->m_browseButton, &QAbstractButton::clicked, this, &zoHPCConfigEditGUIW::browseServersFile);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &zoHPCConfigEditGUIW::showUnderstood);
    connect(m_ui->m_textEdit, &QPlainTextEdit::textChanged, this, &zoHPCConfigEditGUIW::noteChange);
    connect(m_ui->m_serversFile, &QLineEdit::textChanged, this, &zoHPCConfigEditGUIW::noteChange);
    connect(m_ui->m_understood, &QLabel::linkActivated, this, &zoHPCConfigEditGUIW::followLink);
}

zoHPCConfigEditGUIW::~zoHPCConfigEditGUIW() = default;

// A letter with Alt that is no key of the dialog is none of the text either.
bool zoHPCConfigEditGUIW::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->m_textEdit && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isAlt = (key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) ==
                           Qt::KeyboardModifiers(Qt::AltModifier);
        if (isAlt && !key->text().isEmpty() && key->text().at(0).isPrint()) {
            event->ignore();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

QString zoHPCConfigEditGUIW::text() const
{
    return m_ui->m_textEdit->toPlainText();
}

QString zoHPCConfigEditGUIW::getServersFile() const
{
    return m_ui->m_serversFile->text();
}

void zoHPCConfigEditGUIW::setText(const QString& text)
{
    // Without history: the first undo must not empty the editor.
    m_ui->m_textEdit->setUndoRedoEnabled(false);
    m_ui->m_textEdit->clear();
    m_ui->m_textEdit->insertPlainText(text);
    m_ui->m_textEdit->setUndoRedoEnabled(true);
    m_ui->m_textEdit->moveCursor(QTextCursor::End);
    m_ui->m_textEdit->ensureCursorVisible();
}

void zoHPCConfigEditGUIW::setServersFile(const QString& fileName)
{
    m_ui->m_serversFile->setText(fileName);
}

void zoHPCConfigEditGUIW::setServersFileEditable(bool editable)
{
    m_ui->m_serversFileRow->setVisible(editable);
}

void zoHPCConfigEditGUIW::setIsHostsText(bool isHostsText)
{
    m_isHostsText = isHostsText;
    m_ui->m_understood->setVisible(isHostsText);
    showUnderstood();
}

void zoHPCConfigEditGUIW::confirm()
{
    if (m_isHostsText && !getServersFile().isEmpty() && !serversFileState().isReadable) {
        showUnderstood();
        m_ui->m_serversFile->setFocus(Qt::OtherFocusReason);
        m_ui->m_serversFile->selectAll();
        return;
    }
    accept();
}

zoHPCConfigEditGUIW::FileState zoHPCConfigEditGUIW::serversFileState() const
{
    const QString name = getServersFile();
    const QString shown = QDir::toNativeSeparators(name);
    FileState state;
    if (!QFileInfo::exists(name)) {
        state.reason = tr("There is no file %1").arg(shown);
        return state;
    }
    QByteArray content;
    QString reason;
    if (zoFileReader::read(name, content, &reason) != zoFileReader::Result::Read) {
        state.reason = tr("Unable to read %1: %2").arg(shown, reason);
    } else if (content.contains('\0')) {
        state.reason = tr("%1 is no text in UTF-8").arg(shown);
    } else {
        state.isReadable = true;
        state.text = QString::fromUtf8(content).remove(QLatin1Char('\r'));
    }
    return state;
}

void zoHPCConfigEditGUIW::noteChange()
{
    // Ten thousand nodes are not counted for each key.
    if (m_isHostsText)
        m_timer.start(m_ui->m_textEdit->document()->characterCount() < LongText ? 0 : LongDelay);
}

void zoHPCConfigEditGUIW::showUnderstood()
{
    m_timer.stop();
    m_notes.clear();
    const auto bold = [](const QString& text) { return zoText("<b>%1</b>").arg(text.toHtmlEscaped()); };
    QString shown;
    if (!m_isHostsText) {
        shown.clear();
    } else if (getServersFile().isEmpty()) {
        const QString text = this->text();
        const zoHPCHostsSummary summary(text);
        m_notes = summary.notes();
        shown = bold(summary.counts()) + notesText(text, true);
    } else {
        const FileState file = serversFileState();
        const zoHPCHostsSummary summary(file.text);
        if (file.isReadable) {
            m_notes = summary.notes();
            shown = tr("The file takes the place of the text: %1").arg(bold(summary.counts())) +
                    notesText(file.text, false);
            m_notes.clear(); // places of the file
        } else {
            shown = bold(file.reason) + zoText("<br/>") +
                    tr("Choose another file, or empty the field to use the text.").toHtmlEscaped();
        }
    }
    m_ui->m_understood->setText(shown);
    markNotes();
}

QString zoHPCConfigEditGUIW::notesText(const QString& text, bool hasLinks) const
{
    QString shown;
    const int count = qMin(int(m_notes.size()), ShownNotes);
    for (int i = 0; i < count; ++i) {
        const zoHPCHostsSummary::Note& note = m_notes[size_t(i)];
        const QString place = tr("Line %1, column %2")
                                  .arg(zoHPCHostsSummary::line(text, note.offset))
                                  .arg(zoHPCHostsSummary::column(text, note.offset));
        shown += zoText("<br/>") +
                 (hasLinks ? zoText("<a href=\"go %1\">%2</a>").arg(QString::number(i), place) : place) +
                 zoText(": ") + note.reason.toHtmlEscaped();
        if (hasLinks && !note.replacement.isEmpty())
            shown += zoText(" <a href=\"write %1\">%2</a>").arg(QString::number(i), tr("Write it so"));
    }
    if (int(m_notes.size()) > count)
        shown += zoText("<br/>") + tr("and %1 more").arg(int(m_notes.size()) - count);
    return shown;
}

// By a wavy line, as of misspelt words.
void zoHPCConfigEditGUIW::markNotes()
{
    QList<QTextEdit::ExtraSelection> marks;
    const int end = m_ui->m_textEdit->document()->characterCount() - 1;
    const int count = qMin(int(m_notes.size()), MarkedNotes);
    for (int i = 0; i < count; ++i) {
        const zoHPCHostsSummary::Note& note = m_notes[size_t(i)];
        QTextEdit::ExtraSelection mark;
        mark.cursor = m_ui->m_textEdit->textCursor();
        mark.cursor.setPosition(qMin(note.offset, end));
        mark.cursor.setPosition(qMin(note.offset + qMax(1, note.length), end), QTextCursor::KeepAnchor);
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(Qt::red);
        marks.append(mark);
    }
    m_ui->m_textEdit->setExtraSelections(marks);
}

void zoHPCConfigEditGUIW::followLink(const QString& link)
{
    const size_t index = link.section(QLatin1Char(' '), 1).toUInt();
    if (index >= m_notes.size())
        return;
    const zoHPCHostsSummary::Note note = m_notes[index];
    QTextCursor cursor = m_ui->m_textEdit->textCursor();
    cursor.setPosition(note.offset);
    cursor.setPosition(note.offset + note.length, QTextCursor::KeepAnchor);
    m_ui->m_textEdit->setTextCursor(cursor);
    if (link.startsWith(zoText("write")))
        cursor.insertText(note.replacement);
    m_ui->m_textEdit->setFocus(Qt::OtherFocusReason);
}

void zoHPCConfigEditGUIW::browseServersFile()
{
    const QString directory = QString::fromStdString(zoPlatform::getDataDir()) + zoText("/cluster");
    const QString chosen =
        QFileDialog::getOpenFileName(this, tr("List of compute nodes"), directory, zoText("*.*"));
    if (!chosen.isEmpty())
        m_ui->m_serversFile->setText(chosen);
}
