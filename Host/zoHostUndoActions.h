#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QWidget;
class zoHostDocument;

// Undo and Redo in the Edit menu, with the name of the step, of the module's window that is shown.
class zoHostUndoActions final : public QObject
{
    Q_OBJECT

public:
    // Adds both to the menu, which becomes the parent. The document is not owned and outlives this.
    zoHostUndoActions(QMenu* menu, zoHostDocument* document);
    ~zoHostUndoActions() override;

    // The page that is shown, of a module or not; null for none.
    void setPage(QWidget* page);

private:
    void update();

    QAction* m_undo;
    QAction* m_redo;
    QPointer<QWidget> m_page;
};
