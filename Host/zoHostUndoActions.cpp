#include "zoHostUndoActions.h"

#include "zoHostDocument.h"

#include <QAction>
#include <QMenu>

namespace
{
// Names of items may be long.
constexpr int s_mostCharacters = 60;

QString shown(QString step)
{
    if (step.size() > s_mostCharacters)
        step = step.left(s_mostCharacters - 1) + QChar(0x2026);
    return step.replace(QLatin1Char('&'), QLatin1String("&&"));
}
} // namespace

zoHostUndoActions::zoHostUndoActions(QMenu* menu, zoHostDocument* document)
    : QObject(menu), m_undo(menu->addAction(QString())), m_redo(menu->addAction(QString()))
{
    m_undo->setObjectName(QStringLiteral("Undo"));
    m_undo->setShortcut(int(Qt::CTRL) | Qt::Key_Z);
    m_redo->setObjectName(QStringLiteral("Redo"));
    m_redo->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    connect(m_undo, &QAction::triggered, this, [this] {
        if (m_page)
            zoHostDocument::undo(m_page);
    });
    connect(m_redo, &QAction::triggered, this, [this] {
        if (m_page)
            zoHostDocument::redo(m_page);
    });
    connect(document, &zoHostDocument::stepsChanged, this, &zoHostUndoActions::update);
    update();
}

zoHostUndoActions::~zoHostUndoActions() = default;

void zoHostUndoActions::setPage(QWidget* page)
{
    m_page = page;
    update();
}

void zoHostUndoActions::update()
{
    const QString undo = m_page ? zoHostDocument::undoStep(m_page) : QString();
    m_undo->setText(undo.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(shown(undo)));
    m_undo->setEnabled(!undo.isEmpty());
    const QString redo = m_page ? zoHostDocument::redoStep(m_page) : QString();
    m_redo->setText(redo.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(shown(redo)));
    m_redo->setEnabled(!redo.isEmpty());
}
