#pragma once

class QString;
class QWidget;

// The pages of the host's window, as its parts see them.
class zoHostPages
{
public:
    // The module's window with the configuration, else the first one.
    virtual void showDocument() = 0;
    // A page of the host itself instead of a module's window; the host's window owns it from then on.
    virtual void showPage(QWidget* page) = 0;
    // Whether another configuration may take the place of the one that is open: no session runs and nothing is asked.
    virtual bool mayReplace() const = 0;
    // Opens a configuration as a person's wish.
    virtual void openConfiguration(const QString& fileName) = 0;

protected:
    ~zoHostPages() = default;
};
