#pragma once

class QAction;
class Ui_zoHPCDisplayGUII;
class zoHPCDisplayClipboard;
class zoHPCDisplayTrees;
class zoHPCKeys;

// The actions of the context menus of both trees, and which of them and of the buttons make sense now.
class zoHPCDisplayActions final
{
public:
    // The dialog's form, set up; not owned. Its trees own the actions.
    explicit zoHPCDisplayActions(const Ui_zoHPCDisplayGUII& form);

    QAction* deleteProjection() const { return m_deleteProjection; }
    QAction* copyProjection() const { return m_copyProjection; }
    QAction* pasteProjection() const { return m_pasteProjection; }
    QAction* convertToPlanes() const { return m_convertToPlanes; }
    QAction* deleteDisplay() const { return m_deleteDisplay; }
    QAction* copyDisplay() const { return m_copyDisplay; }
    QAction* pasteDisplay() const { return m_pasteDisplay; }

    // While a session runs rows neither come nor go.
    void update(const zoHPCDisplayTrees& trees, const zoHPCDisplayClipboard& clipboard, bool isRunning);
    void addTo(zoHPCKeys& keys) const;

private:
    const Ui_zoHPCDisplayGUII& m_ui;
    QAction* m_deleteProjection;
    QAction* m_copyProjection;
    QAction* m_pasteProjection;
    QAction* m_convertToPlanes;
    QAction* m_deleteDisplay;
    QAction* m_copyDisplay;
    QAction* m_pasteDisplay;
};
