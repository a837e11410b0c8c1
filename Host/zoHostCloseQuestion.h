#pragma once

#include <QCoreApplication>
#include <QPointer>

class QWidget;
class zoHostDocument;

// The question before the host closes over a configuration that is not saved.
class zoHostCloseQuestion final
{
    Q_DECLARE_TR_FUNCTIONS(zoHostMainWindow)

public:
    zoHostCloseQuestion() = delete;

    // Asks to save, to discard or to stay; whether the host may close, as far as this module's window goes. Saves when
    // that is the answer; what fails is told with its reason, and the host stays or another name is tried. The window
    // may go while the question is open.
    static bool mayClose(zoHostDocument& document, const QPointer<QWidget>& moduleWindow,
                         const QString& title, QWidget* parent);

private:
    static bool mayTryElsewhere(const QString& reason, const QString& title, QWidget* parent);
};
