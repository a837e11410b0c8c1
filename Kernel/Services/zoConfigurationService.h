#pragma once

#include <zoBaseService.h>

#include <QObject>
#include <QString>

// The cluster configuration that is open in the host: for modules that read it, or make another one, without knowing
// who edits it. All calls and signals on the user-interface thread. A host may have no such service.
class ZO_KERNEL_EXPORT zoConfigurationService : public QObject, public zoBaseService
{
    Q_OBJECT

public:
    explicit zoConfigurationService(QObject* parent = nullptr);
    ~zoConfigurationService() override;

    // The whole document as it would be saved now; empty while nobody has one open.
    virtual QString text() const = 0;

    // The file that it is open as, with its whole path; empty for none.
    virtual QString fileName() const = 0;

    // Why replace() would fail whatever the text is, for people: a session runs, a dialog edits the configuration.
    // Empty when it would not.
    virtual QString obstacle() const = 0;

    // Puts another document in the place of the one that is open, which stays open as its file. It is one step of
    // undo with the name `step`, "New wall", so that nothing gets lost. False when it was refused and nothing
    // changed; `refusal` is the reason then, for people.
    virtual bool replace(const QString& text, const QString& step, QString* refusal = nullptr) = 0;

signals:
    // One of text(), fileName() and obstacle() may be another one than before. Comes a moment after the change,
    // once for changes that follow each other quickly.
    void changed();
};
