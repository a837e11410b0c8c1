#include "zoHostManualWindow.h"

#include "zoHostManual.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr char s_firstPage[] = "index";
constexpr int s_findWidth = 24; // characters
constexpr int s_margin = 12;    // pixels
} // namespace

zoHostManualWindow::zoHostManualWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_browser(new QTextBrowser(this))
    , m_find(new QLineEdit(this))
    , m_found(new QLabel(this))
{
    setObjectName(QStringLiteral("ManualWindow"));
    m_browser->setObjectName(QStringLiteral("ManualBrowser"));
    m_browser->setAccessibleName(tr("Manual"));
    m_browser->setOpenExternalLinks(true);
    m_browser->setFrameShape(QFrame::NoFrame);
    m_browser->document()->setDocumentMargin(s_margin);
    m_find->setObjectName(QStringLiteral("ManualFind"));
    m_find->setPlaceholderText(tr("Find on this page"));
    m_find->setAccessibleName(tr("Find on this page"));
    m_find->setClearButtonEnabled(true);
    m_find->setMaximumWidth(fontMetrics().averageCharWidth() * s_findWidth);

    connect(m_browser, &QTextBrowser::sourceChanged, this, &zoHostManualWindow::updateTitle);
    connect(m_find, &QLineEdit::textEdited, this, [this] {
        QTextCursor cursor = m_browser->textCursor();
        cursor.setPosition(cursor.selectionStart());
        m_browser->setTextCursor(cursor);
        find(false);
    });
    connect(m_find, &QLineEdit::returnPressed, this, [this] { find(false); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(createBar());
    layout->addWidget(m_browser, 1);
    m_browser->setFocus();
    updateTitle(QUrl());
}

zoHostManualWindow::~zoHostManualWindow() = default;

QToolBar* zoHostManualWindow::createBar()
{
    auto* bar = new QToolBar(this);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QAction* back = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("Back"), m_browser,
                                   &QTextBrowser::backward);
    back->setShortcut(QKeySequence::Back);
    back->setEnabled(false);
    QAction* forward = bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward), tr("Forward"),
                                      m_browser, &QTextBrowser::forward);
    forward->setShortcut(QKeySequence::Forward);
    forward->setEnabled(false);
    QAction* contents = bar->addAction(tr("Contents"), this, [this] { open(QLatin1String(s_firstPage)); });
    contents->setShortcut(int(Qt::ALT) | Qt::Key_Home);
    for (QAction* action : {back, forward, contents})
        action->setToolTip(QStringLiteral("%1 (%2)").arg(
            action->text(), action->shortcut().toString(QKeySequence::NativeText)));
    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    bar->addWidget(m_found);
    bar->addWidget(m_find);
    auto* finding = new QAction(this);
    finding->setShortcut(QKeySequence::Find);
    connect(finding, &QAction::triggered, m_find, [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    });
    addAction(finding);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    return bar;
}

QSize zoHostManualWindow::sizeHint() const
{
    return {820, 660};
}

void zoHostManualWindow::open(const QString& page)
{
    const QString language = QLocale().name();
    QUrl url = zoHostManual::find(page, language);
    if (url.isEmpty())
        url = zoHostManual::find(QLatin1String(s_firstPage), language);
    if (url.isEmpty())
        tellMissing();
    else
        m_browser->setSource(url);
    show();
    raise();
    activateWindow();
}

QString zoHostManualWindow::page() const
{
    const QUrl source = m_browser->source();
    const QString name = QFileInfo(source.toLocalFile()).completeBaseName();
    return source.hasFragment() ? name + QLatin1Char('#') + source.fragment() : name;
}

void zoHostManualWindow::tellMissing()
{
    QStringList folders = zoHostManual::folders();
    folders.erase(std::remove(folders.begin(), folders.end(), QString()), folders.end());
    for (QString& folder : folders)
        folder = QDir::toNativeSeparators(folder);
    m_browser->setPlainText(tr("The manual is not installed. It was looked for in:") + QLatin1String("\n\n") +
                            folders.join(QLatin1Char('\n')));
}

void zoHostManualWindow::find(bool backwards)
{
    const QString wanted = m_find->text();
    m_found->clear();
    if (wanted.isEmpty())
        return;
    const QTextDocument::FindFlags flags =
        backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (m_browser->find(wanted, flags))
        return;
    // On from the other end.
    const QTextCursor before = m_browser->textCursor();
    m_browser->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    if (m_browser->find(wanted, flags))
        return;
    m_browser->setTextCursor(before);
    m_found->setText(tr("Not found"));
}

void zoHostManualWindow::updateTitle(const QUrl& shown)
{
    const QString title = m_browser->documentTitle();
    // The first page is called as the whole is.
    const bool isFirst = QFileInfo(shown.path()).completeBaseName() == QLatin1String(s_firstPage);
    const bool isNamed = !title.isEmpty() && !isFirst;
    setWindowTitle(isNamed ? tr("%1 - Manual").arg(title) : tr("Manual"));
}

void zoHostManualWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->matches(QKeySequence::FindNext))
        find(false);
    else if (event->matches(QKeySequence::FindPrevious))
        find(true);
    else
        QWidget::keyPressEvent(event);
}
